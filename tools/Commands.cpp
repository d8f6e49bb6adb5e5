#include "tools/Commands.h"

#include <windows.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/names.h"
#include "framework/base/paths.h"
#include "tools/Macros.h"
#include "tools/Tools_obj.h"

namespace tandrel {
namespace {

/// What a command on the path may be, besides an ordinary file: all but system files.
constexpr int PathEntries = 114;

bool IsEntry(const std::string& path) {
    if (framework::IsPattern(path))
        return false;
    try {
        framework::TSearchRec entry;
        return framework::TFileSearch(path, PathEntries).Next(entry);
    } catch (const framework::EInOutError&) {
        return false;  // a folder that cannot be looked into
    }
}

std::string PathVariable() {
    std::string value(::GetEnvironmentVariableA("Path", nullptr, 0), '\0');
    value.resize(::GetEnvironmentVariableA("Path", value.data(), static_cast<DWORD>(value.size())));
    return value;
}

/// Looks into the folders of the path that a semicolon follows.
bool IsOnPath(const std::string& name) {
    const std::string path = PathVariable();
    std::size_t begin = 0;
    for (std::size_t end; (end = path.find(';', begin)) != std::string::npos; begin = end + 1) {
        std::string folder = path.substr(begin, end - begin);
        if (folder.empty())
            continue;
        if (!framework::EndsWith(folder, '\\'))
            folder += '\\';
        if (IsEntry(folder + name))
            return true;
    }
    return false;
}

}  // namespace

TArgument& TArguments::AddArg(const std::string& caption, const std::string& name,
                              const std::string& value) {
    TArgument& argument = Emplace();
    argument.FCaption = caption;
    argument.FName = name;
    argument.FValue = value;
    return argument;
}

TArgument* TArguments::Find(std::string_view name) const {
    for (TArgument& argument : *this)
        if (argument.FName == name)
            return &argument;
    return nullptr;
}

std::string TArguments::GetValue(std::string_view name) const {
    const TArgument* const argument = Find(name);
    return argument ? argument->FValue : std::string();
}

TCommand::~TCommand() {
    TToolsClass& tools = Commands_.Tools;
    if (tools.FCurrent == this)
        tools.FCurrent = nullptr;
}

bool TCommand::CheckedCommand(std::string& msg) const {
    if (FCommand.empty()) {
        msg = "Menu Item \"" + FName + "\" must have command ";
        return false;
    }
    if (framework::FileExists(FCommand))
        return true;
    if (framework::ExtractFileName(FCommand) == FCommand && IsOnPath(FCommand))
        return true;
    msg = "Menu Item \"" + FName + "\"," + FCommand + " is not exist";
    return false;
}

std::string TCommand::ReplaseArgument() const {
    return ReplaceMacros(FArguments, [this](std::string_view name) {
        return Commands_.Tools.Arguments.GetValue(name);
    });
}

TCommand& TCommands::AddCommand(const std::string& name) {
    TCommand& command = Emplace(*this);
    command.FName = name;
    command.FCloseOnExit = true;
    return command;
}

void TCommands::Delete() {
    for (int index = Count() - 1; index >= 0; --index)
        if (GetItem(index).FDeleted)
            Delete(index);
}

bool TCommands::CheckedCommand(std::string& msg) const {
    msg.clear();
    for (const TCommand& command : *this) {
        std::string complaint;
        // The order of the two characters is part of the text.
        if (!command.CheckedCommand(complaint))
            msg += complaint + "\n\r";
    }
    return msg.empty();
}

}  // namespace tandrel
