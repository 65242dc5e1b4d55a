#pragma once

#include <string>
#include <string_view>

namespace tarv {

/// Conversion between the suite's wide texts and the system's ANSI code page.
class CodePage {
public:
    virtual ~CodePage() = default;

    /// A character outside the code page becomes the system's replacement, usually "?".
    virtual std::string toAnsi(std::wstring_view text) = 0;
    virtual std::wstring fromAnsi(std::string_view bytes) = 0;
};

} // namespace tarv
