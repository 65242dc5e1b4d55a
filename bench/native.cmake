# Benchmarks of pure code on this machine, beside other libraries.
find_package(OpenSSL REQUIRED)

add_executable(bench_base64 Base64Bench.cpp)
target_link_libraries(bench_base64 PRIVATE tarv_runtime tarv_scripted OpenSSL::Crypto)
