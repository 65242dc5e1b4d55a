#include "infocenter/frmInfo4PrgTree.h"

#include "ui/Redraw.h"

#include <utility>

namespace tarv {
namespace {

// Every item carries the address of its node: a group at the root, an entry below.
template <class Node>
HTREEITEM insert(HWND control, HTREEITEM parent, const Node& node, NodePicture picture, bool hasChildren) {
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_CHILDREN;
    item.item.pszText = const_cast<wchar_t*>(node.text.c_str());
    item.item.iImage = item.item.iSelectedImage = static_cast<int>(picture);
    item.item.lParam = reinterpret_cast<LPARAM>(&node);
    item.item.cChildren = hasChildren ? 1 : 0;
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(control, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

template <class Node>
const Node* nodeOf(HWND control, HTREEITEM item) {
    TVITEMW query{};
    query.mask = TVIF_PARAM;
    query.hItem = item;
    SendMessageW(control, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&query));
    return reinterpret_cast<const Node*>(query.lParam);
}

} // namespace

void IniTreeView::fill(IniTree tree) {
    const ui::RedrawLock lock(control_);
    TreeView_DeleteAllItems(control_);
    tree_ = std::move(tree);
    for (const IniGroupNode& group : tree_.groups) {
        insert(control_, TVI_ROOT, group, NodePicture::CLOSEDFOLDER, !group.entries.empty());
    }
}

void IniTreeView::onNotify(const NMHDR& header) {
    if (header.code == TVN_ITEMEXPANDINGW) {
        const HTREEITEM item = reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.hItem;
        if (!TreeView_GetParent(control_, item) && !TreeView_GetChild(control_, item)) {
            insertEntries(item, *nodeOf<IniGroupNode>(control_, item));
        }
    }
}

void IniTreeView::insertEntries(HTREEITEM groupItem, const IniGroupNode& group) {
    for (const IniEntryNode& entry : group.entries) {
        insert(control_, groupItem, entry, NodePicture::DOCUMENT, false);
    }
}

std::wstring IniTreeView::selectedText() const {
    const HTREEITEM item = TreeView_GetSelection(control_);
    if (!item) {
        return {};
    }
    return TreeView_GetParent(control_, item) ? nodeOf<IniEntryNode>(control_, item)->text
                                              : nodeOf<IniGroupNode>(control_, item)->text;
}

void IniTreeView::toggleSelected() {
    TreeView_Expand(control_, TreeView_GetSelection(control_), TVE_TOGGLE);
}

} // namespace tarv
