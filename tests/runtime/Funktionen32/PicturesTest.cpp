#include "runtime/Funktionen32/Pictures.h"

#include "runtime/Runtime.h"
#include "runtime/RuntimeError.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/RandomStart.h"

#include <cmath>

#include <gtest/gtest.h>

namespace tarv {
namespace {

constexpr NumberFormat german{L',', L'.'};

std::wstring formatted(double number, std::wstring_view pictureText, const NumberFormat& format = german) {
    TextBuffer text;
    appendFormatted(text, number, picture(pictureText), format);
    return std::wstring(text.view());
}

TEST(Pictures, ShowDigitsAsThePictureAsksForThem) {
    const auto shown = [](std::wstring_view pictureText, std::initializer_list<double> numbers) {
        std::wstring all;
        for (const double number : numbers)
            all += formatted(number, pictureText) + L'|';
        return all;
    };
    const std::wstring twenty(20, L'#');
    EXPECT_EQ(shown(L"#.0", {0.1, 1e-300, 123456789012345678.0}), L",1|,0|123456789012346000,0|");
    EXPECT_EQ(shown(L"#0,000.0", {-2000, 12, 1234567.89}), L"-2.000,0|0.012,0|1.234.567,9|");
    EXPECT_EQ(shown(L"#####.00", {1234.5, 1234567, 1.005}), L"1234,50|1234567,00|1,01|");
    EXPECT_EQ(shown(L"#####.00#", {1.005, 1.5, 0.125, -0.125}), L"1,005|1,50|,125|-,125|");
    EXPECT_EQ(shown(L"#.##", {0.99, 0.01, 2, 0.125, -0.125}), L",99|,01|2,|,13|-,13|");
    EXPECT_EQ(shown(twenty, {0, 0.4, 0.5, 0.49999999999999994, 1e20}), L"||1|1|100000000000000000000|");
    EXPECT_EQ(shown(twenty + L"0.00", {0.5, 999.995, -0.004, -0.0}), L"0,50|1000,00|0,00|0,00|");
    EXPECT_EQ(formatted(-2000, L"#0,000.0", {L'.', L'\0'}), L"-2000.0");
    EXPECT_EQ(formatted(0.25, L"0." + std::wstring(300, L'0')), L"0,25" + std::wstring(298, L'0'));
    EXPECT_THROW(formatted(INFINITY, L"0"), RuntimeError);
}

TEST(Pictures, SettingsAreReadAtEveryUseAndReducedToOneCharacter) {
    FakePlatform fake;
    Runtime rt{fake.border};
    EXPECT_EQ(numberFormat(rt).decimal, L',');
    fake.regional.set(L"::", L"'' ");
    EXPECT_EQ(numberFormat(rt).decimal, L':');
    EXPECT_EQ(numberFormat(rt).thousands, L'\'');
    fake.faults.fail("RegionalSettings.decimalSeparator", 5);
    fake.faults.fail("RegionalSettings.thousandsSeparator", 5);
    EXPECT_EQ(numberFormat(rt).decimal, L'.');
    EXPECT_EQ(numberFormat(rt).thousands, L'\0');
}

/// `units` shown with `places` decimals and thousands separators, worked out in whole numbers.
std::wstring shown(std::int64_t units, int places, bool grouped) {
    std::wstring digits = std::to_wstring(std::abs(units));
    const auto behind = static_cast<std::size_t>(places);
    if (const std::size_t least = behind + (grouped ? 4 : 0); digits.size() < least)
        digits.insert(0, least - digits.size(), L'0');
    std::size_t at = digits.size() - behind;
    digits.insert(at, L",");
    for (; grouped && at > 3; at -= 3)
        digits.insert(at - 3, L".");
    return (units < 0 ? L"-" : L"") + digits;
}

TEST(Pictures, AgreeWithWholeNumberArithmetic) {
    RandomStart random;
    for (int i = 0; i < 5'000; ++i) {
        const std::int64_t limit = i % 2 == 0 ? 100'000 : 900'000'000'000;
        const std::int64_t thousandths = random.between(-limit, limit);
        const auto number = static_cast<double>(thousandths) / 1000;
        const std::int64_t sign = thousandths < 0 ? -1 : 1;
        const std::int64_t cents = (thousandths + sign * 5) / 10;
        const std::int64_t tenths = (thousandths + sign * 50) / 100;
        ASSERT_EQ(formatted(number, L"#####.00"), shown(cents, 2, false)) << number;
        ASSERT_EQ(formatted(number, L"#0,000.0"), shown(tenths, 1, true)) << number;
        const bool third = thousandths % 10 != 0;
        ASSERT_EQ(formatted(number, L"#####.00#"),
                  third ? shown(thousandths, 3, false) : shown(cents, 2, false))
            << number;
    }
}

} // namespace
} // namespace tarv
