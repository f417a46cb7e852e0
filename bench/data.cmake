# The data layer beside the bare engine.
sorvanto_bench(bench_data SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/data_bench.cpp
               LINKS sorvanto::platform_data sorvanto::database_file)
