#include "tests/support/FakeSystem.h"

#include "runtime/Funktionen32/Texts.h"

#include <algorithm>

namespace tarv {

std::wstring FakeEnvironment::value(std::wstring_view name) {
    const auto entry = find(name);
    return faults_.value("Environment.value",
                         entry == list.end() ? std::wstring() : entry->substr(name.size() + 1));
}

void FakeEnvironment::set(std::wstring_view name, std::wstring_view text) {
    const auto entry = find(name);
    (entry == list.end() ? list.emplace_back() : *entry) = std::wstring(name) + L"=" + std::wstring(text);
}

std::vector<std::wstring>::iterator FakeEnvironment::find(std::wstring_view name) {
    const std::wstring key = upperCase(name) + L"=";
    return std::ranges::find_if(list, [&](const auto& entry) { return upperCase(entry).starts_with(key); });
}

VersionInfo FakeMachineFacts::version() {
    VersionInfo info;
    info.servicePack.assign(128, L' ');
    if (faults_.enter("MachineFacts.version"))
        return info;
    info = {major, minor, build, 2, info.servicePack};
    info.servicePack.replace(0, servicePack.size() + 1, servicePack + L'\0');
    return info;
}

namespace {

/// Characters of the codes 0x80 to 0x9F; all others are the same as in Unicode.
constexpr std::wstring_view upperControls =
    L"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039"
    L"\u0152\x8D\u017D\x8F\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014"
    L"\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";
static_assert(upperControls.size() == 32);

} // namespace

std::string FakeCodePage::encode(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t character : text) {
        const std::size_t upper = upperControls.find(character);
        const bool ownCode = character < 0x80 || (character > 0x9F && character < 0x100);
        bytes += static_cast<char>(upper != upperControls.npos ? 0x80 + upper : ownCode ? character : L'?');
    }
    return bytes;
}

std::wstring FakeCodePage::decode(std::string_view bytes) {
    std::wstring text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += code >= 0x80 && code < 0xA0 ? upperControls[code - 0x80u] : static_cast<wchar_t>(code);
    }
    return text;
}

} // namespace tarv
