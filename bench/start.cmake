# From the start of the process to the painted window, beside a program that shows nothing but an empty one.
sorvanto_program(bench_empty_window SOURCES ${CMAKE_CURRENT_LIST_DIR}/empty_window.cpp LINKS Qt6::Widgets)
sorvanto_program(bench_text_window SOURCES ${CMAKE_CURRENT_LIST_DIR}/text_window.cpp LINKS Qt6::Widgets)
sorvanto_program(bench_start SOURCES ${CMAKE_CURRENT_LIST_DIR}/start_bench.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/started_process.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/program_folder.cpp
                 LINKS sorvanto::database_file SQLite::SQLite3)
target_compile_definitions(bench_start PRIVATE SORVANTO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                           SORVANTO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
add_dependencies(bench_start bench_empty_window bench_text_window sorvanto)
