#pragma once

#include <string>
#include <string_view>

namespace tarv {

/// The text in capital letters of code page 1252: names of files, groups and members are compared so.
inline std::wstring capitals(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& letter : result)
        if ((letter >= L'a' && letter <= L'z') || (letter >= L'à' && letter <= L'þ' && letter != L'÷'))
            letter = static_cast<wchar_t>(letter - 32);
    return result;
}

} // namespace tarv
