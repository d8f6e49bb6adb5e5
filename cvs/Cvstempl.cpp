#include "cvs/Cvstempl.h"

#include "core/Cvs_utils.h"
#include "cvs/CommandBuilder.h"
#include "cvs/Dialogs.h"
#include "framework/base/files.h"
#include "framework/base/system_time.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"

namespace tandrel {

TCvsObject::TCvsObject() {
    CvsExecutable = "cvs";
    ResetOptions();
}

TCvsObject::~TCvsObject() = default;

void TCvsObject::ResetOptions() {
    static_cast<TCvsOptions&>(*this) = TCvsOptions{};
    StikyDate = framework::Now();
}

std::string TCvsObject::Get_Version() {
    return "1.1b";
}

// --- environment ------------------------------------------------------------------------------

void TCvsObject::SetCVSROOT(const std::string& Value) {
    const std::string root = framework::Trim(Value);
    TCustomCvsObj::SetCVSROOT(root);
    SetEnvVariable("CVSROOT", root);
}

void TCvsObject::Set_CVS_RSH(const std::string& Value) {
    CVS_RSH_ = Value;
    SetEnvVariable("CVS_RSH", Value);
}

void TCvsObject::Set_CVSIGNORE(const std::string& Value) {
    CVSIGNORE_ = Value;
    SetEnvVariable("CVSIGNORE", Value);
}

void TCvsObject::Set_CVSREAD(const std::string& Value) {
    CVSREAD_ = Value;
    SetEnvVariable("CVSREAD", Value);
}

void TCvsObject::Set_CVSPATH(const std::string& Value) {
    CVSPATH_ = Value;
    SetEnvVariable("PATH", Value);
}

std::string TCvsObject::GetEnvVariable() {
    return "CVSROOT=" + CVSROOT() + "; CVS_RSH=" + CVS_RSH_ + "; CVSIGNORE=" + CVSIGNORE_ +
           "; CVSREAD=" + CVSREAD_ + "; PATH=" + CVSPATH_;
}

bool TCvsObject::NoCVSROOTMessage() {
    if (!CVSROOT().empty())
        return false;
    MessageProc("CVSROOT variable is not set ");
    return true;
}

std::string TCvsObject::Get_CurrentProcDirectory() {
    // These name a module, which need not have a folder yet, or is to lose it.
    if (Operation == otCheckOut || Operation == otRelease || Operation == otRlog)
        return ProjectRoot();
    return TCustomCvsObj::Get_CurrentProcDirectory();
}

// --- the command ------------------------------------------------------------------------------

template <class Action>
void TCvsObject::WithBuilder(Action action) {
    const TCommandContext context{
        .Operation = Operation,
        .ConnectionType = ConnectionType,
        .RepositoryPath = Path,
        .CVSROOT = CVSROOT(),
        .Modulename = Modulename(),
        .WorkingDirectory = WorkingDirectory(),
        .FileItems = FileItems,
        .StrictQuoting = StrictQuoting,
        .NewFoldersOnly = NewFoldersOnly_,
        .AddMode = AddMode_,
        .IsUnderVersionControl =
            [](const std::string& folder) {
                return framework::DirectoryExists(SlashSep(folder, "CVS"));
            },
    };
    std::string line = CommandLine;
    TCommandBuilder builder(line, *this, context);
    action(builder);
    CommandLine = std::move(line);
}

void TCvsObject::TellMissingLabel() {
    if (Operation == otTag && TagName.empty())
        MessageProc(" label name is not assigned  ");
}

void TCvsObject::BuildCommand() {
    WithBuilder([](TCommandBuilder& builder) { builder.Build(); });
}

bool TCvsObject::ParseCommand() {
    TellMissingLabel();
    BuildCommand();
    return !CommandLine.empty();
}

void TCvsObject::AddFilesToCommad() {
    WithBuilder([](TCommandBuilder& builder) { builder.AddFilesToCommad(); });
}

std::string TCvsObject::Get_FileListString() const {
    std::string names;
    bool any = false;
    for (const TFileItem& item : FileItems) {
        if (item.FileType != fi_file)
            continue;
        if (any)
            names += ',';
        names += item.Name;
        any = true;
    }
    return any ? names : Modulename();
}

// --- questions --------------------------------------------------------------------------------

void TCvsObject::ProcessConfirm(const std::string& Output, std::string& Answer) {
    if (Operation == otRelease) {
        MessageProc("***Enter Yes/No***");
        Answer = ReleaseForce || Sh_Confirm_Form(Output) ? "Yes" : "No";
    } else if (Operation == otLogin) {
        Answer = Password;
    }
    Answer = Add_Perevod(Answer);
}

void TCvsObject::HelpCommand(TOperationType) {
    ::MessageBoxW(framework::Application().MainWindow(), L"Under construction ", L"Ooops", MB_OK);
}

}  // namespace tandrel
