#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include <windows.h>

namespace tarv {

/// Conversion by the system's ANSI code page (CP_ACP), as the ANSI functions do it themselves.
std::string toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view bytes);

/// The file name for an ANSI function. A name that the code page cannot express without loss is replaced by
/// its short form, so that the function does not meet another file.
std::string toAnsiFileName(std::wstring_view name);

/// The name as it reads from the current folder, that of the named drive included; trailing blanks and dots
/// go, as GetFullPathName has it. Empty for an empty name.
std::wstring fullName(std::wstring_view name);

/// The name for a wide file function: a path of a length that plain names may not have gets the prefix for
/// long ones; every other name stays as it is.
std::wstring toFileName(std::wstring_view path);

/// The full name for the shell, which is sure of no other. The last part stays as written unless it is "." or
/// "..": making it full would take the dot off "*.", which would then mean every file.
std::wstring toShellName(std::wstring_view path);

/// The system's description of an error code or HRESULT, without a line end; empty when it has none.
std::wstring systemMessage(DWORD code);

/// The text of a function that fills a buffer of the given size and answers the length, or at least that
/// size when the buffer is too small.
template <class Fill>
std::wstring filledText(Fill fill) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size()) {
            text.resize(length);
            return text;
        }
        text.resize(std::max<std::size_t>(length, text.size() * 2));
    }
}

} // namespace tarv
