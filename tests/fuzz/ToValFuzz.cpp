// ToVal gives a number for any text, stop character and separators.
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Runtime.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    static FakePlatform fake;
    static Runtime rt{fake.border};
    constexpr std::wstring_view separators = L",.\u2019\u00A0 '5-";
    FuzzInput input(bytes, size);
    const std::uint8_t choice = input.byte();
    fake.facts.setSeparators(separators.substr(choice % 8, 1),
                             separators.substr(choice / 8 % 8, choice / 64 % 2));
    rt.developerMode = choice >= 128;
    fake.desktop.boxes.clear();
    const std::wstring stop(1, static_cast<wchar_t>(input.byte()));
    const std::wstring text = input.text();
    require(std::isfinite(ToVal(rt, text)));
    require(std::isfinite(ToVal(rt, text, stop)));
    require(rt.developerMode == true || fake.desktop.boxes.empty());
    return 0;
}
