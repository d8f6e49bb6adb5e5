#include "framework/ui/tool_bar.h"

#include <algorithm>
#include <cwchar>

#include "framework/ui/form.h"

namespace framework {
namespace {

constexpr int None = -1;

}  // namespace

TToolButton::TToolButton(TToolBar& bar, int image, std::wstring hint)
    : Bar_(&bar), Hint_(std::move(hint)) {
    TBBUTTON button{};
    button.iBitmap = image;
    button.idCommand = static_cast<int>(bar.Buttons_.size());
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON;
    // Not shown: it is what the button is called to those who do not see its picture.
    button.iString = reinterpret_cast<INT_PTR>(Hint_.c_str());
    ::SendMessageW(bar.Handle(), TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    bar.Buttons_.push_back(this);
}

TToolButton::~TToolButton() {
    if (!Bar_)
        return;
    const auto self = std::ranges::find(Bar_->Buttons_, this);
    const auto command = static_cast<WPARAM>(self - Bar_->Buttons_.begin());
    *self = nullptr;
    const LRESULT place = ::SendMessageW(Bar_->Handle(), TB_COMMANDTOINDEX, command, 0);
    ::SendMessageW(Bar_->Handle(), TB_DELETEBUTTON, static_cast<WPARAM>(place), 0);
}

void TToolButton::SetEnabled(bool enabled) {
    Enabled_ = enabled;
    if (!Bar_)
        return;
    const auto self = std::ranges::find(Bar_->Buttons_, this);
    ::SendMessageW(Bar_->Handle(), TB_ENABLEBUTTON,
                   static_cast<WPARAM>(self - Bar_->Buttons_.begin()), MAKELPARAM(enabled, 0));
}

void TToolButton::Click() {
    if (Enabled_ && OnClick)
        OnClick(this);
}

TToolBar::TToolBar(TControl& parent, const TImageList& images) : TControl(&parent) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    CreateHandle(TOOLBARCLASSNAMEW,
                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                     CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
                 0, parent.Handle());
    const auto send = [this](UINT message, WPARAM wParam, LPARAM lParam) {
        return ::SendMessageW(Handle(), message, wParam, lParam);
    };
    send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // It is told itself what is pressed.
    send(TB_SETPARENT, reinterpret_cast<WPARAM>(Handle()), 0);
    send(TB_SETMAXTEXTROWS, 0, 0);
    send(TB_SETBITMAPSIZE, 0, MAKELPARAM(images.Size(), images.Size()));
    const int size = images.Size() + Form().Scale(8);
    send(TB_SETBUTTONSIZE, 0, MAKELPARAM(size, size));
    send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.Get()));
    SetBounds(0, 0, size, HIWORD(send(TB_GETBUTTONSIZE, 0, 0)) + Form().Scale(4));
}

TToolBar::~TToolBar() {
    for (TToolButton* button : Buttons_)
        if (button)
            button->Bar_ = nullptr;
}

void TToolBar::Press(int command) {
    if (command >= 0 && command < static_cast<int>(Buttons_.size()))
        if (TToolButton* const button = Buttons_[static_cast<std::size_t>(command)])
            button->Click();
}

void TToolBar::MoveHot(int from, int step) {
    const int count = static_cast<int>(::SendMessageW(Handle(), TB_BUTTONCOUNT, 0, 0));
    for (int place = from + step; place >= 0 && place < count; place += step) {
        TBBUTTON button{};
        ::SendMessageW(Handle(), TB_GETBUTTON, static_cast<WPARAM>(place),
                       reinterpret_cast<LPARAM>(&button));
        if (!(button.fsState & TBSTATE_ENABLED))
            continue;
        ::SendMessageW(Handle(), TB_SETHOTITEM, static_cast<WPARAM>(place), 0);
        return;
    }
}

bool TToolBar::KeyDown(WPARAM key) {
    const int hot = static_cast<int>(::SendMessageW(Handle(), TB_GETHOTITEM, 0, 0));
    if (key == VK_LEFT || key == VK_UP) {
        MoveHot(hot, -1);
    } else if (key == VK_RIGHT || key == VK_DOWN) {
        MoveHot(hot, 1);
    } else if ((key == VK_RETURN || key == VK_SPACE) && hot >= 0) {
        TBBUTTON button{};
        ::SendMessageW(Handle(), TB_GETBUTTON, static_cast<WPARAM>(hot),
                       reinterpret_cast<LPARAM>(&button));
        Press(button.idCommand);
    } else {
        return false;
    }
    return true;
}

LRESULT TToolBar::Notify(NMHDR& header) {
    if (static_cast<int>(header.code) != static_cast<int>(TBN_GETINFOTIPW))
        return 0;
    const auto& tip = reinterpret_cast<const NMTBGETINFOTIPW&>(header);
    const auto command = static_cast<std::size_t>(tip.iItem);
    if (command >= Buttons_.size() || !Buttons_[command] || tip.cchTextMax <= 0)
        return 0;
    const std::wstring text =
        Buttons_[command]->Hint().substr(0, static_cast<std::size_t>(tip.cchTextMax) - 1);
    std::wcscpy(tip.pszText, text.c_str());
    return 0;
}

LRESULT TToolBar::WndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            Press(LOWORD(wParam));
            return 0;
        case WM_GETDLGCODE: {
            const auto* const asked = reinterpret_cast<const MSG*>(lParam);
            const bool enter = asked && asked->wParam == VK_RETURN;
            return DLGC_WANTARROWS | (enter ? DLGC_WANTMESSAGE : 0);
        }
        case WM_KEYDOWN:
            if (KeyDown(wParam))
                return 0;
            break;
        case WM_SETFOCUS:
            MoveHot(None, 1);
            break;
        case WM_KILLFOCUS:
            ::SendMessageW(Handle(), TB_SETHOTITEM, static_cast<WPARAM>(None), 0);
            break;
        default:
            break;
    }
    return TControl::WndProc(message, wParam, lParam);
}

}  // namespace framework
