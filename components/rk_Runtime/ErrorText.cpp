#include "components/rk_Runtime/ErrorText.h"

#include <cwchar>

namespace tarv::component {
namespace {

constexpr wchar_t moduleLabel[] = L"Modul:    ";
constexpr wchar_t routineLabel[] = L"Routine: ";
constexpr wchar_t numberLabel[] = L"Nummer: ";
constexpr wchar_t noDescription[] = L"Keine Beschreibung verfügbar";
constexpr wchar_t unknown[] = L"Unbekannt";
constexpr wchar_t newLine[] = L"\r\n";

/// Lines that end in LF, CR or CR LF alike come out with LF; a NUL would end the text on the screen. Blanks
/// and empty lines around it go.
std::wstring tidied(std::wstring_view text) {
    std::wstring result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const wchar_t character = text[index];
        if (character == L'\r' && index + 1 < text.size() && text[index + 1] == L'\n')
            continue;
        result += character == L'\r' ? L'\n' : character == L'\0' ? L' ' : character;
    }
    const std::size_t first = result.find_first_not_of(L" \n");
    if (first == std::wstring::npos)
        return {};
    return result.substr(first, result.find_last_not_of(L" \n") - first + 1);
}

void addParagraph(std::wstring& report, const std::wstring& text) {
    if (text.empty())
        return;
    if (!report.empty())
        report.append(newLine).append(newLine);
    for (const wchar_t character : text) {
        if (character == L'\n')
            report += L'\r';
        report += character;
    }
}

/// Decimal; codes of the operating system and of components also as they are looked up.
std::wstring numberText(std::int32_t number) {
    wchar_t text[40];
    const bool isCode = number > 0xFFFF || number < -0xFFFF;
    static_cast<void>(std::swprintf(text, std::size(text), isCode ? L"%ld (0x%08lX)" : L"%ld",
                                    static_cast<long>(number),
                                    static_cast<unsigned long>(static_cast<std::uint32_t>(number))));
    return text;
}

std::wstring orUnknown(const std::wstring& text) {
    return text.empty() ? unknown : text;
}

} // namespace

std::wstring errorText(const ErrorRecord& error, std::wstring_view location, std::wstring_view extra) {
    const std::wstring description = tidied(error.description);
    const std::wstring further = tidied(extra);
    const std::size_t firstLine = further.find(L'\n');

    // The short facts first: a long list of files must not push them out of sight.
    std::wstring report;
    addParagraph(report, moduleLabel + orUnknown(tidied(error.source)) + L"\n" + routineLabel +
                             orUnknown(tidied(further.substr(0, firstLine))) + L"\n" + numberLabel +
                             numberText(error.number));
    addParagraph(report, description.empty() ? noDescription : description);
    addParagraph(report, tidied(location));
    if (firstLine != std::wstring::npos)
        addParagraph(report, tidied(further.substr(firstLine)));
    return report;
}

} // namespace tarv::component
