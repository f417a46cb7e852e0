# Serial round trip and decoding of frames.
sorvanto_bench(bench_mixer SOURCES mixer_link.cpp LINKS sorvanto::mixer sorvanto::mixersim_parts)
target_compile_definitions(bench_mixer PRIVATE SORVANTO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
add_dependencies(bench_mixer sorvanto-mixersim)
