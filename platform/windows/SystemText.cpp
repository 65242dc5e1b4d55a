#include "platform/windows/SystemText.h"

namespace tarv {

namespace {

/// Shorter names fit everywhere: MAX_PATH less the twelve characters that a folder must leave for a file.
constexpr std::size_t plainNameLength = MAX_PATH - 12;

bool startsWith(std::wstring_view text, std::wstring_view start) {
    return text.substr(0, start.size()) == start;
}

} // namespace

std::string toAnsi(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int needed = WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(std::max(needed, 0)), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

std::wstring fromAnsi(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(std::max(needed, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), needed);
    return text;
}

std::string toAnsiFileName(std::wstring_view name) {
    std::string bytes = toAnsi(name);
    if (fromAnsi(bytes) == name) {
        return bytes;
    }
    const std::wstring longName(name);
    const std::wstring shortName = filledText(
        [&](wchar_t* buffer, DWORD size) { return GetShortPathNameW(longName.c_str(), buffer, size); });
    return shortName.empty() ? bytes : toAnsi(shortName);
}

std::wstring toFileName(std::wstring_view path) {
    std::wstring name(path);
    if (name.size() < plainNameLength || startsWith(name, L"\\\\?\\") || startsWith(name, L"\\\\.\\")) {
        return name;
    }
    // Behind the prefix nothing is interpreted any more, so ".", ".." and "/" have to be resolved before.
    std::wstring full = filledText(
        [&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(name.c_str(), size, buffer, nullptr); });
    if (full.empty()) {
        return name;
    }
    return startsWith(full, L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::wstring systemMessage(DWORD code) {
    wchar_t buffer[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                  0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    while (length > 0 &&
           (buffer[length - 1] == L'\r' || buffer[length - 1] == L'\n' || buffer[length - 1] == L' ')) {
        --length;
    }
    return std::wstring(buffer, length);
}

} // namespace tarv
