#include "platform/windows/WindowsCodePage.h"

#include "win/SystemText.h"

namespace tarv {

std::string WindowsCodePage::toAnsi(std::wstring_view text) {
    return tarv::toAnsi(text);
}

std::wstring WindowsCodePage::fromAnsi(std::string_view bytes) {
    return tarv::fromAnsi(bytes);
}

} // namespace tarv
