#include "components/rk_Runtime/ErrorDialog.h"

#include "components/rk_Runtime/ErrorText.h"
#include "ui/Clipboard.h"
#include "ui/MessageLoop.h"
#include "ui/ReportBox.h"
#include "ui/Window.h"
#include "win/Handle.h"
#include "win/Module.h"

#include <commctrl.h>

#include <algorithm>
#include <climits>
#include <optional>
#include <utility>

namespace tarv::component {
namespace {

constexpr wchar_t headingOk[] = L"Es ist ein Fehler aufgetreten.";
constexpr wchar_t headingRetry[] = L"Es ist ein Fehler aufgetreten. Soll der Vorgang wiederholt werden?";

constexpr ui::TwipsSize firstClient{7500, 3900};
constexpr ui::TwipsSize leastClient{6000, 3300};
constexpr ui::Twips iconSize = 480;
constexpr ui::Twips textInset = 90;

/// While it lives, windows are made of the common controls of version 6, which the host's manifest may not
/// ask for: they would look as in 1995. A window keeps what it was made of.
class ModernControls {
public:
    ModernControls() {
        static const HANDLE context = [] {
            ACTCTXW description{};
            description.cbSize = sizeof description;
            description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
            description.hModule = thisModule();
            description.lpResourceName = ISOLATIONAWARE_NOSTATICIMPORT_MANIFEST_RESOURCE_ID;
            return CreateActCtxW(&description);
        }();
        active_ = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie_);
    }
    ~ModernControls() {
        if (active_)
            DeactivateActCtx(0, cookie_);
    }
    ModernControls(const ModernControls&) = delete;
    ModernControls& operator=(const ModernControls&) = delete;

private:
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

/// The text with a tab behind each label ("Nummer: ", "Ziel:     "): on the screen the values stand in one
/// column, whatever the font.
std::wstring inColumns(std::wstring_view text) {
    constexpr std::size_t longestLabel = 8;
    std::wstring result;
    while (!text.empty()) {
        const std::wstring_view line = text.substr(0, std::min(text.find(L'\n'), text.size() - 1) + 1);
        const std::size_t blank = line.find(L' ');
        const bool labelled = blank <= longestLabel && blank > 0 && line[blank - 1] == L':';
        const std::size_t value = labelled ? line.find_first_not_of(L' ', blank) : 0;
        result.append(line.substr(0, value)).append(labelled ? L"\t" : L"");
        result.append(line.substr(std::min(value, line.size())));
        text.remove_prefix(line.size());
    }
    return result;
}

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

class ErrorDialog final : public ui::Window {
public:
    ErrorDialog(const std::wstring& text, Buttons buttons);

    int show();

private:
    void close() override;
    bool translateKey(const MSG& message) override;
    void layout() override;
    void applyDpi() override;
    void onCommand(int id, int notification) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::wstring brokenText() const;
    void fitTo(LRESULT lines);
    void centreOnOwner();
    void paint();
    void copy();

    int lineHeight() const;
    RECT textRect() const {
        RECT rect{};
        report(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
        return rect;
    }
    LRESULT report(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(control(IDC_REPORT), message, wParam, lParam);
    }

    const std::wstring& text_;
    const bool asks_;
    const HWND owner_ = GetActiveWindow();
    std::optional<ui::ModalScope> scope_;
    int answer_ = 0;
    /// Of the shown text in any width; before it is known, enough for a scroll bar.
    LRESULT leastLines_ = LONG_MAX;
};

ErrorDialog::ErrorDialog(const std::wstring& text, Buttons buttons)
    : text_(text), asks_(buttons == Buttons::retryCancel) {
    create({.className = L"rk_Fehler",
            .caption = errorTitle,
            .style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN,
            .owner = owner_,
            .client = firstClient,
            .minimumClient = leastClient,
            .dialogKeys = true});
    const auto addButton = [&](const wchar_t* caption, int id, DWORD kind) {
        addControl(WC_BUTTONW, caption, kind | WS_VISIBLE | WS_TABSTOP, 0, id);
    };
    addButton(asks_ ? L"&Wiederholen" : L"OK", asks_ ? IDRETRY : IDOK, BS_DEFPUSHBUTTON);
    if (asks_)
        addButton(L"&Abbrechen", IDCANCEL, BS_PUSHBUTTON);
    addButton(L"&Kopieren", IDC_COPY, BS_PUSHBUTTON);
    addControl(WC_STATICW, asks_ ? headingRetry : headingOk, SS_NOPREFIX | WS_VISIBLE, 0, IDC_HEADING);
    ui::makeReportBox(addControl(
        WC_EDITW, L"", ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_VISIBLE | WS_TABSTOP,
        WS_EX_CLIENTEDGE, IDC_REPORT));
    report(EM_SETLIMITTEXT);
    focusFirst(asks_ ? IDRETRY : IDOK);
    if (owner_)
        for (const WPARAM kind : {WPARAM{ICON_BIG}, WPARAM{ICON_SMALL}})
            SendMessageW(handle(), WM_SETICON, kind, SendMessageW(owner_, WM_GETICON, kind, 0));
    applyDpi();
    layout();
    centreOnOwner(); // on its screen, before anything is measured
    const std::wstring shown = brokenText();
    leastLines_ = std::count(shown.begin(), shown.end(), L'\n') + 1;
    fitTo(leastLines_);
    SetWindowTextW(control(IDC_REPORT), shown.c_str());
    fitTo(report(EM_GETLINECOUNT));
    centreOnOwner();
}

int ErrorDialog::show() {
    scope_.emplace(*this);
    MessageBeep(asks_ ? MB_ICONWARNING : MB_ICONERROR);
    if (!owner_)
        SetForegroundWindow(handle());
    ui::runModal(*this);
    scope_.reset(); // before this window goes, so that the caller's gets the focus
    return answer_;
}

void ErrorDialog::close() {
    if (!answer_)
        answer_ = asks_ ? IDCANCEL : IDOK;
    if (!IsWindowEnabled(handle()))
        ShowWindow(handle(), SW_HIDE); // a window that came later is still open and gives way in its turn
    Window::close();
}

void ErrorDialog::applyDpi() {
    const WORD inset = static_cast<WORD>(pixels(textInset));
    const UINT column = 48; // quarters of a letter's usual width
    report(EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&column));
    report(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(inset, inset));
}

int ErrorDialog::lineHeight() const {
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    const Selected selected(dc.get(), font());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.get(), &metrics);
    return std::max(1, static_cast<int>(metrics.tmHeight));
}

void ErrorDialog::layout() {
    const RECT client = clientRect();
    const LONG edge = pixels(ui::windowMargin);
    const LONG text = edge + pixels(iconSize) + edge; // left of the heading, and top of the report
    const LONG bottom = client.bottom - edge;
    const LONG top = bottom - pixels(ui::buttonSize.height);
    const LONG width = pixels(ui::buttonSize.width);
    const LONG right = client.right - edge;
    const LONG second = right - width - pixels(ui::controlGap);
    const LONG headingTop = edge + (pixels(iconSize) - lineHeight()) / 2;
    place(IDC_HEADING, {text, headingTop, right, headingTop + lineHeight()});
    place(IDC_REPORT, {edge, text, right, top - edge});
    place(IDC_COPY, {edge, top, edge + width, bottom});
    place(IDOK, {right - width, top, right, bottom});
    place(IDCANCEL, {right - width, top, right, bottom});
    place(IDRETRY, {second - width, top, second, bottom});

    // A scroll bar only where there is something to scroll. Trying without one breaks the text again.
    const LRESULT room = ui::sizeOf(textRect()).cy / lineHeight();
    if (leastLines_ <= room)
        ShowScrollBar(control(IDC_REPORT), SB_VERT, FALSE);
    ShowScrollBar(control(IDC_REPORT), SB_VERT, std::max(leastLines_, report(EM_GETLINECOUNT)) > room);
    InvalidateRect(handle(), nullptr, TRUE);
}

std::wstring ErrorDialog::brokenText() const {
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    const Selected selected(dc.get(), font());
    const int reserve = pixels(textInset); // the control may measure a little wider
    return brokenIntoLines(dc.get(), inColumns(text_), ui::sizeOf(textRect()).cx - reserve);
}

/// Takes the height that so many lines need, within reason: long texts scroll.
void ErrorDialog::fitTo(LRESULT textLines) {
    RECT window{};
    GetWindowRect(handle(), &window);
    const LONG most = ui::sizeOf(ui::workAreaOf(owner_)).cy * 2 / 3;
    const LONG lines = static_cast<LONG>(std::min<LRESULT>(textLines, most));
    const LONG more = lines * lineHeight() + pixels(60) - ui::sizeOf(textRect()).cy;
    const LONG height = std::max(std::min(ui::sizeOf(window).cy + more, most), outerSizeFor(leastClient).cy);
    SetWindowPos(handle(), nullptr, 0, 0, ui::sizeOf(window).cx, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    layout();
}

void ErrorDialog::centreOnOwner() {
    const RECT area = ui::workAreaOf(owner_);
    RECT around = area;
    if (owner_ && !IsIconic(owner_))
        GetWindowRect(owner_, &around);
    moveAcrossScreens([&] {
        RECT own{};
        GetWindowRect(handle(), &own);
        const SIZE size = ui::sizeOf(own);
        const LONG left = around.left + (ui::sizeOf(around).cx - size.cx) / 2;
        const LONG top = around.top + (ui::sizeOf(around).cy - size.cy) / 2;
        moveTo({std::max(area.left, std::min(left, area.right - size.cx)),
                std::max(area.top, std::min(top, area.bottom - size.cy))});
    });
}

void ErrorDialog::paint() {
    PAINTSTRUCT painting;
    const HDC dc = BeginPaint(handle(), &painting);
    const int size = pixels(iconSize);
    const auto icon = static_cast<HICON>(
        LoadImageW(nullptr, asks_ ? IDI_WARNING : IDI_ERROR, IMAGE_ICON, size, size, LR_SHARED));
    DrawIconEx(dc, pixels(ui::windowMargin), pixels(ui::windowMargin), icon, size, size, 0, nullptr,
               DI_NORMAL);
    EndPaint(handle(), &painting);
}

/// What is selected, else everything.
void ErrorDialog::copy() {
    DWORD from = 0;
    DWORD to = 0;
    report(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    if (from != to)
        report(WM_COPY);
    else
        ui::copyToClipboard(handle(), text_);
}

void ErrorDialog::onCommand(int id, int /*notification*/) {
    if (id == IDC_COPY) {
        copy();
    } else if (id == IDOK || id == IDRETRY) { // IDOK is also Enter beside the buttons
        answer_ = asks_ ? IDRETRY : IDOK;
        close();
    }
}

/// Ctrl+C and Ctrl+A hold wherever the focus is.
bool ErrorDialog::translateKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0)
        return false;
    if (message.wParam == 'A') {
        SetFocus(control(IDC_REPORT));
        report(EM_SETSEL, 0, -1);
    } else if (message.wParam == 'C' || message.wParam == VK_INSERT) {
        copy();
    } else {
        return false;
    }
    return true;
}

LRESULT ErrorDialog::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ENABLE:
        if (wParam && answer_)
            scope_.reset(); // closed before a later window: nothing holds the host any more
        return 0;
    case WM_PAINT:
        paint();
        return 0;
    case WM_CTLCOLORSTATIC:
        if (reinterpret_cast<HWND>(lParam) == control(IDC_REPORT))
            return ui::reportBoxColours(reinterpret_cast<HDC>(wParam));
        break;
    default:
        break;
    }
    return Window::onMessage(message, wParam, lParam);
}

} // namespace

int showErrorDialog(const std::wstring& text, Buttons buttons) {
    std::optional<ModernControls> modern(std::in_place);
    ErrorDialog dialog(text, buttons);
    modern.reset(); // what the host does meanwhile goes on as it is used to
    return dialog.show();
}

} // namespace tarv::component
