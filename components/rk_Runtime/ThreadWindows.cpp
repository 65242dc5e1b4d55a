#include "components/rk_Runtime/ThreadWindows.h"

namespace tarv::component {
namespace {

BOOL CALLBACK collect(HWND window, LPARAM list) {
    try {
        if (IsWindowEnabled(window))
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    } catch (...) {
        return FALSE; // no memory: the windows found so far
    }
}

} // namespace

ThreadWindowsDisabled::ThreadWindowsDisabled() {
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows_));
    for (const HWND window : windows_)
        EnableWindow(window, FALSE);
}

ThreadWindowsDisabled::~ThreadWindowsDisabled() {
    for (const HWND window : windows_)
        if (IsWindow(window))
            EnableWindow(window, TRUE);
}

} // namespace tarv::component
