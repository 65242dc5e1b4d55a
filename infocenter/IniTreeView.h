#pragma once

#include "infocenter/IniTree.h"

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <vector>

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
    /// Gives the control the looks of Explorer's, where Windows has them.
    void attach(HWND control);

    /// Shows another tree. Selection and open groups stay where they still exist.
    void fill(IniTree tree);
    const IniTree& tree() const { return tree_; }

    /// To be called for every notification of the control.
    void onNotify(const NMHDR& header);

    std::optional<NodePlace> selected() const;
    /// Opens its group and scrolls to it.
    void select(NodePlace node);

    /// Selects the node at a point of the screen, if there is one.
    void selectAt(POINT point);
    /// The point of the control just below the selected node.
    POINT belowSelected() const;

    void toggleSelected();
    void openAll(bool open);

private:
    HWND control_ = nullptr;
    std::vector<HTREEITEM> groups_;
    IniTree tree_;
};

} // namespace tarv
