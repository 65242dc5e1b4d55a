#include "infocenter/frmInfo4Prg.h"

#include "infocenter/InfoReport.h"
#include "infocenter/Search.h"
#include "infocenter/WholeText.h"
#include "infocenter/ids.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "ui/Clipboard.h"
#include "ui/MessageLoop.h"
#include "ui/ReportBox.h"
#include "ui/SaveDialog.h"
#include "ui/WaitCursor.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tarv {
namespace {

constexpr int reportPoints = 10;
constexpr ui::Twips reportInset = 90;
constexpr ui::Twips findLabelWidth = 750;
constexpr ui::Twips findResultWidth = 1500;

enum Tab {
    tabInfo,
    tabIniFile
};
constexpr const wchar_t* tabCaptions[] = {L"Info", L"INI-Datei"};
constexpr int pages[] = {ID_txtInfo, ID_treeView};
constexpr int findLine[] = {ID_lblFind, ID_txtFind, ID_cmdFind, ID_lblFound};

/// The context menu of report and tree; an id of 0 is a separator line.
constexpr struct {
    int id;
    const wchar_t* caption;
    bool ofTree;
} contextMenu[] = {
    {ID_mnuCopy, L"&Kopieren\tStrg+C", false},
    {ID_mnuCopyGroup, L"&Gruppe kopieren", true},
    {ID_mnuCopyAll, L"&Alles kopieren\tStrg+Umschalt+C", false},
    {0, nullptr, false},
    {ID_mnuOpenAll, L"Alle ö&ffnen", true},
    {ID_mnuCloseAll, L"Alle s&chließen", true},
    {0, nullptr, false},
    {ID_mnuFind, L"&Suchen…\tStrg+F", false},
    {ID_mnuSave, L"Bericht s&peichern…\tStrg+S", false},
    {ID_mnuRefresh, L"Akt&ualisieren\tF5", false},
};

} // namespace

frmInfo4Prg::frmInfo4Prg(Runtime& rt) : rt_(rt) {
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TAB_CLASSES | ICC_TREEVIEW_CLASSES};
    ui::late::InitCommonControlsEx(&controls);
    create({.className = L"frmInfo4Prg",
            .caption = TranslateText(L"Infocenter").c_str(),
            .style = (WS_OVERLAPPEDWINDOW & ~static_cast<DWORD>(WS_MINIMIZEBOX)) | WS_CLIPCHILDREN,
            .client = {10500, 7500},
            .minimumClient = {5400, 3600},
            .iconResource = IDI_PROGRAM,
            .dialogKeys = true});
    const HWND tabs = add(WC_TABCONTROLW, L"", WS_VISIBLE | WS_TABSTOP, 0, ID_SSTab1);
    for (int index = 0; index < static_cast<int>(std::size(tabCaptions)); ++index) {
        std::wstring caption = TranslateText(tabCaptions[index]);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        SendMessageW(tabs, TCM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    }
    // A label names what comes behind it to screen readers, also when it is not to be seen.
    add(WC_STATICW, L"Info", 0, 0, ID_lblInfo);
    ui::makeReportBox(add(WC_EDITW, L"",
                          ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL |
                              WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
                          WS_EX_CLIENTEDGE, ID_txtInfo));
    // The window text is what a screen reader calls the tree.
    treeView_.attach(add(WC_TREEVIEWW, tabCaptions[tabIniFile],
                         TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_SHOWSELALWAYS | WS_TABSTOP,
                         WS_EX_CLIENTEDGE, ID_treeView));
    add(WC_BUTTONW, L"B&eenden", BS_PUSHBUTTON | WS_VISIBLE | WS_TABSTOP, 0, ID_cmdEnd);
    // Siblings paint in this order: the pages lie on top of the tab control.
    SetWindowPos(tabs, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SkinFramework1_ = {rt_.platform.automation->create(skinControlProgId).valueOr(nullptr), platformHandle()};
    applyDpi();
    layout();
    showTab(tabInfo);
    focusFirst(ID_txtInfo);
    centreOnWorkArea(GetActiveWindow());
}

HWND frmInfo4Prg::add(const wchar_t* kind, const wchar_t* text, DWORD style, DWORD extendedStyle, int id) {
    return addControl(kind, TranslateText(text).c_str(), style, extendedStyle, id);
}

void frmInfo4Prg::showModal() {
    const ui::ModalScope modal(*this);
    load();
    ui::runModal(*this);
}

void frmInfo4Prg::load() {
    const ui::WaitCursor wait;
    read();
    if (alive())
        ApplySkin(rt_, SkinFramework1_, std::nullopt, true, false, false);
}

void frmInfo4Prg::read() {
    // Messages are handled while a slow machine answers: the window may be gone after each step.
    report_ = BuildInfoReport(rt_);
    if (!alive())
        return;
    SetWindowTextW(control(ID_txtInfo), report_.c_str());
    ui::fitReportBox(control(ID_txtInfo), pixels(reportInset));
    IniTree tree = ReadIniTree(rt_);
    if (alive())
        treeView_.fill(std::move(tree));
}

void frmInfo4Prg::refresh() {
    if (refreshing_)
        return;
    refreshing_ = true;
    const ui::WaitCursor wait;
    DWORD begin = 0, end = 0;
    SendMessageW(control(ID_txtInfo), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    read();
    SendMessageW(control(ID_txtInfo), EM_SETSEL, begin, static_cast<LPARAM>(end));
    refreshing_ = false;
}

int frmInfo4Prg::selectedTab() const {
    return TabCtrl_GetCurSel(control(ID_SSTab1));
}

HWND frmInfo4Prg::page() const {
    return control(pages[selectedTab()]);
}

void frmInfo4Prg::showTab(int index) {
    continued_ = false;
    TabCtrl_SetCurSel(control(ID_SSTab1), index);
    ShowWindow(page(), SW_SHOW);
    for (const int id : pages) {
        if (control(id) != page()) {
            if (GetFocus() == control(id))
                SetFocus(page());
            ShowWindow(control(id), SW_HIDE);
        }
    }
}

void frmInfo4Prg::addFindLine() {
    add(WC_STATICW, L"&Suchen:", SS_CENTERIMAGE, 0, ID_lblFind);
    add(WC_EDITW, L"", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, ID_txtFind);
    add(WC_BUTTONW, L"&Weiter", BS_PUSHBUTTON | WS_TABSTOP, 0, ID_cmdFind);
    add(WC_STATICW, L"", SS_CENTERIMAGE, 0, ID_lblFound);
    // The Tab key comes to it first.
    for (auto id = std::rbegin(findLine); id != std::rend(findLine); ++id)
        SetWindowPos(control(*id), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void frmInfo4Prg::showFindLine(bool open) {
    if (findOpen_ == open)
        return;
    if (!control(ID_txtFind))
        addFindLine(); // who never looks for anything does not wait for it
    findOpen_ = open;
    for (const int id : findLine) {
        if (!open && GetFocus() == control(id))
            SetFocus(page());
        ShowWindow(control(id), open ? SW_SHOW : SW_HIDE);
    }
    layout();
}

void frmInfo4Prg::find(bool backwards) {
    showFindLine(true);
    const std::wstring wanted = ui::textOf(control(ID_txtFind));
    if (wanted.empty()) {
        SetFocus(control(ID_txtFind));
        return;
    }
    const SearchStep step{backwards, std::exchange(continued_, true)};
    bool found = false, wrapped = false;
    if (selectedTab() == tabInfo) {
        const HWND report = control(ID_txtInfo);
        DWORD begin = 0;
        SendMessageW(report, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), 0);
        if (const auto at = findInText(report_, wanted, begin, step, wrapped)) {
            found = true;
            SendMessageW(report, EM_SETSEL, *at, static_cast<LPARAM>(*at + wanted.size()));
            SendMessageW(report, EM_SCROLLCARET, 0, 0);
        }
    } else if (const auto node = findInTree(treeView_.tree(), wanted,
                                            treeView_.selected().value_or(NodePlace{}), step, wrapped)) {
        found = true;
        treeView_.select(*node);
    }
    showFound(!found      ? L"Nicht gefunden"
              : !wrapped  ? L""
              : backwards ? L"Von hinten weiter"
                          : L"Von vorn weiter");
}

void frmInfo4Prg::showFound(const wchar_t* text) {
    const HWND label = control(ID_lblFound);
    SetWindowTextW(label, TranslateText(text).c_str());
    constexpr DWORD liveRegionChanged = 0x8019; // EVENT_OBJECT_LIVEREGIONCHANGED: screen readers say the text
    NotifyWinEvent(liveRegionChanged, label, OBJID_CLIENT, CHILDID_SELF);
}

void frmInfo4Prg::copy(const std::wstring& text) {
    if (!text.empty() && !ui::copyToClipboard(handle(), text)) {
        rt_.platform.desktop->messageBox(
            TranslateText(
                L"Ein anderes Programm hält die Zwischenablage besetzt. Bitte noch einmal versuchen."),
            TranslateText(L"Infocenter"), message_box::exclamation);
    }
}

void frmInfo4Prg::save() {
    const std::string bytes = markedUtf8(wholeText(report_, treeView_.tree()));
    SYSTEMTIME today{};
    GetLocalTime(&today);
    std::wstring name = wholeTextFileName(GetPCName(rt_), today.wYear, today.wMonth, today.wDay);
    // A place that refuses is told, and another one asked for.
    while (const auto chosen = ui::askSaveName(handle(), TranslateText(L"Bericht speichern"),
                                               TranslateText(L"Textdateien (*.txt)"), name)) {
        const auto failure = saveWhole(rt_, *chosen, bytes);
        if (!failure || !alive())
            return;
        rt_.platform.desktop->messageBox(*failure, TranslateText(L"Infocenter"), message_box::exclamation);
        name = *chosen;
    }
}

void frmInfo4Prg::showContextMenu(POINT at) {
    if (at.x == -1 && at.y == -1) { // by keyboard
        RECT shown{};
        GetClientRect(page(), &shown);
        if (selectedTab() == tabInfo)
            GetCaretPos(&at);
        else
            at = treeView_.belowSelected();
        at = {std::clamp(at.x, shown.left, shown.right), std::clamp(at.y, shown.top, shown.bottom)};
        ClientToScreen(page(), &at);
    } else if (selectedTab() == tabIniFile) {
        treeView_.selectAt(at);
    }
    const Menu menu(CreatePopupMenu());
    for (const auto& [id, caption, ofTree] : contextMenu) {
        const bool without = ofTree && (selectedTab() == tabInfo || treeView_.tree().groups.empty());
        AppendMenuW(menu.get(),
                    id == 0   ? MF_SEPARATOR
                    : without ? MF_GRAYED
                              : MF_STRING,
                    static_cast<UINT_PTR>(id), caption ? TranslateText(caption).c_str() : nullptr);
    }
    if (const int chosen =
            TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, handle(), nullptr))
        onCommand(chosen, 0);
}

bool frmInfo4Prg::translateKey(const MSG& message) {
    const bool control = GetKeyState(VK_CONTROL) < 0, shift = GetKeyState(VK_SHIFT) < 0;
    // Not every tree control hands Shift+F10 on.
    if (message.message == WM_SYSKEYDOWN && message.wParam == VK_F10 && shift && message.hwnd == page()) {
        showContextMenu({-1, -1});
        return true;
    }
    if (message.message != WM_KEYDOWN || GetKeyState(VK_MENU) < 0) // AltGr is Ctrl and Alt
        return false;
    const auto command = [&](int id) {
        onCommand(id, 0);
        return true;
    };
    switch (message.wParam) {
    case VK_F3:
        find(shift);
        return true;
    case VK_F5:
        return command(ID_mnuRefresh);
    case VK_ESCAPE: {
        const bool used = findOpen_;
        showFindLine(false);
        return used;
    }
    case VK_TAB:
    case VK_PRIOR:
    case VK_NEXT: {
        if (!control)
            return false;
        const int count = static_cast<int>(std::size(pages));
        const bool backwards = message.wParam == VK_PRIOR || shift;
        showTab((selectedTab() + (backwards ? count - 1 : 1)) % count);
        return true;
    }
    case 'F':
        return control && command(ID_mnuFind);
    case 'S':
        return control && command(ID_mnuSave);
    case 'C':
        if (control && shift)
            return command(ID_mnuCopyAll);
        [[fallthrough]];
    case VK_INSERT:
        return control && message.hwnd == this->control(ID_treeView) && command(ID_mnuCopy);
    default:
        return false;
    }
}

void frmInfo4Prg::layout() {
    const RECT client = clientRect();
    const int edge = pixels(ui::windowMargin), gap = pixels(ui::controlGap);
    const int buttonWidth = pixels(ui::buttonSize.width), buttonHeight = pixels(ui::buttonSize.height);
    const int right = client.right - edge, buttonTop = client.bottom - edge - buttonHeight;
    RECT tabs{edge, edge, right, buttonTop - gap};
    if (findOpen_) {
        const int bottom = edge + buttonHeight, input = edge + pixels(findLabelWidth);
        const int result = right - pixels(findResultWidth), button = result - gap - buttonWidth;
        place(ID_lblFind, {edge, edge, input, bottom});
        place(ID_txtFind, {input, edge, button - gap, bottom});
        place(ID_cmdFind, {button, edge, result - gap, bottom});
        place(ID_lblFound, {result, edge, right, bottom});
        tabs.top = bottom + gap;
    }
    place(ID_SSTab1, tabs);
    TabCtrl_AdjustRect(control(ID_SSTab1), FALSE, &tabs);
    InflateRect(&tabs, -pixels(60), -pixels(60));
    for (const int id : pages)
        place(id, tabs);
    ui::fitReportBox(control(ID_txtInfo), pixels(reportInset));
    place(ID_cmdEnd, {right - buttonWidth, buttonTop, right, buttonTop + buttonHeight});
}

void frmInfo4Prg::applyDpi() {
    const HWND report = control(ID_txtInfo);
    reportFont_ = ui::makeFont(L"Courier New", reportPoints, dpi(), FIXED_PITCH | FF_MODERN);
    SendMessageW(report, WM_SETFONT, reinterpret_cast<WPARAM>(reportFont_.get()), TRUE);

    SendMessageW(control(ID_SSTab1), TCM_SETPADDING, 0, MAKELPARAM(pixels(150), pixels(60)));

    const int size = ui::systemMetric(SM_CXSMICON, dpi());
    ui::ImageList fresh(ui::late::ImageList_Create(size, size, ILC_COLOR32, 2, 0));
    // In the order of NodePicture.
    for (const int id : {IDI_CLOSEDFOLDER, IDI_DOCUMENT}) {
        const Icon icon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                      IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
        ui::late::ImageList_ReplaceIcon(fresh.get(), -1, icon.get()); // at the end
    }
    const HWND tree = control(ID_treeView);
    TreeView_SetImageList(tree, fresh.get(), TVSIL_NORMAL);
    TreeView_SetItemHeight(tree, size + pixels(60));
    TreeView_SetIndent(tree, size + pixels(45));
    imageList_ = std::move(fresh);
}

void frmInfo4Prg::onCommand(int id, int notification) {
    switch (id) {
    case ID_txtFind:
        if (notification == EN_CHANGE) {
            continued_ = false;
            showFound(L"");
        }
        break;
    case ID_cmdFind:
        find(false);
        break;
    case ID_mnuFind:
        showFindLine(true);
        SetFocus(control(ID_txtFind));
        SendMessageW(control(ID_txtFind), EM_SETSEL, 0, -1);
        break;
    case ID_mnuCopy:
        if (selectedTab() == tabInfo)
            SendMessageW(page(), WM_COPY, 0, 0);
        else if (const auto node = treeView_.selected())
            copy(treeView_.tree().text(*node));
        break;
    case ID_mnuCopyGroup:
        if (const auto node = treeView_.selected())
            copy(groupText(treeView_.tree().groups[node->group]));
        break;
    case ID_mnuCopyAll:
        copy(wholeText(report_, treeView_.tree()));
        break;
    case ID_mnuOpenAll:
        treeView_.openAll(true);
        break;
    case ID_mnuCloseAll:
        treeView_.openAll(false);
        break;
    case ID_mnuSave:
        save();
        break;
    case ID_mnuRefresh:
        refresh();
        break;
    case ID_cmdEnd:
        close();
        break;
    case IDOK: // Enter
        if (GetFocus() == control(ID_treeView))
            treeView_.toggleSelected();
        else if (GetFocus() == control(ID_txtFind))
            find(GetKeyState(VK_SHIFT) < 0);
        break;
    default:
        break;
    }
}

LRESULT frmInfo4Prg::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NOTIFY: {
        const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.idFrom == ID_SSTab1 && header.code == TCN_SELCHANGE)
            showTab(selectedTab());
        else if (header.idFrom == ID_treeView)
            treeView_.onNotify(header);
        return 0;
    }
    case WM_CONTEXTMENU:
        if (reinterpret_cast<HWND>(wParam) != page())
            break;
        showContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 1; // ours instead of the control's own
    case WM_CTLCOLORSTATIC:
        if (reinterpret_cast<HWND>(lParam) == control(ID_txtInfo))
            return ui::reportBoxColours(reinterpret_cast<HDC>(wParam));
        break;
    default:
        break;
    }
    return Window::onMessage(message, wParam, lParam);
}

} // namespace tarv
