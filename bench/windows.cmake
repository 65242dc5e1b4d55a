# Benchmarks beside what Windows itself offers. Times are only steady on one CPU:
#   cmake --preset x64 -DTARVENIK_BENCH=ON && cmake --build --preset x64 --target bench_toval
#   taskset -c 0 tools/with-wine x64 tools/wine x64 build/x64/bench/bench_toval.exe
add_executable(bench_toval ToValBench.cpp)
target_link_libraries(bench_toval PRIVATE tarv_runtime tarv_platform_windows oleaut32)
# The program's start beside a bare window, and the stages of the info centre's load.
add_executable(bare_window WIN32 BareWindow.cpp BareWindow.rc)
target_link_libraries(bare_window PRIVATE tarv_options)
target_link_options(bare_window PRIVATE -municode)

add_executable(bench_start StartBench.cpp)
target_link_libraries(bench_start PRIVATE tarv_options psapi)
target_link_options(bench_start PRIVATE -municode)
add_dependencies(bench_start bare_window TarvService)

add_executable(bench_infocentre InfoCentreBench.cpp)
target_link_libraries(bench_infocentre PRIVATE tarv_infocenter_model tarv_platform_windows ole32)

# The XML wrapper beside bare calls of the system's component.
add_executable(xml_bench XmlBench.cpp)
target_link_libraries(xml_bench PRIVATE tarv_xml tarv_platform_windows ole32 oleaut32 uuid)
