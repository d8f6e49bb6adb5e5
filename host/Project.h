#pragma once

#include <functional>
#include <string>

#include "cvs/Cvstempl.h"
#include "framework/ui/timer.h"
#include "host/OfflineLog.h"
#include "host/Settings.h"

namespace host {

/// What a project asks of the window it is shown in.
class TProjectHost {
public:
    virtual ~TProjectHost() = default;
    /// What an operation tells; passwords are masked already.
    virtual void Tell(const std::string& text) = 0;
    /// An operation is about to read the project's files: what the editors hold has to be on disk.
    /// False when the user does not want to go on.
    virtual bool SaveDocuments() = 0;
    /// Asks for the tags of a project that is about to be placed. False when the user does not want
    /// to go on.
    virtual bool AskForTags(std::string& vendor, std::string& release) = 0;
    virtual bool AskYesNo(const std::string& question) = 0;
};

/// An open project: a folder, and the version-control object that works on it. Main thread only.
///
/// The package leaves options as they were, and keeps the connection in the environment, which all
/// projects share. So each operation runs through Operate, which prepares both.
class TProject {
public:
    /// @param folder an existing one, without a trailing backslash.
    TProject(TProjectHost& window, TSettings& settings, const std::string& folder);
    TProject(const TProject&) = delete;
    TProject& operator=(const TProject&) = delete;

    const std::string& Folder() const { return Folder_; }
    tandrel::TCvsObject& Cvs() { return Cvs_; }
    bool Stored() const { return Cvs_.IsVCSStoredFlag; }
    bool Running() const;

    /// What no dialog of the package sets; applied before each operation.
    struct TOptions {
        tandrel::TKeywordMode KeywordMode = tandrel::Km_none;
        bool UseTargetDir = false;
        std::string TargetDir;
        bool RemoveFromRepository = false;
        bool KeepCvsIgnore = true;
        bool LocalOnly = false;
    };
    TOptions Options;

    /// Runs an operation on the selection (full paths; none for the whole project). @return what
    /// the operation says, false when another one is running.
    bool Operate(const std::function<bool(tandrel::TCvsObject&)>& operation,
                 const std::vector<std::string>& selection = {});

    /// Whether the server can be reached; a project begins on-line.
    bool Online() const { return Cvs_.ServerOnline(); }
    /// Off-line, adding and removing are kept for later; on-line again, they are run.
    void SetOnline(bool online);
    /// Commands wait from an earlier run of the host.
    bool HasPending() const { return OfflineLog_.HasPending(); }

    /// Reads the files anew.
    void Reload();
    /// Stores the connection, without its password. What cannot be stored is told.
    void Save();

private:
    void BindEvents();
    void Load();
    void Store();
    void Connect();
    void Prepare(const std::vector<std::string>& selection);
    void RepairRoot();
    void RunPending();
    void MessageReceived(const std::string& text);
    void WatchCancel();
    void CancelWatchTick();

    TProjectHost& Window_;
    TSettings& Settings_;
    const std::string Folder_;
    const TOfflineLog OfflineLog_;
    // Sees to the mark of a run that says nothing. A tick within the quiet second after which the
    // progress form shows would keep it hidden, and there would be nothing to press: the interval
    // is longer, and other projects' watches stand still.
    framework::TTimer CancelWatch_{1500};
    int TicksSinceCancel_ = 0;
    tandrel::TCvsObject Cvs_;
};

}  // namespace host
