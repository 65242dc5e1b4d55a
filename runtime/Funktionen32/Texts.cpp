#include "runtime/Funktionen32/Texts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <iterator>

namespace tarv {
namespace {

struct CaseRange {
    char32_t firstUpper;
    char32_t lastUpper;
    /// 0: capital and small letters alternate, the capital being even; 1: the capital being odd; otherwise
    /// the distance from capital to small letter.
    std::int32_t toSmall;
};

// The letters of the European code pages (Latin, Greek, Cyrillic), after the Unicode character database.
// Letters without a partner of one character (ß) stay out.
constexpr std::array caseRanges{
    CaseRange{U'A', U'Z', 32},     CaseRange{0x00C0, 0x00D6, 32},   CaseRange{0x00D8, 0x00DE, 32},
    CaseRange{0x0100, 0x012F, 0},  CaseRange{0x0132, 0x0137, 0},    CaseRange{0x0139, 0x0148, 1},
    CaseRange{0x014A, 0x0177, 0},  CaseRange{0x0178, 0x0178, -121}, CaseRange{0x0179, 0x017E, 1},
    CaseRange{0x0386, 0x0386, 38}, CaseRange{0x0388, 0x038A, 37},   CaseRange{0x038C, 0x038C, 64},
    CaseRange{0x038E, 0x038F, 63}, CaseRange{0x0391, 0x03A1, 32},   CaseRange{0x03A3, 0x03AB, 32},
    CaseRange{0x0400, 0x040F, 80}, CaseRange{0x0410, 0x042F, 32},   CaseRange{0x0460, 0x0481, 0},
    CaseRange{0x048A, 0x04BF, 0},
};

bool alternates(const CaseRange& range) {
    return range.toSmall == 0 || range.toSmall == 1;
}

wchar_t smallLetter(wchar_t letter) {
    const auto code = static_cast<char32_t>(letter);
    for (const CaseRange& range : caseRanges) {
        if (code < range.firstUpper || code > range.lastUpper)
            continue;
        if (!alternates(range))
            return static_cast<wchar_t>(static_cast<std::int32_t>(code) + range.toSmall);
        const bool capital = code % 2 == static_cast<char32_t>(range.toSmall);
        return capital ? static_cast<wchar_t>(code + 1) : letter;
    }
    return letter;
}

wchar_t capitalLetter(wchar_t letter) {
    const auto code = static_cast<std::int64_t>(letter);
    for (const CaseRange& range : caseRanges) {
        const auto first = static_cast<std::int64_t>(range.firstUpper);
        const auto last = static_cast<std::int64_t>(range.lastUpper);
        if (alternates(range)) {
            if (code >= first && code <= last)
                return code % 2 == range.toSmall ? letter : static_cast<wchar_t>(code - 1);
        } else if (code - range.toSmall >= first && code - range.toSmall <= last) {
            return static_cast<wchar_t>(code - range.toSmall);
        }
    }
    return letter;
}

template <class Map>
std::wstring mapped(std::wstring_view text, Map map) {
    std::wstring result;
    result.reserve(text.size());
    std::ranges::transform(text, std::back_inserter(result), map);
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
    return mapped(text, capitalLetter);
}

std::wstring lowerCase(std::wstring_view text) {
    return mapped(text, smallLetter);
}

std::wstring_view untilNul(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

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

} // namespace tarv
