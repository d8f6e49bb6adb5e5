#pragma once

#include <string>

namespace tandrel {

/// The dialogs that operations open. They are declared here, where operations can see them, and
/// defined by the forms, which see the operations' object. Main thread only.

/// Tells how an operation ended. @param text what was done. @param code the command's exit code.
void Show_OkForm(const std::string& caption, const std::string& text, int code);

/// Puts the client's question to the user; true for "Yes".
bool Sh_Confirm_Form(const std::string& question);

}  // namespace tandrel
