#include "framework/ui/line_view.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cwchar>

#include "framework/base/text.h"
#include "framework/ui/clipboard.h"
#include "framework/ui/contrast.h"
#include "framework/ui/form.h"

namespace framework {
namespace {

constexpr wchar_t LineViewClass[] = L"FrameworkLineView";
constexpr int TabLetters = 8;
constexpr int Around = 3;  // lines that stay in view around one that is sought
const wchar_t* const ArrowCursor = MAKEINTRESOURCEW(32512);

void RegisterLineViewClass() {
    WNDCLASSW windowClass{};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.hCursor = ::LoadCursorW(nullptr, ArrowCursor);
    windowClass.lpszClassName = LineViewClass;
    ::RegisterClassW(&windowClass);
}

/// A text as it is drawn, and what is marked of it in its own letters.
struct TDrawnText {
    std::wstring Letters;
    std::vector<std::pair<std::size_t, std::size_t>> Marks;  // from, to
};

/// Tabs become blanks, other control characters one. Only so much as `letters` take.
TDrawnText Drawn(const TViewLine& line, std::size_t letters) {
    constexpr std::size_t MostBytes = 4;  // of a letter
    const std::string_view text =
        std::string_view(line.Text).substr(0, std::min(line.Text.size(), letters * MostBytes));
    TDrawnText drawn;
    const auto append = [&](std::string_view part) {
        for (const wchar_t letter : ToWide(part)) {
            if (letter == L'\t')
                drawn.Letters.append(TabLetters - drawn.Letters.size() % TabLetters, L' ');
            else
                drawn.Letters += letter < L' ' ? L' ' : letter;
        }
    };
    std::size_t done = 0;
    for (const TLineMark& mark : line.Marks) {
        const std::size_t start = std::clamp(mark.Start, done, text.size());
        const std::size_t end = std::clamp(mark.Start + mark.Length, start, text.size());
        append(text.substr(done, start - done));
        const std::size_t from = drawn.Letters.size();
        append(text.substr(start, end - start));
        drawn.Marks.emplace_back(from, drawn.Letters.size());
        done = end;
    }
    append(text.substr(done));
    return drawn;
}

/// Selects something into a device context while it lives.
class TSelected {
public:
    TSelected(HDC dc, HGDIOBJ object) : Dc_(dc), Before_(::SelectObject(dc, object)) {}
    ~TSelected() { ::SelectObject(Dc_, Before_); }
    TSelected(const TSelected&) = delete;
    TSelected& operator=(const TSelected&) = delete;

private:
    HDC Dc_;
    HGDIOBJ Before_;
};

void FillPlace(HDC dc, const RECT& place, COLORREF color) {
    ::SetBkColor(dc, color);
    ::ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &place, nullptr, 0, nullptr);
}

/// Draws letters from the left of a place on, no more than fit. @return where they end.
LONG DrawLetters(HDC dc, const RECT& place, std::wstring_view letters) {
    if (letters.empty() || place.left >= place.right)
        return place.left;
    const int count = static_cast<int>(letters.size());
    ::ExtTextOutW(dc, place.left, place.top, ETO_CLIPPED | ETO_OPAQUE, &place, letters.data(),
                  static_cast<UINT>(count), nullptr);
    SIZE size{};
    ::GetTextExtentPoint32W(dc, letters.data(), count, &size);
    return place.left + size.cx;
}

}  // namespace

COLORREF Tint(COLORREF color, int percent) {
    const COLORREF window = ::GetSysColor(COLOR_WINDOW);
    const auto mix = [percent](int base, int other) {
        return static_cast<BYTE>(base + (other - base) * percent / 100);
    };
    return RGB(mix(GetRValue(window), GetRValue(color)), mix(GetGValue(window), GetGValue(color)),
               mix(GetBValue(window), GetBValue(color)));
}

TLineView::TLineView(TControl& parent, int columns) : TControl(&parent), Columns_(columns) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    RegisterLineViewClass();
    CreateHandle(LineViewClass, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL,
                 WS_EX_CLIENTEDGE, parent.Handle());
    MakeFont();
    Hints_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                               WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, Handle(),
                               nullptr, ::GetModuleHandleW(nullptr), nullptr);
    TOOLINFOW tool{};
    // What the size has grown by, older common controls refuse.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = Handle();
    tool.uId = reinterpret_cast<UINT_PTR>(Handle());
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    ::SendMessageW(Hints_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    // Otherwise lines are not broken.
    ::SendMessageW(Hints_, TTM_SETMAXTIPWIDTH, 0, Form().Scale(500));
    UpdateBars();
}

void TLineView::MakeFont() {
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(Parent()->Handle(), WM_GETFONT, 0, 0)),
                 sizeof font, &font);
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    // Letters of one width are small for their height.
    font.lfHeight = -Form().Scale(13);
    std::wcscpy(font.lfFaceName, L"Courier New");
    Font_.Reset(::CreateFontIndirectW(&font));
    font.lfWeight = FW_BOLD;
    BoldFont_.Reset(::CreateFontIndirectW(&font));
    const HDC dc = ::GetDC(Handle());
    {
        const TSelected selected(dc, Font_.Get());
        TEXTMETRICW metric{};
        ::GetTextMetricsW(dc, &metric);
        Letter_ = {std::max<LONG>(1, metric.tmAveCharWidth), std::max<LONG>(1, metric.tmHeight)};
    }
    ::ReleaseDC(Handle(), dc);
}

void TLineView::SetLines(int count, int longest, TLineOf lineOf) {
    LineOf_ = std::move(lineOf);
    Count_ = LineOf_ ? count : 0;
    Longest_ = longest;
    Top_ = Side_ = Current_ = Anchor_ = 0;
    Hinted_ = {-1, -1};
    UpdateBars();
    ::InvalidateRect(Handle(), nullptr, FALSE);
    TellCurrent();
}

void TLineView::SetMarginWidth(int letters) {
    MarginLetters_ = letters;
    UpdateBars();
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

// --- what is drawn ----------------------------------------------------------------------------

RECT TLineView::ColumnPlace(int column) const {
    const SIZE area = ClientSize();
    return {area.cx * column / Columns_, 0, area.cx * (column + 1) / Columns_, area.cy};
}

int TLineView::VisibleLines() const {
    return std::max(1, static_cast<int>(ClientSize().cy / Letter_.cy));
}

int TLineView::VisibleLetters() const {
    return std::max(1,
                    static_cast<int>(ClientSize().cx / Columns_ / Letter_.cx) - MarginLetters_ - 1);
}

void TLineView::Paint() {
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(Handle(), &paint);
    const int last = Top_ + static_cast<int>(paint.rcPaint.bottom / Letter_.cy);
    for (int line = Top_ + static_cast<int>(paint.rcPaint.top / Letter_.cy); line <= last; ++line) {
        for (int column = 0; column < Columns_; ++column) {
            RECT place = ColumnPlace(column);
            place.top = (line - Top_) * Letter_.cy;
            place.bottom = place.top + Letter_.cy;
            if (line < Count_)
                PaintLine(dc, line, column, place);
            else
                FillPlace(dc, place, ::GetSysColor(COLOR_WINDOW));
        }
    }
    for (int column = 1; column < Columns_; ++column) {
        RECT bar = ColumnPlace(column);
        bar.right = bar.left + 1;
        FillPlace(dc, bar, ::GetSysColor(COLOR_BTNSHADOW));
    }
    ::EndPaint(Handle(), &paint);
}

void TLineView::PaintLine(HDC dc, int line, int column, const RECT& place) const {
    TViewLine text = LineOf_(line, column);
    const bool plain = HighContrast()();
    const auto [first, last] = Selection();
    const bool isSelected = line >= first && line <= last && (first != last || Focused());
    const bool full = isSelected && (plain || (first != last && column == Column_));
    if (full || plain)
        text.Back = ::GetSysColor(full ? COLOR_HIGHLIGHT : COLOR_WINDOW);
    ::SetTextColor(dc, ::GetSysColor(full ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ::SetBkMode(dc, OPAQUE);
    const TSelected font(dc, text.Bold ? BoldFont_.Get() : Font_.Get());
    PaintText(dc, text, place);
    if (line == Current_ && Focused()) {
        RECT frame = place;
        ::SetTextColor(dc, RGB(0, 0, 0));
        ::SetBkColor(dc, RGB(255, 255, 255));
        ::DrawFocusRect(dc, &frame);
    }
}

void TLineView::PaintText(HDC dc, const TViewLine& text, const RECT& place) const {
    const COLORREF back = text.Back.value_or(::GetSysColor(COLOR_WINDOW));
    FillPlace(dc, place, back);
    RECT rest = place;
    rest.left += Letter_.cx / 2;
    RECT margin = rest;
    margin.right = std::min(rest.right, rest.left + MarginLetters_ * Letter_.cx);
    DrawLetters(dc, margin, ToWide(text.Margin));
    rest.left = margin.right;
    const auto side = static_cast<std::size_t>(Side_);
    const std::size_t seen = static_cast<std::size_t>(VisibleLetters()) + 2;
    const TDrawnText drawn = Drawn(text, side + seen);
    const std::size_t end = std::min(drawn.Letters.size(), side + seen);
    std::size_t at = std::min(side, end);
    const auto draw = [&](std::size_t to) {
        const std::size_t next = std::clamp(to, at, end);
        rest.left = DrawLetters(dc, rest, std::wstring_view(drawn.Letters).substr(at, next - at));
        at = next;
    };
    for (const auto& [from, to] : drawn.Marks) {
        draw(from);
        const RECT before = rest;
        ::SetBkColor(dc, HighContrast()() ? back : text.MarkBack);
        draw(to);
        ::SetBkColor(dc, back);
        // Where colours are the user's own they say nothing.
        if (HighContrast()() && rest.left > before.left) {
            const RECT line{before.left, place.bottom - 2, rest.left, place.bottom - 1};
            FillPlace(dc, line, ::GetTextColor(dc));
            ::SetBkColor(dc, back);
        }
    }
    draw(end);
}

// --- scrolling --------------------------------------------------------------------------------

void TLineView::UpdateBars() {
    const auto set = [this](int bar, int count, int page, int position) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
        info.nMax = std::max(0, count - 1);
        info.nPage = static_cast<UINT>(page);
        info.nPos = position;
        ::SetScrollInfo(Handle(), bar, &info, TRUE);
    };
    Top_ = std::clamp(Top_, 0, std::max(0, Count_ - VisibleLines()));
    Side_ = std::clamp(Side_, 0, std::max(0, Longest_ - VisibleLetters()));
    set(SB_VERT, Count_, VisibleLines(), Top_);
    set(SB_HORZ, Longest_, VisibleLetters(), Side_);
}

void TLineView::ScrollTo(int top) {
    const int before = Top_;
    Top_ = std::clamp(top, 0, std::max(0, Count_ - VisibleLines()));
    if (Top_ == before)
        return;
    UpdateBars();
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

void TLineView::ScrollToSide(int letter) {
    const int before = Side_;
    Side_ = std::clamp(letter, 0, std::max(0, Longest_ - VisibleLetters()));
    if (Side_ == before)
        return;
    UpdateBars();
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

void TLineView::ScrollBar(int bar, WPARAM what) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    // The message itself has room for 65,535 lines only.
    ::GetScrollInfo(Handle(), bar, &info);
    const int page = static_cast<int>(info.nPage);
    int place = info.nPos;
    switch (LOWORD(what)) {
        case SB_LINEUP:
            place -= 1;
            break;
        case SB_LINEDOWN:
            place += 1;
            break;
        case SB_PAGEUP:
            place -= page;
            break;
        case SB_PAGEDOWN:
            place += page;
            break;
        case SB_TOP:
            place = 0;
            break;
        case SB_BOTTOM:
            place = info.nMax;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            place = info.nTrackPos;
            break;
        default:
            return;
    }
    bar == SB_VERT ? ScrollTo(place) : ScrollToSide(place);
}

void TLineView::Wheel(WPARAM wheel) {
    UINT lines = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    if (lines == WHEEL_PAGESCROLL)
        lines = static_cast<UINT>(VisibleLines());
    // Fine wheels turn less than a line at a time.
    WheelRest_ += GET_WHEEL_DELTA_WPARAM(wheel) * static_cast<int>(lines);
    const int whole = WheelRest_ / WHEEL_DELTA;
    WheelRest_ %= WHEEL_DELTA;
    ScrollTo(Top_ - whole);
}

void TLineView::BringIntoView(int line, int around) {
    around = std::min(around, (VisibleLines() - 1) / 2);
    if (line - around < Top_)
        ScrollTo(line - around);
    else if (line + around >= Top_ + VisibleLines())
        ScrollTo(line + around + 1 - VisibleLines());
}

// --- the current line -------------------------------------------------------------------------

std::pair<int, int> TLineView::Selection() const {
    return {std::min(Anchor_, Current_), std::max(Anchor_, Current_)};
}

void TLineView::MoveTo(int line, bool extend) {
    if (Count_ == 0)
        return;
    const int before = Current_;
    Current_ = std::clamp(line, 0, Count_ - 1);
    if (!extend)
        Anchor_ = Current_;
    ::InvalidateRect(Handle(), nullptr, FALSE);
    if (Current_ == before)
        return;
    TellCurrent();
    if (OnCurrent)
        OnCurrent(this);
}

void TLineView::SetCurrent(int line) {
    MoveTo(line, false);
    BringIntoView(Current_, Around);
}

void TLineView::Select(int first, int last) {
    if (Count_ == 0)
        return;
    MoveTo(last, false);
    Anchor_ = std::clamp(first, 0, Count_ - 1);
}

void TLineView::TellCurrent() {
    // Programs that read screens aloud know windows, no lines in them: they are told the name anew.
    if (OwnName_.empty())
        OwnName_ = AccessibleName();
    if (!Focused() || Count_ == 0)
        return;
    std::string text = OwnName_;
    for (int column = 0; column < Columns_; ++column) {
        const TViewLine line = LineOf_(Current_, column);
        text += " - " + Trim(line.Margin) + " " + line.Text;
    }
    SetAccessibleName(text);
    ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, Handle(), OBJID_CLIENT, CHILDID_SELF);
}

void TLineView::Copy() const {
    if (Count_ == 0)
        return;
    const auto [first, last] = Selection();
    std::string text;
    for (int line = first; line <= last; ++line)
        text += LineOf_(line, Column_).Text + "\r\n";
    PutOnClipboard(Handle(), text);
}

bool TLineView::HandleLineKey(WPARAM key) {
    const bool extend = ::GetKeyState(VK_SHIFT) < 0;
    const bool control = ::GetKeyState(VK_CONTROL) < 0;
    const auto turn = [this](int column) {
        Column_ = std::clamp(column, 0, Columns_ - 1);
        ::InvalidateRect(Handle(), nullptr, FALSE);
    };
    const auto move = [&](int line) {
        MoveTo(line, extend);
        BringIntoView(Current_, 0);
    };
    switch (key) {
        case VK_UP:
            move(Current_ - 1);
            return true;
        case VK_DOWN:
            move(Current_ + 1);
            return true;
        case VK_PRIOR:
            move(Current_ - VisibleLines());
            return true;
        case VK_NEXT:
            move(Current_ + VisibleLines());
            return true;
        case VK_HOME:
            move(0);
            return true;
        case VK_END:
            move(Count_ - 1);
            return true;
        case VK_LEFT:
            control ? turn(Column_ - 1) : ScrollToSide(Side_ - TabLetters);
            return true;
        case VK_RIGHT:
            control ? turn(Column_ + 1) : ScrollToSide(Side_ + TabLetters);
            return true;
        case VK_RETURN:
            if (OnActivate && Count_ > 0)
                OnActivate(this);
            return true;
        case 'A':
            if (control)
                SelectAll();
            return control;
        case 'C':
        case VK_INSERT:
            if (control)
                Copy();
            return control;
        default:
            return false;
    }
}

int TLineView::LineAt(int y) const {
    return Top_ + y / static_cast<int>(Letter_.cy);
}

void TLineView::Press(LPARAM mouse, bool extend) {
    SetFocus();
    const int width = std::max<int>(1, ClientSize().cx);
    Column_ = std::clamp(GET_X_LPARAM(mouse) * Columns_ / width, 0, Columns_ - 1);
    if (const int line = LineAt(GET_Y_LPARAM(mouse)); line < Count_)
        MoveTo(line, extend);
}

POINT TLineView::MenuPlace() const {
    return {Letter_.cx, (Current_ - Top_ + 1) * Letter_.cy};
}

void TLineView::ShowHint(LPARAM mouse) {
    const int width = std::max<int>(1, ClientSize().cx);
    const std::pair<int, int> place{LineAt(GET_Y_LPARAM(mouse)),
                                    GET_X_LPARAM(mouse) * Columns_ / width};
    if (place == Hinted_)
        return;
    Hinted_ = place;
    ::SendMessageW(Hints_, TTM_POP, 0, 0);
}

LRESULT TLineView::Notify(NMHDR& header) {
    if (header.hwndFrom != Hints_ || header.code != TTN_GETDISPINFOW)
        return TControl::Notify(header);
    auto& info = reinterpret_cast<NMTTDISPINFOW&>(header);
    const bool isLine = OnHint && Hinted_.first >= 0 && Hinted_.first < Count_;
    HintText_ = isLine ? ToWide(OnHint(Hinted_.first, Hinted_.second)) : std::wstring();
    info.lpszText = HintText_.data();
    return 0;
}

void TLineView::Resized() {
    UpdateBars();
    ::InvalidateRect(Handle(), nullptr, FALSE);
}

LRESULT TLineView::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            ::InvalidateRect(Handle(), nullptr, FALSE);
            if (message == WM_SETFOCUS)
                TellCurrent();
            break;
        case WM_KEYDOWN:
            if (HandleLineKey(wParam))
                return 0;
            break;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_LBUTTONDOWN:
            Press(lParam, (wParam & MK_SHIFT) != 0);
            return 0;
        case WM_RBUTTONDOWN:
            // The menu is about what is selected, unless it is opened beside that.
            if (const int line = LineAt(GET_Y_LPARAM(lParam));
                line < Selection().first || line > Selection().second)
                Press(lParam, false);
            break;
        case WM_LBUTTONDBLCLK:
            if (OnActivate && LineAt(GET_Y_LPARAM(lParam)) < Count_)
                OnActivate(this);
            return 0;
        case WM_MOUSEMOVE:
            if ((wParam & MK_LBUTTON) != 0 && LineAt(GET_Y_LPARAM(lParam)) < Count_)
                MoveTo(LineAt(GET_Y_LPARAM(lParam)), true);
            ShowHint(lParam);
            break;
        case WM_MOUSEWHEEL:
            Wheel(wParam);
            return 0;
        case WM_VSCROLL:
        case WM_HSCROLL:
            ScrollBar(message == WM_VSCROLL ? SB_VERT : SB_HORZ, wParam);
            return 0;
        case WM_NOTIFY:
            if (reinterpret_cast<const NMHDR*>(lParam)->hwndFrom == Hints_)
                return Notify(*reinterpret_cast<NMHDR*>(lParam));
            break;
        default:
            break;
    }
    return TControl::WndProc(message, wParam, lParam);
}

}  // namespace framework
