#include "framework/ui/rich_edit.h"

#include <commdlg.h>
#include <richedit.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <optional>

#include "framework/base/exceptions.h"
#include "framework/base/import.h"
#include "framework/base/text.h"
#include "framework/ui/contrast.h"

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

DWORD CALLBACK ReadPiece(DWORD_PTR cookie, BYTE* buffer, LONG size, LONG* done) {
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
    static const HMODULE library = LoadSystemLibrary(L"msftedit.dll");
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
    TellColor();
    TellFont();
}

void TTextControl::TellFont() {
    if (!FixedPitch_)
        return;
    CHARFORMAT2W font{};
    font.cbSize = sizeof font;
    font.dwMask = CFM_FACE | CFM_CHARSET;
    font.bCharSet = DEFAULT_CHARSET;
    std::wcscpy(font.szFaceName, L"Courier New");
    ::SendMessageW(Handle(), EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&font));
    ::SendMessageW(Handle(), EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&font));
}

void TTextControl::SetFixedPitch() {
    FixedPitch_ = true;
    TellFont();
}

void TTextControl::SelectAll() {
    ::SendMessageW(Handle(), EM_SETSEL, 0, -1);
}

bool TTextControl::FindNext(const std::string& text) {
    const std::wstring wide = ToControl(ToWide(text));
    CHARRANGE selected{};
    ::SendMessageW(Handle(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    for (const LONG from : {selected.cpMax, LONG{0}}) {
        FINDTEXTEXW find{};
        find.chrg = {from, -1};
        find.lpstrText = wide.c_str();
        if (::SendMessageW(Handle(), EM_FINDTEXTEXW, FR_DOWN, reinterpret_cast<LPARAM>(&find)) < 0)
            continue;
        ::SendMessageW(Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&find.chrgText));
        ::SendMessageW(Handle(), EM_SCROLLCARET, 0, 0);
        return true;
    }
    return false;
}

void TTextControl::Select(std::size_t start, std::size_t length) {
    const std::string text = Text();
    const auto place = [&](std::size_t bytes) {
        return static_cast<LONG>(ToControl(ToWide(text.substr(0, bytes))).size());
    };
    CHARRANGE range{place(start), place(start + length)};
    ::SendMessageW(Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    ::SendMessageW(Handle(), EM_SCROLLCARET, 0, 0);
}

std::size_t TTextControl::SelectionStart() const {
    CHARRANGE selected{};
    ::SendMessageW(Handle(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    const std::wstring wide =
        ToControl(ToWide(Text())).substr(0, static_cast<std::size_t>(selected.cpMin));
    return FromWide(wide).size() + static_cast<std::size_t>(std::ranges::count(wide, L'\r'));
}

void TTextControl::ReplaceSelection(const std::string& text) {
    const std::wstring wide = ToControl(ToWide(text));
    ::SendMessageW(Handle(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
}

std::string TTextControl::CaretLine() const {
    CHARRANGE selected{};
    ::SendMessageW(Handle(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    const LRESULT line = ::SendMessageW(Handle(), EM_EXLINEFROMCHAR, 0, selected.cpMin);
    // A line longer than this is no line that anybody looks at.
    std::wstring text(4096, L'\0');
    text[0] = static_cast<wchar_t>(text.size() - 1);
    const LRESULT length = ::SendMessageW(Handle(), EM_GETLINE, static_cast<WPARAM>(line),
                                          reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(std::max<LRESULT>(length, 0)));
    while (!text.empty() && (text.back() == L'\r' || text.back() == L'\n'))
        text.pop_back();
    return FromWide(text);
}

bool TTextControl::EndIsInView() const {
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL;
    if (!::GetScrollInfo(Handle(), SB_VERT, &bar) || bar.nPage == 0)
        return true;
    const int line = std::max(TextSize("Ay").cy, LONG{8});
    return bar.nPos + static_cast<int>(bar.nPage) + 2 * line >= bar.nMax;
}

void TTextControl::TellColor() {
    ::SendMessageW(Handle(), EM_SETBKGNDCOLOR, !Color(),
                   static_cast<LPARAM>(::GetSysColor(Color().value_or(COLOR_WINDOW))));
}

void TTextControl::SetColor(std::optional<int> systemColor) {
    TControl::SetColor(systemColor);
    TellColor();
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
    get.cb = static_cast<DWORD>(text.size()) * sizeof(wchar_t);
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
    return FromWide(result) + Pieces_.Held();
}

void TTextControl::SetText(const std::string& text) {
    // Not as the window's text: that could be taken for one with formats in it.
    const std::wstring wide = ToControl(ToWide(text));
    Read(SF_TEXT | SF_UNICODE, wide.data(), wide.size() * sizeof(wchar_t));
}

void TTextControl::Read(WPARAM format, const void* text, std::size_t bytes) {
    // To take the lines of a long text out can cost the square of their number.
    if (::SendMessageW(Handle(), EM_GETLINECOUNT, 0, 0) > ManyLines)
        RenewControl();
    Pieces_.Rest();
    TReader reader{static_cast<const char*>(text), bytes};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&reader), 0, ReadPiece};
    ::SendMessageW(Handle(), EM_STREAMIN, format, reinterpret_cast<LPARAM>(&stream));
}

void TTextControl::Append(const std::string& text) {
    Insert(text, std::nullopt);
}

void TTextControl::Insert(const std::string& text, std::optional<COLORREF> color) {
    // The second piece of a line's end is nothing more.
    const std::string whole = Pieces_.Next(text);
    const bool rest = AfterReturn_ && whole.starts_with('\n');
    AfterReturn_ = whole.ends_with('\r');
    const std::wstring wide = ToControl(ToWide(whole.substr(rest ? 1 : 0)));
    CHARRANGE selected{};
    POINT place{};
    ::SendMessageW(Handle(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    const bool follow = selected.cpMin == selected.cpMax && EndIsInView();
    if (!follow) {
        ::SendMessageW(Handle(), WM_SETREDRAW, FALSE, 0);
        ::SendMessageW(Handle(), EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&place));
    }
    ::SendMessageW(Handle(), EM_SETSEL, static_cast<WPARAM>(-1), -1);
    if (Kind_ == TKind::Coloured) {
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        format.dwMask = CFM_COLOR;
        format.dwEffects = color && !HighContrast()() ? 0 : CFE_AUTOCOLOR;
        format.crTextColor = color.value_or(0);
        ::SendMessageW(Handle(), EM_SETCHARFORMAT, SCF_SELECTION,
                       reinterpret_cast<LPARAM>(&format));
    }
    ::SendMessageW(Handle(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide.c_str()));
    if (follow) {
        ::SendMessageW(Handle(), WM_VSCROLL, SB_BOTTOM, 0);
        return;
    }
    ::SendMessageW(Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    ::SendMessageW(Handle(), EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&place));
    ::SendMessageW(Handle(), WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(Handle(), nullptr, FALSE);
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
    if (message == WM_LBUTTONUP && OnClick) {
        const LRESULT result = TControl::WndProc(message, wParam, lParam);
        CHARRANGE selected{};
        ::SendMessageW(Handle(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
        if (selected.cpMin == selected.cpMax)
            OnClick(this);
        return result;
    }
    return TControl::WndProc(message, wParam, lParam);
}

TRichEdit::TRichEdit(TControl& parent) : TTextControl(parent, TKind::Coloured), View_(*this) {}

namespace {

/// A text with colours, in the form in which all such controls read it.
class TColoredText {
public:
    /// @param color none for the usual one.
    void Add(const std::string& text, std::optional<COLORREF> color) {
        const std::size_t known = color ? 1 + NumberOf(*color) : 0;
        Body_ += "\\cf" + std::to_string(known) + " ";
        for (const wchar_t c : ToControl(ToWide(text)))
            Add(c);
    }
    std::string Get() const {
        std::string colors;
        for (const COLORREF color : Colors_)
            colors += "\\red" + std::to_string(GetRValue(color)) + "\\green" +
                      std::to_string(GetGValue(color)) + "\\blue" +
                      std::to_string(GetBValue(color)) + ";";
        // The last line's end stands for the end of the text.
        return "{\\rtf1\\ansi\\uc0{\\colortbl;" + colors + "}" + Body_ + "\\par\n}";
    }

private:
    std::size_t NumberOf(COLORREF color) {
        const auto found = std::ranges::find(Colors_, color);
        const auto number = static_cast<std::size_t>(found - Colors_.begin());
        if (found == Colors_.end())
            Colors_.push_back(color);
        return number;
    }
    void Add(wchar_t c) {
        if (c == L'\r')
            Body_ += "\\par\n";
        else if (c == L'\t')
            Body_ += "\\tab ";
        else if (c >= 0x80)
            Body_ += "\\u" + std::to_string(static_cast<std::int16_t>(c)) + " ";
        else {
            if (c == L'\\' || c == L'{' || c == L'}')
                Body_ += '\\';
            Body_ += static_cast<char>(c);
        }
    }

    std::vector<COLORREF> Colors_;
    std::string Body_;
};

/// Of each byte its colour. What shows as one character has one: that of its first byte.
std::vector<std::optional<COLORREF>> Paint(const std::string& text,
                                           const std::vector<TColoredRange>& ranges) {
    std::vector<std::optional<COLORREF>> painted(text.size());
    for (const TColoredRange& range : ranges) {
        const std::size_t start = std::min(range.Start, text.size());
        const std::size_t length = std::min(range.Length, text.size() - start);
        std::fill_n(painted.begin() + static_cast<std::ptrdiff_t>(start), length, range.Color);
    }
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const bool lineEnd = text[i] == '\r' && text[i + 1] == '\n';
        if (!lineEnd && LetterSize(text, i) == 1)
            continue;
        painted[i + 1] = painted[i];
        ++i;
    }
    return painted;
}

}  // namespace

void TRichEdit::ColorRanges(const std::vector<TColoredRange>& ranges) {
    if (HighContrast()())
        return;
    // To select a part and to colour it takes the longer, the more stands before it.
    TColoredText colored;
    const std::string text = Text();
    const std::vector<std::optional<COLORREF>> painted = Paint(text, ranges);
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = start + 1;
        while (end < text.size() && painted[end] == painted[start])
            ++end;
        colored.Add(text.substr(start, end - start), painted[start]);
        start = end;
    }
    const std::string bytes = colored.Get();
    CHARFORMAT2W font{};
    font.cbSize = sizeof font;
    ::SendMessageW(Handle(), EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&font));
    Read(SF_RTF, bytes.data(), bytes.size());
    // The form has no sizes but those of whole and half points.
    font.dwMask = CFM_FACE | CFM_SIZE | CFM_CHARSET;
    ::SendMessageW(Handle(), EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&font));
}

}  // namespace framework
