#include "examples.h"

#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/Texts.h"

// Amounts as they stand in tenders: reading, rounding, laying out.
void numbers(tarv::Runtime& rt) {
    const double amount = tarv::ToVal(rt, L"1.234,565 EUR");
    print(L"ToVal: " + tarv::numberText(amount, L","));

    bool thirdDecimal = false;
    tarv::Value value = amount;
    const tarv::Value rounded = tarv::RoundValue(rt, value, 2, thirdDecimal);
    print(L"RoundValue: " + tarv::numberText(tarv::numberOf(rounded), L","));
    print(L"PadLeft: " + tarv::PadLeft(rt, std::wstring(L"42"), 6, L"0", false));

    std::wstring formula = L"2 x 3,5 x 4";
    tarv::ReplaceAll(formula, L"x", L"*", tarv::CompareMode::text);
    print(L"ReplaceAll: " + formula);
    print(L"CountOccurrences: " + std::to_wstring(tarv::CountOccurrences(rt, formula, L"*")));
    print(L"IsFormulaText: " + yesNo(tarv::IsFormulaText(formula)));
}
