#include "infocenter/IniTreeView.h"

#include "ui/CommonControls.h"
#include "ui/Redraw.h"
#include "ui/WaitCursor.h"

#include <string>
#include <unordered_set>
#include <utility>

#include <vssym32.h>

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

/// The node of a group read anew that has the name of an earlier one; the group when that entry is gone.
NodePlace sameNode(const IniTree& former, NodePlace node, const IniGroupNode& group, std::size_t index) {
    const auto name = [](std::wstring_view entry) { return entry.substr(0, entry.find(L'=')); };
    if (node.entry > 0)
        for (std::size_t i = 0; i < group.entries.size(); ++i)
            if (name(group.entries[i]) == name(former.text(node)))
                return {index, i + 1};
    return {index, 0};
}

/// Windows' own themes since Vista know a tree whose arrows light up under the mouse. Under another theme,
/// or none, the usual tree looks better.
bool themeHasExplorersTree() {
    const HTHEME theme = ui::late::OpenThemeData(nullptr, L"Explorer::TreeView");
    const bool has = theme && ui::late::IsThemePartDefined(theme, TVP_HOTGLYPH, 0);
    if (theme)
        ui::late::CloseThemeData(theme);
    return has;
}

} // namespace

void IniTreeView::attach(HWND control) {
    control_ = control;
    TreeView_SetExtendedStyle(control, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
    if (themeHasExplorersTree() && SUCCEEDED(ui::late::SetWindowTheme(control, L"Explorer", nullptr))) {
        // It has arrows and no lines.
        const auto style = GetWindowLongPtrW(control, GWL_STYLE);
        SetWindowLongPtrW(control, GWL_STYLE, style & ~LONG_PTR{TVS_HASLINES});
    }
}

void IniTreeView::fill(IniTree tree) {
    const ui::RedrawLock lock(control_);
    std::unordered_set<std::wstring> open;
    for (std::size_t i = 0; i < groups_.size(); ++i)
        if (TreeView_GetItemState(control_, groups_[i], TVIS_EXPANDED) & TVIS_EXPANDED)
            open.insert(tree_.groups[i].text);
    const auto former = selected();
    TreeView_DeleteAllItems(control_);
    groups_.clear();
    std::swap(tree_, tree);
    std::optional<NodePlace> again;
    for (std::size_t i = 0; i < tree_.groups.size(); ++i) {
        const IniGroupNode& group = tree_.groups[i];
        groups_.push_back(
            insert(control_, TVI_ROOT, group.text, i, NodePicture::CLOSEDFOLDER, !group.entries.empty()));
        if (open.contains(group.text))
            TreeView_Expand(control_, groups_.back(), TVE_EXPAND);
        if (former && group.text == tree.groups[former->group].text)
            again = sameNode(tree, *former, group, i);
    }
    if (again)
        select(*again);
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

std::optional<NodePlace> IniTreeView::selected() const {
    const HTREEITEM item = TreeView_GetSelection(control_);
    if (!item)
        return std::nullopt;
    const HTREEITEM parent = TreeView_GetParent(control_, item);
    return parent ? NodePlace{indexOf(control_, parent), indexOf(control_, item) + 1}
                  : NodePlace{indexOf(control_, item), 0};
}

void IniTreeView::select(NodePlace node) {
    HTREEITEM item = groups_[node.group];
    if (node.entry > 0) {
        TreeView_Expand(control_, item, TVE_EXPAND);
        item = TreeView_GetChild(control_, item);
        for (std::size_t i = 1; i < node.entry; ++i)
            item = TreeView_GetNextSibling(control_, item);
    }
    TreeView_SelectItem(control_, item);
}

void IniTreeView::selectAt(POINT point) {
    TVHITTESTINFO hit{};
    hit.pt = point;
    ScreenToClient(control_, &hit.pt);
    if (const HTREEITEM item = TreeView_HitTest(control_, &hit))
        TreeView_SelectItem(control_, item);
}

POINT IniTreeView::belowSelected() const {
    RECT text{};
    if (const HTREEITEM item = TreeView_GetSelection(control_))
        TreeView_GetItemRect(control_, item, &text, TRUE);
    return {text.left, text.bottom};
}

void IniTreeView::toggleSelected() {
    TreeView_Expand(control_, TreeView_GetSelection(control_), TVE_TOGGLE);
}

void IniTreeView::openAll(bool open) {
    const ui::WaitCursor wait;
    const ui::RedrawLock lock(control_);
    for (const HTREEITEM group : groups_)
        TreeView_Expand(control_, group, open ? TVE_EXPAND : TVE_COLLAPSE);
    TreeView_EnsureVisible(control_, TreeView_GetSelection(control_));
}

} // namespace tarv
