#include "shell/frmLokaleIP.h"

#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "shell/Placement.h"
#include "shell/ids.h"
#include "ui/MessageLoop.h"

#include <commctrl.h>

namespace tarv {
namespace {

using ui::windowMargin;
constexpr ui::Twips pictureSize = 1440;
constexpr ui::TwipsSize frame{3600, 960};
constexpr ui::TwipsSize client{windowMargin + pictureSize + windowMargin + frame.width + windowMargin,
                               windowMargin + pictureSize + windowMargin};
constexpr int addressPoints = 14;

} // namespace

frmLokaleIP::frmLokaleIP(Runtime& rt, const ui::Window& mainWindow)
    : rt_(rt), mainWindow_(mainWindow), picture_({{IDR_IP_PICTURE, 192}}) {
    create({.className = L"frmLokaleIP",
            .caption = TranslateText(L"IP-Adresse").c_str(),
            .style = WS_POPUP | WS_CAPTION | WS_SYSMENU,
            .extendedStyle = WS_EX_DLGMODALFRAME,
            .client = client,
            .dialogKeys = true});
    addControl(WC_BUTTONW, TranslateText(L" IP-Adresse ").c_str(), BS_GROUPBOX | WS_VISIBLE, 0, ID_Frame1);
    addControl(WC_STATICW, L"Label1", SS_CENTER | SS_CENTERIMAGE | SS_NOPREFIX | WS_VISIBLE, 0, ID_Label1);
    addControl(WC_BUTTONW, TranslateText(L"Schließen").c_str(), BS_DEFPUSHBUTTON | WS_VISIBLE | WS_TABSTOP, 0,
               ID_cmdClose);
    addControl(WC_STATICW, L"", SS_BITMAP | SS_REALSIZECONTROL | WS_VISIBLE, 0, ID_Image1);
    applyDpi();
    layout();
}

void frmLokaleIP::showModal() {
    const ui::ModalScope modal(*this);
    load();
    ui::runModal(*this);
}

void frmLokaleIP::load() {
    SetWindowTextW(control(ID_Label1), TranslateText(GetLocalIPAdress()).c_str());
    RECT main{};
    GetWindowRect(mainWindow_.handle(), &main);
    const int dpi = mainWindow_.dpi(); // of the screen that both are on
    moveTo({ui::toPixels(ui::toTwips(main.left, dpi) + addressWindowOffset.width, dpi),
            ui::toPixels(ui::toTwips(main.top, dpi) + addressWindowOffset.height, dpi)});
}

std::wstring frmLokaleIP::GetLocalIPAdress() {
    return GetLocalIP(rt_);
}

void frmLokaleIP::layout() {
    const auto rect = [&](ui::Twips left, ui::Twips top, ui::Twips width, ui::Twips height) {
        return RECT{pixels(left), pixels(top), pixels(left + width), pixels(top + height)};
    };
    const ui::Twips right = windowMargin + pictureSize + windowMargin;
    place(ID_Image1, rect(windowMargin, windowMargin, pictureSize, pictureSize));
    place(ID_Frame1, rect(right, windowMargin - 60, frame.width, frame.height));
    place(ID_Label1, rect(right + 90, windowMargin + 240, frame.width - 180, frame.height - 360));
    const auto [width, height] = ui::buttonSize;
    place(ID_cmdClose,
          rect(client.width - windowMargin - width, client.height - windowMargin - height, width, height));
}

void frmLokaleIP::applyDpi() {
    addressFont_ = ui::makeFont(L"Microsoft Sans Serif", addressPoints, dpi(), VARIABLE_PITCH | FF_SWISS);
    SendMessageW(control(ID_Label1), WM_SETFONT, reinterpret_cast<WPARAM>(addressFont_.get()), TRUE);
    const int side = pixels(pictureSize);
    SendMessageW(control(ID_Image1), STM_SETIMAGE, IMAGE_BITMAP,
                 reinterpret_cast<LPARAM>(picture_.bitmap(side, side)));
}

void frmLokaleIP::onCommand(int id, int /*notification*/) {
    if (id == ID_cmdClose)
        close();
}

} // namespace tarv
