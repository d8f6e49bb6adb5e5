#include "framework/ui/rich_edit.h"

#include <richedit.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/text.h"

namespace framework {
namespace {

// Controls that do not stand for a line's end mean something to the system's control, which would
// change them. They are shown as characters that nobody uses.
constexpr wchar_t PrivateControls = 0xF600;
constexpr int ManyLines = 1000;

bool IsTakenLiterally(wchar_t c) {
    return c >= L' ' || c == L'\t';
}

/// Every line's end becomes one CR, as the control keeps it.
std::wstring ToControl(const std::wstring& text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'\n' && i > 0 && text[i - 1] == L'\r')
            continue;
        if (c == L'\n' || c == L'\r')
            result += L'\r';
        else
            result += IsTakenLiterally(c) ? c : static_cast<wchar_t>(PrivateControls + c);
    }
    return result;
}

struct TReader {
    const char* Next;
    std::size_t Left;
};

DWORD CALLBACK Read(DWORD_PTR cookie, BYTE* buffer, LONG size, LONG* done) {
    auto& reader = *reinterpret_cast<TReader*>(cookie);
    const std::size_t count = std::min(static_cast<std::size_t>(size), reader.Left);
    std::memcpy(buffer, reader.Next, count);
    reader.Next += count;
    reader.Left -= count;
    *done = static_cast<LONG>(count);
    return 0;
}

// Stays loaded: a window class is not to go while there may be windows of it.
const wchar_t* RichEditClass() {
    static const HMODULE library = ::LoadLibraryW(L"msftedit.dll");
    if (!library)
        RaiseLastOSError();
    return MSFTEDIT_CLASS;
}

}  // namespace

TTextControl::TTextControl(TControl& parent, TKind kind) : TControl(&parent), Kind_(kind) {
    CreateControl();
}

void TTextControl::CreateControl() {
    CreateHandle(RichEditClass(),
                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                     ES_NOHIDESEL | ES_WANTRETURN,
                 WS_EX_CLIENTEDGE, Parent()->Handle());
    if (Kind_ == TKind::Plain)
        ::SendMessageW(Handle(), EM_SETTEXTMODE, TM_PLAINTEXT, 0);
    else
        ::SendMessageW(Handle(), EM_SETUNDOLIMIT, 0, 0);
    ::SendMessageW(Handle(), EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    ::SendMessageW(Handle(), EM_SETEVENTMASK, 0, ENM_CHANGE);
}

void TTextControl::RenewControl() {
    const HWND previous = ::GetWindow(Handle(), GW_HWNDPREV);
    const RECT bounds = Bounds();
    const bool focused = Focused(), visible = Visible(), enabled = Enabled(), fixed = ReadOnly();
    DestroyHandle();
    CreateControl();
    // Where it was also in the order of the Tab key.
    ::SetWindowPos(Handle(), previous ? previous : HWND_TOP, bounds.left, bounds.top,
                   bounds.right - bounds.left, bounds.bottom - bounds.top, SWP_NOACTIVATE);
    SetReadOnly(fixed);
    SetEnabled(enabled);
    SetVisible(visible);
    if (focused)
        SetFocus();
}

std::string TTextControl::Text() const {
    GETTEXTLENGTHEX ask{GTL_NUMCHARS | GTL_PRECISE, 1200};
    const LRESULT length =
        ::SendMessageW(Handle(), EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&ask), 0);
    std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
    GETTEXTEX get{};
    get.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    get.codepage = 1200;
    const LRESULT got = ::SendMessageW(Handle(), EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get),
                                       reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(got));
    std::wstring result;
    result.reserve(text.size());
    for (const wchar_t c : text) {
        if (c == L'\r')
            result += L"\r\n";
        else if (c >= PrivateControls && c < PrivateControls + L' ')
            result += static_cast<wchar_t>(c - PrivateControls);
        else if (c != L'\n')
            result += c;
    }
    return FromWide(result);
}

void TTextControl::SetText(const std::string& text) {
    // To take the lines of a long text out can cost the square of their number.
    if (::SendMessageW(Handle(), EM_GETLINECOUNT, 0, 0) > ManyLines)
        RenewControl();
    // Not as the window's text: that could be taken for one with formats in it.
    const std::wstring wide = ToControl(ToWide(text));
    TReader reader{reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&reader), 0, Read};
    ::SendMessageW(Handle(), EM_STREAMIN, SF_TEXT | SF_UNICODE, reinterpret_cast<LPARAM>(&stream));
}

void TTextControl::Append(const std::string& text) {
    // The second piece of a line's end is nothing more.
    const bool rest = AfterReturn_ && text.starts_with('\n');
    AfterReturn_ = text.ends_with('\r');
    const std::wstring wide = ToControl(ToWide(text.substr(rest ? 1 : 0)));
    ::SendMessageW(Handle(), EM_SETSEL, static_cast<WPARAM>(-1), -1);
    ::SendMessageW(Handle(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide.c_str()));
    ::SendMessageW(Handle(), WM_VSCROLL, SB_BOTTOM, 0);
}

bool TTextControl::ReadOnly() const {
    return (::GetWindowLongW(Handle(), GWL_STYLE) & ES_READONLY) != 0;
}

void TTextControl::SetReadOnly(bool readOnly) {
    ::SendMessageW(Handle(), EM_SETREADONLY, readOnly, 0);
}

void TTextControl::Notification(WORD code) {
    if (code == EN_CHANGE && OnChange)
        OnChange(this);
}

LRESULT TTextControl::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETDLGCODE) {
        // Of the keys of a dialog only Enter is the text's, and only where it can be changed.
        const auto* const asked = reinterpret_cast<const MSG*>(lParam);
        const bool enter = asked && !ReadOnly() && asked->wParam == VK_RETURN;
        return DLGC_WANTARROWS | DLGC_WANTCHARS | (enter ? DLGC_WANTMESSAGE : 0);
    }
    if (message == WM_KEYUP && OnKeyUp)
        OnKeyUp(wParam);
    return TControl::WndProc(message, wParam, lParam);
}

TRichEdit::TRichEdit(TControl& parent) : TTextControl(parent, TKind::Coloured), View_(*this) {}

void TRichEdit::SetText(const std::string& text) {
    TTextControl::SetText(text);
    Lines_.clear();
}

void TRichEdit::BeginUpdate() {
    if (++Updating_ == 1)
        ::SendMessageW(Handle(), WM_SETREDRAW, FALSE, 0);
}

void TRichEdit::EndUpdate() {
    if (--Updating_ > 0)
        return;
    ApplySelection();
    ::SendMessageW(Handle(), WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

void TRichEdit::Notification(WORD code) {
    if (code == EN_CHANGE)
        Lines_.clear();
    TTextControl::Notification(code);
}

LONG TRichEdit::ControlPosition(std::size_t position) {
    if (Lines_.empty()) {
        Known_ = Text();
        LONG characters = 0;
        for (std::size_t start = 0; start != std::string::npos;) {
            Lines_.push_back({start, characters});
            const std::size_t end = Known_.find("\r\n", start);
            if (end == std::string::npos)
                break;
            characters +=
                static_cast<LONG>(ToWide({Known_.data() + start, end - start}).size()) + 1;
            start = end + 2;
        }
    }
    position = std::min(position, Known_.size());
    const auto next = std::ranges::upper_bound(Lines_, position, {}, &TLine::Start);
    const TLine& line = *std::prev(next);
    const std::wstring before = ToWide({Known_.data() + line.Start, position - line.Start});
    // Between CR and LF there is nothing.
    const bool inEnd = !before.empty() && before.back() == L'\r';
    return line.ControlStart + static_cast<LONG>(before.size()) - (inEnd ? 1 : 0);
}

void TRichEdit::Select() {
    Unapplied_ = true;
    if (Updating_ == 0)
        ApplySelection();
}

void TRichEdit::ApplySelection() {
    if (!std::exchange(Unapplied_, false))
        return;
    CHARRANGE range{ControlPosition(SelStart_), ControlPosition(SelStart_ + SelLength_)};
    ::SendMessageW(Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

void TRichEdit::SetSelStart(std::size_t position) {
    SelStart_ = position;
    SelLength_ = 0;
    Select();
}

void TRichEdit::SetSelLength(std::size_t length) {
    SelLength_ = length;
    Select();
}

void TRichEdit::SetSelColor(COLORREF color) {
    ApplySelection();
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR;
    format.crTextColor = color;
    ::SendMessageW(Handle(), EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
}

}  // namespace framework
