#include "shell/frmMain.h"

#include "infocenter/frmInfo4Prg.h"
#include "infocenter/ids.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"
#include "shell/MainMenu.h"
#include "shell/Placement.h"
#include "shell/SupportActions.h"
#include "shell/frmLokaleIP.h"
#include "shell/ids.h"
#include "ui/DrawnPart.h"
#include "ui/MessageLoop.h"
#include "ui/Redraw.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tarv {
namespace {

// The picture's own lettering ends here, in thousandths of its size; the version continues it.
constexpr int versionLeft = 57;
constexpr int versionTop = 390;
constexpr COLORREF versionColour = RGB(0x17, 0x32, 0x4F);
// It belongs to the lettering at every size, as long as it can be read and stays a label.
constexpr int versionPoints = 12, leastPoints = 8, mostPoints = 36;
constexpr ui::TwipsSize firstClient{12000, 7500};

/// Set by the user who needs strong colours: a bright picture is not for him.
bool highContrast() {
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof setting;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) &&
           (setting.dwFlags & HCF_HIGHCONTRASTON);
}

/// Marks that a modal window is open: each exists once.
class ModalFlag {
public:
    explicit ModalFlag(bool& flag) : flag_(flag) { flag_ = true; }
    ~ModalFlag() { flag_ = false; }
    ModalFlag(const ModalFlag&) = delete;
    ModalFlag& operator=(const ModalFlag&) = delete;

private:
    bool& flag_;
};

} // namespace

frmMain::frmMain(Runtime& rt)
    : rt_(rt), startPicture_({{IDR_START_PICTURE, 800}, {IDR_START_PICTURE_200, 1600}}) {
    create({.className = L"frmMain",
            .caption = TranslateText(L"TARVENIK Serviceprogramm").c_str(),
            .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
            .client = firstClient,
            .minimumClient = {6000, 3750},
            .menu = createMainMenu(),
            .iconResource = IDI_PROGRAM});
    addControl(ui::drawnPartClass(), TranslateText(L"Version:").c_str(), WS_VISIBLE, 0, ID_lblVersion);
    addControl(ui::drawnPartClass(), L"", WS_VISIBLE, 0, ID_imgStartPic);
    SkinFramework1_ = {rt_.platform.automation->create(skinControlProgId).valueOr(nullptr), platformHandle()};
    layout();
}

void frmMain::load() {
    applySkin();
    if (!alive())
        return; // ended behind a message box
    sizeStartPicture();
    centreOnScreen();
    showVersion();
}

void frmMain::show(int showCommand) {
    ShowWindow(handle(), showCommand);
    UpdateWindow(handle());
}

void frmMain::close() {
    destroyAll(); // no modal window outlives this one
}

void frmMain::applySkin() {
    ApplySkin(rt_, SkinFramework1_, std::nullopt, true, false, false);
}

void frmMain::sizeStartPicture() {
    const RECT client = clientRect();
    const ui::TwipsSize wanted = startPictureSize(outerSizeInTwips());
    place(ID_imgStartPic, {0, 0, std::clamp<LONG>(pixels(wanted.width), 0, client.right),
                           std::clamp<LONG>(pixels(wanted.height), 0, client.bottom)});
}

void frmMain::centreOnScreen() {
    moveAcrossScreens([&] {
        const ui::TwipsSize screen{ui::toTwips(GetSystemMetrics(SM_CXSCREEN), dpi()),
                                   ui::toTwips(GetSystemMetrics(SM_CYSCREEN), dpi())};
        const ui::TwipsSize window = outerSizeInTwips();
        moveTo({pixels(centred(screen.width, window.width)), pixels(centred(screen.height, window.height))});
    });
}

void frmMain::showVersion() {
    const std::wstring version = GetProgVersion(rt_);
    const std::wstring caption = L"Version: " + std::wstring(untilNul(version.substr(0, 4)));
    SetWindowTextW(control(ID_lblVersion), TranslateText(caption).c_str());
}

void frmMain::layout() {
    sizeStartPicture();
    const RECT client = clientRect();
    const LONG left = client.right * versionLeft / 1000;
    const LONG top = client.bottom * versionTop / 1000;
    const float growth = std::min(ui::toTwips(client.right, dpi()) / firstClient.width,
                                  ui::toTwips(client.bottom, dpi()) / firstClient.height);
    const int points =
        std::clamp(static_cast<int>(std::lround(versionPoints * growth)), leastPoints, mostPoints);
    versionFont_ = ui::makeFont(L"Arial", points, dpi(), VARIABLE_PITCH | FF_SWISS);
    SendMessageW(control(ID_lblVersion), WM_SETFONT, reinterpret_cast<WPARAM>(versionFont_.get()), FALSE);
    const int height = MulDiv(points, dpi(), ui::standardDpi / 2);
    place(ID_lblVersion, {left, top, left + 10 * height, top + height});
    RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void frmMain::mnuInfo_Click() {
    if (modalOpen_)
        return;
    const ModalFlag flag(modalOpen_);
    {
        const ui::RedrawLock lock(handle());
        frmInfo4Prg(rt_).showModal();
        if (alive())
            applySkin();
    }
    if (alive()) { // without a window the whole screen would be painted anew
        RedrawWindow(handle(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
}

void frmMain::mnuSupportIPAdresse_Click() {
    if (modalOpen_)
        return;
    const ModalFlag flag(modalOpen_);
    frmLokaleIP(rt_, *this).showModal();
}

void frmMain::drawPart(const DRAWITEMSTRUCT& part) {
    RECT rect = part.rcItem;
    // Also where drawing is off: what another window uncovers shows nothing, and nothing of that window.
    FillRect(part.hDC, &rect, GetSysColorBrush(COLOR_BTNFACE));
    if (!drawing_)
        return;
    RECT picture{};
    GetClientRect(control(ID_imgStartPic), &picture);
    const HBITMAP bitmap = highContrast() ? nullptr : startPicture_.bitmap(picture.right, picture.bottom);
    if (bitmap) {
        // The label shows its part of the picture as its background.
        POINT origin{0, 0};
        MapWindowPoints(part.hwndItem, control(ID_imgStartPic), &origin, 1);
        const MemoryDc memory(CreateCompatibleDC(part.hDC));
        const Selected selected(memory.get(), bitmap);
        BitBlt(part.hDC, 0, 0, rect.right, rect.bottom, memory.get(), origin.x, origin.y, SRCCOPY);
    }
    if (part.CtlID == ID_lblVersion) {
        const Selected font(part.hDC, versionFont_.get());
        SetBkMode(part.hDC, TRANSPARENT);
        SetTextColor(part.hDC, bitmap ? versionColour : GetSysColor(COLOR_BTNTEXT));
        DrawTextW(part.hDC, ui::textOf(part.hwndItem).c_str(), -1, &rect,
                  DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX);
    }
}

void frmMain::onCommand(int id, int /*notification*/) {
    switch (id) {
    case ID_mnuFileExit:
        close();
        break;
    case ID_mnuInfo:
        mnuInfo_Click();
        break;
    case ID_mnuSupportIPAdresse:
        mnuSupportIPAdresse_Click();
        break;
    case ID_mnuSupportDienst:
        openServicesConsole(rt_);
        break;
    case ID_mnuSupportView:
        startRemoteMaintenance(rt_);
        break;
    default:
        break;
    }
}

LRESULT frmMain::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_DRAWITEM:
        drawPart(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    case WM_SETREDRAW:
        // By default Windows would take WS_VISIBLE away: clicks would fall through to whatever lies behind.
        drawing_ = wParam != 0;
        return 0;
    default:
        return Window::onMessage(message, wParam, lParam);
    }
}

} // namespace tarv
