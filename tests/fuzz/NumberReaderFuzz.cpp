// The number reader gives a number or overflow, and what it gives survives its own text.
#include "runtime/Funktionen32/NumberText.h"

#include "runtime/Funktionen32/Errors.h"
#include "tests/fuzz/FuzzInput.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    try {
        const double number = readNumber(FuzzInput(bytes, size).text());
        require(std::isfinite(number));
        const std::wstring text = numberText(number, L".");
        // Every number of 15 digits has a double of its own, but for the largest and the subnormal ones.
        if (number == 0 || (std::fabs(number) > 1E-290 && std::fabs(number) < 1E308))
            require(numberText(readNumber(text), L".") == text);
    } catch (const RuntimeError& error) {
        require(error.record().number == error_number::overflow);
    }
    return 0;
}
