#include "runtime/Funktionen32/Numbers.h"

#include "runtime/Funktionen32/ErrorDisplay.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Pictures.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/RandomStart.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cwchar>
#include <limits>

#include <gtest/gtest.h>

namespace tarv {
namespace {

/// Decimal and thousands separator.
using Settings = std::pair<std::wstring_view, std::wstring_view>;
constexpr Settings german{L",", L"."};
constexpr Settings english{L".", L","};
constexpr Settings swiss{L".", L"\u2019"};
constexpr Settings french{L",", L"\u00A0"}; // Austrian as well
constexpr Settings spaced{L",", L" "};
constexpr Settings noThousands{L",", L""};
constexpr Settings bothCommas{L",", L","};
constexpr Settings bothPoints{L".", L"."};
constexpr Settings digitThousands{L",", L"5"};
constexpr Settings apostropheDecimal{L"'", L","};
constexpr Settings nothing{L"", L""};

struct Numbers : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    void use(const Settings& settings) { fake.regional.set(settings.first, settings.second); }

    /// Checks ToVal for a table "text=number|text=number ...".
    void reads(const Settings& settings, std::wstring_view table) {
        use(settings);
        while (!table.empty()) {
            const std::wstring entry(table.substr(0, table.find(L'|')));
            table.remove_prefix(std::min(entry.size() + 1, table.size()));
            const auto equals = entry.find(L'=');
            const std::wstring text = entry.substr(0, equals);
            EXPECT_EQ(ToVal(rt, text), std::wcstod(&entry[equals + 1], nullptr))
                << testing::PrintToString(entry) << " under " << testing::PrintToString(settings);
        }
    }

    Value rounded(Value value, std::int16_t decimals, bool flag = false) {
        return RoundValue(rt, value, decimals, flag);
    }
};

TEST_F(Numbers, ToValReadsTextsOfBothConventionsUnderAnySettings) {
    reads(german, L"=0|1.234,56=1234.56|1,234.56=1234.56|1.234.567,89=1234567.89|1,234,567.8=1234567.8");
    reads(german, L"12,5=12.5|-12,5=-12.5|1.234=1.234|1.2.3=12.3|1.234.567=1234.567|1,2,3=12.3");
    reads(german, L"12,5 kg=12.5|1 234,5=1234.5|\u20AC 5=0|--5=0");
    reads(english, L"1,234.56=1234.56|1.234,56=1234|12,5=12.5|1,234=1.234");
    reads(swiss, L"1\u2019234.50=1234.5|1\u2019234=1|1'234=1|1.234,5=1234.5");
    reads(french, L"1\u00A0234,5=1234.5|1\u00A0234=1|1.234,5=1234.5");
    reads(spaced, L"1 234,5=1234.5|1 234=1234|1,5=1.5");
    reads(noThousands, L"1.234,56=1234.56|1,234.56=1234.56");
    reads(bothCommas, L"1,234.5=1234.5");
    reads(bothPoints, L"1.234,5=1234.5");
    reads(digitThousands, L"1.555,5=1555.5");
    reads(apostropheDecimal, L"1,234.5=1234.5|1,2.=12|1'5=1");
    reads(nothing, L"1,5=1.5");
    EXPECT_TRUE(fake.desktop.boxes.empty()) << "an ordinary user sees no message";
}

TEST_F(Numbers, ToValReadsScientificNotationRoundedToEightPlaces) {
    for (const Settings& settings : {german, english, swiss, french, bothPoints}) {
        reads(settings, L"1,5E3=1500|1.5e3=1500|-2,5E-3=-0.0025|1E-9=0|1,23456789876E0=1.2345679");
        reads(settings, L"1,234.5E2=1|(1+2)E5=0|1E300=1e300|1E308=1e308|1E400=0");
        // No scientific notation.
        reads(settings, L"E5=0|12E=12|5 E3=5|5E3x=5|5 Euro=5");
    }
}

TEST_F(Numbers, TheStopCharacterEndsANumberUnlessItIsScientific) {
    EXPECT_EQ(ToVal(rt, L"12;34", L";"), 12);
    EXPECT_EQ(ToVal(rt, L"12-34", L"-"), 12);
    EXPECT_EQ(ToVal(rt, L"12,34", L",3"), 12.34) << "no single character";
    EXPECT_EQ(ToVal(rt, L"1E3", L"0"), 1000);
}

TEST_F(Numbers, DevelopersAreAskedAboutTheOtherConvention) {
    rt.developerMode = true;
    ToVal(rt, L"1.234,5");
    EXPECT_TRUE(fake.desktop.boxes.empty());
    ToVal(rt, L"1,234.5 m");
    const ShownMessageBox question{L"Warum Englisch Formatiert:  1,234.5 ", L"ToVal - bistEntwicklung", 4096};
    EXPECT_EQ(fake.desktop.boxes, std::vector{question});
}

TEST_F(Numbers, ToValTakesAnyTextAndLength) {
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L'9')), 0) << "too large for a double";
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L'0') + L"1,5"), 1.5);
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L' ') + L"7"), 7);
    use(noThousands);
    EXPECT_EQ(ToVal(rt, std::wstring_view(L"1\0002", 3)), 1);
}

TEST_F(Numbers, RoundValueRoundsFromAlmostHalfAwayFromZero) {
    for (const Settings& settings : {german, english, swiss, french, noThousands, bothCommas}) {
        use(settings);
        const std::array<double, 3> amounts[] = {// value, decimals, result
                                                 {2.345, 2, 2.35},    {-2.345, 2, -2.35}, {2.3449, 2, 2.34},
                                                 {1.234995, 2, 1.24}, {1.2349, 2, 1.23},  {0.499, 0, 1}};
        for (const auto& [value, decimals, result] : amounts)
            EXPECT_EQ(rounded(value, static_cast<std::int16_t>(decimals)), Value(result)) << value;
        EXPECT_EQ(rounded(1e15, 2), Value(1e15));
        EXPECT_EQ(rounded(3.0, 100), Value(3.0));
        EXPECT_EQ(rounded(-7.5, -1), Value(-7.5));
    }
    EXPECT_EQ(rounded(0.0001, 0), Value(std::int16_t{0}));
    EXPECT_EQ(rounded(std::int16_t{-3}, 1), Value(-3.0));
    EXPECT_EQ(rounded(true, 0), Value(-1.0));
    EXPECT_EQ(rounded(Empty{}, 1), Value(0.0));
    EXPECT_EQ(rounded(Date{2.26}, 1), Value(2.3));
    // 10^n or the product exceeds a double.
    EXPECT_EQ(rounded(1e300, 20), Value(1e300));
    EXPECT_EQ(rounded(1.5, 400), Value(1.5));
}

TEST_F(Numbers, RoundValueReadsTextByTheSettings) {
    const auto readAs = [this](const wchar_t* text) { return rounded(std::wstring(text), 2); };
    EXPECT_EQ(readAs(L" 1.234,567 "), Value(1234.57));
    EXPECT_EQ(readAs(L"- 1,5E2"), Value(-150.0));
    EXPECT_EQ(readAs(L"2,5-"), Value(-2.5));
    EXPECT_EQ(readAs(L"1.23"), Value(123.0));
    for (const wchar_t* text : {L"12 kg", L"12 34", L"1,2,3", L".5", L"1E", L"1E400", L" ", L","})
        EXPECT_EQ(readAs(text), Value(std::wstring(text)));
    use(french);
    EXPECT_EQ(readAs(L"1\u00A0234,567"), Value(1234.57));
    use(bothPoints);
    EXPECT_EQ(readAs(L"1.5"), Value(1.5));
}

TEST_F(Numbers, RoundValueSnapsOnlyWithAThirdDecimal) {
    const auto snapped = [this](double number, std::int16_t decimals, double expected, bool expectedFlag) {
        for (const Settings& settings : {german, english}) {
            use(settings);
            Value value = number;
            bool flag = true;
            EXPECT_EQ(RoundValue(rt, value, decimals, flag), Value(expected)) << number;
            EXPECT_EQ(flag, expectedFlag) << number;
            EXPECT_EQ(value, Value(number)) << "the value is not written back";
        }
    };
    snapped(12.991, 2, 12.99 + 0.01, true);
    snapped(13.008, 2, 13.01 - 0.01, true);
    snapped(-12.991, 2, -12.99 + 0.01, true);
    snapped(-13.008, 2, -13.01 - 0.01, true);
    snapped(12.345, 2, 12.35, true);
    snapped(12.9911, 3, 12.991, true);
    snapped(12.99, 2, 12.99, false);
    snapped(12.5, 0, 13, false);
}

TEST_F(Numbers, RoundValueReportsItsErrorsInTheDevelopmentEnvironmentOnly) {
    const auto display = fake.automation.object(L"display");
    display->answers(L"ErrorMsg", Empty{});
    fake.automation.provide(errorDisplayProgId, display);
    Runtime developing(fake.border, true);
    const Value zero = std::int16_t{0};
    const Value text = std::wstring(L"1a");
    const std::array<Value, 2> cases[] = {
        {text, text}, {std::wstring(), zero}, {Null{}, zero}, {Missing{}, Missing{}}};
    for (const auto& [given, expected] : cases) {
        bool flag = true;
        Value value = given;
        EXPECT_EQ(RoundValue(rt, value, 2, flag), expected);
        EXPECT_EQ(value, expected);
        EXPECT_TRUE(flag && fake.automation.log.empty());
        value = given;
        RoundValue(developing, value, 2, flag);
        ASSERT_FALSE(fake.automation.log.empty());
        EXPECT_EQ(fake.automation.log.back().arguments[1],
                  Value(L"beim Runden der Zahl:" + invariantText(given)));
        fake.automation.log.clear();
    }
    const Value infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(rounded(infinite, 2), infinite);
}

TEST_F(Numbers, RoundingIsSymmetricStableAndAgreesWithWholeNumbers) {
    RandomStart random;
    for (int i = 0; i < 5'000; ++i) {
        use(i % 2 == 0 ? german : english);
        const std::int64_t units = random.between(0, i % 4 == 0 ? 100'000 : 9'000'000'000);
        const std::int64_t rest = units % 1000;
        if (rest == 499)
            continue; // on the edge the last bit of the product decides
        const auto number = static_cast<double>(units) / 100'000;
        const auto expected = static_cast<double>(units / 1000 + (rest > 499 ? 1 : 0)) / 100;
        const Value once = rounded(number, 2);
        ASSERT_EQ(once, Value(expected)) << number;
        ASSERT_EQ(rounded(-number, 2), Value(-expected)) << number;
        ASSERT_EQ(rounded(once, 2), once) << number;
    }
}

TEST_F(Numbers, FormattedAmountsReadBackUnderTheirSettings) {
    RandomStart random;
    for (int i = 0; i < 5'000; ++i) {
        for (const Settings& settings : {german, english, swiss, french, spaced}) {
            use(settings);
            const auto number =
                static_cast<double>(random.between(-1'000'000'000'000, 1'000'000'000'000)) / 1000;
            TextBuffer text;
            appendFormatted(text, number, picture(L"#0,000.000"), numberFormat(rt));
            ASSERT_EQ(ToVal(rt, text.view()), number) << testing::PrintToString(std::wstring(text.view()));
        }
    }
}

TEST_F(Numbers, EveryBuildComputesTheSameBits) {
    EXPECT_EQ(rounded(0x1.0p-1074, 5), Value(0.0));
    EXPECT_EQ(rounded(1.0 / 3, 9), Value(0x1.5555554f9b516p-2));
    EXPECT_EQ(rounded(2.0 / 3 * 1e9, 4), Value(0x1.3de435555566dp+29));
    EXPECT_EQ(rounded(1234567.8949999, 3), Value(0x1.2d687e51eb852p+20));
    EXPECT_EQ(rounded(8.0e15 + 1, 1), Value(0x1.c6bf526340000p+52));

    // And the bits of many more, as one sum that every build has to arrive at.
    std::uint64_t sum = 0;
    std::uint64_t state = 1;
    for (int i = 0; i < 10'000; ++i) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        const double number = static_cast<double>(static_cast<std::int64_t>(state >> 12)) / (1 << (i % 31));
        const auto result = std::get<double>(rounded(number, static_cast<std::int16_t>(1 + i % 9), true));
        sum = sum * 31 + std::bit_cast<std::uint64_t>(result);
    }
    EXPECT_EQ(sum, 9885588732323042531U);
}

TEST(NumberHelpers, ReplaceAllIsOnePass) {
    const auto replaced = [](std::wstring text, std::wstring_view find, std::wstring_view replacement,
                             CompareMode mode = CompareMode::binary) {
        ReplaceAll(text, find, replacement, mode);
        return text;
    };
    EXPECT_EQ(replaced(L"aaa", L"a", L"aa"), L"aaaaaa");
    EXPECT_EQ(replaced(L"aaa", L"aa", L"a"), L"aa");
    EXPECT_EQ(replaced(L"xAyax", L"a", L""), L"xAyx");
    EXPECT_EQ(replaced(L"xÄyäx", L"Ä", L"-", CompareMode::text), L"x-y-x");
    EXPECT_EQ(replaced(L"abc", L"", L"x"), L"abc");
}

TEST_F(Numbers, CountOccurrencesDoesNotOverlap) {
    const auto count = [this](Value text, std::wstring_view find) {
        return CountOccurrences(rt, text, find);
    };
    EXPECT_EQ(count(std::wstring(L"aaaa"), L"aa"), 2);
    EXPECT_EQ(count(std::wstring(L"aAa"), L"a"), 2);
    EXPECT_EQ(count(std::wstring(L"a"), L""), 0);
    EXPECT_EQ(count(Null{}, L"a"), 0);
    EXPECT_EQ(count(1.15, L","), 1);
}

TEST(NumberHelpers, FormulaTextHasOnlyCharactersOfFormulas) {
    EXPECT_TRUE(IsFormulaText(L"(1+2)*3 - 4/5,6.789"));
    for (const wchar_t* text : {L"", L"1a", L"1\t2", L"1;2"})
        EXPECT_FALSE(IsFormulaText(text));
    EXPECT_FALSE(IsFormulaText(std::wstring_view(L"1\0", 2)));
}

TEST_F(Numbers, PadLeftFillsOrCutsOnTheLeft) {
    const auto padded = [this](std::int32_t width, std::wstring_view pad, bool noPad = false) {
        return PadLeft(rt, std::wstring(L"abc"), width, pad, noPad);
    };
    EXPECT_EQ(padded(5, L"0"), L"00abc");
    EXPECT_EQ(padded(3, L"0"), L"abc");
    EXPECT_EQ(padded(2, L"0"), L"bc");
    EXPECT_EQ(padded(2, L"0", true), L"bc");
    EXPECT_EQ(padded(2, L""), L"abc");
    EXPECT_EQ(padded(5, L""), L"abc");
    EXPECT_EQ(padded(5, L"0", true), L"abc");
    EXPECT_EQ(padded(8, L"xy"), L"yxyxyabc");
    EXPECT_EQ(padded(0, L"0"), L"");
    EXPECT_EQ(PadLeft(rt, 12.5, 6, L"0", false), L"0012,5");
    EXPECT_EQ(PadLeft(rt, Null{}, 2, L"-", false), L"--");
    EXPECT_EQ(PadLeft(rt, true, 6, L".", false), L"..Wahr");
}

} // namespace
} // namespace tarv
