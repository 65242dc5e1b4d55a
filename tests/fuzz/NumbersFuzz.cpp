// Any text, number, stop character and separators: the readers give a finite number or refuse, what is read
// survives its own text, and rounding under German settings is symmetric about zero.
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Numbers.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    static World w, german;
    constexpr std::wstring_view separators = L",.\u2019\u00A0 '5-";
    FuzzInput input(bytes, size);
    const std::uint8_t choice = input.byte(), second = input.byte();
    const double number = input.number();
    const std::wstring text = input.text(), stop(1, static_cast<wchar_t>(second));
    w.fake.facts.decimal = separators.substr(choice % 8, 1);
    w.fake.facts.thousands = separators.substr(choice / 8 % 8, choice / 64 % 2);
    w.rt.developerMode = choice >= 128;
    w.fake.desktop.boxes.clear();
    require(std::isfinite(ToVal(w.rt, text)) && std::isfinite(ToVal(w.rt, text, stop)));
    require(choice >= 128 || w.fake.desktop.boxes.empty());

    Value value = number, negative = -number, asText = text;
    bool flag = false, thirdDecimal = true;
    const auto decimals = static_cast<std::int16_t>(second * 2 - 8);
    const Value result = RoundValue(german.rt, value, decimals, flag);
    const Value mirrored = RoundValue(german.rt, negative, decimals, flag);
    if (const double* rounded = std::get_if<double>(&result); rounded && std::isfinite(number))
        require(std::isfinite(*rounded) && std::get<double>(mirrored) == -*rounded);
    RoundValue(german.rt, value, 2, thirdDecimal);
    const Value read = RoundValue(german.rt, asText, decimals, thirdDecimal);
    require(!std::holds_alternative<std::wstring>(read) || read == asText);

    try {
        const double plain = readNumber(text);
        require(std::isfinite(plain));
        const std::wstring own = numberText(plain, L".");
        // Every number of 15 digits has a double of its own, but for the largest and the subnormal ones.
        if (plain == 0 || (std::fabs(plain) > 1E-290 && std::fabs(plain) < 1E308))
            require(numberText(readNumber(own), L".") == own);
    } catch (const RuntimeError& error) {
        require(error.record().number == error_number::overflow);
    }
    return 0;
}
