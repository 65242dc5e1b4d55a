# Run by ctest before the tests: one entry per suite of a test program. Each start under Wine costs about half a
# second, more than most tests. Expects RUNNER (with its arguments), PROGRAM, PREFIX, FILTER, PROPERTIES.
execute_process(
    COMMAND ${RUNNER} ${PROGRAM} --gtest_list_tests --gtest_filter=${FILTER}
    OUTPUT_VARIABLE listed
    RESULT_VARIABLE result
    TIMEOUT 120
)
string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\.[\r\n]" suites "${listed}")
if(NOT result EQUAL 0 OR NOT suites)
    add_test("${PREFIX}lists_its_tests" ${PROGRAM}_does_not)
endif()
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "[\r\n]" "" suite "${suite}")
    add_test("${PREFIX}${suite}*" ${RUNNER} ${PROGRAM} "--gtest_filter=${suite}*")
    set_tests_properties("${PREFIX}${suite}*" PROPERTIES ${PROPERTIES})
endforeach()
