#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"

#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/detail/NumberFormat.h"
#include "tests/support/RandomStart.h"
#include "tests/support/Table.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace tarv {
namespace {

std::wstring formatted(double value, std::wstring_view pictureText, const NumberFormat& format) {
    TextBuffer text;
    appendFormatted(text, value, numberPicture(pictureText), format);
    return std::wstring(text.view());
}

struct NumberCalls : World {
    /// A cell with both separators, NUL for none; empty or longer as the settings may be.
    void use(const std::wstring& cell) {
        const std::size_t half = (cell.size() + 1) / 2;
        const auto part = [](const std::wstring& text) {
            return text == std::wstring(1, L'\0') ? L"" : text;
        };
        fake.facts.setSeparators(part(cell.substr(0, half)), part(cell.substr(half)));
    }

    std::wstring answer(const Row& row) {
        const std::wstring &routine = row[0], &first = row[1];
        const auto number = [&](std::size_t cell) { return std::wcstod(row[cell].c_str(), nullptr); };
        if (routine == L"ToVal")
            return use(first), shown(ToVal(rt, row[2]));
        if (routine == L"until")
            return shown(ToVal(rt, first, row[2]));
        if (routine == L"formatted")
            return use(row[2]), formatted(number(3), first, numberFormat(rt));
        if (routine == L"readNumber")
            return shown(readNumber(first));
        if (routine == L"numberText")
            return numberText(number(1), row[2]);
        if (routine == L"invariantText")
            return invariantText(valueOf(first));
        if (routine == L"IsFormulaText")
            return std::to_wstring(IsFormulaText(first));
        if (routine == L"CountOccurrences")
            return std::to_wstring(CountOccurrences(rt, valueOf(first), row[2]));
        if (routine == L"PadLeft")
            return PadLeft(rt, valueOf(first), static_cast<int>(number(2)), row[3], row[4] == L"1");
        if (routine == L"ReplaceAll") {
            std::wstring text = first;
            ReplaceAll(text, row[2], row[3], row[4] == L"1" ? CompareMode::binary : CompareMode::text);
            return text;
        }
        bool flag = routine != L"RoundValue";
        if (routine == L"refused") {
            const auto display = fake.automation.object(L"display");
            display->answers(L"ErrorMsg", Empty{});
            fake.automation.provided.emplace(errorDisplayProgId, display);
            Value value = valueOf(first), again = value;
            const std::wstring result = shown(RoundValue(rt, value, 2, flag));
            EXPECT_TRUE(flag && fake.automation.log.empty());
            Runtime developing(fake.border, true);
            RoundValue(developing, again, 2, flag);
            return joined(result, shown(value),
                          std::get<std::wstring>(fake.automation.log.back().arguments.at(1)));
        }
        use(first);
        Value value = valueOf(row[2]);
        const Value result = RoundValue(rt, value, static_cast<std::int16_t>(number(3)), flag);
        EXPECT_EQ(value, valueOf(row[2])) << "nothing is written back";
        return shown(result) + (routine == L"snapped" ? L"|" + std::to_wstring(flag) : L"");
    }
};

TEST(Tables, Numbers) {
    checkTable<NumberCalls>("Numbers.txt");
}

struct Numbers : Scripted {
    RandomStart random;

    /// A number of any magnitude.
    double any() {
        double number = INFINITY;
        while (!std::isfinite(number))
            number = std::bit_cast<double>(random.bits());
        return number;
    }
    Value rounded(Value value, std::int16_t decimals, bool flag = false) {
        return RoundValue(rt, value, decimals, flag);
    }
};

TEST_F(Numbers, DevelopersAreAskedAboutTheOtherConvention) {
    rt.developerMode = true;
    ToVal(rt, L"1.234,5");
    EXPECT_EQ(shownBoxes(*this), L"");
    ToVal(rt, L"1,234.5 m");
    EXPECT_EQ(shownBoxes(*this), L" Warum Englisch Formatiert:  1,234.5 |ToVal - bistEntwicklung|4096");
}

TEST_F(Numbers, AnyLengthIsReadAndRoundedToTheNearestDouble) {
    const std::wstring zeros(1'000'000, L'0');
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L'9')), 0) << "too large for a double";
    EXPECT_EQ(ToVal(rt, zeros + L"1,5"), 1.5);
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L' ') + L"7"), 7);
    EXPECT_EQ(readNumber(L"0." + zeros + L"1E1000001"), 1);
    EXPECT_EQ(readNumber(L"1" + zeros + L"E-1000000"), 1);
    EXPECT_EQ(readNumber(L"9007199254740993." + zeros + L"1"), 9007199254740994.0)
        << "half-way but for one digit far behind";
    EXPECT_EQ(numberText(1e300, L"."), L"1" + std::wstring(300, L'0'));
    EXPECT_EQ(numberText(5e-324, L".").substr(320), L"00000494065645841247");
    EXPECT_EQ(formatted(0.25, L"0." + zeros.substr(0, 300), {}), L"0.25" + zeros.substr(0, 298));
    const bool enoughMemory = sizeof(void*) == 8;
    EXPECT_TRUE(enoughMemory ||
                PadLeft(rt, L"abc", std::numeric_limits<std::int32_t>::max(), L"0", false) == L"abc");
}

TEST_F(Numbers, ReadAndWrittenAsTheCompilersLibraryDoes) {
    for (int i = 0; i < 5'000; ++i) {
        const double number = any();
        char text[80];
        std::snprintf(text, sizeof text, "%.*e", i % 22, number);
        const double expected = std::strtod(text, nullptr);
        ASSERT_TRUE(!std::isfinite(expected) ||
                    readNumber(std::wstring(text, text + std::strlen(text))) == expected)
            << text;
        // Cut behind the 15th digit by hand: the C library rounds ties to even.
        std::snprintf(text, sizeof text, "%+.60e", number);
        const long long kept = std::stoll(text[1] + std::string(text + 3, 14)) + (text[17] >= '5' ? 1 : 0);
        const int exponent = std::atoi(std::strchr(text, 'e') + 1) - 14;
        const std::string rounded = text[0] + std::to_string(kept) + "e" + std::to_string(exponent);
        const double again = std::strtod(rounded.c_str(), nullptr);
        ASSERT_TRUE(!std::isfinite(again) || readNumber(numberText(number, L".")) == again) << rounded;
    }
}

TEST_F(Numbers, RoundingIsSymmetricStableAndAgreesWithWholeNumbers) {
    for (int i = 0; i < 5'000; ++i) {
        fake.facts.setSeparators(i % 2 == 0 ? L"," : L".", i % 2 == 0 ? L"." : L",");
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

TEST_F(Numbers, FormattedAmountsAgreeWithWholeNumbersAndReadBack) {
    for (int i = 0; i < 5'000; ++i) {
        fake.facts.setSeparators(i % 3 == 0 ? L"." : L",", i % 3 == 0   ? L"\u2019"
                                                           : i % 3 == 1 ? L"."
                                                                        : L"\u00A0");
        const std::int64_t limit = i % 2 == 0 ? 100'000 : 900'000'000'000;
        const std::int64_t thousandths = random.between(-limit, limit);
        const auto number = static_cast<double>(thousandths) / 1000;
        const std::int64_t cents = (std::abs(thousandths) + 5) / 10;
        const std::wstring sign = thousandths < 0 && cents != 0 ? L"-" : L"";
        const std::wstring rest = std::to_wstring(100 + cents % 100).substr(1);
        const std::wstring whole = cents < 100 ? L"" : std::to_wstring(cents / 100);
        ASSERT_EQ(formatted(number, L"#####.00", {}), sign + whole + L"." + rest) << number;
        const NumberFormat format = numberFormat(rt);
        std::wstring amount = formatted(number, L"#0.000", format);
        for (std::size_t digits = amount.find(format.decimal); digits > (number < 0 ? 4u : 3u);)
            amount.insert(digits -= 3, 1, format.thousands);
        ASSERT_EQ(ToVal(rt, amount), number) << amount;
    }
}

TEST_F(Numbers, EveryBuildComputesTheSameBits) {
    EXPECT_EQ(rounded(0x1.0p-1074, 5), Value(0.0));
    EXPECT_EQ(rounded(1.0 / 3, 9), Value(0x1.5555554f9b516p-2));
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

} // namespace
} // namespace tarv
