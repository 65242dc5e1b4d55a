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
    void read();
    void refresh();
    HWND add(const wchar_t* kind, const wchar_t* text, DWORD style, DWORD extendedStyle, int id);
    void addFindLine();
    void showFindLine(bool open);
    /// Finds the next place of what the find line holds, and opens it where there is nothing in it yet.
    void find(bool backwards);
    void showFound(const wchar_t* text);
    void copy(const std::wstring& text);
    void save();
    /// At a point of the screen; (-1, -1) is beside the caret or the selected node.
    void showContextMenu(POINT at);
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
    std::wstring report_;
    bool findOpen_ = false;
    /// What is looked for has not changed since it was found.
    bool continued_ = false;
    bool refreshing_ = false;
};

} // namespace tarv
