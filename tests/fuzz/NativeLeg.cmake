# Within the native leg: where clang has libFuzzer, its build of the fuzz programs and a short run of each.
find_program(TARVENIK_CLANG NAMES clang++)
if(TARVENIK_CLANG AND NOT DEFINED TARVENIK_HAVE_FUZZER)
    set(probe ${CMAKE_CURRENT_BINARY_DIR}/fuzzer-probe)
    file(WRITE ${probe}.cpp "extern \"C\" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }\n")
    execute_process(
        COMMAND ${TARVENIK_CLANG} -fsanitize=fuzzer,address,undefined ${probe}.cpp -o ${probe}
        RESULT_VARIABLE failed
        OUTPUT_QUIET ERROR_QUIET
    )
    if(failed EQUAL 0)
        set(TARVENIK_HAVE_FUZZER TRUE CACHE INTERNAL "clang with libFuzzer")
    endif()
endif()
if(NOT TARVENIK_HAVE_FUZZER)
    message(STATUS "No clang with libFuzzer: the fuzz programs are left out")
    return()
endif()

set(folder ${PROJECT_BINARY_DIR}/fuzz)
set(launcher)
if(CMAKE_CXX_COMPILER_LAUNCHER)
    set(launcher -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER})
endif()
# A run keeps the inputs that it learns from in the first folder it is given, and begins with those of the second:
# what earlier runs have learned, from the archives, and the named cases.
set(found ${folder}/found)
set(corpus ${folder}/corpus)
file(GLOB archives CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/corpus/*.tar.xz)
set(unpack)
foreach(archive IN LISTS archives)
    list(APPEND unpack COMMAND ${CMAKE_COMMAND} -E chdir ${corpus} ${CMAKE_COMMAND} -E tar xf ${archive})
endforeach()
# Each with the number of inputs that a run of the native leg tries.
set(programs configuration:5000 numbers:20000 paths:5000 sequence:1000)
set(found_folders ${programs})
list(TRANSFORM found_folders REPLACE ":.*" "")
list(TRANSFORM found_folders PREPEND ${found}/)
add_custom_target(
    tarv_fuzz ALL
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${found} ${corpus}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${found_folders} ${corpus}
    ${unpack}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_CURRENT_LIST_DIR}/corpus ${corpus}
    COMMAND
        ${CMAKE_COMMAND} -S ${PROJECT_SOURCE_DIR} -B ${folder} -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
        -DCMAKE_CXX_COMPILER=${TARVENIK_CLANG} -DTARVENIK_FUZZ=ON -DTARVENIK_SANITIZE=ON -DBUILD_TESTING=OFF ${launcher} --log-level=ERROR
    COMMAND ${CMAKE_COMMAND} --build ${folder} -- --quiet
    USES_TERMINAL VERBATIM
    COMMENT "Fuzz programs"
)

foreach(program IN LISTS programs)
    string(REPLACE ":" ";" program ${program})
    list(GET program 0 name)
    list(GET program 1 runs)
    add_test(
        NAME Fuzz.${name}
        COMMAND ${folder}/tests/fuzz/fuzz_${name} -runs=${runs} -timeout=60 ${found}/${name} ${corpus}/${name}
        WORKING_DIRECTORY ${folder}
    )
    set_tests_properties(Fuzz.${name} PROPERTIES TIMEOUT 120 PASS_REGULAR_EXPRESSION "Done [0-9]+ runs" FAIL_REGULAR_EXPRESSION "ERROR:")
endforeach()
