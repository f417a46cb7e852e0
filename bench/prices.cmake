# A supplier's list of 10,000 rows: read, weighed against 10,000 chemicals, and taken.
sorvanto_bench(bench_prices SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/prices_bench.cpp LINKS sorvanto::prices sorvanto::db)
