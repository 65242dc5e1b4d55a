// Any routines one after the other in one process, while functions of the border fail and recover: each comes
// to its end, by an answer or by the documented error, and leaves nothing open.
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/Routines.h"

#include <gtest/gtest.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    testing::FLAGS_gtest_throw_on_failure = true; // what a fake notices ends the program, too
    Workstation w;
    FuzzInput input(bytes, std::min<std::size_t>(size, 100));
    while (!input.rest.empty()) {
        const std::uint8_t choice = input.byte();
        // Of the functions met so far, one that fails for a while.
        if (const auto known = w.fake.faults.plans.size(); choice >= 128 && known > 0) {
            const std::string function = std::next(w.fake.faults.plans.begin(), choice % known)->first;
            const auto codes = failuresOf(function);
            const int first = 1 + input.byte() % 4;
            w.fake.faults.fail(function, codes[input.byte() % codes.size()], first, first + input.byte() % 8);
        }
        w.fake.faults.stepsLeft = 50'000;
        try {
            allRoutines[choice % std::size(allRoutines)].run(w);
        } catch (const RuntimeError&) {
        }
        require(w.fake.processes.open.empty());
    }
    return 0;
}
