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

struct Reading {
    std::wstring_view text;
    double number;
};

TEST(NumberReader, ReadsWhatStandsAtTheStart) {
    for (const Reading& c : {
             Reading{L"", 0},
             {L"12.5", 12.5},
             {L"  12 34 . 5 6 kg", 1234.56},
             {L"- 7", -7},
             {L"+.5", 0.5},
             {L"5.", 5},
             {L".", 0},
             {L"-", 0},
             {L"--5", 0},
             {L"+-5", 0},
             {L"abc", 0},
             {L"1,5", 1},
             {L"1.2.3", 1.2},
             {L"1\t2", 1},
             {L"1\u00A02", 1},
             {std::wstring_view(L"1\0002", 3), 1},
             {L"1.5E3", 1500},
             {L"1.5e-3", 0.0015},
             {L"1 E + 2", 100},
             {L"1E", 1},
             {L"2E+", 2},
             {L"3E+-4", 3},
             {L"E5", 0},
             {L".E5", 0},
             {L"1D3", 1},
             {L"&H1F", 0},
             {L"0E999999999999999999999", 0},
             {L"1E-999999999999999999999", 0},
         })
        EXPECT_EQ(readNumber(c.text), c.number) << std::string(c.text.begin(), c.text.end());
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
    struct Case {
        double number;
        const wchar_t* text;
    };
    for (const Case& c : {
             Case{0, L"0"},
             {-0.0, L"0"},
             {0.1, L"0,1"},
             {-12.5, L"-12,5"},
             {0.1 + 0.2, L"0,3"},
             {1234567.0, L"1234567"},
             {100000000000000.5, L"100000000000001"},
             {-100000000000002.5, L"-100000000000003"},
             {0.999999999999999944, L"1"},
             {999999999999999.5, L"1000000000000000"},
             {123456789012345678.0, L"123456789012346000"},
             {9007199254740993.0, L"9007199254740990"},
             {1e22, L"10000000000000000000000"},
             {1.5e-10, L"0,00000000015"},
         })
        EXPECT_EQ(numberText(c.number, L","), c.text) << c.number;
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
    EXPECT_EQ(invariantText(Value(1.5)), L"1.5");
    EXPECT_EQ(invariantText(Value(std::int16_t{-7})), L"-7");
    EXPECT_EQ(invariantText(Value(std::int32_t{2147483647})), L"2147483647");
    EXPECT_EQ(invariantText(Value(true)), L"-1");
    EXPECT_EQ(invariantText(Value(false)), L"0");
    EXPECT_EQ(invariantText(Value(Date{45000.25})), L"45000.25");
    EXPECT_EQ(invariantText(Value(std::wstring(L"1,5 "))), L"1,5 ");
    EXPECT_EQ(invariantText(Value(Null{})), L"");
    EXPECT_EQ(invariantText(Value()), L"");
}

} // namespace
} // namespace tarv
