#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/RegionalText.h"
#include "runtime/Funktionen32/Texts.h"

#include <algorithm>
#include <exception>

namespace tarv {

void ReplaceAll(std::wstring& text, std::wstring_view find, std::wstring_view replacement, CompareMode mode) {
    if (text.empty() || find.empty())
        return;
    try {
        const bool anyCase = mode == CompareMode::text;
        const std::wstring searched = anyCase ? upperCase(text) : text;
        const std::wstring wanted = anyCase ? upperCase(find) : std::wstring(find);
        std::wstring result;
        std::size_t done = 0;
        for (auto at = searched.find(wanted); at != searched.npos; at = searched.find(wanted, done)) {
            result.append(text, done, at - done).append(replacement);
            done = at + wanted.size();
        }
        text = result.append(text, done);
    } catch (const std::exception&) {
        // Too long for memory: the text stays as it is.
    }
}

std::int32_t CountOccurrences(Runtime& rt, const Value& text, std::wstring_view find) {
    if (find.empty())
        return 0;
    const std::wstring searched = regionalText(text, numberFormat(rt));
    std::int32_t count = 0;
    for (auto at = searched.find(find); at != searched.npos; at = searched.find(find, at + find.size()))
        ++count;
    return count;
}

bool IsFormulaText(std::wstring_view text) {
    static constexpr std::wstring_view allowed = L" +-*/,.()0123456789";
    return !text.empty() &&
           std::ranges::all_of(text, [](wchar_t c) { return allowed.find(c) != allowed.npos; });
}

std::wstring PadLeft(Runtime& rt, const Value& value, std::int32_t width, std::wstring_view pad, bool noPad) {
    if (width < 1)
        return {};
    std::wstring text = regionalText(value, numberFormat(rt));
    const auto wanted = static_cast<std::size_t>(width);
    if (wanted < text.size())
        return pad.empty() ? text : text.substr(text.size() - wanted);
    if (noPad || pad.empty())
        return text;
    // The pad text repeats up to the value, so a part of it can only stand at the very left.
    const std::size_t missing = wanted - text.size();
    try {
        std::wstring filled;
        filled.reserve(wanted);
        filled = pad.substr(pad.size() - missing % pad.size());
        while (filled.size() < missing)
            filled.append(pad);
        return filled.append(text);
    } catch (const std::exception&) {
        return text; // a width beyond memory
    }
}

} // namespace tarv
