// Numbers against the system's own conversions, under the settings that the environment chose (LC_ALL).

#include "runtime/Runtime.h"
#include "runtime/detail/NumberFormat.h"
#include "tests/support/ContractWorld.h"
#include "tests/support/NumberPicture.h"
#include "win/Variant.h"

#include <cmath>

namespace tarv {
namespace {

using RegionalNumbers = Contract;

TEST_F(RegionalNumbers, PicturesEqualThoseOfTheSystem) {
    Runtime rt{border};
    const wchar_t decimal = numberFormat(rt).decimal;
    Variant number;
    number.raw().vt = VT_R8;
    // Left out is what Wine gets wrong: pictures without "0" and point, and numbers below 0.0001.
    for (int i = 0; i < 3'000; ++i) // halves at every place
        for (const wchar_t* picture :
             {L"#.0", L"#####.00", L"#####.00#", L"#.##", L"####################0.00000000"}) {
            number.raw().dblVal = (200'000 + i * 77'777.0) * 5 / std::pow(-10, i % 8);
            TextBuffer text;
            appendFormatted(text, number.raw().dblVal, numberPicture(picture), decimal);
            Bstr expected;
            VarFormat(&number.raw(), const_cast<wchar_t*>(picture), 0, 0, 0, expected.receive());
            ASSERT_EQ(text.view(), expected.text()) << number.raw().dblVal << L" " << picture;
        }
}

} // namespace
} // namespace tarv
