# Opening, scaling, logging and searching records, beside the bare statement of the engine.
sorvanto_bench(bench_records SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/records_bench.cpp
                                     ${CMAKE_CURRENT_SOURCE_DIR}/records_data.cpp
               LINKS sorvanto::records)
target_compile_definitions(bench_records PRIVATE SORVANTO_SCHEMA="${CMAKE_SOURCE_DIR}/data/schema.sql")
