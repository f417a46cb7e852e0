# Reports: pages to PDF beside plain drawing, first page, spreadsheet files beside a library for the newer format.
find_library(XLSXWRITER_LIBRARY xlsxwriter)
sorvanto_bench(bench_report SOURCES ${CMAKE_CURRENT_LIST_DIR}/report_bench.cpp LINKS sorvanto::platform_report)
if(XLSXWRITER_LIBRARY)
  target_link_libraries(bench_report PRIVATE ${XLSXWRITER_LIBRARY})
  target_compile_definitions(bench_report PRIVATE HAS_XLSXWRITER)
endif()
