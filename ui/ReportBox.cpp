#include "ui/ReportBox.h"

#include "ui/Clipboard.h"
#include "ui/Window.h"
#include "win/Handle.h"

#include <string>

namespace tarv::ui {
namespace {

constexpr WPARAM controlA = 1;
constexpr WPARAM controlC = 3;

void copy(HWND edit) {
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    const std::wstring text = textOf(edit);
    copyToClipboard(edit, begin == end ? text : text.substr(begin, end - begin));
}

LRESULT CALLBACK procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
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
    case WM_CONTEXTMENU:
        // The window may have a menu of its own for it.
        if (SendMessageW(GetParent(edit), message, wParam, lParam) != 0)
            return 0;
        break;
    default:
        break;
    }
    const auto former = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(edit, GWLP_USERDATA));
    return CallWindowProcW(former, edit, message, wParam, lParam);
}

} // namespace

void fitReportBox(HWND edit, int inset) {
    RECT text{};
    const HDC dc = GetDC(edit);
    {
        const Selected font(dc, reinterpret_cast<HFONT>(SendMessageW(edit, WM_GETFONT, 0, 0)));
        DrawTextW(dc, textOf(edit).c_str(), -1, &text, DT_CALCRECT | DT_NOPREFIX | DT_EXPANDTABS);
    }
    ReleaseDC(edit, dc);
    RECT shown{};
    GetClientRect(edit, &shown);
    ShowScrollBar(edit, SB_HORZ, text.right > shown.right - 2 * inset);
    GetClientRect(edit, &shown);
    ShowScrollBar(edit, SB_VERT, text.bottom > shown.bottom - 2 * inset);
    GetClientRect(edit, &shown);
    InflateRect(&shown, -inset, -inset);
    SendMessageW(edit, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&shown));
}

void makeReportBox(HWND edit) {
    // The common controls' own way would need their library, in a version that a host may not have.
    SetWindowLongPtrW(edit, GWLP_USERDATA, GetWindowLongPtrW(edit, GWLP_WNDPROC));
    SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

LRESULT reportBoxColours(HDC dc) {
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
}

} // namespace tarv::ui
