# Benchmarks of pure code on this machine, beside other libraries.
find_package(benchmark REQUIRED)
find_package(OpenSSL REQUIRED)
find_library(MODP_B64 modpbase64)

add_executable(bench_base64 Base64Bench.cpp)
target_link_libraries(bench_base64 PRIVATE tarv_runtime benchmark::benchmark OpenSSL::Crypto)
if(MODP_B64)
    target_link_libraries(bench_base64 PRIVATE ${MODP_B64})
    target_compile_definitions(bench_base64 PRIVATE HAS_MODP_B64)
endif()
