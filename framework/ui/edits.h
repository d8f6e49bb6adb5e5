#pragma once

#include <string>

#include "framework/api.h"
#include "framework/ui/control.h"

namespace framework {

/// One line of text that the user can change.
class FRAMEWORK_API TEdit : public TControl {
public:
    explicit TEdit(TControl& parent);

    /// The largest number of characters that can be typed; 0 for no limit but the system's.
    void SetMaxLength(int characters);
    bool ReadOnly() const;
    void SetReadOnly(bool readOnly);
    /// Shows this character in the place of each; 0 shows the text.
    void SetPasswordChar(char character);
    void SelectAll() { ::SendMessageW(Handle(), EM_SETSEL, 0, -1); }

    /// The text has changed, by the user or by SetText.
    TNotifyEvent OnChange;

protected:
    /// @param style window styles beyond the usual ones.
    TEdit(TControl& parent, DWORD style);
    void Notification(WORD code) override;
};

/// An edit whose text has a fixed form: '0' and '9' of its picture stand for a digit or a blank,
/// all other characters for themselves. Typing overwrites. A place that holds no digit is a blank
/// in the text and can be shown as another character.
class FRAMEWORK_API TMaskEdit : public TEdit {
public:
    /// @param mask the picture, such as "90:00", or that between "!" and ";1;" with the character
    /// that shows empty places behind it: "!90:00;1;_".
    TMaskEdit(TControl& parent, const std::string& mask);

    std::string Text() const override;
    /// The picture with a blank for every digit.
    std::string EmptyText() const;
    /// Takes what fits of a text, from the left.
    void SetText(const std::string& text) override;

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool IsPlace(std::size_t position) const;
    void Type(char character);
    void TypeAll(const std::string& text);
    void Erase(std::size_t from, std::size_t to);
    void EraseSelection();
    void Backspace();
    void Put(const std::string& text, std::size_t caret);
    void Show(std::string text);

    std::string Picture_;
    char Blank_ = ' ';
};

}  // namespace framework
