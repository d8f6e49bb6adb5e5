#pragma once

#include <string>
#include <vector>

namespace hosting {

// What a folder may make the host do. A working copy is data from other people: its records say
// which repository a command talks to, and how, and that may be a program of theirs.

/// The roots in the records of a folder and of all below it.
struct TRoots {
    std::string Root;                 ///< Of the folder itself; empty when there is none.
    std::vector<std::string> Others;  ///< Different ones below, each once.
    std::vector<std::string> FilesWithPassword;  ///< Records whose root holds a password.

    /// What is remembered of a folder that the user trusts: it is known as long as this is the
    /// same.
    std::string Print() const;
};

/// Reads the records; links are not followed. Of a root no more than its first kilobyte counts.
TRoots ReadRoots(const std::string& folder);

/// Whether a root is one of the usual: a local repository by its full path, a server reached by the
/// methods pserver and ext. Anything else may name a program, or a place that is not what it seems.
bool IsPlainRoot(const std::string& root);

/// Whether a repository on this machine runs programs of its own at commits and the like.
bool RunsPrograms(const std::string& repository);

/// What the user is to be asked before commands run in a folder that is not known; empty when
/// there is nothing to ask.
std::string QuestionAbout(const std::string& folder, const TRoots& roots);

/// The root without a password that stands in it.
std::string CutPassword(const std::string& root);
/// Writes the records without the passwords. Raises framework::EInOutError.
void CutPasswords(const TRoots& roots);

/// The folder of a module in a local repository, for deleting it: empty unless the repository has
/// what makes it one, and the folder holds archives of files and nothing else than what a client
/// puts there.
std::string ModuleFolder(const std::string& repository, const std::string& module);

}  // namespace hosting
