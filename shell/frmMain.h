#pragma once

#include "runtime/modSkinOnly.h"
#include "ui/Picture.h"
#include "ui/Window.h"

namespace tarv {

struct Runtime;

/// The main window: start picture, program version, and the menu that leads to the support functions.
class frmMain final : public ui::Window {
public:
    /// Creates the window, still hidden.
    explicit frmMain(Runtime& rt);

    /// The whole start-up: skin, picture, place on the screen, version label.
    void load();

    void show(int showCommand);

    /// Ends the program.
    void close() override;

private:
    void layout() override;
    void onCommand(int id, int notification) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void mnuInfo_Click();
    void mnuSupportIPAdresse_Click();

    void applySkin();
    void sizeStartPicture();
    void centreOnScreen();
    void showVersion();
    void drawPart(const DRAWITEMSTRUCT& part);

    Runtime& rt_;
    SkinControl SkinFramework1_;
    ui::Picture startPicture_;
    Font versionFont_;
    bool modalOpen_ = false;
    bool drawing_ = true;
};

} // namespace tarv
