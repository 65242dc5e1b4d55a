#pragma once

#include "platform/Desktop.h"
#include "platform/windows/WindowsPlatform.h"

namespace tarv {

class WindowsDesktop final : public Desktop {
public:
    std::int32_t messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) override;
    void pumpMessages() override;
    bool quitPending() override;
    void sleep(std::uint32_t milliseconds) override;
    WindowHandle activeWindow() override;
    WindowHandle activeForm() override;
    bool isWindow(WindowHandle window) override;
    void setFocus(WindowHandle window) override;
    void redraw(WindowHandle window) override;

    void setMessageFilter(MessageFilter filter) { filter_ = filter; }

private:
    MessageFilter filter_ = nullptr;
};

} // namespace tarv
