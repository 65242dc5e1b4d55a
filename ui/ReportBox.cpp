#include "ui/ReportBox.h"

#include "ui/Clipboard.h"

#include <commctrl.h>

#include <string>

namespace tarv::ui {
namespace {

constexpr WPARAM controlA = 1;
constexpr WPARAM controlC = 3;

void copy(HWND edit) {
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(edit)), L'\0');
    GetWindowTextW(edit, text.data(), static_cast<int>(text.size() + 1));
    copyToClipboard(edit, begin == end ? text : text.substr(begin, end - begin));
}

LRESULT CALLBACK procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_CHAR:
        if (wParam == controlA) {
            SendMessageW(edit, EM_SETSEL, 0, -1);
            return 0;
        }
        if (wParam == controlC) {
            SendMessageW(edit, WM_COPY, 0, 0);
            return 0;
        }
        break;
    case WM_COPY:
        copy(edit);
        return 0;
    default:
        break;
    }
    return DefSubclassProc(edit, message, wParam, lParam);
}

} // namespace

void makeReportBox(HWND edit) {
    SetWindowSubclass(edit, procedure, 0, 0);
}

} // namespace tarv::ui
