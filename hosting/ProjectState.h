#pragma once

#include <string>
#include <vector>

#include "cvs/Cvstempl.h"
#include "hosting/Settings.h"

namespace hosting {

// The package's object holds everything in its fields, and leaves them as an operation left them.
// Here they are parted by whose they are: the project's are stored, the operation's begin anew each
// time, and the process's are what all projects share.

/// The environment. It belongs to the process, and the client reads it: whatever another project
/// put there is still in it.
struct TProcessState {
    std::string CVS_RSH;
    std::string CVSIGNORE;
    std::string CVSREAD;

    /// What the process found when it was started. The first call must come before anything is put
    /// into the environment.
    static const TProcessState& Inherited();
    /// Puts the connection of the object's project into the environment. No password is left in its
    /// root.
    static void PutInto(tandrel::TCvsObject& cvs);
};

/// What one operation works with: the options as the user has set them in the host, everything else
/// as it is in a new object.
struct TOperationState {
    tandrel::TKeywordMode KeywordMode = tandrel::Km_none;
    bool UseTargetDir = false;
    std::string TargetDir;
    bool RemoveFromRepository = false;
    bool KeepCvsIgnore = true;
    bool LocalOnly = false;
    bool CreateDirs = true;  ///< An update brings folders that are new in the repository.

    /// Begins an operation on the selection (full paths; none for the whole project). What is the
    /// project's is left alone.
    void PutInto(tandrel::TCvsObject& cvs, const std::vector<std::string>& selection) const;
};

/// What belongs to the project: it holds from one operation to the next, and from one run of the
/// host to the next.
struct TProjectState {
    tandrel::TConnectionType ConnectionType = tandrel::cnLocal;
    std::string Server;
    std::string UserName;
    std::string SpecialPort;
    std::string Path;
    std::string Root;  ///< Never with a password.
    std::string CVS_RSH;
    std::string CVSIGNORE;
    bool PruneEmptyDirs = true;
    bool Online = true;

    /// The stored state; what was never stored is as in a new object, or as the process inherited
    /// it.
    static TProjectState Load(const TSettings& settings, const std::string& key);
    /// Raises framework::ERegistryError when it cannot be stored.
    void Store(TSettings& settings, const std::string& key) const;

    /// What the object holds of it now. A password that was typed behind the user's name becomes
    /// the object's Password.
    static TProjectState Of(tandrel::TCvsObject& cvs);
    /// All but Online, which takes more than a field.
    void PutInto(tandrel::TCvsObject& cvs) const;
};

/// Takes what a dialog has left over: a password typed behind the user's name becomes the object's
/// Password, and its root has none.
void TakeRootFromDialog(tandrel::TCvsObject& cvs);

/// The object's root, composed without its password.
std::string RootWithoutPassword(const tandrel::TCvsObject& cvs);

}  // namespace hosting
