#include "win/SystemText.h"

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
    if (fromAnsi(bytes) == name)
        return bytes;
    const std::wstring longName(name);
    const std::wstring shortName = filledText(
        [&](wchar_t* buffer, DWORD size) { return GetShortPathNameW(longName.c_str(), buffer, size); });
    return shortName.empty() ? bytes : toAnsi(shortName);
}

std::wstring fullName(std::wstring_view name) {
    const std::wstring terminated(name);
    return filledText([&](wchar_t* buffer, DWORD size) {
        return GetFullPathNameW(terminated.c_str(), size, buffer, nullptr);
    });
}

std::wstring toFileName(std::wstring_view path) {
    std::wstring name(path);
    if (name.size() < plainNameLength || startsWith(name, L"\\\\?\\") || startsWith(name, L"\\\\.\\"))
        return name;
    // Behind the prefix nothing is interpreted any more, so ".", ".." and "/" have to be resolved before.
    const std::wstring full = fullName(name);
    if (full.empty())
        return name;
    return startsWith(full, L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::wstring toShellName(std::wstring_view path) {
    const auto separator = path.find_last_of(L"\\/");
    const bool hasDrive = path.size() > 1 && path[1] == L':';
    std::size_t last = separator != path.npos ? separator + 1 : hasDrive ? 2 : 0;
    if (path.substr(last) == L"." || path.substr(last) == L"..")
        last = path.size();
    std::wstring full = fullName(last > 0 ? path.substr(0, last) : L".");
    if (last < path.size() && !full.ends_with(L'\\'))
        full += L'\\';
    return full.append(path.substr(last));
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
