# The screens of the whole window over a file of 30,000 rows, each action up to its picture.
sorvanto_bench(bench_screens SOURCES ${CMAKE_CURRENT_LIST_DIR}/screens_bench.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/whole_program.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/program_folder.cpp
               LINKS sorvanto::core sorvanto::database_file SQLite::SQLite3)
target_compile_definitions(bench_screens PRIVATE SORVANTO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                           SORVANTO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
