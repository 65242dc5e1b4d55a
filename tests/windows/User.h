#pragma once

#include "tools/driver/ProgramDriver.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <windows.h>

namespace tarv {

/// The user in front of this thread's dialogs: notes what each one shows, then acts. He comes by a timer,
/// which every modal loop serves.
class User {
public:
    explicit User(std::function<void(HWND)> act) : act_(std::move(act)) { current = this; }
    /// Presses a button.
    explicit User(int button) : User([button](HWND dialog) { press(dialog, button); }) {}
    ~User() {
        KillTimer(nullptr, timer_);
        current = nullptr;
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    static void press(HWND dialog, int button) { SendDlgItemMessageW(dialog, button, BM_CLICK, 0, 0); }

    int dialogs = 0;
    HWND owner = nullptr; // of the last dialog, like the texts of all that is to be seen in it
    std::wstring texts;

private:
    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
        EnumThreadWindows(GetCurrentThreadId(), visit, 0);
    }
    static BOOL CALLBACK visit(HWND window, LPARAM) {
        wchar_t kind[16] = L"";
        GetClassNameW(window, kind, 16);
        const bool dialog = kind == std::wstring_view(L"#32770") || kind == std::wstring_view(L"rk_Fehler");
        if (!current || !IsWindowVisible(window) || GetPropW(window, L"visited") || !dialog)
            return TRUE;
        SetPropW(window, L"visited", reinterpret_cast<HANDLE>(1));
        ++current->dialogs;
        current->owner = GetWindow(window, GW_OWNER);
        current->texts = L"|";
        note(window, 0);
        EnumChildWindows(window, note, 0);
        current->act_(window);
        return FALSE;
    }
    static BOOL CALLBACK note(HWND window, LPARAM) {
        if (IsWindowVisible(window))
            current->texts += program::ProgramDriver::text(window) + L"|";
        return TRUE;
    }

    static inline User* current = nullptr;
    std::function<void(HWND)> act_;
    UINT_PTR timer_ = SetTimer(nullptr, 0, 10, look);
};

/// A visible window of this thread, as a host's.
inline HWND makeOwner() {
    return CreateWindowW(L"STATIC", L"Test", WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

} // namespace tarv
