#include "runtime/Funktionen32/NumberReader.h"

#include "runtime/Funktionen32/NumberText.h"
#include "runtime/RuntimeError.h"
#include "tests/support/RandomStart.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

namespace tarv {
namespace {

TEST(NumberReader, ReadsWhatStandsAtTheStart) {
    const auto reads = [](std::initializer_list<std::wstring_view> texts, double number) {
        for (const std::wstring_view text : texts)
            EXPECT_EQ(readNumber(text), number) << testing::PrintToString(text);
    };
    reads({L"", L".", L"-", L"--5", L"+-5", L"abc", L"E5", L".E5", L"&H1F", L"1E-999999999999999999999"}, 0);
    reads({L"0E999999999999999999999"}, 0);
    reads({L"12.5", L"+12.50", L"012.5", L"1 2 . 5", L"12.5.7", L"12.5,7", L"12.5 kg"}, 12.5);
    reads({L"1,5", L"1\t2", L"1\u00A02", std::wstring_view(L"1\0002", 3), L"1E", L"1E+", L"1E+-4", L"1D3"},
          1);
    reads({L"- 7", L"-7."}, -7);
    reads({L".5"}, 0.5);
    reads({L"1.5E3", L"1.5e+3", L"1.5 E 3", L"15000E-1"}, 1500);
}

TEST(NumberReader, OverflowIsAnErrorNeverInfinity) {
    EXPECT_EQ(readNumber(L"1.7976931348623158E308"), std::numeric_limits<double>::max());
    for (const wchar_t* text : {L"1.7976931348623159E308", L"-1E309", L"1E99999999999999999999"}) {
        try {
            readNumber(text);
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.record().number, error_number::overflow);
        }
    }
    EXPECT_THROW(readNumber(std::wstring(1'000'000, L'9')), RuntimeError);
}

TEST(NumberReader, RoundsToTheNearestDoubleHoweverLongTheText) {
    const std::wstring zeros(1'000'000, L'0');
    EXPECT_EQ(readNumber(L"0." + zeros + L"1E1000001"), 1);
    EXPECT_EQ(readNumber(L"1" + zeros + L"E-1000000"), 1);
    // Half-way between two doubles: to even, but one digit far behind decides otherwise.
    EXPECT_EQ(readNumber(L"9007199254740993"), 9007199254740992.0);
    EXPECT_EQ(readNumber(L"9007199254740993." + zeros + L"1"), 9007199254740994.0);
    EXPECT_EQ(readNumber(L"2.4703282292062327E-324"), 0);
    EXPECT_EQ(readNumber(L"2.4703282292062328E-324"), 4.9406564584124654E-324);
    EXPECT_EQ(readNumber(L"2.2250738585072011E-308"), 0x0.fffffffffffffp-1022);
}

/// A number of any magnitude.
double anyDouble(RandomStart& random) {
    for (;;) {
        if (const double number = std::bit_cast<double>(random.bits()); std::isfinite(number))
            return number;
    }
}

TEST(NumberReader, AgreesWithTheCompilersLibraryOnRandomNumbers) {
    RandomStart random;
    for (int i = 0; i < 5'000; ++i) {
        const double number = anyDouble(random);
        char text[64];
        const int digits = i % 22;
        std::snprintf(text, sizeof text, "%.*e", digits, number);
        const double expected = std::strtod(text, nullptr);
        if (std::isfinite(expected)) {
            ASSERT_EQ(std::bit_cast<std::uint64_t>(readNumber(std::wstring(text, text + std::strlen(text)))),
                      std::bit_cast<std::uint64_t>(expected))
                << text;
        }
    }
}

TEST(NumberText, FifteenDigitsHalfAwayFromZeroWithoutExponent) {
    std::wstring all;
    for (const double number : {0.0, -0.0, 0.1, -12.5, 0.1 + 0.2, 100000000000000.5, -100000000000002.5,
                                0.999999999999999944, 999999999999999.5, 123456789012345678.0, 1e22, 1.5e-10})
        all += numberText(number, L",") + L'|';
    EXPECT_EQ(all, L"0|0|0,1|-12,5|0,3|100000000000001|-100000000000003|1|1000000000000000|"
                   L"123456789012346000|10000000000000000000000|0,00000000015|");
    EXPECT_EQ(numberText(1e300, L"."), L"1" + std::wstring(300, L'0'));
    EXPECT_EQ(numberText(5e-324, L".").substr(320), L"00000494065645841247");
    EXPECT_EQ(numberText(2.5, L"--"), L"2--5");
    EXPECT_THROW(numberText(std::numeric_limits<double>::infinity(), L"."), RuntimeError);
}

TEST(NumberText, ReadsBackWithinItsFifteenDigits) {
    RandomStart random;
    for (int i = 0; i < 5'000; ++i) {
        const double number = anyDouble(random);
        // Cut behind the 15th digit by hand: the C library rounds ties to even.
        char exact[80];
        std::snprintf(exact, sizeof exact, "%+.60e", number);
        const std::string digits = exact[1] + std::string(exact + 3, 14);
        const long long kept = std::stoll(digits) + (exact[17] >= '5' ? 1 : 0);
        const int exponent = std::atoi(std::strchr(exact, 'e') + 1) - 14;
        const std::string rounded = exact[0] + std::to_string(kept) + "e" + std::to_string(exponent);
        const double expected = std::strtod(rounded.c_str(), nullptr);
        if (std::isfinite(expected)) {
            ASSERT_EQ(readNumber(numberText(number, L".")), expected) << rounded;
        }
    }
}

TEST(NumberText, ConfigurationTextIsFreeOfRegionalSettings) {
    std::wstring all;
    for (const Value& value :
         {Value(1.5), Value(std::int16_t{-7}), Value(std::int32_t{2147483647}), Value(true), Value(false),
          Value(Date{45000.25}), Value(std::wstring(L"1,5 ")), Value(Null{})})
        all += invariantText(value) + L'|';
    EXPECT_EQ(all, L"1.5|-7|2147483647|-1|0|45000.25|1,5 ||");
}

} // namespace
} // namespace tarv
