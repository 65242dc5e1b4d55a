// Reading and rounding amounts, against what the system and the C library offer for it. The best case for the
// system: texts in the convention of the settings in force.
#include "bench/Comparison.h"
#include "platform/Platform.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Runtime.h"

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include <windows.h>

#include <oleauto.h>

namespace {

/// Short batches, so that on a busy machine most of them run undisturbed.
constexpr int batches = 1001;
constexpr std::size_t callsPerBatch = 200;

/// Keeps the compiler from dropping the work.
volatile double sink;

template <class Work>
auto batchOf(std::size_t count, Work work) {
    return [=] {
        double sum = 0;
        for (std::size_t i = 0; i < callsPerBatch; ++i)
            sum += work(i % count);
        sink = sum;
    };
}

template <class Own, class Yardstick>
void compare(const char* name, const char* yardstick, std::size_t count, Own own, Yardstick theirs,
             const char* aim) {
    using namespace tarv::bench;
    const Pair batch = byTurns(batches, batchOf(count, own), batchOf(count, theirs));
    printRow(name, yardstick, "ns", perCall(batch, callsPerBatch / 1000.0), aim);
}

} // namespace

int main() {
    using namespace tarv;
    WindowsPlatform windows;
    Runtime rt{windows};
    std::vector<std::wstring> texts;
    std::vector<double> amounts;
    for (int i = 0; i < 100; ++i) {
        amounts.push_back(12345.678 + i * 98.7654);
        std::array<wchar_t, 32> text;
        GetNumberFormatW(LOCALE_USER_DEFAULT, 0, std::to_wstring(amounts.back()).c_str(), nullptr,
                         text.data(), static_cast<int>(text.size()));
        texts.emplace_back(text.data());
    }

    const auto toVal = [&](std::size_t i) { return ToVal(rt, texts[i]); };
    compare(
        "`ToVal` of a usual amount", "VarR8FromStr", texts.size(), toVal,
        [&](std::size_t i) {
            double number = 0;
            static_cast<void>(VarR8FromStr(texts[i].data(), LOCALE_USER_DEFAULT, 0, &number));
            return number;
        },
        "<= 1");
    compare(
        "`ToVal` of a usual amount", "wcstod", texts.size(), toVal,
        [&](std::size_t i) { return std::wcstod(texts[i].c_str(), nullptr); }, "");
    compare(
        "`RoundValue` to two places", "snprintf and strtod", amounts.size(),
        [&](std::size_t i) {
            Value value = amounts[i];
            bool flag = false;
            return std::get<double>(RoundValue(rt, value, 2, flag));
        },
        [&](std::size_t i) {
            std::array<char, 400> text;
            std::snprintf(text.data(), text.size(), "%.2f", amounts[i]);
            return std::strtod(text.data(), nullptr);
        },
        "<= 1");
    return 0;
}
