#include "runtime/Funktionen32/Texts.h"

#include <algorithm>
#include <array>
#include <exception>
#include <iterator>
#include <numeric>

namespace tarv {
namespace {

struct CaseRange {
    int firstUpper;
    int lastUpper;
    /// 2 where capital and small letters alternate.
    int step;
    /// The distance from capital to small letter.
    int toSmall;
};

// The letters of the European code pages (Latin, Greek, Cyrillic), after the Unicode character database.
// Letters without a partner of one character (ß) stay out.
constexpr std::array caseRanges{
    CaseRange{U'A', U'Z', 1, 32},     CaseRange{0x00C0, 0x00D6, 1, 32},   CaseRange{0x00D8, 0x00DE, 1, 32},
    CaseRange{0x0100, 0x012E, 2, 1},  CaseRange{0x0132, 0x0136, 2, 1},    CaseRange{0x0139, 0x0147, 2, 1},
    CaseRange{0x014A, 0x0176, 2, 1},  CaseRange{0x0178, 0x0178, 1, -121}, CaseRange{0x0179, 0x017D, 2, 1},
    CaseRange{0x0386, 0x0386, 1, 38}, CaseRange{0x0388, 0x038A, 1, 37},   CaseRange{0x038C, 0x038C, 1, 64},
    CaseRange{0x038E, 0x038F, 1, 63}, CaseRange{0x0391, 0x03A1, 1, 32},   CaseRange{0x03A3, 0x03AB, 1, 32},
    CaseRange{0x0400, 0x040F, 1, 80}, CaseRange{0x0410, 0x042F, 1, 32},   CaseRange{0x0460, 0x0480, 2, 1},
    CaseRange{0x048A, 0x04BE, 2, 1},
};

/// A letter's partner by its code; every other character is its own.
using CaseTable = std::array<wchar_t, 0x500>;

constexpr CaseTable caseTable(bool toSmall) {
    CaseTable table;
    std::iota(table.begin(), table.end(), L'\0');
    for (const CaseRange& range : caseRanges)
        for (int upper = range.firstUpper; upper <= range.lastUpper; upper += range.step) {
            const int lower = upper + range.toSmall;
            table[static_cast<std::size_t>(toSmall ? upper : lower)] =
                static_cast<wchar_t>(toSmall ? lower : upper);
        }
    return table;
}

constexpr CaseTable smallLetters = caseTable(true);
constexpr CaseTable capitalLetters = caseTable(false);

std::wstring mapped(std::wstring_view text, const CaseTable& table) {
    std::wstring result(text);
    for (wchar_t& letter : result)
        if (const auto code = static_cast<std::size_t>(letter); code < table.size())
            letter = table[code];
    return result;
}

} // namespace

std::wstring_view trimLeft(std::wstring_view text) {
    const auto first = text.find_first_not_of(L' ');
    return first == text.npos ? std::wstring_view() : text.substr(first);
}

std::wstring_view trim(std::wstring_view text) {
    const auto last = text.find_last_not_of(L' ');
    return trimLeft(text.substr(0, last + 1));
}

std::wstring upperCase(std::wstring_view text) {
    return mapped(text, capitalLetters);
}

std::wstring lowerCase(std::wstring_view text) {
    return mapped(text, smallLetters);
}

std::wstring_view untilNul(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

void ReplaceAll(std::wstring& text, std::wstring_view find, std::wstring_view replacement, CompareMode mode) {
    if (find.empty())
        return;
    try {
        const bool anyCase = mode == CompareMode::text;
        const std::wstring capital = anyCase ? upperCase(text) : std::wstring();
        const std::wstring wanted = anyCase ? upperCase(find) : std::wstring(find);
        const std::wstring_view searched = anyCase ? capital : text;
        std::wstring result;
        std::size_t done = 0;
        for (auto at = searched.find(wanted); at != searched.npos; at = searched.find(wanted, done)) {
            result.append(text, done, at - done).append(replacement);
            done = at + wanted.size();
        }
        if (done != 0)
            text = result.append(text, done);
    } catch (const std::exception&) {
        // Too long for memory: the text stays as it is.
    }
}

} // namespace tarv
