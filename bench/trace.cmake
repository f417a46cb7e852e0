# Where a lot went: finding and following it, beside the bare statement of the engine.
sorvanto_bench(bench_trace SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/trace_bench.cpp LINKS sorvanto::trace sorvanto::db)
