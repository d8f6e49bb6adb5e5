#include "framework/ui/tree_view.h"

#include <windowsx.h>

#include <cstring>
#include <utility>

#include "framework/base/text.h"
#include "framework/ui/contrast.h"
#include "framework/ui/form.h"

namespace framework {
namespace {

HTREEITEM ItemWith(HWND tree, UINT which) {
    return reinterpret_cast<HTREEITEM>(::SendMessageW(tree, TVM_GETNEXTITEM, which, 0));
}

}  // namespace

TTreeViewNode::TTreeViewNode(TTreeView& tree, TTreeViewNode* parent, std::string text)
    : Tree_(tree), Parent_(parent), Text_(std::move(text)) {}

TTreeViewNode::~TTreeViewNode() {
    Children_.clear();
    if (Parent_ && Tree_.OnDeletion)
        Tree_.OnDeletion(*this);
}

TTreeViewNode* TTreeViewNode::Parent() const {
    return Parent_ && Parent_->Parent_ ? Parent_ : nullptr;
}

TTreeViewNode& TTreeViewNode::AddChild(const std::string& text) {
    Children_.push_back(std::make_unique<TTreeViewNode>(Tree_, this, text));
    TTreeViewNode& child = *Children_.back();
    if (Tree_.Deferring_ > 0)
        Tree_.Pending_.push_back(&child);
    else
        child.Insert();
    return child;
}

void TTreeViewNode::DeleteChildren() {
    if (Children_.empty())
        return;
    if (Parent_)
        Tree_.InsertPending();
    else
        Tree_.Pending_.clear();
    // Else the selection would wander from one node that goes to the next.
    for (const TTreeViewNode* node = Tree_.Selected(); node; node = node->Parent_)
        if (node->Parent_ == this) {
            Tree_.Select(Parent_ ? this : nullptr);
            break;
        }
    // The system first: what it tells meanwhile is about nodes that are still there.
    if (!Parent_)
        ::SendMessageW(Tree_.Handle(), TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    else
        for (const auto& child : Children_)
            ::SendMessageW(Tree_.Handle(), TVM_DELETEITEM, 0,
                           reinterpret_cast<LPARAM>(child->Item_));
    Children_.clear();
}

void TTreeViewNode::Insert() {
    std::wstring text = ToWide(Text_);
    TVINSERTSTRUCTW insert{};
    insert.hParent = Parent_->Item_;
    insert.hInsertAfter = TVI_LAST;
    insert.itemex.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE;
    insert.itemex.pszText = text.data();
    insert.itemex.lParam = reinterpret_cast<LPARAM>(this);
    insert.itemex.iImage = Image_;
    insert.itemex.iSelectedImage = SelectedImage_;
    insert.itemex.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(State_));
    insert.itemex.stateMask = TVIS_STATEIMAGEMASK;
    if (HasChildren_) {
        insert.itemex.mask |= TVIF_CHILDREN;
        insert.itemex.cChildren = *HasChildren_ ? 1 : 0;
    }
    Item_ = reinterpret_cast<HTREEITEM>(
        ::SendMessageW(Tree_.Handle(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void TTreeViewNode::SetImages(int image, int selected, int state) {
    // Drawing asks for images again and again; a change draws the node again.
    if (image == Image_ && selected == SelectedImage_ && state == State_)
        return;
    Image_ = image;
    SelectedImage_ = selected;
    State_ = state;
    if (!Item_)
        return;
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE;
    item.hItem = Item_;
    item.iImage = image;
    item.iSelectedImage = selected;
    item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(state));
    item.stateMask = TVIS_STATEIMAGEMASK;
    ::SendMessageW(Tree_.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void TTreeViewNode::SetText(const std::string& text) {
    if (text == Text_)
        return;
    Text_ = text;
    if (!Item_)
        return;
    std::wstring wide = ToWide(text);
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_TEXT;
    item.hItem = Item_;
    item.pszText = wide.data();
    ::SendMessageW(Tree_.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void TTreeViewNode::SetHasChildren(bool hasChildren) {
    if (HasChildren_ == hasChildren)
        return;
    HasChildren_ = hasChildren;
    if (!Item_)
        return;
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_CHILDREN;
    item.hItem = Item_;
    item.cChildren = hasChildren ? 1 : 0;
    ::SendMessageW(Tree_.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void TTreeViewNode::SetSelected(bool selected) {
    if (!selected && !Selected())
        return;
    Tree_.InsertPending();
    Tree_.Select(selected ? this : nullptr);
}

bool TTreeViewNode::Selected() const {
    return Item_ && ItemWith(Tree_.Handle(), TVGN_CARET) == Item_;
}

bool TTreeViewNode::Expanded() const {
    const LRESULT state = ::SendMessageW(Tree_.Handle(), TVM_GETITEMSTATE,
                                         reinterpret_cast<WPARAM>(Item_), TVIS_EXPANDED);
    return Item_ && (state & TVIS_EXPANDED) != 0;
}

void TTreeViewNode::SetExpanded(bool expanded) {
    Tree_.InsertPending();
    if (expanded == Expanded())
        return;
    // Of a node that was expanded once the system would not tell again.
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_STATE;
    item.hItem = Item_;
    item.stateMask = TVIS_EXPANDEDONCE;
    ::SendMessageW(Tree_.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    ::SendMessageW(Tree_.Handle(), TVM_EXPAND,
                   static_cast<WPARAM>(expanded ? TVE_EXPAND : TVE_COLLAPSE),
                   reinterpret_cast<LPARAM>(Item_));
}

std::optional<RECT> TTreeViewNode::TextRect() const {
    RECT place{};
    std::memcpy(&place, &Item_, sizeof(HTREEITEM));  // where the system reads it
    constexpr WPARAM TextOnly = TRUE;
    if (!Item_ || !::SendMessageW(Tree_.Handle(), TVM_GETITEMRECT, TextOnly,
                                  reinterpret_cast<LPARAM>(&place)))
        return std::nullopt;
    return place;
}

TTreeView::TTreeView(TControl& parent)
    : TControl(&parent), Root_(std::make_unique<TTreeViewNode>(*this, nullptr, std::string())) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES};
    ::InitCommonControlsEx(&classes);
    CreateHandle(WC_TREEVIEWW,
                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES |
                     TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
                 WS_EX_CLIENTEDGE, parent.Handle());
    Root_->Item_ = TVI_ROOT;
}

TTreeView::~TTreeView() {
    // No events of a tree that goes but the one that everybody has to know of.
    OnChange = nullptr;
    Pending_.clear();
    Root_.reset();
}

TTreeViewNode* TTreeView::Selected() const {
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM;
    item.hItem = ItemWith(Handle(), TVGN_CARET);
    if (!item.hItem || !::SendMessageW(Handle(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)))
        return nullptr;
    return reinterpret_cast<TTreeViewNode*>(item.lParam);
}

void TTreeView::Select(const TTreeViewNode* node) {
    std::vector<const TTreeViewNode*> closed;
    for (auto above = node ? node->Parent() : nullptr; above; above = above->Parent())
        if (!above->Expanded())
            closed.push_back(above);
    {
        struct TReveal {
            bool& Flag;
            explicit TReveal(bool& flag) : Flag(flag) { Flag = true; }
            ~TReveal() { Flag = false; }
        } const reveal(Revealing_);
        for (auto above = closed.rbegin(); above != closed.rend(); ++above)
            ::SendMessageW(Handle(), TVM_EXPAND, TVE_EXPAND,
                           reinterpret_cast<LPARAM>((*above)->Item_));
    }
    ::SendMessageW(Handle(), TVM_SELECTITEM, TVGN_CARET,
                   reinterpret_cast<LPARAM>(node ? node->Item_ : nullptr));
}

void TTreeView::BeginUpdate() {
    ++Deferring_;
    if (++Updating_ == 1)
        ::SendMessageW(Handle(), WM_SETREDRAW, FALSE, 0);
}

void TTreeView::EndUpdate() {
    // What nobody sees yet may never be seen.
    if (--Deferring_ == 0 && ::IsWindowVisible(Parent()->Handle()))
        InsertPending();
    if (--Updating_ == 0)
        ::SendMessageW(Handle(), WM_SETREDRAW, TRUE, 0);
}

void TTreeView::InsertPending() {
    // The nodes above come first in the list.
    for (TTreeViewNode* node : std::exchange(Pending_, {}))
        node->Insert();
}

void TTreeView::SetImages(HIMAGELIST images) {
    ::SendMessageW(Handle(), TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images));
}

void TTreeView::SetStateImages(HIMAGELIST images) {
    ::SendMessageW(Handle(), TVM_SETIMAGELIST, TVSIL_STATE, reinterpret_cast<LPARAM>(images));
}

POINT TTreeView::MenuPlace() const {
    const TTreeViewNode* const node = Selected();
    const RECT text = (node ? node->TextRect() : std::nullopt).value_or(RECT{});
    return {text.left, text.bottom};
}

void TTreeView::SetIndent(int indent) {
    ::SendMessageW(Handle(), TVM_SETINDENT, static_cast<WPARAM>(Form().Scale(indent)), 0);
}

LRESULT TTreeView::Expanding(const NMTREEVIEWW& expanding) {
    // Above a node there are children already; a handler that made them anew would take away the
    // very node that is to be selected.
    if (!OnExpanding || !(expanding.action & TVE_EXPAND) || Revealing_)
        return FALSE;
    struct TDeferral {
        TTreeView& Tree;
        explicit TDeferral(TTreeView& tree) : Tree(tree) { ++Tree.Deferring_; }
        ~TDeferral() {
            if (--Tree.Deferring_ == 0)
                Tree.InsertPending();
        }
    } const deferral(*this);
    return OnExpanding(*reinterpret_cast<TTreeViewNode*>(expanding.itemNew.lParam)) ? FALSE : TRUE;
}

LRESULT TTreeView::CustomDraw(NMTVCUSTOMDRAW& draw) {
    if (!OnNodeColor)
        return CDRF_DODEFAULT;
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return HighContrast()() ? CDRF_DODEFAULT : CDRF_NOTIFYITEMDRAW;
    auto* const node = reinterpret_cast<TTreeViewNode*>(draw.nmcd.lItemlParam);
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || !node)
        return CDRF_DODEFAULT;
    const std::optional<COLORREF> color = OnNodeColor(*node);
    // On the bar of the selection only the system's own colour can be read.
    if (!color || (draw.nmcd.uItemState & CDIS_SELECTED))
        return CDRF_DODEFAULT;
    draw.clrText = *color;
    return CDRF_NEWFONT;
}

LRESULT TTreeView::Notify(NMHDR& header) {
    switch (static_cast<int>(header.code)) {
        case static_cast<int>(TVN_ITEMEXPANDINGW):
            return Expanding(reinterpret_cast<const NMTREEVIEWW&>(header));
        case static_cast<int>(TVN_SELCHANGEDW):
            if (OnChange)
                OnChange(this);
            return 0;
        case static_cast<int>(NM_CLICK):
            if (OnClick)
                OnClick(this);
            return 0;
        case static_cast<int>(NM_RCLICK):
            // Of itself a tree tells its parent only.
            ::SendMessageW(Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Handle()),
                           static_cast<LPARAM>(::GetMessagePos()));
            return TRUE;
        case static_cast<int>(NM_CUSTOMDRAW):
            return CustomDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
        case static_cast<int>(TVN_KEYDOWN): {
            TTreeViewNode* const node = Selected();
            if (reinterpret_cast<const NMTVKEYDOWN&>(header).wVKey != VK_SPACE || !OnStateClick ||
                !node || node->StateImage() == 0)
                return 0;
            OnStateClick(*node);
            return TRUE;  // not the beginning of a name to look for
        }
        default:
            return 0;
    }
}

LRESULT TTreeView::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool asked = message >= TV_FIRST && message < TV_FIRST + 0x100;
    if (!Pending_.empty() && Deferring_ == 0 && (asked || ::IsWindowVisible(Handle()))) {
        const TTreeUpdate update(*this);
        InsertPending();
    }
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
        TVHITTESTINFO hit{};
        hit.pt = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        ::SendMessageW(Handle(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        if ((hit.flags & TVHT_ONITEMSTATEICON) != 0 && hit.hItem) {
            TVITEMW item{};
            item.mask = TVIF_HANDLE | TVIF_PARAM;
            item.hItem = hit.hItem;
            ::SendMessageW(Handle(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            SetFocus();
            if (OnStateClick)
                OnStateClick(*reinterpret_cast<TTreeViewNode*>(item.lParam));
            return 0;
        }
    }
    return TControl::WndProc(message, wParam, lParam);
}

}  // namespace framework
