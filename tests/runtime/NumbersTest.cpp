#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Funktionen32.h"
#include "runtime/detail/FormattedNumber.h"
#include "runtime/detail/NumberFormat.h"
#include "tests/support/Table.h"

#include <limits>

namespace tarv {
namespace {

std::wstring formatted(double value, const NumberPicture& picture, wchar_t decimal) {
    TextBuffer text;
    appendFormatted(text, value, picture, decimal);
    return std::wstring(text.view());
}

double real(const std::wstring& cell) {
    return std::wcstod(cell.c_str(), nullptr);
}

struct NumbersCase : World {
    /// A cell with both separators, NUL for none; empty or longer as the settings may be.
    void use(const std::wstring& cell) {
        const std::size_t half = (cell.size() + 1) / 2;
        const auto part = [](const std::wstring& text) {
            return text == std::wstring(1, L'\0') ? L"" : text;
        };
        fake.facts.decimal = part(cell.substr(0, half));
        fake.facts.thousands = part(cell.substr(half));
    }
    std::wstring rounded(const Row& row, bool& flag) {
        use(row[0]);
        Value value = valueOf(row[1]);
        const Value result = RoundValue(rt, value, static_cast<std::int16_t>(row.number(2)), flag);
        EXPECT_EQ(value, valueOf(row[1])) << "nothing is written back";
        return shown(result);
    }
};

TEST(Tables, Numbers) {
    checkTable<NumbersCase>(
        "Numbers.txt",
        {{L"ToVal",
          [](auto& w, const Row& row) {
              w.use(row[0]);
              return shown(ToVal(w.rt, row[1]));
          }},
         {L"ToVal with a stop character",
          [](auto& w, const Row& row) { return shown(ToVal(w.rt, row[0], row[1])); }},
         {L"ToVal for developers",
          [](auto& w, const Row& row) {
              w.rt.developerMode = true;
              return shown(ToVal(w.rt, row[0]));
          }},
         {L"formatted",
          [](auto& w, const Row& row) {
              w.use(row[0]);
              const NumberPicture picture{row.number(1), row.on(2), row.number(3), row.number(4)};
              return formatted(real(row[5]), picture, numberFormat(w.rt).decimal);
          }},
         {L"readNumber", [](auto&, const Row& row) { return shown(readNumber(row[0])); }},
         {L"numberText", [](auto&, const Row& row) { return numberText(real(row[0]), row[1]); }},
         {L"invariantText", [](auto&, const Row& row) { return invariantText(valueOf(row[0])); }},
         {L"textOf", [](auto&, const Row& row) { return textOf(valueOf(row[0]), L"-"); }},
         {L"numberOf", [](auto&, const Row& row) { return shown(numberOf(valueOf(row[0]), 7)); }},
         {L"IsFormulaText", [](auto&, const Row& row) { return std::to_wstring(IsFormulaText(row[0])); }},
         {L"CountOccurrences",
          [](auto& w, const Row& row) {
              return std::to_wstring(CountOccurrences(w.rt, valueOf(row[0]), row[1]));
          }},
         {L"PadLeft",
          [](auto& w, const Row& row) {
              return PadLeft(w.rt, valueOf(row[0]), row.number(1), row[2], row.on(3));
          }},
         {L"ReplaceAll",
          [](auto&, const Row& row) {
              std::wstring text = row[0];
              ReplaceAll(text, row[1], row[2], row.on(3) ? CompareMode::binary : CompareMode::text);
              return text;
          }},
         {L"RoundValue",
          [](auto& w, const Row& row) {
              bool flag = false;
              return w.rounded(row, flag);
          }},
         {L"RoundValue with third decimal",
          [](auto& w, const Row& row) {
              bool flag = true;
              const std::wstring result = w.rounded(row, flag);
              return joined(result, std::to_wstring(flag));
          }},
         {L"RoundValue refused", [](auto& w, const Row& row) {
              w.fake.automation.provided.emplace(errorDisplayProgId,
                                                 w.fake.automation.object({{L"ErrorMsg", Empty{}}}));
              bool flag = true;
              Value value = valueOf(row[0]), again = value;
              const std::wstring result = shown(RoundValue(w.rt, value, 2, flag));
              EXPECT_TRUE(flag && w.fake.automation.log.empty());
              Runtime developing(w.fake.border, true);
              RoundValue(developing, again, 2, flag);
              return joined(result, shown(value),
                            std::get<std::wstring>(w.fake.automation.log.back().arguments.at(1)));
          }}});
}

using Numbers = Scripted;

TEST_F(Numbers, AnyLengthIsReadAndRoundedToTheNearestDouble) {
    const std::wstring zeros(1'000'000, L'0');
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L'9')), 0) << "too large for a double";
    EXPECT_EQ(ToVal(rt, zeros + L"1,5"), 1.5);
    EXPECT_EQ(ToVal(rt, std::wstring(1'000'000, L' ') + L"7"), 7);
    EXPECT_EQ(readNumber(L"0." + zeros + L"1E1000001"), 1);
    EXPECT_EQ(readNumber(L"1" + zeros + L"E-1000000"), 1);
    EXPECT_EQ(readNumber(L"9007199254740993." + zeros + L"1"), 9007199254740994.0)
        << "half-way but for one digit far behind";
    EXPECT_EQ(readNumber(L"9007199254740993." + zeros), 9007199254740992.0) << "half-way to the end";
    EXPECT_EQ(numberText(1e300, L"."), L"1" + std::wstring(300, L'0'));
    EXPECT_EQ(numberText(5e-324, L".").substr(320), L"00000494065645841247");
    EXPECT_EQ(formatted(0.25, {1, true, 300, 300}, L'.'), L"0.25" + zeros.substr(0, 298));
    const bool enoughMemory = sizeof(void*) == 8;
    EXPECT_TRUE(enoughMemory ||
                PadLeft(rt, L"abc", std::numeric_limits<std::int32_t>::max(), L"0", false) == L"abc");
}

} // namespace
} // namespace tarv
