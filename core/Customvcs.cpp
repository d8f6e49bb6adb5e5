#include "core/Customvcs.h"

#include "core/CvsExecute.h"
#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"

namespace tandrel {

using framework::AbstractError;

TCustomCvsObj::TCustomCvsObj() : ExecuteClass(std::make_unique<TCvsExecuteClass>(*this)) {}

TCustomCvsObj::~TCustomCvsObj() = default;

void TCustomCvsObj::Execute(const std::string& Directory) {
    ModelCurrent = false;
    ExecuteClass->Execute(Directory);
    // What a handler loaded meanwhile may be older than the command's end.
    ModelCurrent = false;
}

bool TCustomCvsObj::IsRunning() const {
    return ExecuteClass->Thread != nullptr;
}

bool TCustomCvsObj::Refused(std::string_view Command) {
    // CommandLine is that of the command that runs.
    return ExecuteClass->Refuses(" " + std::string(Command));
}

bool TCustomCvsObj::Refused(TOperationType Kind) {
    return Refused(TOperationNames[Kind]);
}

// --- messages ---------------------------------------------------------------------------------

void TCustomCvsObj::MessageProc(std::string_view Fmt, framework::FormatArgs Args) {
    if (!OnMessage)
        return;
    // A text without arguments may hold percent signs of its own.
    OnMessage(this, Add_Perevod(Args.size() == 0 ? std::string(Fmt) : Format(Fmt, Args)));
}

void TCustomCvsObj::MessageProc2(const std::string& Chunk) {
    if (OnMessage)
        OnMessage(this, Chunk);
    framework::TStringList* const list = OutputList;
    if (list && list->Count() <= OutputListLimit)
        list->Add(Chunk);
}

std::string TOutputCapture::Text() const {
    std::string text;
    for (const std::string& chunk : Chunks_)
        text += chunk;
    framework::TStringList lines;
    lines.SetText(text);
    ClearEmptyLines(lines);
    return lines.Text();
}

// --- properties -------------------------------------------------------------------------------

void TCustomCvsObj::SetEnvVariable(const std::string& Name, const std::string& Value) {
    // To the client a variable without a value is still set: an empty CVSREAD makes it check files
    // out read-only.
    if (!Name.empty())
        ::SetEnvironmentVariableA(Name.c_str(), Value.empty() ? nullptr : Value.c_str());
}

void TCustomCvsObj::SetCVSROOT(const std::string& Value) {
    CVSROOT_ = Value;
}

void TCustomCvsObj::MoveTo(const std::string& Directory) {
    if (Directory != WorkingDirectory_)
        ModelCurrent = false;
    WorkingDirectory_ = Directory;
}

void TCustomCvsObj::Set_WorkingDirectory(const std::string& Value) {
    MoveTo(Value);
    if (Value.empty())
        return;
    IsVCSStoredFlag = GetIsVCSstored();
    Modulename_ = framework::ExtractFileName(RemoveSlashSep(Value));
    const auto at =
        framework::FindText(framework::UpperCase(Value), framework::UpperCase(Modulename_));
    ProjectRoot_ = Modulename_.empty() || at == std::string::npos ? Value : Value.substr(0, at);
    if (!IsVCSStoredFlag)
        return;
    LoadInfoOfFolder();
}

void TCustomCvsObj::LoadInfoOfFolder() {
    const std::string folder = WorkingDirectory_;
    const bool current = ModelCurrent;
    LoadVCSProjectInfo();
    WorkingDirectory_ = folder;
    ModelCurrent = current;
}

void TCustomCvsObj::Set_ProjectRoot(const std::string& Value) {
    ProjectRoot_ = Value;
    MoveTo(Modulename_.empty() ? Value : SlashSep(Value, Modulename_));
}

void TCustomCvsObj::Set_Modulename(const std::string& Value) {
    Modulename_ = Value;
    MoveTo(SlashSep(ProjectRoot_, Value));
}

void TCustomCvsObj::Set_OsMoveFilesFlag(bool Value) {
    OsMoveFilesFlag_ = Value;
    if (Value)
        DeleteLocalFiles = false;
}

void TCustomCvsObj::Set_ServerOnline(bool Value) {
    if (Value && !ServerOnline_ && !ProcessCommandLog())
        return;
    ServerOnline_ = Value;
}

std::string TCustomCvsObj::Get_NewName() const {
    if (WorkingDirectory_.empty() || framework::EndsWith(WorkingDirectory_, '\\'))
        return {};
    return WorkingDirectory_ + ".precvs";
}

// --- preferences ------------------------------------------------------------------------------

namespace {

/// Makes the registry object for one call and frees it again.
class TRegistryForCall {
public:
    TRegistryForCall(std::unique_ptr<framework::TRegistry>& registry, HKEY rootKey)
        : Registry_(registry) {
        Registry_ = std::make_unique<framework::TRegistry>(rootKey);
    }
    ~TRegistryForCall() { Registry_.reset(); }
    TRegistryForCall(const TRegistryForCall&) = delete;
    TRegistryForCall& operator=(const TRegistryForCall&) = delete;

private:
    std::unique_ptr<framework::TRegistry>& Registry_;
};

}  // namespace

void TCustomCvsObj::LoadPreferences(HKEY RootKey, const std::string& Key) {
    const TRegistryForCall alive(PreferencesRegistry, RootKey);
    framework::TRegistry& registry = *PreferencesRegistry;
    if (!registry.OpenKeyReadOnly(Key))
        return;
    const auto load = [&registry](const char* name, std::string& field) {
        if (field.empty() && registry.ValueExists(name))
            field = registry.ReadString(name);
    };
    load("SPECIALPORT", SpecialPort);
    load("MODULENAME", Modulename_);
    load("PATH", Path);
    load("USERNAME", UserName);
    load("SERVER", Server);
    load("CVSROOT", CVSROOT_);
}

void TCustomCvsObj::SavePreferences(HKEY RootKey, const std::string& Key) {
    const TRegistryForCall alive(PreferencesRegistry, RootKey);
    framework::TRegistry& registry = *PreferencesRegistry;
    if (!registry.OpenKey(Key, true))
        throw framework::ERegistryError("The registry key " + Key +
                                        " cannot be opened for writing");
    const auto save = [&registry](const char* name, const std::string& field) {
        if (!field.empty())
            registry.WriteString(name, field);
    };
    save("SERVER", Server);
    save("PATH", Path);
    save("USERNAME", UserName);
    save("SPECIALPORT", SpecialPort);
    save("CVSROOT", CVSROOT_);
    save("MODULENAME", Modulename_);
}

// --- operations that a client's class gives a meaning -----------------------------------------

bool TCustomCvsObj::Record(TOperationType Kind) {
    Operation = Kind;
    return false;
}

std::string TCustomCvsObj::Get_Version() {
    AbstractError("Get_Version");
}
std::string TCustomCvsObj::Get_CurrentProcDirectory() {
    return WorkingDirectory_;
}
std::string TCustomCvsObj::GetEnvVariable() {
    return {};
}
bool TCustomCvsObj::CVS_SystemDirectory(const std::string&) {
    return false;
}
bool TCustomCvsObj::CVS_SystemFile(const std::string&) {
    return false;
}
std::string TCustomCvsObj::Get_RepositoryPath(const std::string&) {
    return {};
}
std::string TCustomCvsObj::Get_RepositoryFileName(const std::string&, bool) {
    return {};
}
void TCustomCvsObj::ReadCVSInfo(TWorkDirTree&, const std::string&) {
    AbstractError("ReadCVSInfo");
}
void TCustomCvsObj::ReadCVS_SystemFile(TWorkDirTree&, const std::string&) {
    AbstractError("ReadCVS_SystemFile");
}
bool TCustomCvsObj::GetIsVCSstored() {
    AbstractError("GetIsVCSstored");
}
void TCustomCvsObj::LoadVCSProjectInfo() {
    AbstractError("LoadVCSProjectInfo");
}
void TCustomCvsObj::ProcessConfirm(const std::string&, std::string&) {}

bool TCustomCvsObj::CreateLocalRepository() {
    if (WorkingDirectory_.empty())
        WorkingDirectory_ = GetTempDir();
    return Record(otCreateLRep);
}

bool TCustomCvsObj::PlaceProject() {
    AbstractError("PlaceProject");
}
bool TCustomCvsObj::PullProject() {
    AbstractError("PullProject");
}

bool TCustomCvsObj::RemoveProjectFrom() {
    IsVCSStoredFlag = false;
    return false;
}

bool TCustomCvsObj::CheckOut(bool) {
    return Record(otCheckOut);
}
bool TCustomCvsObj::Update() {
    return Record(otUpdate);
}
bool TCustomCvsObj::Commit(bool) {
    return Record(otCommit);
}
bool TCustomCvsObj::Add() {
    return Record(otAdd);
}

bool TCustomCvsObj::Remove() {
    Record(otRemove);
    if (DeleteLocalFiles)
        DeleteListedFiles(true);
    return false;
}

bool TCustomCvsObj::Import(bool) {
    return Record(otImport);
}
bool TCustomCvsObj::Release() {
    return Record(otRelease);
}
bool TCustomCvsObj::Status() {
    return Record(otStatus);
}
bool TCustomCvsObj::Admin() {
    return Record(otAdmin);
}
bool TCustomCvsObj::Annotate() {
    return Record(otAnnotate);
}
bool TCustomCvsObj::Diff() {
    return Record(otDiff);
}
bool TCustomCvsObj::Edit() {
    return Record(otEdit);
}
bool TCustomCvsObj::Editors() {
    return Record(otEditors);
}
bool TCustomCvsObj::Export_cmd(bool) {
    return Record(otExport);
}
bool TCustomCvsObj::History() {
    return Record(otHistory);
}
bool TCustomCvsObj::Log() {
    return Record(otLog);
}

bool TCustomCvsObj::Login(bool) {
    if (WorkingDirectory_.empty())
        WorkingDirectory_ = GetTempDir();
    return Record(otLogin);
}

bool TCustomCvsObj::Logout(bool) {
    if (WorkingDirectory_.empty())
        WorkingDirectory_ = GetTempDir();
    return Record(otLogout);
}

bool TCustomCvsObj::Rdiff() {
    return Record(otRdiff);
}
bool TCustomCvsObj::Create_Rtag(bool) {
    return Record(otRtag);
}
bool TCustomCvsObj::Del_Rtag(bool) {
    return Record(otRtag);
}
bool TCustomCvsObj::Create_Tag(bool) {
    return Record(otTag);
}
bool TCustomCvsObj::Del_Tag(bool) {
    return Record(otTag);
}
bool TCustomCvsObj::Unedit() {
    return Record(otUnedit);
}
bool TCustomCvsObj::watch() {
    return Record(otWatch);
}
bool TCustomCvsObj::Watchers() {
    return Record(otWatchers);
}
bool TCustomCvsObj::WatchersBrowser() {
    AbstractError("WatchersBrowser");
}
bool TCustomCvsObj::StatusBrowser() {
    AbstractError("StatusBrowser");
}
bool TCustomCvsObj::CommitBrowser() {
    AbstractError("CommitBrowser");
}
bool TCustomCvsObj::Preferences() {
    AbstractError("Preferences");
}
void TCustomCvsObj::HelpCommand(TOperationType) {
    AbstractError("HelpCommand");
}

}  // namespace tandrel
