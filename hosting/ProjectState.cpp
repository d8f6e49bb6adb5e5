#include "hosting/ProjectState.h"

#include <windows.h>

#include "core/Cvsroot.h"
#include "framework/base/text.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

// --- the process ------------------------------------------------------------------------------

namespace {

std::string Variable(const char* name) {
    std::string value(::GetEnvironmentVariableA(name, nullptr, 0), '\0');
    value.resize(::GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

/// A password may stand behind the name, where a root has it.
void CutPassword(TCvsObject& cvs) {
    const std::size_t colon = cvs.UserName.find(':');
    if (colon == std::string::npos)
        return;
    cvs.Password = cvs.UserName.substr(colon + 1);
    cvs.UserName.resize(colon);
}

}  // namespace

const TProcessState& TProcessState::Inherited() {
    static const TProcessState state{Variable("CVS_RSH"), Variable("CVSIGNORE"),
                                     Variable("CVSREAD")};
    return state;
}

std::string RootWithoutPassword(const TCvsObject& cvs) {
    if (cvs.Password.empty() || cvs.ConnectionType != cnPServer)
        return cvs.CVSROOT();
    return Trim(CompileCVSROOT(cvs.ConnectionType, cvs.Server, cvs.UserName, {}, cvs.SpecialPort,
                               cvs.Path));
}

void TakeRootFromDialog(TCvsObject& cvs) {
    CutPassword(cvs);
    cvs.SetCVSROOT(RootWithoutPassword(cvs));
}

void TProcessState::PutInto(TCvsObject& cvs) {
    cvs.SetCVSROOT(RootWithoutPassword(cvs));
    cvs.Set_CVS_RSH(cvs.CVS_RSH());
    cvs.Set_CVSIGNORE(cvs.CVSIGNORE());
    cvs.Set_CVSREAD(Inherited().CVSREAD);
}

// --- the operation ----------------------------------------------------------------------------

void TOperationState::PutInto(TCvsObject& cvs, const std::vector<std::string>& selection) const {
    const bool prune = cvs.PruneEmptyDirs;
    cvs.ResetOptions();
    cvs.PruneEmptyDirs = prune;
    cvs.KeywordMode = KeywordMode;
    cvs.UseTargetDir = UseTargetDir;
    cvs.TargetDir = TargetDir;
    cvs.RemoveFromRepository = RemoveFromRepository;
    cvs.KeepCvsIgnore = KeepCvsIgnore;
    cvs.LocalOnly = LocalOnly;
    cvs.CreateDirs = CreateDirs;
    cvs.ExportInsteadOfCheckout = cvs.KeepProjectCopy = cvs.WizardDataAccepted = false;
    cvs.Set_OsMoveFilesFlag(false);
    cvs.DeleteLocalFiles = false;
    cvs.AnswerPrompts = cvs.Aborted = cvs.SuppressOutput = false;
    // The labels of one file are not those of another.
    cvs.LogListA.Clear();
    cvs.LogListB.Clear();
    cvs.FileItems.Clear();
    // Folders, too, and what is no longer there: most commands pass only files, and one without any
    // is about the whole project. To the client names are alike.
    for (const std::string& path : selection)
        cvs.FileItems.AddFile(path, KeywordMode);
}

// --- the project ------------------------------------------------------------------------------

TProjectState TProjectState::Of(TCvsObject& cvs) {
    CutPassword(cvs);
    return {.ConnectionType = cvs.ConnectionType,
            .Server = cvs.Server,
            .UserName = cvs.UserName,
            .SpecialPort = cvs.SpecialPort,
            .Path = cvs.Path,
            .Root = RootWithoutPassword(cvs),
            .CVS_RSH = cvs.CVS_RSH(),
            .CVSIGNORE = cvs.CVSIGNORE(),
            .PruneEmptyDirs = cvs.PruneEmptyDirs,
            .Online = cvs.ServerOnline()};
}

void TProjectState::PutInto(TCvsObject& cvs) const {
    cvs.ConnectionType = ConnectionType;
    cvs.Server = Server;
    cvs.UserName = UserName;
    cvs.SpecialPort = SpecialPort;
    cvs.Path = Path;
    cvs.SetCVSROOT(Root);
    cvs.Set_CVS_RSH(CVS_RSH);
    cvs.Set_CVSIGNORE(CVSIGNORE);
    cvs.PruneEmptyDirs = PruneEmptyDirs;
}

TProjectState TProjectState::Load(const TSettings& settings, const std::string& key) {
    const TProcessState& inherited = TProcessState::Inherited();
    const auto read = [&](const char* name, const std::string& missing = {}) {
        return settings.Read(key, name, missing);
    };
    return {.ConnectionType = ConnTypeFromStr(read("CONNECTION")),
            .Server = read("SERVER"),
            .UserName = read("USERNAME"),
            .SpecialPort = read("SPECIALPORT"),
            .Path = read("PATH"),
            .Root = read("CVSROOT"),
            .CVS_RSH = read("CVS_RSH", inherited.CVS_RSH),
            .CVSIGNORE = read("CVSIGNORE", inherited.CVSIGNORE),
            .PruneEmptyDirs = read("PRUNE", "1") == "1",
            .Online = read("ONLINE", "1") == "1"};
}

void TProjectState::Store(TSettings& settings, const std::string& key) const {
    const TProcessState& inherited = TProcessState::Inherited();
    settings.Write(key, "CONNECTION", StrFromConnType(ConnectionType));
    settings.Write(key, "SERVER", Server);
    settings.Write(key, "USERNAME", UserName);
    settings.Write(key, "SPECIALPORT", SpecialPort);
    settings.Write(key, "PATH", Path);
    settings.Write(key, "CVSROOT", Root);
    settings.Write(key, "PRUNE", PruneEmptyDirs ? "1" : "0");
    settings.Write(key, "ONLINE", Online ? "1" : "0");
    // What is as the process found it is to follow when that changes.
    const auto writeOwn = [&](const char* name, const std::string& value,
                              const std::string& found) {
        if (value == found)
            settings.Delete(key, name);
        else
            settings.Write(key, name, value);
    };
    writeOwn("CVS_RSH", CVS_RSH, inherited.CVS_RSH);
    writeOwn("CVSIGNORE", CVSIGNORE, inherited.CVSIGNORE);
}

}  // namespace hosting
