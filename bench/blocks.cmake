# How long the interface stands still in each action over a file of 32,000 rows.
sorvanto_bench(bench_blocks SOURCES ${CMAKE_CURRENT_LIST_DIR}/blocks_bench.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/blocks.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/blocks_windows.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/blocks_rest.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/whole_program.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/program_folder.cpp
               LINKS sorvanto::core sorvanto::database_file SQLite::SQLite3 Qt6::Test)
target_compile_definitions(bench_blocks PRIVATE SORVANTO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                           SORVANTO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
