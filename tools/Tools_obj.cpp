#include "tools/Tools_obj.h"

#include "framework/base/exceptions.h"
#include "tools/Dialogs.h"

namespace tandrel {

void TToolsClass::SetArgValue(const std::string& name, const std::string& value) {
    if (TArgument* const argument = Arguments.Find(name))
        argument->FValue = value;
    else
        Arguments.AddArg(name, name, value);
}

void TToolsClass::GetMenuList(framework::TStringList* list) {
    if (!list)
        return;
    if (Commands.Empty())
        LoadFromRegistry();
    for (const TCommand& command : Commands)
        list->Add(command.FName);
}

void TToolsClass::ShowDialog() {
    if (!RootKey || Keyname.empty())
        throw framework::Exception(" \"RootKey\" and \"Keyname\" not initialize");
    // The tools that an open editor shows must not be taken from under it.
    if (Form)
        return;
    LoadFromRegistry();
    if (!Sh_UserToolsForm(*this))
        return;
    Commands.Delete();
    SaveToRegistry();
}

}  // namespace tandrel
