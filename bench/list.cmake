# The record list beside the log, over as many batches as there can be: reading, a key in the filter, a range, sorting.
sorvanto_bench(bench_list SOURCES ${CMAKE_CURRENT_LIST_DIR}/list_bench.cpp
               LINKS sorvanto::screens sorvanto::database_file)
