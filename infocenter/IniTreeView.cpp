#include "infocenter/IniTreeView.h"

#include "ui/Redraw.h"

#include <utility>

namespace tarv {
namespace {

// Every item carries the index of its node among its siblings.
HTREEITEM insert(HWND control, HTREEITEM parent, const std::wstring& text, std::size_t index,
                 NodePicture picture, bool hasChildren) {
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_CHILDREN;
    item.item.pszText = const_cast<wchar_t*>(text.c_str());
    item.item.iImage = item.item.iSelectedImage = static_cast<int>(picture);
    item.item.lParam = static_cast<LPARAM>(index);
    item.item.cChildren = hasChildren ? 1 : 0;
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(control, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

std::size_t indexOf(HWND control, HTREEITEM item) {
    TVITEMW query{};
    query.mask = TVIF_PARAM;
    query.hItem = item;
    SendMessageW(control, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&query));
    return static_cast<std::size_t>(query.lParam);
}

} // namespace

void IniTreeView::fill(IniTree tree) {
    const ui::RedrawLock lock(control_);
    TreeView_DeleteAllItems(control_);
    tree_ = std::move(tree);
    for (std::size_t i = 0; i < tree_.groups.size(); ++i) {
        const IniGroupNode& group = tree_.groups[i];
        insert(control_, TVI_ROOT, group.text, i, NodePicture::CLOSEDFOLDER, !group.entries.empty());
    }
}

void IniTreeView::onNotify(const NMHDR& header) {
    if (header.code == TVN_ITEMEXPANDINGW) {
        const HTREEITEM item = reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.hItem;
        if (!TreeView_GetParent(control_, item) && !TreeView_GetChild(control_, item)) {
            const auto& entries = tree_.groups[indexOf(control_, item)].entries;
            for (std::size_t i = 0; i < entries.size(); ++i)
                insert(control_, item, entries[i], i, NodePicture::DOCUMENT, false);
        }
    }
}

std::wstring IniTreeView::selectedText() const {
    const HTREEITEM item = TreeView_GetSelection(control_);
    if (!item)
        return {};
    const HTREEITEM parent = TreeView_GetParent(control_, item);
    const IniGroupNode& group = tree_.groups[indexOf(control_, parent ? parent : item)];
    return parent ? group.entries[indexOf(control_, item)] : group.text;
}

void IniTreeView::toggleSelected() {
    TreeView_Expand(control_, TreeView_GetSelection(control_), TVE_TOGGLE);
}

} // namespace tarv
