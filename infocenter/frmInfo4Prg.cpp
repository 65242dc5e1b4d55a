#include "infocenter/frmInfo4Prg.h"

#include "infocenter/InfoReport.h"
#include "infocenter/ids.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "ui/Clipboard.h"
#include "ui/MessageLoop.h"
#include "ui/ReportBox.h"
#include "ui/WaitCursor.h"

namespace tarv {
namespace {

constexpr ui::Twips margin = 150;
constexpr ui::TwipsSize button{1350, 390};
constexpr int reportPoints = 10;
constexpr ui::Twips reportInset = 90;

enum Tab {
    tabInfo,
    tabIniFile
};
constexpr const wchar_t* tabCaptions[] = {L"Info", L"INI-Datei"};
constexpr int pages[] = {ID_txtInfo, ID_treeView};

} // namespace

frmInfo4Prg::frmInfo4Prg(Runtime& rt) : rt_(rt) {
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TAB_CLASSES | ICC_TREEVIEW_CLASSES};
    ui::late::InitCommonControlsEx(&controls);
    create({.className = L"frmInfo4Prg",
            .caption = L"Infocenter",
            .style = (WS_OVERLAPPEDWINDOW & ~static_cast<DWORD>(WS_MINIMIZEBOX)) | WS_CLIPCHILDREN,
            .client = {10500, 7500},
            .minimumClient = {5400, 3600},
            .iconResource = IDI_PROGRAM,
            .dialogKeys = true});
    const HWND tabs =
        addControl(WC_TABCONTROLW, L"", WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, 0, ID_SSTab1);
    for (int index = 0; index < static_cast<int>(std::size(tabCaptions)); ++index) {
        std::wstring caption = TranslateText(tabCaptions[index]);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        SendMessageW(tabs, TCM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    }
    ui::makeReportBox(addControl(WC_EDITW, L"",
                                 ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL |
                                     WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
                                 WS_EX_CLIENTEDGE, ID_txtInfo));
    // The window text is what a screen reader calls the tree.
    treeView_.attach(
        addControl(WC_TREEVIEWW, tabCaptions[tabIniFile],
                   TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_SHOWSELALWAYS | WS_TABSTOP,
                   WS_EX_CLIENTEDGE, ID_treeView));
    // A page that grows covers the button's former place. Only with WS_CLIPSIBLINGS does Windows know that
    // what stands there is no longer the button, and must not go with it to its new place.
    addControl(WC_BUTTONW, TranslateText(L"B&eenden").c_str(),
               BS_PUSHBUTTON | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, 0, ID_cmdEnd);
    // Siblings paint in this order: the pages lie on top of the tab control.
    SetWindowPos(tabs, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SkinFramework1_ = {rt_.platform.automation->create(skinControlProgId).valueOr(nullptr), platformHandle()};
    applyDpi();
    layout();
    showTab(tabInfo);
    focusFirst(ID_txtInfo);
    centreOnWorkArea(GetActiveWindow());
}

void frmInfo4Prg::showModal() {
    const ui::ModalScope modal(*this);
    load();
    ui::runModal(*this);
}

void frmInfo4Prg::load() {
    const ui::WaitCursor wait;
    // Messages are handled while a slow machine answers: the window may be gone after each step.
    const std::wstring report = BuildInfoReport(rt_);
    if (!alive())
        return;
    SetWindowTextW(control(ID_txtInfo), report.c_str());
    ui::fitReportBox(control(ID_txtInfo), pixels(reportInset));
    IniTree tree = ReadIniTree(rt_);
    if (!alive())
        return;
    treeView_.fill(std::move(tree));
    ApplySkin(rt_, SkinFramework1_, std::nullopt, true, false, false);
}

int frmInfo4Prg::selectedTab() const {
    return TabCtrl_GetCurSel(control(ID_SSTab1));
}

HWND frmInfo4Prg::page() const {
    return control(pages[selectedTab()]);
}

void frmInfo4Prg::showTab(int index) {
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

bool frmInfo4Prg::translateKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0)
        return false;
    const bool backwards = message.wParam == VK_PRIOR || GetKeyState(VK_SHIFT) < 0;
    switch (message.wParam) {
    case VK_TAB:
    case VK_PRIOR:
    case VK_NEXT: {
        const int count = static_cast<int>(std::size(pages));
        const int former = selectedTab();
        showTab((former + (backwards ? count - 1 : 1)) % count);
        return true;
    }
    case 'C':
    case VK_INSERT:
        if (message.hwnd == control(ID_treeView)) {
            ui::copyToClipboard(handle(), treeView_.selectedText());
            return true;
        }
        return false;
    default:
        return false;
    }
}

void frmInfo4Prg::layout() {
    const RECT client = clientRect();
    const int gap = pixels(margin);
    const int buttonTop = client.bottom - gap - pixels(button.height);
    RECT tabs{gap, gap, client.right - gap, buttonTop - gap};
    place(ID_SSTab1, tabs);
    TabCtrl_AdjustRect(control(ID_SSTab1), FALSE, &tabs);
    InflateRect(&tabs, -pixels(60), -pixels(60));
    for (const int id : pages)
        place(id, tabs);
    ui::fitReportBox(control(ID_txtInfo), pixels(reportInset));
    place(ID_cmdEnd,
          {client.right - gap - pixels(button.width), buttonTop, client.right - gap, client.bottom - gap});
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

void frmInfo4Prg::onCommand(int id, int /*notification*/) {
    switch (id) {
    case ID_cmdEnd:
        close();
        break;
    case IDOK: // Enter
        if (GetFocus() == control(ID_treeView))
            treeView_.toggleSelected();
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
