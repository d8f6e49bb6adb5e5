#include "hosting/ToolRuns.h"

#include <algorithm>

#include "framework/base/files.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/registry.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "hosting/Programs.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

namespace {

/// What arguments may refer to, as the tools' editor offers it.
constexpr struct {
    const char* Caption;
    const char* Name;
} Macros[] = {{"File", "FileName"},
              {"File without its folder", "File"},
              {"Folder of the file", "FileDir"},
              {"Folder of the project", "ProjectDir"},
              {"Module", "Module"}};

/// The program that a tool's command starts, with its folder where that can be found. The user may
/// have put it into quotes, or arguments behind it.
std::string ProgramOf(const std::string& command) {
    std::string word = Trim(command);
    if (FileExists(word))
        return word;
    if (word.starts_with('"'))
        word = word.substr(1, word.find('"', 1) - 1);
    else
        word = word.substr(0, word.find(' '));
    if (FindFirstOf(word, "\\/:") == std::string::npos)
        if (std::string found = FindProgram(word); !found.empty())
            return found;
    return word;
}

/// Whether the command interpreter may run the tool: it acts upon letters in arguments. Of what is
/// not found nobody knows who runs it.
bool IsInterpreted(const std::string& command) {
    const std::string program = ProgramOf(command);
    std::string name = ExtractFileName(program);
    // The system passes over dots and blanks behind a name.
    name.resize(name.find_last_not_of(". ") + 1);
    for (const char* ending : {".bat", ".cmd"})
        if (name.size() > 4 && SameText(name.substr(name.size() - 4), ending))
            return true;
    return SameText(name, "cmd.exe") || SameText(name, "command.com") || !FileExists(program);
}

/// The folder that a tool is to run in. The host's own current folder is nobody's: the project's
/// stands for it.
std::string FolderFor(const TCommand& tool, const std::string& project) {
    const std::string& given = tool.FInitDir;
    const auto names = [&](const char* macro) {
        return given.find('$') != std::string::npos && given.find(macro) != std::string::npos;
    };
    // Any other "$" is a letter of a name.
    std::string folder = given;
    if (given.empty() || names("ProjectDir") || names("CurDir"))
        folder = project;
    else if (names("FileDir"))
        folder = ExtractFileDir(ProgramOf(tool.FCommand));
    return folder.empty() ? ExtractFileDir(ProgramOf(tool.FCommand)) : folder;
}

/// Makes of a tool's command, for a run, the beginning of a command line that no other program can
/// answer to: with its folder, and in quotes where it has blanks.
class TExactCommand {
public:
    TExactCommand(TCommand& tool, const std::string& project)
        : Tool_(tool),
          Command_(tool.FCommand),
          InitDir_(tool.FInitDir),
          ProjectDir_(tool.FProjectDir) {
        // This one is taken as it is; in any other text a "$" would be the beginning of a macro.
        Tool_.FProjectDir = FolderFor(tool, project);
        Tool_.FInitDir = "$(ProjectDir)";
        const std::string word = Trim(Command_);
        const bool isBare = FindFirstOf(word, " \\/:\"") == std::string::npos;
        const std::string path = isBare ? ProgramOf(word) : word;
        if (FileExists(path))
            Tool_.FCommand = AsCommand(path);
    }
    ~TExactCommand() {
        Tool_.FCommand = Command_;
        Tool_.FInitDir = InitDir_;
        Tool_.FProjectDir = ProjectDir_;
    }
    TExactCommand(const TExactCommand&) = delete;
    TExactCommand& operator=(const TExactCommand&) = delete;

private:
    TCommand& Tool_;
    const std::string Command_, InitDir_, ProjectDir_;
};

}  // namespace

TToolRuns::TToolRuns(TProjectHost& window, TSettings& settings) : Window_(window) {
    Tools.RootKey = HostRegistryKey;
    Tools.Keyname = settings.ToolsKey();
    Tools.FViewer = PreviewViewer();
    Tools.FDocTypes.Add("Text");
    for (const auto& macro : Macros)
        Tools.Arguments.AddArg(macro.Caption, macro.Name, "");
    const auto tell = [this](TObject*, const std::string& text, const std::string&) {
        Window_.Tell(text);
    };
    Tools.OnOutPutMessage = tell;
    Tools.OnOutPutErrorMessage = tell;
}

TToolRuns::~TToolRuns() {
    // One that is still open stays.
    for (const std::string& file : Previews_)
        ::DeleteFileA(file.c_str());
}

bool TToolRuns::Edit() {
    try {
        Tools.ShowDialog();
    } catch (...) {
        Application().HandleException();
    }
    // The editor works on the tools themselves: what was not kept must not be offered, and a menu
    // that is not theirs would run another tool than the one that is chosen.
    if (!TRegistry(HostRegistryKey).OpenKey(Tools.Keyname, true))
        return false;
    Tools.LoadFromRegistry();
    return true;
}

void TToolRuns::Publish(TProject* project, const std::string& file) {
    const std::string folder = project ? project->Folder() : "";
    Tools.SetArgValue("FileName", file);
    Tools.SetArgValue("File", ExtractFileName(file));
    Tools.SetArgValue("FileDir", ExtractFileDir(file));
    Tools.SetArgValue("ProjectDir", folder);
    Tools.SetArgValue("Module", project ? project->Cvs().Modulename() : "");
    // A tool that the user gives up would show what the one before left.
    Tools.FTempFile.clear();
    for (TCommand& command : Tools.Commands) {
        command.FProjectDir = folder;
        // A run that the user gave up once is not given up for ever.
        command.FCancelled = false;
    }
}

bool TToolRuns::MayRun(const TCommand& tool) {
    constexpr const wchar_t* ForInterpreter = L"&|<>^%!\"`;=,()";
    const bool interpreted = IsInterpreted(tool.FCommand);
    for (const TArgument& argument : Tools.Arguments) {
        // Whatever letter follows the "$".
        if (tool.FArguments.find('$') == std::string::npos ||
            tool.FArguments.find(argument.FName + ")") == std::string::npos)
            continue;
        const std::string& value = argument.FValue;
        // Half a letter would take a quote behind it for its other half.
        const bool isOdd =
            value.find('"') != std::string::npos || !IsWhole(value) ||
            std::any_of(value.begin(), value.end(),
                        [](char c) { return static_cast<unsigned char>(c) < ' '; }) ||
            // It reads what the system makes of the bytes.
            (interpreted && ToWide(value).find_first_of(ForInterpreter) != std::wstring::npos);
        if (isOdd && !Window_.AskRisk("The tool " + tool.FName + " is to get\r\n" + value +
                                      "\r\nfor $(" + argument.FName +
                                      "). Letters in it may be taken for commands. Run it?"))
            return false;
    }
    return true;
}

void TToolRuns::Run(int index, TProject* project, const std::string& file,
                    const std::function<void()>& beforeConsole) {
    Publish(project, file);
    TCommands& tools = Tools.Commands;
    if (index < 0 || index >= tools.Count() || !MayRun(tools.GetItem(index)))
        return;
    TCommand& tool = tools.GetItem(index);
    const TExactCommand exact(tool, project ? project->Folder() : "");
    if (!tool.FCloseOnExit)
        beforeConsole();
    Tools.ExecuteMenu(index);
    const std::string& preview = Tools.FTempFile;
    if (tool.FPreviewExternal && preview.starts_with(Tools.FViewer))
        Previews_.push_back(preview.substr(Tools.FViewer.size()));
}

}  // namespace hosting
