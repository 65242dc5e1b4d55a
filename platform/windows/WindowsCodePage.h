#pragma once

#include "platform/CodePage.h"

namespace tarv {

class WindowsCodePage final : public CodePage {
public:
    std::string toAnsi(std::wstring_view text) override;
    std::wstring fromAnsi(std::string_view bytes) override;
};

} // namespace tarv
