#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <windows.h>

namespace tarv {

/// Answers the next dialog of this process from outside, as a user would, and notes what it showed. To be
/// made before the call that shows the dialog, and joined behind it.
class DialogAnswer {
public:
    /// `before` does what the user does in the open dialog before he presses the button.
    explicit DialogAnswer(WORD button, std::function<void(HWND)> before = {})
        : before_(std::move(before)), user_([this, button] { answer(button); }) {}
    ~DialogAnswer() { join(); }

    void join() {
        if (user_.joinable()) {
            user_.join();
        }
    }
    bool showed(const std::wstring& text) const {
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    }

    HWND owner = nullptr;
    /// The title and the texts of all controls.
    std::vector<std::wstring> texts;

private:
    static BOOL CALLBACK takeDialog(HWND window, LPARAM found) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        wchar_t name[32] = L"";
        GetClassNameW(window, name, 32);
        if (process != GetCurrentProcessId() || !IsWindowVisible(window) || std::wstring(name) != L"#32770") {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static BOOL CALLBACK takeText(HWND window, LPARAM self) {
        wchar_t text[256] = L"";
        SendMessageW(window, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
        reinterpret_cast<DialogAnswer*>(self)->texts.emplace_back(text);
        return TRUE;
    }

    void answer(WORD button) {
        HWND dialog = nullptr;
        for (int tries = 0; tries < 500 && dialog == nullptr; ++tries) {
            Sleep(10);
            EnumWindows(takeDialog, reinterpret_cast<LPARAM>(&dialog));
        }
        owner = GetWindow(dialog, GW_OWNER);
        takeText(dialog, reinterpret_cast<LPARAM>(this));
        EnumChildWindows(dialog, takeText, reinterpret_cast<LPARAM>(this));
        if (before_) {
            before_(dialog);
        }
        PostMessageW(dialog, WM_COMMAND, button, 0);
    }

    std::function<void(HWND)> before_;
    std::thread user_;
};

} // namespace tarv
