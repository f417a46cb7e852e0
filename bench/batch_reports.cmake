# The reports over 32,000 batches and a long run of labels.
sorvanto_bench(bench_batch_reports SOURCES ${CMAKE_CURRENT_LIST_DIR}/batch_reports_bench.cpp
                                           ${CMAKE_CURRENT_LIST_DIR}/whole_program.cpp
                                           ${CMAKE_CURRENT_LIST_DIR}/program_folder.cpp
               LINKS sorvanto::core sorvanto::database_file SQLite::SQLite3)
target_compile_definitions(bench_batch_reports PRIVATE SORVANTO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                           SORVANTO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
