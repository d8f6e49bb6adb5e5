#pragma once

#include <string>

namespace tandrel {

class TToolsClass;

/// The dialogs that the tools open. They are declared here, where the tools can see them, and
/// defined by the forms, which see the tools. Main thread only.

/// Lets the user edit the tools; true when that is to be kept. The tools are the ones edited, also
/// when it is not.
bool Sh_UserToolsForm(TToolsClass& tools);

/// Lets the user edit a tool's arguments before it runs; false when it is not to run, and the
/// arguments stay as they were.
bool Sh_Prompt_Form(const std::string& command, std::string& arguments);

}  // namespace tandrel
