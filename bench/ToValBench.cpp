// Reading and rounding amounts, against what the system and the C library offer for it. The best case for the
// system: texts in the convention of the settings in force.
#include "platform/Platform.h"
#include "platform/RegionalSettings.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/NumberReader.h"
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/Pictures.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <windows.h>

#include <oleauto.h>

namespace {

/// Short batches, so that on a busy machine most of them run undisturbed.
constexpr int batches = 1001;
constexpr std::size_t callsPerBatch = 200;

double nanoseconds() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
}

/// Keeps the compiler from dropping the work.
volatile double sink;

template <class Work>
double nanosecondsPerCall(std::size_t count, Work work) {
    const double start = nanoseconds();
    double sum = 0;
    for (std::size_t i = 0; i < callsPerBatch; ++i)
        sum += work(i % count);
    sink = sum;
    return (nanoseconds() - start) / static_cast<double>(callsPerBatch);
}

double median(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// Measures both in turn, so that a busy machine hits both; prints medians and their ratio.
template <class Ours, class Theirs>
void compare(const char* ours, const char* theirs, std::size_t count, Ours ourWork, Theirs theirWork) {
    std::vector<double> ourTimes;
    std::vector<double> theirTimes;
    for (int i = 0; i < batches; ++i) {
        ourTimes.push_back(nanosecondsPerCall(count, ourWork));
        theirTimes.push_back(nanosecondsPerCall(count, theirWork));
    }
    const double our = median(ourTimes);
    const double their = median(theirTimes);
    std::printf("%-28s %8.1f ns   %-28s %8.1f ns   ratio %.2f\n", ours, our, theirs, their, our / their);
}

} // namespace

int main() {
    using namespace tarv;
    WindowsPlatform windows;
    Runtime rt{windows.border()};
    std::vector<std::wstring> texts;
    std::vector<double> amounts;
    for (int i = 0; i < 100; ++i) {
        amounts.push_back(12345.678 + i * 98.7654);
        TextBuffer text;
        appendFormatted(text, amounts.back(), picture(L"#,###.00"), numberFormat(rt));
        texts.emplace_back(text.view());
    }
    std::printf("decimal separator '%lc', texts like %ls\n", static_cast<wint_t>(numberFormat(rt).decimal),
                texts[0].c_str());

    compare(
        "ToVal", "VarR8FromStr", texts.size(), [&](std::size_t i) { return ToVal(rt, texts[i]); },
        [&](std::size_t i) {
            double number = 0;
            static_cast<void>(VarR8FromStr(texts[i].data(), LOCALE_USER_DEFAULT, 0, &number));
            return number;
        });
    compare(
        "RoundValue", "snprintf and strtod", amounts.size(),
        [&](std::size_t i) {
            Value value = amounts[i];
            bool flag = false;
            return std::get<double>(RoundValue(rt, value, 2, flag));
        },
        [&](std::size_t i) {
            std::array<char, 400> text;
            std::snprintf(text.data(), text.size(), "%.2f", amounts[i]);
            return std::strtod(text.data(), nullptr);
        });
    compare(
        "readNumber", "wcstod", 1, [&](std::size_t) { return readNumber(L"12345.67"); },
        [&](std::size_t) { return std::wcstod(L"12345.67", nullptr); });
    compare(
        "  of it: the settings", "VarFormat #.0", 1,
        [&](std::size_t) { return static_cast<double>(numberFormat(rt).decimal); },
        [&](std::size_t i) {
            VARIANT value{};
            value.vt = VT_R8;
            value.dblVal = amounts[i];
            BSTR text = nullptr;
            static_cast<void>(VarFormat(&value, const_cast<wchar_t*>(L"#.0"), 0, 0, 0, &text));
            const double length = SysStringLen(text);
            SysFreeString(text);
            return length;
        });
    return 0;
}
