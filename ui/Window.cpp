#include "ui/Window.h"

#include "ui/WaitCursor.h"
#include "win/Module.h"

#include <algorithm>
#include <new>
#include <utility>

namespace tarv::ui {
namespace {

constexpr UINT largeIconMessage = WM_APP;
constexpr UINT activatedDisabledMessage = WM_APP + 1;

/// Marks the windows of this class, with their module: a host may have others with the same code.
constexpr wchar_t ownProperty[] = L"tarv::ui::Window";

/// GetMessage returns for posted messages only, and what ends a loop may have been sent.
void wakeLoop() {
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

HICON loadIcon(int resource, int metric, int dpi) {
    return static_cast<HICON>(LoadImageW(thisModule(), MAKEINTRESOURCEW(resource), IMAGE_ICON,
                                         systemMetric(metric, dpi), systemMetric(metric, dpi),
                                         LR_DEFAULTCOLOR));
}

void setFont(HWND control, HFONT font) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
    try {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    } catch (...) {
        return FALSE; // no memory: the windows found so far
    }
}

/// All others are disabled.
void bringModalToFront() {
    for (const HWND window : topLevelWindows()) {
        if (IsWindowVisible(window) && IsWindowEnabled(window)) {
            SetForegroundWindow(window);
            return;
        }
    }
}

} // namespace

std::vector<HWND> topLevelWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size() + 1))));
    return text;
}

Font makeFont(const wchar_t* face, int points, int dpi, DWORD family) {
    return Font(CreateFontW(-MulDiv(points, dpi, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                            DEFAULT_CHARSET, OUT_TT_ONLY_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                            family, face));
}

Window* Window::of(HWND window) {
    return GetPropW(window, ownProperty) == thisModule()
               ? reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA))
               : nullptr;
}

void Window::destroyAll() {
    for (const HWND window : topLevelWindows())
        if (of(window)) // it may have gone with another one
            DestroyWindow(window);
}

Window::~Window() {
    if (handle_)
        DestroyWindow(handle_);
}

void Window::create(WindowDescription description) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = thisModule();
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = description.className;
    RegisterClassExW(&windowClass); // fails from the second window on; the class is there

    dialogKeys_ = description.dialogKeys;
    minimumClient_ = description.minimumClient;
    iconResource_ = description.iconResource;
    // Most often the window lies on the primary screen, and then has its size from the beginning.
    dpi_ = primaryScreenDpi();
    const SIZE first =
        outerSize({pixels(description.client.width), pixels(description.client.height)}, description.style,
                  description.extendedStyle, static_cast<bool>(description.menu), dpi_);
    if (!CreateWindowExW(description.extendedStyle, description.className, description.caption,
                         description.style, CW_USEDEFAULT, CW_USEDEFAULT, first.cx, first.cy,
                         description.owner, description.menu.get(), thisModule(), this)) {
        throw std::bad_alloc();
    }
    static_cast<void>(description.menu.release()); // the window destroys its menu
    dpi_ = dpiOf(handle_);
    renewFont();
    showSmallIcon();
    // Only the taskbar and the task switcher show it: it can wait until the window is there.
    PostMessageW(handle_, largeIconMessage, 0, 0);
    if (dpi_ != primaryScreenDpi()) {
        const SIZE outer = outerSizeFor(description.client);
        SetWindowPos(handle_, nullptr, 0, 0, outer.cx, outer.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

HWND Window::addControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, DWORD extendedStyle,
                        int id) {
    // Where windows change their size, a control that grows covers the former place of another. Only with
    // WS_CLIPSIBLINGS does Windows know that what stands there is no longer that other one, and must not go
    // with it to its new place.
    style |= WS_CHILD | (minimumClient_.width > 0 ? WS_CLIPSIBLINGS : 0);
    const HWND control =
        CreateWindowExW(extendedStyle, controlClass, text, style, 0, 0, 0, 0, handle_,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), thisModule(), nullptr);
    setFont(control, font_.get());
    return control;
}

void Window::place(int id, RECT rect) {
    SetWindowPos(control(id), nullptr, rect.left, rect.top, sizeOf(rect).cx, sizeOf(rect).cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

TwipsSize Window::outerSizeInTwips() const {
    RECT rect{};
    GetWindowRect(handle_, &rect);
    return {toTwips(sizeOf(rect).cx, dpi_), toTwips(sizeOf(rect).cy, dpi_)};
}

RECT Window::clientRect() const {
    RECT rect{};
    GetClientRect(handle_, &rect);
    return rect;
}

void Window::moveTo(POINT corner) {
    SetWindowPos(handle_, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Window::centreOnWorkArea(HWND reference) {
    const RECT screen = workAreaOf(reference);
    const SIZE area = sizeOf(screen);
    moveAcrossScreens([&] {
        RECT rect{};
        GetWindowRect(handle_, &rect);
        const SIZE size{std::min(sizeOf(rect).cx, area.cx), std::min(sizeOf(rect).cy, area.cy)};
        SetWindowPos(handle_, nullptr, screen.left + (area.cx - size.cx) / 2,
                     screen.top + (area.cy - size.cy) / 2, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    });
}

void Window::close() {
    if (modal_) {
        closing_ = true;
        wakeLoop();
    } else if (handle_) {
        DestroyWindow(handle_);
    }
}

SIZE Window::outerSizeFor(TwipsSize client) const {
    return outerSize({pixels(client.width), pixels(client.height)},
                     static_cast<DWORD>(GetWindowLongPtrW(handle_, GWL_STYLE)),
                     static_cast<DWORD>(GetWindowLongPtrW(handle_, GWL_EXSTYLE)), GetMenu(handle_) != nullptr,
                     dpi_);
}

void Window::showIcon(WPARAM kind, int metric, Icon& icon) {
    if (iconResource_ == 0)
        return;
    Icon fresh(loadIcon(iconResource_, metric, dpi_));
    SendMessageW(handle_, WM_SETICON, kind, reinterpret_cast<LPARAM>(fresh.get()));
    icon = std::move(fresh);
}

void Window::showSmallIcon() {
    showIcon(ICON_SMALL, SM_CXSMICON, smallIcon_);
}

void Window::showLargeIcon() {
    showIcon(ICON_BIG, SM_CXICON, bigIcon_);
}

void Window::renewFont() {
    const LOGFONTW description = dialogFont(dpi_);
    Font fresh(CreateFontIndirectW(&description));
    for (HWND child = GetWindow(handle_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        setFont(child, fresh.get());
    font_ = std::move(fresh);
}

void Window::changeDpi(int dpi, const RECT& suggested) {
    dpi_ = dpi;
    renewFont();
    showSmallIcon();
    showLargeIcon();
    applyDpi();
    SetWindowPos(handle_, nullptr, suggested.left, suggested.top, sizeOf(suggested).cx, sizeOf(suggested).cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    layout();
    RedrawWindow(handle_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void Window::restoreFocus() {
    const HWND target = IsChild(handle_, lastFocus_) && IsWindowVisible(lastFocus_)
                            ? lastFocus_
                            : GetNextDlgTabItem(handle_, nullptr, FALSE);
    if (target)
        SetFocus(target);
}

void Window::raiseFailure() {
    if (const auto failure = std::exchange(failure_, nullptr))
        std::rethrow_exception(failure);
}

LRESULT Window::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(handle_, message, wParam, lParam);
}

LRESULT Window::dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        if (dialogKeys_ && LOWORD(wParam) == IDCANCEL)
            close();
        else
            onCommand(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_CLOSE:
        close();
        return 0;
    case largeIconMessage:
        showLargeIcon();
        return 0;
    case activatedDisabledMessage:
        if (!IsWindowEnabled(handle_))
            bringModalToFront();
        return 0;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED)
            layout();
        return 0;
    case WM_GETMINMAXINFO:
        if (minimumClient_.width > 0) {
            const SIZE least = outerSizeFor(minimumClient_);
            const SIZE area = sizeOf(workAreaOf(handle_));
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {std::min(least.cx, area.cx),
                                                                     std::min(least.cy, area.cy)};
        }
        return 0;
    case WM_DPICHANGED:
        changeDpi(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_SETTINGCHANGE:
        if (wParam == SPI_SETNONCLIENTMETRICS) {
            renewFont();
            applyDpi();
            layout();
        }
        return 0;
    case WM_SYSCOLORCHANGE:
        for (HWND child = GetWindow(handle_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            SendMessageW(child, message, wParam, lParam);
        break;
    case WM_SETCURSOR:
        if (WaitCursor::showing()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        if (static_cast<short>(LOWORD(lParam)) == HTERROR && HIWORD(lParam) == WM_LBUTTONDOWN)
            bringModalToFront(); // all that a disabled window hears of a click
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE && IsChild(handle_, GetFocus()))
            lastFocus_ = GetFocus();
        if (LOWORD(wParam) != WA_INACTIVE && !IsWindowEnabled(handle_)) {
            // By the taskbar or the task switcher. Another window can be activated once this one is.
            PostMessageW(handle_, activatedDisabledMessage, 0, 0);
        }
        break;
    case WM_SETFOCUS:
        restoreFocus();
        return 0;
    case DM_GETDEFID:
        // Enter presses the button that has the focus, and only that one.
        if (SendMessageW(GetFocus(), WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))
            return MAKELRESULT(GetDlgCtrlID(GetFocus()), DC_HASDEFID);
        return 0;
    case WM_ENDSESSION:
        if (wParam)
            destroyAll();
        return 0;
    default:
        break;
    }
    return onMessage(message, wParam, lParam);
}

LRESULT CALLBACK Window::procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->handle_ = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
        SetPropW(handle, ownProperty, thisModule());
        enableFrameScaling(handle);
    }
    auto* window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (!window)
        return DefWindowProcW(handle, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        RemovePropW(handle, ownProperty);
        window->handle_ = nullptr;
        wakeLoop();
        return DefWindowProcW(handle, message, wParam, lParam);
    }
    try {
        return window->dispatch(message, wParam, lParam);
    } catch (...) {
        // The first failure tells what went wrong; it goes on from the message loop.
        if (!window->failure_)
            window->failure_ = std::current_exception();
        destroyAll();
        return 0;
    }
}

} // namespace tarv::ui
