#pragma once

#include <stdexcept>
#include <string>

#include "framework/ui/buttons.h"
#include "framework/ui/combo_box.h"
#include "framework/ui/form.h"

// Does to a form what a user does, by the names of its components. Raises std::runtime_error when
// the form has no such component, or one that cannot be used as it is.

namespace support {

/// The form that shows inside another one: a wizard's step, a browser's page. The form itself when
/// there is none.
framework::TForm& StepOf(framework::TForm& form);

/// The form's component of that name.
template <class T>
T& Part(const framework::TForm& form, const std::string& name) {
    T* const part = form.Find<T>(name);
    if (!part)
        throw std::runtime_error("The form \"" + form.Text() + "\" has no " + name);
    return *part;
}

/// Replaces the text of an edit.
void Type(framework::TForm& form, const std::string& edit, const std::string& text);
/// Chooses an item of a drop-down list.
void Choose(framework::TForm& form, const std::string& list, int index);
/// Makes a check box checked, or not.
void Check(framework::TForm& form, const std::string& box, bool checked = true);
/// Presses a button when it can be pressed, which may take a moment after the last change.
void Press(framework::TForm& form, const std::string& button);

}  // namespace support
