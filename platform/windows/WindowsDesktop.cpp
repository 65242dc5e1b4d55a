#include "platform/Desktop.h"
#include "platform/windows/BorderHandles.h"
#include "platform/windows/Makers.h"
#include "platform/windows/WindowsPlatform.h"

#include <string>

namespace tarv {

namespace {

/// Bounds of one pump: a window that never validates its area, or messages that post messages, would
/// otherwise keep it for ever. What is left waits for the next call.
constexpr int mostMessages = 1000;
constexpr ULONGLONG longestPump = 250; // milliseconds

BOOL CALLBACK takeUsableWindow(HWND window, LPARAM found) {
    if (!IsWindowVisible(window) || !IsWindowEnabled(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

/// The active window, or the one that a user would work with while another program is in front. Without an
/// owner a box could lie behind the window it belongs to.
HWND messageOwner() {
    HWND owner = GetActiveWindow();
    if (!owner)
        EnumThreadWindows(GetCurrentThreadId(), takeUsableWindow, reinterpret_cast<LPARAM>(&owner));
    return owner;
}

class WindowsDesktop final : public Desktop {
public:
    explicit WindowsDesktop(MessageFilter filter) : filter_(filter) {}

    std::int32_t messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) override {
        return MessageBoxW(messageOwner(), std::wstring(text).c_str(), std::wstring(title).c_str(), style);
    }

    void pumpMessages() override {
        const ULONGLONG start = GetTickCount64();
        MSG message;
        for (int handled = 0; handled < mostMessages && GetTickCount64() - start < longestPump; ++handled) {
            if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                return;
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam));
                return;
            }
            if (filter_ && filter_(message))
                continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    bool quitPending() override {
        MSG message;
        return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != FALSE;
    }

    void sleep(std::uint32_t milliseconds) override { Sleep(milliseconds); }

    WindowHandle activeWindow() override { return toBorder(GetActiveWindow()); }

    WindowHandle activeForm() override {
        // Boxes and dialogs of the system are windows of their own modules; the form is what they belong to.
        HWND window = GetActiveWindow();
        const auto program = reinterpret_cast<LONG_PTR>(GetModuleHandleW(nullptr));
        while (window && GetWindowLongPtrW(window, GWLP_HINSTANCE) != program)
            window = GetWindow(window, GW_OWNER);
        return toBorder(window);
    }

    bool isWindow(WindowHandle window) override { return IsWindow(toSystem(window)) != FALSE; }

    void setFocus(WindowHandle window) override { SetFocus(toSystem(window)); }

    void redraw(WindowHandle window) override {
        RedrawWindow(toSystem(window), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }

private:
    MessageFilter filter_;
};

} // namespace

std::unique_ptr<Desktop> makeDesktop(MessageFilter filter) {
    return std::make_unique<WindowsDesktop>(filter);
}

} // namespace tarv
