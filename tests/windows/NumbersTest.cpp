// Numbers against the system's own conversions, under the settings that the environment chose (LC_ALL).

#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/NumberText.h"

#include "platform/SystemFacts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/NumberFormat.h"
#include "tests/support/ContractWorld.h"
#include "tests/support/NumberPicture.h"

#include <cmath>

#include <windows.h>

#include <oleauto.h>

namespace tarv {
namespace {

using RegionalNumbers = Contract;

std::wstring systemFormatted(double number, const wchar_t* pictureText) {
    VARIANT value{};
    value.vt = VT_R8;
    value.dblVal = number;
    BSTR text = nullptr;
    VarFormat(&value, const_cast<wchar_t*>(pictureText), 0, 0, 0, &text);
    std::wstring result(text ? text : L"");
    SysFreeString(text);
    if (result.find_first_of(L"123456789") == result.npos && result.starts_with(L'-'))
        result.erase(0, 1); // the system keeps the sign of what it rounds to zero
    return result;
}

TEST_F(RegionalNumbers, PicturesEqualThoseOfTheSystem) {
    Runtime rt{border};
    const wchar_t decimal = numberFormat(rt).decimal;
    // Wine loses the 1 that a fraction rounds up to when the picture has no "0" and no point: only whole
    // numbers.
    const wchar_t* const whole = L"####################";
    // Below 0.0001 it writes an exponent and reads its point as a German thousands separator; of those only
    // 1e-10 and 1e-25 come out right.
    std::vector<double> numbers{-0.0, 0.125, 0.99,  0.995, 1.005, 99999.995,  0.9995, 1e-10,
                                1e15, 1e18,  -1e25, 0.001, 1e-25, 1234567.89, 0.0049, 0.00499};
    for (int i = 0; i < 3'000; ++i) // halves at every place
        numbers.push_back((200'000 + i * 77'777.0) * 5 / std::pow(-10, i % 10));
    for (const double number : numbers)
        for (const wchar_t* picture : {L"#.0", L"#####.00", L"#####.00#", L"#.##", whole,
                                       L"####################0.0", L"####################0.00000000"})
            if (picture != whole || std::fabs(number) >= 1) {
                TextBuffer text;
                appendFormatted(text, number, numberPicture(picture), decimal);
                ASSERT_EQ(text.view(), systemFormatted(number, picture)) << number << L" " << picture;
            }
}

} // namespace
} // namespace tarv
