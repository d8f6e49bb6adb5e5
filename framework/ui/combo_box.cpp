#include "framework/ui/combo_box.h"

#include <algorithm>

#include "framework/base/text.h"

namespace framework {

TComboBox::TComboBox(TControl& parent, const std::vector<std::string>& items) : TControl(&parent) {
    CreateHandle(L"COMBOBOX", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0,
                 parent.Handle());
    SetItems(items);
}

void TComboBox::SetItems(const std::vector<std::string>& items) {
    ::SendMessageW(Handle(), CB_RESETCONTENT, 0, 0);
    for (const std::string& item : items)
        ::SendMessageW(Handle(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(item).c_str()));
    // The open list is to be as high as its items want it.
    const RECT bounds = Bounds();
    TComboBox::SetBounds(bounds.left, bounds.top, Width(), Height());
}

int TComboBox::ItemCount() const {
    return static_cast<int>(::SendMessageW(Handle(), CB_GETCOUNT, 0, 0));
}

std::string TComboBox::Item(int index) const {
    const auto at = static_cast<WPARAM>(index);
    const LRESULT length = ::SendMessageW(Handle(), CB_GETLBTEXTLEN, at, 0);
    if (length <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    ::SendMessageW(Handle(), CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(text.data()));
    return FromWide(text);
}

int TComboBox::ItemIndex() const {
    return static_cast<int>(::SendMessageW(Handle(), CB_GETCURSEL, 0, 0));
}

void TComboBox::SetItemIndex(int index) {
    ::SendMessageW(Handle(), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void TComboBox::Select(int index) {
    SetItemIndex(index);
    if (OnChange)
        OnChange(this);
}

void TComboBox::SetBounds(int left, int top, int width, int height) {
    // The system takes the height for that of the open list.
    constexpr int MostItems = 10;
    const auto item = static_cast<int>(::SendMessageW(Handle(), CB_GETITEMHEIGHT, 0, 0));
    const int items = std::clamp(ItemCount(), 1, MostItems);
    TControl::SetBounds(left, top, width, height + items * item + 4);
}

void TComboBox::Notification(WORD code) {
    if (code == CBN_SELCHANGE && OnChange)
        OnChange(this);
}

}  // namespace framework
