#include "runtime/Funktionen32/Numbers.h"

#include "runtime/Funktionen32/ErrorDisplay.h"
#include "runtime/Funktionen32/Pictures.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/RandomStart.h"

#include <bit>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct Settings {
    const wchar_t* decimal;
    const wchar_t* thousands;
};
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

    void use(const Settings& settings) { fake.regional.set(settings.decimal, settings.thousands); }

    Value rounded(Value value, std::int16_t decimals, bool flag = false) {
        return RoundValue(rt, value, decimals, flag);
    }
};

TEST_F(Numbers, ToValReadsTextsOfBothConventionsUnderAnySettings) {
    struct Case {
        Settings settings;
        const wchar_t* text;
        double number;
        const wchar_t* stop = L"";
    };
    for (const Case& c : {
             Case{german, L"", 0},
             {german, L"1.234,56", 1234.56},
             {german, L"1,234.56", 1234.56},
             {german, L"1.234.567,89", 1234567.89},
             {german, L"1,234,567.8", 1234567.8},
             {german, L"12,5", 12.5},
             {german, L"-12,5", -12.5},
             {german, L"1.234", 1.234},
             {german, L"1.2.3", 12.3},
             {german, L"1.234.567", 1234.567},
             {german, L"1,2,3", 12.3},
             {german, L"12,5 kg", 12.5},
             {german, L"1 234,5", 1234.5},
             {german, L"€ 5", 0},
             {german, L"--5", 0},
             {german, L"12;34", 12, L";"},
             {german, L"12-34", 12, L"-"},
             {german, L"12,34", 12, L","},
             {german, L"12,34", 12.34, L",3"},
             {english, L"1,234.56", 1234.56},
             {english, L"1.234,56", 1234},
             {english, L"12,5", 12.5},
             {english, L"1,234", 1.234},
             {swiss, L"1\u2019234.50", 1234.5},
             {swiss, L"1\u2019234", 1},
             {swiss, L"1'234", 1},
             {swiss, L"1.234,5", 1234.5},
             {french, L"1\u00A0234,5", 1234.5},
             {french, L"1\u00A0234", 1},
             {french, L"1.234,5", 1234.5},
             {spaced, L"1 234,5", 1234.5},
             {spaced, L"1 234", 1234},
             {spaced, L"1,5", 1.5},
             {noThousands, L"1.234,56", 1234.56},
             {noThousands, L"1,234.56", 1234.56},
             {bothCommas, L"1,234.5", 1234.5},
             {bothPoints, L"1.234,5", 1234.5},
             {digitThousands, L"1.555,5", 1555.5},
             {apostropheDecimal, L"1,234.5", 1234.5},
             {apostropheDecimal, L"1,2.", 12},
             {apostropheDecimal, L"1'5", 1},
             {nothing, L"1,5", 1.5},
         }) {
        use(c.settings);
        EXPECT_EQ(ToVal(rt, c.text, c.stop), c.number)
            << testing::PrintToString(std::wstring(c.text)) << " under "
            << testing::PrintToString(std::wstring(c.settings.decimal) + c.settings.thousands);
    }
    EXPECT_TRUE(fake.desktop.boxes.empty()) << "an ordinary user sees no message";
}

TEST_F(Numbers, ToValReadsScientificNotationRoundedToEightPlaces) {
    struct Case {
        const wchar_t* text;
        double number;
        const wchar_t* stop = L"";
    };
    for (const Settings& settings : {german, english, swiss, french, bothPoints}) {
        use(settings);
        for (const Case& c : {
                 Case{L"1,5E3", 1500},
                 {L"1.5e3", 1500},
                 {L"-2,5E-3", -0.0025},
                 {L"1E-9", 0},
                 {L"1,23456789876E0", 1.2345679},
                 {L"1E3", 1000, L"0"},
                 {L"1,234.5E2", 1},
                 {L"(1+2)E5", 0},
                 {L"1E300", 1e300},
                 {L"1E308", 1e308},
                 {L"1E400", 0},
                 // None of these is scientific notation.
                 {L"E5", 0},
                 {L"12E", 12},
                 {L"5 E3", 5},
                 {L"5E3x", 5},
                 {L"5 Euro", 5},
             })
            EXPECT_EQ(ToVal(rt, c.text, c.stop), c.number) << testing::PrintToString(std::wstring(c.text));
    }
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
    struct Case {
        Value value;
        std::int16_t decimals;
        Value result;
    };
    for (const Settings& settings : {german, english, swiss, french, noThousands, bothCommas}) {
        use(settings);
        for (const Case& c : {
                 Case{2.345, 2, 2.35},
                 {-2.345, 2, -2.35},
                 {2.3449, 2, 2.34},
                 {1.234995, 2, 1.24},
                 {1.2349, 2, 1.23},
                 {0.0001, 0, std::int16_t{0}},
                 {0.499, 0, 1.0},
                 {-0.001, 2, 0.0},
                 {1234567.891, 0, 1234568.0},
                 {-7.5, -1, -7.5},
                 {std::int16_t{-3}, 1, -3.0},
                 {std::int32_t{70000}, 0, 70000.0},
                 {true, 0, -1.0},
                 {Empty{}, 1, 0.0},
                 {Date{2.26}, 1, 2.3},
                 {1e15, 2, 1e15},
                 {3.0, 100, 3.0},
                 // 10^n or the product exceeds a double.
                 {1e300, 20, 1e300},
                 {1.5, 400, 1.5},
             })
            EXPECT_EQ(rounded(c.value, c.decimals), c.result) << testing::PrintToString(c.value);
    }
}

TEST_F(Numbers, RoundValueReadsTextByTheSettings) {
    struct Case {
        Settings settings;
        const wchar_t* text;
        Value result;
    };
    const auto unchanged = [](const wchar_t* text) { return Value(std::wstring(text)); };
    for (const Case& c : {
             Case{german, L" 1.234,567 ", 1234.57},
             {german, L"- 1,5E2", -150.0},
             {german, L"2,5-", -2.5},
             {german, L"1.23", 123.0},
             {english, L"1,234.567", 1234.57},
             {french, L"1\u00A0234,567", 1234.57},
             {bothPoints, L"1.5", 1.5},
             {german, L"12 kg", unchanged(L"12 kg")},
             {german, L"12 34", unchanged(L"12 34")},
             {german, L"1,2,3", unchanged(L"1,2,3")},
             {german, L".5", unchanged(L".5")},
             {german, L"1E", unchanged(L"1E")},
             {german, L"1E400", unchanged(L"1E400")},
             {german, L" ", unchanged(L" ")},
             {german, L",", unchanged(L",")},
         }) {
        use(c.settings);
        EXPECT_EQ(rounded(std::wstring(c.text), 2), c.result) << testing::PrintToString(std::wstring(c.text));
    }
}

TEST_F(Numbers, RoundValueSnapsOnlyWithAThirdDecimal) {
    struct Case {
        double value;
        std::int16_t decimals;
        double result;
        bool flagLeft;
    };
    for (const Settings& settings : {german, english}) {
        use(settings);
        for (const Case& c : {
                 Case{12.991, 2, 12.99 + 0.01, true},
                 {12.99, 2, 12.99, false},
                 {13.008, 2, 13.01 - 0.01, true},
                 {13.01, 2, 13.01, false},
                 {0.012, 2, 0, true},
                 {-12.991, 2, -12.99 + 0.01, true},
                 {-13.008, 2, -13.01 - 0.01, true},
                 {12.345, 2, 12.35, true},
                 {12.9911, 3, 12.991, true},
                 {12.5, 0, 13, false},
                 {0, 0, 0, false},
             }) {
            Value value = c.value;
            bool flag = true;
            const Value result = RoundValue(rt, value, c.decimals, flag);
            EXPECT_EQ(result, c.value == 0 ? Value(std::int16_t{0}) : Value(c.result)) << c.value;
            EXPECT_EQ(flag, c.flagLeft) << c.value;
            EXPECT_EQ(value, Value(c.value)) << "the value is not written back";
        }
    }
}

TEST_F(Numbers, RoundValueReportsItsErrorsInTheDevelopmentEnvironmentOnly) {
    const auto display = fake.automation.object(L"display");
    display->answers(L"ErrorMsg", Empty{});
    fake.automation.provide(errorDisplayProgId, display);
    Runtime developing(fake.border, true);
    bool flag = true;
    const Value infinite = std::numeric_limits<double>::infinity();
    for (Value value :
         {Value(std::wstring(L"1a")), Value(std::wstring()), Value(Null{}), Value(Missing{}), infinite}) {
        const bool becomesZero = value == Value(Null{}) || value == Value(std::wstring());
        const Value expected = becomesZero ? Value(std::int16_t{0}) : value;
        Value again = value;
        EXPECT_EQ(RoundValue(rt, value, 2, flag), expected);
        EXPECT_EQ(value, expected);
        EXPECT_TRUE(fake.automation.log.empty());
        if (value == infinite)
            break;
        RoundValue(developing, again, 2, flag);
        ASSERT_FALSE(fake.automation.log.empty());
        const std::wstring shownValue = again == Value(std::wstring(L"1a")) ? L"1a" : L"";
        EXPECT_EQ(fake.automation.log.back().arguments[1], Value(L"beim Runden der Zahl:" + shownValue));
        fake.automation.log.clear();
    }
    EXPECT_TRUE(flag);
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
    struct Case {
        double value;
        std::int16_t decimals;
        double result;
    };
    for (const Case& c : {
             Case{0x1.0p-1074, 5, 0},
             {1.0 / 3, 9, 0x1.5555554f9b516p-2},
             {2.0 / 3 * 1e9, 4, 0x1.3de435555566dp+29},
             {1234567.8949999, 3, 0x1.2d687e51eb852p+20},
             {0x1.fffffffffffffp+40, 2, 0x1p+41},
             {8.0e15 + 1, 1, 0x1.c6bf526340000p+52},
         })
        EXPECT_EQ(rounded(c.value, c.decimals), Value(c.result)) << c.value;

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
    struct Case {
        const wchar_t* text;
        const wchar_t* find;
        const wchar_t* replacement;
        CompareMode mode;
        const wchar_t* result;
    };
    for (const Case& c : {
             Case{L"aaa", L"a", L"aa", CompareMode::binary, L"aaaaaa"},
             {L"aaa", L"aa", L"a", CompareMode::binary, L"aa"},
             {L"xAyax", L"a", L"", CompareMode::binary, L"xAyx"},
             {L"xÄyäx", L"Ä", L"-", CompareMode::text, L"x-y-x"},
             {L"abc", L"", L"x", CompareMode::binary, L"abc"},
             {L"", L"a", L"x", CompareMode::binary, L""},
         }) {
        std::wstring text = c.text;
        ReplaceAll(text, c.find, c.replacement, c.mode);
        EXPECT_EQ(text, c.result);
    }
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
    struct Case {
        Value value;
        std::int32_t width;
        const wchar_t* pad;
        bool noPad;
        const wchar_t* text;
    };
    for (const Case& c : {
             Case{12.5, 6, L"0", false, L"0012,5"},
             {std::wstring(L"abc"), 3, L"0", false, L"abc"},
             {std::wstring(L"abc"), 2, L"0", false, L"bc"},
             {std::wstring(L"abc"), 2, L"0", true, L"bc"},
             {std::wstring(L"abc"), 2, L"", false, L"abc"},
             {std::wstring(L"abc"), 5, L"", false, L"abc"},
             {std::wstring(L"abc"), 5, L"0", true, L"abc"},
             {std::wstring(L"abc"), 8, L"xy", false, L"yxyxyabc"},
             {std::wstring(L"abc"), 0, L"0", false, L""},
             {Null{}, 2, L"-", false, L"--"},
             {true, 6, L".", false, L"..Wahr"},
         })
        EXPECT_EQ(PadLeft(rt, c.value, c.width, c.pad, c.noPad), c.text);
}

} // namespace
} // namespace tarv
