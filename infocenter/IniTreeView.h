#pragma once

#include "infocenter/IniTree.h"

#include <windows.h>

#include <commctrl.h>

#include <string>

namespace tarv {

/// Node pictures, by their place in the tree's image list.
enum class NodePicture {
    CLOSEDFOLDER,
    DOCUMENT
};

/// Feeds a tree-view control from the tree of the configuration files.
///
/// A group's entries enter the control when the group is first opened, by mouse, keyboard or a screen reader:
/// nobody can tell the difference, and opening the window does not depend on the number of entries.
class IniTreeView {
public:
    void attach(HWND control) { control_ = control; }

    void fill(IniTree tree);

    /// To be called for every notification of the control.
    void onNotify(const NMHDR& header);

    /// The whole text of the selected node; empty without a selection.
    std::wstring selectedText() const;

    void toggleSelected();

private:
    HWND control_ = nullptr;
    IniTree tree_;
};

} // namespace tarv
