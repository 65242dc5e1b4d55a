# Benchmarks beside what Windows itself offers. tools/bench builds and runs them all.

add_executable(bench_base64 Base64Bench.cpp)
target_link_libraries(bench_base64 PRIVATE tarv_runtime tarv_scripted crypt32)

add_executable(bench_numbers NumbersBench.cpp)
target_link_libraries(bench_numbers PRIVATE tarv_runtime tarv_platform_windows oleaut32)

add_executable(bench_empty EmptyProgram.cpp)
add_executable(bench_border BorderBench.cpp)
target_link_libraries(bench_border PRIVATE tarv_runtime tarv_platform_windows)
target_link_options(bench_border PRIVATE -municode)
add_dependencies(bench_border bench_empty)

add_executable(bench_files FilesBench.cpp)
target_link_libraries(bench_files PRIVATE tarv_xml tarv_platform_windows ole32 shell32)

# The program's start beside a bare window, and the stages of the info centre's load.
add_executable(bare_window WIN32 BareWindow.cpp BareWindow.rc)
target_link_options(bare_window PRIVATE -municode)

add_executable(bench_start StartBench.cpp)
target_link_libraries(bench_start PRIVATE psapi)
target_link_options(bench_start PRIVATE -municode)
add_dependencies(bench_start bare_window TarvService)

# The same start, stage by stage, with the program's own pictures and manifest.
add_executable(start_stages StartStages.cpp ${PROJECT_SOURCE_DIR}/app/TarvService.rc)
target_link_libraries(start_stages PRIVATE tarv_shell tarv_platform_windows ole32)

# The console companion from start to end beside a program that asks Windows for the same.
add_executable(bare_report BareReport.cpp)
target_link_libraries(bare_report PRIVATE tarv_win)
add_executable(bench_report ReportBench.cpp)
target_link_options(bench_report PRIVATE -municode)
add_dependencies(bench_report bare_report TarvReport)

# Its manifest asks for the common controls that the program shows.
add_executable(bench_infocentre InfoCentreBench.cpp BareWindow.rc)
target_link_libraries(bench_infocentre PRIVATE tarv_infocenter tarv_platform_windows ole32)

# The XML wrapper beside bare calls of the system's component.
add_executable(bench_xml XmlBench.cpp)
target_link_libraries(bench_xml PRIVATE tarv_xml tarv_platform_windows ole32 oleaut32 uuid)
