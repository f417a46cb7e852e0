# What the history of changes costs beside a file without it.
sorvanto_bench(bench_history SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/history_bench.cpp
               LINKS sorvanto::history sorvanto::database_file)
