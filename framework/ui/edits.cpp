#include "framework/ui/edits.h"

#include <algorithm>

#include "framework/base/text.h"

namespace framework {
namespace {

struct TSelection {
    DWORD From = 0;
    DWORD To = 0;
};

TSelection SelectionOf(HWND edit) {
    TSelection selection;
    ::SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&selection.From),
                   reinterpret_cast<LPARAM>(&selection.To));
    return selection;
}

std::string ClipboardText(HWND owner) {
    if (!::OpenClipboard(owner))
        return {};
    std::string text;
    if (const HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
        if (const auto* wide = static_cast<const wchar_t*>(::GlobalLock(data))) {
            text = FromWide(wide);
            ::GlobalUnlock(data);
        }
    }
    ::CloseClipboard();
    return text;
}

}  // namespace

TEdit::TEdit(TControl& parent) : TEdit(parent, ES_AUTOHSCROLL) {}

TEdit::TEdit(TControl& parent, DWORD style) : TControl(&parent) {
    CreateHandle(L"EDIT", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, WS_EX_CLIENTEDGE,
                 parent.Handle());
    SetMaxLength(0);
}

void TEdit::SetMaxLength(int characters) {
    ::SendMessageW(Handle(), EM_SETLIMITTEXT, static_cast<WPARAM>(characters), 0);
}

bool TEdit::ReadOnly() const {
    return (::GetWindowLongW(Handle(), GWL_STYLE) & ES_READONLY) != 0;
}

void TEdit::SetReadOnly(bool readOnly) {
    ::SendMessageW(Handle(), EM_SETREADONLY, readOnly ? TRUE : FALSE, 0);
}

void TEdit::SetPasswordChar(char character) {
    ::SendMessageW(Handle(), EM_SETPASSWORDCHAR, static_cast<unsigned char>(character), 0);
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

void TEdit::Notification(WORD code) {
    if (code == EN_CHANGE && OnChange)
        OnChange(this);
}

TMaskEdit::TMaskEdit(TControl& parent, const std::string& mask) : TEdit(parent) {
    const std::size_t end = mask.find(';');
    Picture_ = mask.substr(0, end);
    if (Picture_.starts_with('!'))
        Picture_.erase(0, 1);
    if (end != std::string::npos)
        Blank_ = mask.back();
    Show(EmptyText());
}

bool TMaskEdit::IsPlace(std::size_t position) const {
    return Picture_[position] == '0' || Picture_[position] == '9';
}

std::string TMaskEdit::EmptyText() const {
    std::string text = Picture_;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (IsPlace(i))
            text[i] = ' ';
    return text;
}

std::string TMaskEdit::Text() const {
    std::string text = TEdit::Text();
    for (std::size_t i = 0; i < std::min(text.size(), Picture_.size()); ++i)
        if (IsPlace(i) && text[i] == Blank_)
            text[i] = ' ';
    return text;
}

void TMaskEdit::Show(std::string text) {
    for (std::size_t i = 0; i < std::min(text.size(), Picture_.size()); ++i)
        if (IsPlace(i) && text[i] == ' ')
            text[i] = Blank_;
    TEdit::SetText(text);
}

void TMaskEdit::SetText(const std::string& text) {
    std::string shown = EmptyText();
    std::size_t place = 0;
    for (const char character : text) {
        if (place >= shown.size())
            break;
        if (!IsPlace(place) && character != Picture_[place])
            continue;
        if (character == ' ' || (character >= '0' && character <= '9') || !IsPlace(place))
            shown[place++] = character;
    }
    Show(shown);
}

void TMaskEdit::Put(const std::string& text, std::size_t caret) {
    if (text != Text())
        Show(text);
    ::SendMessageW(Handle(), EM_SETSEL, caret, static_cast<LPARAM>(caret));
}

void TMaskEdit::Type(char character) {
    EraseSelection();
    std::string text = Text();
    std::size_t place = SelectionOf(Handle()).From;
    while (place < Picture_.size() && !IsPlace(place))
        ++place;
    const bool digit = character >= '0' && character <= '9';
    if (place >= Picture_.size() || place >= text.size() || !(digit || character == ' '))
        return;
    text[place++] = character;
    while (place < Picture_.size() && !IsPlace(place))
        ++place;
    Put(text, place);
}

void TMaskEdit::TypeAll(const std::string& text) {
    for (const char character : text)
        Type(character);
}

void TMaskEdit::Erase(std::size_t from, std::size_t to) {
    std::string text = Text();
    for (std::size_t i = from; i < to && i < text.size(); ++i)
        if (IsPlace(i))
            text[i] = ' ';
    Put(text, from);
}

void TMaskEdit::EraseSelection() {
    const TSelection selection = SelectionOf(Handle());
    if (selection.From != selection.To)
        Erase(selection.From, selection.To);
}

void TMaskEdit::Backspace() {
    const TSelection selection = SelectionOf(Handle());
    if (selection.From != selection.To)
        return Erase(selection.From, selection.To);
    std::size_t place = selection.From;
    while (place > 0 && !IsPlace(place - 1))
        --place;
    if (place > 0)
        Erase(place - 1, place);
}

LRESULT TMaskEdit::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (ReadOnly())
        return TEdit::WndProc(message, wParam, lParam);
    switch (message) {
        case WM_CHAR:
            if (wParam == VK_BACK)
                Backspace();
            else if (wParam >= VK_SPACE && wParam < 0x80)
                Type(static_cast<char>(wParam));
            else if (wParam < VK_SPACE)
                break;  // copy, paste and the like
            return 0;
        case WM_KEYDOWN: {
            if (wParam != VK_DELETE)
                break;
            const TSelection selection = SelectionOf(Handle());
            Erase(selection.From, std::max(selection.To, selection.From + 1));
            return 0;
        }
        case WM_PASTE:
            TypeAll(ClipboardText(Handle()));
            return 0;
        case WM_CUT:
            ::SendMessageW(Handle(), WM_COPY, 0, 0);
            [[fallthrough]];
        case WM_CLEAR:
            EraseSelection();
            return 0;
        case WM_UNDO:
        case EM_UNDO:
            return 0;
        default:
            break;
    }
    return TEdit::WndProc(message, wParam, lParam);
}

}  // namespace framework
