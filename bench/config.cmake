sorvanto_bench(bench_config SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/config_translate.cpp LINKS sorvanto::config)
