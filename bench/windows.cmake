# Benchmarks beside what Windows itself offers. Times are only steady on one CPU:
#   cmake --preset x64 -DTARVENIK_BENCH=ON && cmake --build --preset x64 --target bench_toval
#   taskset -c 0 tools/with-wine x64 tools/wine x64 build/x64/bench/bench_toval.exe
add_executable(bench_toval ToValBench.cpp)
target_link_libraries(bench_toval PRIVATE tarv_runtime tarv_platform_windows oleaut32)
