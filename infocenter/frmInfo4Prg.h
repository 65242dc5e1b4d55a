#pragma once

#include "infocenter/IniTreeView.h"
#include "runtime/modSkinOnly.h"
#include "ui/CommonControls.h"
#include "ui/Window.h"

namespace tarv {

struct Runtime;

/// The info centre: the report on computer and installation, and the tree of the configuration files.
class frmInfo4Prg final : public ui::Window {
public:
    explicit frmInfo4Prg(Runtime& rt);

    /// Reads everything anew, then shows the window until it is closed.
    void showModal();

    bool translateKey(const MSG& message) override;

private:
    void load();
    void showTab(int index);
    int selectedTab() const;
    HWND page() const;

    void layout() override;
    void applyDpi() override;
    void onCommand(int id, int notification) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    Runtime& rt_;
    SkinControl SkinFramework1_;
    Font reportFont_;
    ui::ImageList imageList_;
    IniTreeView treeView_;
};

} // namespace tarv
