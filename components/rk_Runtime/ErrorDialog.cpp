#include "components/rk_Runtime/ErrorDialog.h"

#include "components/rk_Runtime/ErrorText.h"
#include "components/rk_Runtime/Module.h"
#include "components/rk_Runtime/ThreadWindows.h"
#include "components/rk_Runtime/resource.h"
#include "ui/Clipboard.h"
#include "ui/Units.h"
#include "win/Handle.h"

#include <algorithm>
#include <climits>
#include <new>
#include <optional>

namespace tarv::component {
namespace {

constexpr wchar_t headingOk[] = L"Es ist ein Fehler aufgetreten.";
constexpr wchar_t headingRetry[] = L"Es ist ein Fehler aufgetreten. Soll der Vorgang wiederholt werden?";

// Sizes in pixels of a 96-dpi screen.
constexpr SIZE firstClient{500, 260};
constexpr SIZE leastClient{400, 220};
constexpr SIZE buttonSize{100, 28};
constexpr int margin = 14;
constexpr int gap = 8;
constexpr int iconSize = 32;
constexpr int textInset = 6;

/// How much of the paragraph fits into a line: up to behind a blank where there is one.
std::size_t lineLength(HDC dc, std::wstring_view paragraph, int width) {
    constexpr std::size_t most = 200; // characters; our window opens with fewer in a line
    const std::wstring_view part = paragraph.substr(0, most);
    int fitting = 0;
    SIZE size{};
    GetTextExtentExPointW(dc, part.data(), static_cast<int>(part.size()), width, &fitting, nullptr, &size);
    const std::size_t length = std::max<std::size_t>(1, static_cast<std::size_t>(fitting));
    if (length >= paragraph.size())
        return paragraph.size();
    const std::size_t blank = part.substr(0, length).rfind(L' ');
    return blank == std::wstring_view::npos ? length : blank + 1;
}

/// Puts line ends where the lines are full. An edit control needs seconds for a long text since it measures a
/// paragraph again for each of its lines; where that costs little, the breaking stays with it.
std::wstring brokenIntoLines(HDC dc, std::wstring_view text, int width) {
    const std::size_t leftToControl = text.size() > 20'000 ? 0 : 400; // characters of a paragraph
    std::wstring result;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(L"\r\n", start), text.size());
        while (end - start > leftToControl) {
            const std::size_t length = lineLength(dc, text.substr(start, end - start), width);
            if (length == end - start)
                break;
            result.append(text, start, length).append(L"\r\n");
            start += length;
        }
        result.append(text, start, end + 2 - start);
        start = end + 2;
    }
    return result;
}

class ErrorDialog {
public:
    ErrorDialog(const std::wstring& text, Buttons buttons)
        : text_(text), asks_(buttons == Buttons::retryCancel) {}

    int show();

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK controlProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

    INT_PTR onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void initialise();
    void onCommand(int id);
    void end();
    bool onControlKey(WPARAM key);
    void applyDpi();
    void layout();
    void breakIntoLines();
    void fitTo(LRESULT lines);
    void centreOn(HWND window);
    void paint();
    void copy();

    HWND control(int id) const { return GetDlgItem(dialog_, id); }
    int pixels(int at96) const { return MulDiv(at96, dpi_, ui::standardDpi); }
    SIZE outer(SIZE clientAt96) const;
    int lineHeight() const;
    LRESULT report(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendDlgItemMessageW(dialog_, IDC_REPORT, message, wParam, lParam);
    }

    const std::wstring& text_;
    const bool asks_;
    HWND dialog_ = nullptr;
    HWND owner_ = nullptr;
    std::optional<ThreadWindowsDisabled> disabled_;
    int answer_ = 0;
    int dpi_ = ui::standardDpi;
    std::wstring shown_; // the text with line ends for the first width
    /// Of that text in any width; before it is known, enough for a scroll bar.
    LRESULT leastLines_ = LONG_MAX;
    Font font_;
};

int ErrorDialog::show() {
    owner_ = GetActiveWindow();
    disabled_.emplace();
    const INT_PTR answer = DialogBoxParamW(moduleInstance(), MAKEINTRESOURCEW(IDD_FEHLERMELDUNG), owner_,
                                           procedure, reinterpret_cast<LPARAM>(this));
    return static_cast<int>(answer);
}

SIZE sizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

RECT workAreaNear(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

/// Windows 10 would scale the dialog by itself when it moves to another screen, and spoil our layout.
void keepOwnScaling(HWND dialog) {
    using SetBehaviour = BOOL(WINAPI*)(HWND, UINT, UINT);
    constexpr UINT disableAll = 1;
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetDialogDpiChangeBehavior");
    if (address)
        reinterpret_cast<SetBehaviour>(reinterpret_cast<void*>(address))(dialog, disableAll, disableAll);
}

SIZE ErrorDialog::outer(SIZE clientAt96) const {
    return ui::outerSize({pixels(clientAt96.cx), pixels(clientAt96.cy)},
                         static_cast<DWORD>(GetWindowLongPtrW(dialog_, GWL_STYLE)),
                         static_cast<DWORD>(GetWindowLongPtrW(dialog_, GWL_EXSTYLE)), false, dpi_);
}

void ErrorDialog::initialise() {
    keepOwnScaling(dialog_);
    dpi_ = ui::dpiOf(owner_ ? owner_ : dialog_);
    SetWindowTextW(dialog_, errorTitle);
    SetDlgItemTextW(dialog_, IDC_HEADING, asks_ ? headingRetry : headingOk);
    report(EM_SETLIMITTEXT);
    for (const int id : {IDRETRY, IDCANCEL})
        ShowWindow(control(id), asks_ ? SW_SHOW : SW_HIDE);
    ShowWindow(control(IDOK), asks_ ? SW_HIDE : SW_SHOW);
    for (const int id : {IDOK, IDRETRY, IDCANCEL, IDC_COPY, IDC_REPORT})
        SetWindowLongPtrW(
            control(id), GWLP_USERDATA,
            SetWindowLongPtrW(control(id), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(controlProcedure)));
    if (owner_)
        for (const WPARAM kind : {WPARAM{ICON_BIG}, WPARAM{ICON_SMALL}})
            SendMessageW(dialog_, WM_SETICON, kind, SendMessageW(owner_, WM_GETICON, kind, 0));
    applyDpi();
    const SIZE size = outer(firstClient);
    SetWindowPos(dialog_, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    layout();
    // The control breaks all of its text into lines again whenever its size changes: a long text comes last.
    breakIntoLines();
    fitTo(leastLines_);
    SetDlgItemTextW(dialog_, IDC_REPORT, (shown_.empty() ? text_ : shown_).c_str());
    fitTo(report(EM_GETLINECOUNT));
    centreOn(owner_);
    const int first = asks_ ? IDRETRY : IDOK;
    SendMessageW(dialog_, DM_SETDEFID, static_cast<WPARAM>(first), 0);
    SetFocus(control(first));
    MessageBeep(asks_ ? MB_ICONWARNING : MB_ICONERROR);
    if (!owner_)
        SetForegroundWindow(dialog_);
}

void ErrorDialog::applyDpi() {
    const LOGFONTW description = ui::dialogFont(dpi_);
    Font fresh(CreateFontIndirectW(&description));
    for (HWND child = GetWindow(dialog_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(fresh.get()), TRUE);
    font_ = std::move(fresh);
    report(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(pixels(textInset), pixels(textInset)));
}

int ErrorDialog::lineHeight() const {
    const HDC dc = GetDC(dialog_);
    TEXTMETRICW metrics{};
    {
        const Selected selected(dc, font_.get());
        GetTextMetricsW(dc, &metrics);
    }
    ReleaseDC(dialog_, dc);
    return std::max(1, static_cast<int>(metrics.tmHeight));
}

void ErrorDialog::layout() {
    RECT client{};
    GetClientRect(dialog_, &client);
    const auto place = [&](int id, int left, int top, int width, int height) {
        SetWindowPos(control(id), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    };
    const int edge = pixels(margin);
    const SIZE button{pixels(buttonSize.cx), pixels(buttonSize.cy)};
    const int buttonTop = client.bottom - edge - button.cy;
    const int reportTop = edge + pixels(iconSize) + edge;
    const int headingLeft = edge + pixels(iconSize) + edge;
    const int headingTop = edge + (pixels(iconSize) - lineHeight()) / 2;
    place(IDC_HEADING, headingLeft, headingTop, client.right - edge - headingLeft, lineHeight());
    place(IDC_REPORT, edge, reportTop, client.right - 2 * edge, buttonTop - edge - reportTop);
    place(IDC_COPY, edge, buttonTop, button.cx, button.cy);
    const int last = client.right - edge - button.cx;
    place(IDOK, last, buttonTop, button.cx, button.cy);
    place(IDCANCEL, last, buttonTop, button.cx, button.cy);
    place(IDRETRY, last - pixels(gap) - button.cx, buttonTop, button.cx, button.cy);

    // A scroll bar only where there is something to scroll. Trying without one breaks the text again.
    RECT shown{};
    report(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&shown));
    const LRESULT room = sizeOf(shown).cy / lineHeight();
    if (leastLines_ <= room)
        ShowScrollBar(control(IDC_REPORT), SB_VERT, FALSE);
    ShowScrollBar(control(IDC_REPORT), SB_VERT, std::max(leastLines_, report(EM_GETLINECOUNT)) > room);
    InvalidateRect(dialog_, nullptr, TRUE);
}

void ErrorDialog::breakIntoLines() {
    RECT area{};
    report(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    const HDC dc = GetDC(dialog_);
    try {
        const Selected selected(dc, font_.get());
        const int reserve = pixels(textInset); // the control may measure a little wider
        shown_ = brokenIntoLines(dc, text_, sizeOf(area).cx - reserve);
    } catch (const std::bad_alloc&) {
        shown_.clear(); // the control breaks the whole text by itself
    }
    ReleaseDC(dialog_, dc);
    leastLines_ = std::count(shown_.begin(), shown_.end(), L'\n') + 1;
}

/// Takes the height that so many lines need, within reason: long texts scroll.
void ErrorDialog::fitTo(LRESULT textLines) {
    RECT window{};
    RECT shown{};
    GetWindowRect(dialog_, &window);
    report(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&shown));
    const SIZE area = sizeOf(workAreaNear(owner_));
    const LONG most = area.cy * 2 / 3;
    const LONG lines = static_cast<LONG>(std::min<LRESULT>(textLines, most));
    const LONG wanted = sizeOf(window).cy + lines * lineHeight() + pixels(4) - sizeOf(shown).cy;
    const LONG height = std::max(std::min(wanted, most), outer(leastClient).cy);
    SetWindowPos(dialog_, nullptr, 0, 0, sizeOf(window).cx, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    layout();
}

void ErrorDialog::centreOn(HWND window) {
    const RECT area = workAreaNear(window);
    RECT around = area;
    if (window && !IsIconic(window))
        GetWindowRect(window, &around);
    RECT own{};
    GetWindowRect(dialog_, &own);
    const SIZE size = sizeOf(own);
    const LONG left = around.left + (sizeOf(around).cx - size.cx) / 2;
    const LONG top = around.top + (sizeOf(around).cy - size.cy) / 2;
    SetWindowPos(dialog_, nullptr, std::max(area.left, std::min(left, area.right - size.cx)),
                 std::max(area.top, std::min(top, area.bottom - size.cy)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ErrorDialog::paint() {
    PAINTSTRUCT painting;
    const HDC dc = BeginPaint(dialog_, &painting);
    const int size = pixels(iconSize);
    const auto icon = static_cast<HICON>(
        LoadImageW(nullptr, asks_ ? IDI_WARNING : IDI_ERROR, IMAGE_ICON, size, size, LR_SHARED));
    DrawIconEx(dc, pixels(margin), pixels(margin), icon, size, size, 0, nullptr, DI_NORMAL);
    EndPaint(dialog_, &painting);
}

/// What is selected, else everything.
void ErrorDialog::copy() {
    DWORD from = 0;
    DWORD to = 0;
    report(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    if (from != to)
        report(WM_COPY);
    else
        ui::copyToClipboard(dialog_, text_);
}

void ErrorDialog::onCommand(int id) {
    if (id == IDC_COPY)
        copy();
    if (id == IDOK || id == IDRETRY || id == IDCANCEL) {
        answer_ = asks_ ? id : IDOK;
        if (IsWindowEnabled(dialog_))
            end();
        else
            ShowWindow(dialog_, SW_HIDE); // a window that came later is still open and gives way in its turn
    }
}

void ErrorDialog::end() {
    disabled_.reset(); // before this window goes, so that the caller's gets the focus
    EndDialog(dialog_, answer_);
}

/// Ctrl+C and Ctrl+A hold wherever the focus is. True when the key has been used up.
bool ErrorDialog::onControlKey(WPARAM key) {
    if (GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0)
        return false;
    if (key == 'A') {
        SetFocus(control(IDC_REPORT));
        report(EM_SETSEL, 0, -1);
    } else if (key == 'C' || key == VK_INSERT) {
        copy();
    } else {
        return false;
    }
    return true;
}

INT_PTR ErrorDialog::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        onCommand(LOWORD(wParam));
        return TRUE;
    case WM_ENABLE:
        if (wParam && answer_)
            end();
        return TRUE;
    case WM_SIZE:
        layout();
        return TRUE;
    case WM_PAINT:
        paint();
        return TRUE;
    case WM_GETMINMAXINFO: {
        const SIZE least = outer(leastClient);
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
        return TRUE;
    }
    case WM_CTLCOLORSTATIC:
        if (reinterpret_cast<HWND>(lParam) != control(IDC_REPORT))
            return FALSE;
        // Read-only, but meant to be read: the colours of a text, not of a disabled field.
        SetTextColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOWTEXT));
        SetBkColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
    case WM_DPICHANGED: {
        const RECT& suggested = *reinterpret_cast<const RECT*>(lParam);
        dpi_ = LOWORD(wParam);
        applyDpi();
        SetWindowPos(dialog_, nullptr, suggested.left, suggested.top, sizeOf(suggested).cx,
                     sizeOf(suggested).cy, SWP_NOZORDER | SWP_NOACTIVATE);
        layout();
        return TRUE;
    }
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK ErrorDialog::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    // Nothing in here throws through the frames of Windows: breakIntoLines alone allocates, and catches.
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        auto* self = reinterpret_cast<ErrorDialog*>(lParam);
        self->dialog_ = dialog;
        self->initialise();
        return FALSE; // the focus stands already
    }
    auto* self = reinterpret_cast<ErrorDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    return self ? self->onMessage(message, wParam, lParam) : FALSE;
}

LRESULT CALLBACK ErrorDialog::controlProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto original = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(control, GWLP_USERDATA));
    auto* self = reinterpret_cast<ErrorDialog*>(GetWindowLongPtrW(GetParent(control), DWLP_USER));
    if (message == WM_KEYDOWN && self && self->onControlKey(wParam))
        return 0;
    return CallWindowProcW(original, control, message, wParam, lParam);
}

} // namespace

int showErrorDialog(const std::wstring& text, Buttons buttons) {
    return ErrorDialog(text, buttons).show();
}

} // namespace tarv::component
