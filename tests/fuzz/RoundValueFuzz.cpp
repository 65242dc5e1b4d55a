// RoundValue gives a number or its input, and is symmetric about zero.
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Runtime.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    static FakePlatform fake;
    static Runtime rt{fake.border};
    FuzzInput input(bytes, size);
    const auto decimals = static_cast<std::int16_t>(input.byte() * 2 - 8);
    bool flag = false;
    bool otherFlag = true;

    const double number = input.number();
    Value value = number;
    Value negative = -number;
    const Value result = RoundValue(rt, value, decimals, flag);
    const Value mirrored = RoundValue(rt, negative, decimals, flag);
    if (const double* rounded = std::get_if<double>(&result); rounded && std::isfinite(number))
        require(std::isfinite(*rounded) && std::get<double>(mirrored) == -*rounded);
    RoundValue(rt, value, 2, otherFlag);

    Value text = input.text();
    const Value read = RoundValue(rt, text, decimals, otherFlag);
    require(!std::holds_alternative<std::wstring>(read) || read == text);
    return 0;
}
