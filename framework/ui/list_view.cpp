#include "framework/ui/list_view.h"

#include <algorithm>
#include <utility>

#include "framework/base/text.h"
#include "framework/ui/contrast.h"
#include "framework/ui/form.h"

namespace framework {
namespace {

constexpr UINT SelectionStates = LVIS_SELECTED | LVIS_FOCUSED;

void SetStates(HWND list, int index, UINT states, UINT mask) {
    LVITEMW item{};
    item.state = states;
    item.stateMask = mask;
    ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index),
                   reinterpret_cast<LPARAM>(&item));
}

}  // namespace

TListView::TListView(TControl& parent, TListViewStyle style)
    : TControl(&parent), Rows_(*this), Ticks_(style.Ticks) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&classes);
    const DWORD header = !style.Header ? LVS_NOCOLUMNHEADER : style.Sortable ? 0 : LVS_NOSORTHEADER;
    const DWORD edit = style.EditCaptions ? LVS_EDITLABELS : 0;
    const DWORD single = style.MultiSelect ? 0 : LVS_SINGLESEL;
    CreateHandle(WC_LISTVIEWW,
                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA |
                     LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | header | edit | single,
                 WS_EX_CLIENTEDGE, parent.Handle());
    const DWORD extended = LVS_EX_FULLROWSELECT | (Ticks_ ? LVS_EX_CHECKBOXES : 0);
    ::SendMessageW(Handle(), LVM_SETEXTENDEDLISTVIEWSTYLE, extended, static_cast<LPARAM>(extended));
    // The rows are not the system's, nor are their ticks: it asks.
    if (Ticks_)
        ::SendMessageW(Handle(), LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK, 0);
}

void TListView::AddColumn(const std::string& caption, int width) {
    std::wstring text = ToWide(caption);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = text.data();
    column.cx = Form().Scale(width);
    column.iSubItem = Columns_;
    ::SendMessageW(Handle(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(Columns_++),
                   reinterpret_cast<LPARAM>(&column));
}

std::vector<int> TListView::ColumnWidths() {
    const int dpi = Form().Scale(96);
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(Columns_));
    for (int i = 0; i < Columns_; ++i)
        widths.push_back(::MulDiv(static_cast<int>(::SendMessageW(Handle(), LVM_GETCOLUMNWIDTH,
                                                                  static_cast<WPARAM>(i), 0)),
                                  96, dpi));
    return widths;
}

void TListView::SetColumnWidths(const std::vector<int>& widths) {
    for (std::size_t i = 0; i < widths.size() && i < static_cast<std::size_t>(Columns_); ++i)
        if (widths[i] > 0)
            ::SendMessageW(Handle(), LVM_SETCOLUMNWIDTH, i, Form().Scale(widths[i]));
}

void TListView::SetSortMark(int column, bool descending) {
    const auto header = reinterpret_cast<HWND>(::SendMessageW(Handle(), LVM_GETHEADER, 0, 0));
    for (int i = 0; i < Columns_; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column)
            item.fmt |= descending ? HDF_SORTDOWN : HDF_SORTUP;
        ::SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(&item));
    }
}

void TListView::SetColumnOrder(const std::vector<int>& order) {
    std::vector<int> columns = order;
    ::SendMessageW(Handle(), LVM_SETCOLUMNORDERARRAY, columns.size(),
                   reinterpret_cast<LPARAM>(columns.data()));
}

void TListView::SetDrawnColumn(int column, std::function<void(const TListCell& cell)> draw) {
    DrawnColumn_ = draw ? column : -1;
    DrawCell_ = std::move(draw);
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

void TListView::SetImages(HIMAGELIST images) {
    ::SendMessageW(Handle(), LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
}

void TListView::TRows::EndUpdate() {
    if (--Updating_ > 0 || !std::exchange(Changed_, false))
        return;
    List_.RowsChanged(std::exchange(Cleared_, false));
}

void TListView::TRows::Clear() {
    const TListUpdate update(*this);
    Items.clear();
    Cleared_ = Changed_ = true;
}

void TListView::TRows::Add(TListRow row) {
    const TListUpdate update(*this);
    Items.push_back(std::move(row));
    Changed_ = true;
}

void TListView::RowsChanged(bool cleared) {
    if (cleared) {
        Silent_ = true;
        SetStates(Handle(), -1, 0, SelectionStates);
        // Through none: the new rows are shown from the first.
        ::SendMessageW(Handle(), LVM_SETITEMCOUNT, 0, 0);
        Silent_ = false;
    }
    ::SendMessageW(Handle(), LVM_SETITEMCOUNT, static_cast<WPARAM>(Count()), LVSICF_NOSCROLL);
    if (OnChange)
        OnChange(this);
}

void TListView::RedrawWhatDiffers(const std::vector<TListRow>& before) {
    const auto top = static_cast<std::size_t>(::SendMessageW(Handle(), LVM_GETTOPINDEX, 0, 0));
    const auto page = static_cast<std::size_t>(::SendMessageW(Handle(), LVM_GETCOUNTPERPAGE, 0, 0));
    const std::size_t end = std::min(top + page + 1, Rows_.Items.size());
    for (std::size_t i = top; i < end; ++i)
        if (i >= before.size() || before[i] != Rows_.Items[i])
            ::SendMessageW(Handle(), LVM_REDRAWITEMS, i, static_cast<LPARAM>(i));
}

void TListView::Replace(std::vector<TListRow> rows, const std::vector<int>& selected, int focused) {
    const std::vector<int> selectedBefore = SelectedIndices();
    const int focusedBefore = FocusedIndex();
    if (focused < 0 && !selected.empty())
        focused = selected.front();
    Rows_.Items.swap(rows);
    Silent_ = true;
    ::SendMessageW(Handle(), LVM_SETITEMCOUNT, static_cast<WPARAM>(Count()),
                   LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
    if (selected != selectedBefore || focused != focusedBefore) {
        SetStates(Handle(), -1, 0, SelectionStates);
        for (const int index : selected)
            SetStates(Handle(), index, LVIS_SELECTED, LVIS_SELECTED);
        if (RowAt(focused))
            SetStates(Handle(), focused, LVIS_FOCUSED, LVIS_FOCUSED);
    }
    Silent_ = false;
    // Where there were rows that are no more, the system draws by itself.
    RedrawWhatDiffers(rows);
    if (OnChange)
        OnChange(this);
}

void TListView::DeleteRow(int index) {
    const int selected = SelectedIndex();
    static_cast<void>(Rows_.Items.at(static_cast<std::size_t>(index)));
    Rows_.Items.erase(Rows_.Items.begin() + index);
    Silent_ = true;
    // The selection is a position to the system; it has to follow its row.
    if (selected >= index) {
        SetStates(Handle(), -1, 0, SelectionStates);
        if (selected > index)
            SetStates(Handle(), selected - 1, SelectionStates, SelectionStates);
    }
    Silent_ = false;
    RowsChanged(false);
}

int TListView::SelectedIndex() const {
    return static_cast<int>(
        ::SendMessageW(Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::vector<int> TListView::SelectedIndices() const {
    std::vector<int> indices;
    for (LRESULT at = -1;;) {
        at = ::SendMessageW(Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(at), LVNI_SELECTED);
        if (at < 0)
            return indices;
        indices.push_back(static_cast<int>(at));
    }
}

int TListView::FocusedIndex() const {
    return static_cast<int>(
        ::SendMessageW(Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
}

void TListView::SelectAll() {
    if (!(::GetWindowLongW(Handle(), GWL_STYLE) & LVS_SINGLESEL))
        SetStates(Handle(), -1, LVIS_SELECTED, LVIS_SELECTED);
}

const TListRow* TListView::RowAt(int index) const {
    return index >= 0 && index < Count() ? &Rows_.Items[static_cast<std::size_t>(index)] : nullptr;
}

const TListRow* TListView::Selected() const {
    return RowAt(SelectedIndex());
}

void TListView::Select(int index) {
    if (!RowAt(index)) {
        SetStates(Handle(), -1, 0, SelectionStates);
        return;
    }
    SetStates(Handle(), index, SelectionStates, SelectionStates);
    ::SendMessageW(Handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
}

void TListView::SetTicked(const std::vector<int>& indices, bool ticked) {
    bool changed = false;
    for (const int index : indices) {
        if (!RowAt(index) || RowAt(index)->Ticked == ticked)
            continue;
        Rows_.Items[static_cast<std::size_t>(index)].Ticked = ticked;
        changed = true;
        ::SendMessageW(Handle(), LVM_REDRAWITEMS, static_cast<WPARAM>(index), index);
        ::NotifyWinEvent(EVENT_OBJECT_STATECHANGE, Handle(), OBJID_CLIENT, index + 1);
    }
    if (changed && OnTick)
        OnTick(this);
}

void TListView::TickSelected() {
    // All of them become what the one with the focus was not.
    std::vector<int> indices = SelectedIndices();
    const int focused = FocusedIndex();
    if (RowAt(focused) && std::ranges::find(indices, focused) == indices.end())
        indices = {focused};
    if (const TListRow* const first = RowAt(RowAt(focused)    ? focused
                                            : indices.empty() ? -1
                                                              : indices.front()))
        SetTicked(indices, !first->Ticked);
}

void TListView::Clicked(const NMITEMACTIVATE& click, const TNotifyEvent& event) {
    if (Ticks_) {
        LVHITTESTINFO hit{};
        hit.pt = click.ptAction;
        ::SendMessageW(Handle(), LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        // Two quick clicks on a box are two clicks.
        if (const TListRow* const row = RowAt(hit.iItem); row && hit.flags == LVHT_ONITEMSTATEICON)
            return SetTicked({hit.iItem}, !row->Ticked);
    }
    if (event)
        event(this);
}

LRESULT TListView::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // To the system the space bar also selects, and looks for a caption.
    if (Ticks_ && message == WM_KEYDOWN && wParam == VK_SPACE && ::GetKeyState(VK_CONTROL) >= 0) {
        TickSelected();
        return 0;
    }
    if (Ticks_ && message == WM_CHAR && wParam == VK_SPACE)
        return 0;
    return TControl::WndProc(message, wParam, lParam);
}

void TListView::EditCaption(int index) {
    SetFocus();
    ::SendMessageW(Handle(), LVM_EDITLABELW, static_cast<WPARAM>(index), 0);
}

POINT TListView::MenuPlace() const {
    RECT row{};
    row.left = LVIR_LABEL;
    ::SendMessageW(Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(SelectedIndex()),
                   reinterpret_cast<LPARAM>(&row));
    return {row.left, row.bottom};
}

void TListView::Describe(LVITEMW& item) const {
    const TListRow* const row = RowAt(item.iItem);
    if (!row)
        return;
    if (item.mask & LVIF_IMAGE)
        item.iImage = item.iSubItem == 0 ? row->ImageIndex : -1;
    if ((item.mask & LVIF_STATE) && Ticks_ && item.iSubItem == 0) {
        item.stateMask |= LVIS_STATEIMAGEMASK;
        item.state = (item.state & ~UINT{LVIS_STATEIMAGEMASK}) |
                     INDEXTOSTATEIMAGEMASK(row->Ticked ? 2u : 1u);
    }
    if ((item.mask & LVIF_TEXT) && item.pszText && item.cchTextMax > 0) {
        const auto column = static_cast<std::size_t>(item.iSubItem);
        const std::wstring text = column == 0 ? ToWide(row->Caption)
                                  : column <= row->SubItems.size()
                                      ? ToWide(row->SubItems[column - 1])
                                      : std::wstring();
        const std::size_t length =
            std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
        *std::copy_n(text.begin(), length, item.pszText) = L'\0';
    }
}

int TListView::Find(const NMLVFINDITEMW& search) const {
    // What is typed is the beginning of a caption.
    const bool partial = (search.lvfi.flags & LVFI_PARTIAL) != 0;
    if ((!partial && !(search.lvfi.flags & LVFI_STRING)) || !search.lvfi.psz || Count() == 0)
        return -1;
    const std::string wanted = FromWide(search.lvfi.psz);
    const int first = std::max(search.iStart, 0);
    const int count = search.lvfi.flags & LVFI_WRAP ? Count() : Count() - first;
    for (int i = 0; i < count; ++i) {
        const int index = (first + i) % Count();
        const std::string& caption = Row(index).Caption;
        if (SameText(partial ? std::string_view(caption).substr(0, wanted.size()) : caption,
                     wanted))
            return index;
    }
    return -1;
}

std::optional<COLORREF> TListView::RowColor(int index) const {
    const TListRow* const row = RowAt(index);
    return row && OnRowColor && !HighContrast()() ? OnRowColor(*row) : std::nullopt;
}

void TListView::DrawCell(int row, HDC dc) const {
    RECT area{};
    area.left = LVIR_BOUNDS;
    area.top = DrawnColumn_;
    ::SendMessageW(Handle(), LVM_GETSUBITEMRECT, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&area));
    const bool isSelected =
        ::SendMessageW(Handle(), LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
    // As the system draws the other cells, with the focus and without.
    const int back = !isSelected ? COLOR_WINDOW : Focused() ? COLOR_HIGHLIGHT : COLOR_BTNFACE;
    const int front = !isSelected ? COLOR_WINDOWTEXT
                      : Focused() ? COLOR_HIGHLIGHTTEXT
                                  : COLOR_BTNTEXT;
    ::FillRect(dc, &area, ::GetSysColorBrush(back));
    const int saved = ::SaveDC(dc);
    ::IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    DrawCell_({row, dc, area, ::GetSysColor(front)});
    ::RestoreDC(dc, saved);
}

LRESULT TListView::CustomDraw(NMLVCUSTOMDRAW& draw) const {
    const int row = static_cast<int>(draw.nmcd.dwItemSpec);
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return OnRowColor || DrawCell_ ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
        case CDDS_ITEMPREPAINT: {
            const std::optional<COLORREF> color = RowColor(row);
            draw.clrText = color.value_or(draw.clrText);
            return (color ? CDRF_NEWFONT : CDRF_DODEFAULT) |
                   (DrawCell_ ? CDRF_NOTIFYSUBITEMDRAW : CDRF_DODEFAULT);
        }
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            if (draw.iSubItem != DrawnColumn_ || !RowAt(row))
                return CDRF_DODEFAULT;
            DrawCell(row, draw.nmcd.hdc);
            return CDRF_SKIPDEFAULT;
        default:
            return CDRF_DODEFAULT;
    }
}

void TListView::Edited(const LVITEMW& item) {
    if (!item.pszText || !RowAt(item.iItem))
        return;
    const std::string caption = FromWide(item.pszText);
    Rows_.Items[static_cast<std::size_t>(item.iItem)].Caption = caption;
    ::SendMessageW(Handle(), LVM_REDRAWITEMS, static_cast<WPARAM>(item.iItem), item.iItem);
    if (OnEdited)
        OnEdited(item.iItem, caption);
}

void TListView::SelectionChanged(const NMLISTVIEW& change) {
    const UINT before = change.uOldState & LVIS_SELECTED;
    if (Silent_ || before == (change.uNewState & LVIS_SELECTED))
        return;
    if (OnSelectItem)
        OnSelectItem(this);
    if (OnChange)
        OnChange(this);
}

LRESULT TListView::Notify(NMHDR& header) {
    switch (static_cast<int>(header.code)) {
        case static_cast<int>(LVN_GETDISPINFOW):
            Describe(reinterpret_cast<NMLVDISPINFOW&>(header).item);
            return 0;
        case static_cast<int>(LVN_ODFINDITEMW):
            return Find(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case static_cast<int>(NM_CUSTOMDRAW):
            return CustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        case static_cast<int>(LVN_ITEMCHANGED):
            SelectionChanged(reinterpret_cast<const NMLISTVIEW&>(header));
            return 0;
        case static_cast<int>(LVN_ODSTATECHANGED):
            // Of a range at once; where all change, LVN_ITEMCHANGED tells it of row -1.
            if (!Silent_ && OnSelectItem)
                OnSelectItem(this);
            return 0;
        case static_cast<int>(LVN_COLUMNCLICK):
            if (OnColumnClick)
                OnColumnClick(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
            return 0;
        case static_cast<int>(LVN_ENDLABELEDITW):
            Edited(reinterpret_cast<const NMLVDISPINFOW&>(header).item);
            return TRUE;
        case static_cast<int>(LVN_KEYDOWN):
            if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_F2)
                EditCaption(SelectedIndex());
            return 0;
        case static_cast<int>(NM_CLICK):
            Clicked(reinterpret_cast<const NMITEMACTIVATE&>(header), OnClick);
            return 0;
        case static_cast<int>(NM_DBLCLK):
            Clicked(reinterpret_cast<const NMITEMACTIVATE&>(header), OnDblClick);
            return 0;
        default:
            return 0;
    }
}

}  // namespace framework
