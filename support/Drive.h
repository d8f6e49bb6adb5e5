#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "framework/ui/buttons.h"
#include "framework/ui/combo_box.h"
#include "framework/ui/form.h"

// Does to a form what a user does, by the names of its components. Raises std::runtime_error when
// the form has no such component, or one that cannot be used as it is.

namespace support {

/// The form that shows inside another one: a wizard's step, a browser's page. The form itself when
/// there is none.
framework::TForm& StepOf(framework::TForm& form);

/// The forms of this thread that can be seen.
std::vector<framework::TForm*> OpenForms();
/// Those of them that are of a class.
template <class T>
std::vector<T*> OpenForms() {
    std::vector<T*> forms;
    for (framework::TForm* form : OpenForms())
        if (auto* const found = dynamic_cast<T*>(form))
            forms.push_back(found);
    return forms;
}

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
/// Selects the row of a list that has this caption, and no other.
void SelectRow(const framework::TForm& form, const std::string& list, const std::string& caption);
/// Chooses an item of a menu by its caption.
void Pick(const framework::TForm& form, const std::string& menu, const std::string& caption);
/// Presses a button when it can be pressed, which may take a moment after the last change.
void Press(framework::TForm& form, const std::string& button);

}  // namespace support
