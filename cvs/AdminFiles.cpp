// What a working copy tells about itself in the client's administrative files.

#include "cvs/AdminFiles.h"

#include <algorithm>

#include "core/Cvs_utils.h"
#include "core/Cvsroot.h"
#include "cvs/Cvstempl.h"
#include "framework/base/files.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace tandrel {
namespace {

constexpr const char* AdminDirectory = "CVS";
constexpr const char* IgnoreFile = ".cvsignore";

/// The first line of one of the working directory's administrative files; false when it has none.
bool FirstLine(const std::string& workingDirectory, const char* name, std::string& line) {
    const std::string path = SlashSep(SlashSep(workingDirectory, AdminDirectory), name);
    if (!framework::FileExists(path)) return false;
    return framework::TTextFile::Reset(path).ReadLine(line);
}

/// Cuts the text before the first `separator` off and returns it.
std::string_view CutUpTo(std::string_view& text, char separator) {
    const std::size_t at = std::min(text.find(separator), text.size());
    const std::string_view head = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return head;
}

}  // namespace

TRootLine ParseRootLine(std::string_view line) {
    TRootLine root;
    if (!line.starts_with(':')) {
        root.Path = line;
        return root;
    }
    line.remove_prefix(1);
    root.HasMethod = true;
    root.ConnectionType = ConnTypeFromStr(CutUpTo(line, ':'));
    // The colon of a local path stands behind its drive.
    if (root.ConnectionType == cnLocal) {
        root.Path = line;
        return root;
    }
    if (line.find('@') != std::string_view::npos) {
        std::string_view user = CutUpTo(line, '@');
        root.User = CutUpTo(user, ':');
    }
    if (line.find(':') != std::string_view::npos) {
        root.Server = CutUpTo(line, ':');
    } else {
        // The colon before the path may be missing.
        root.Server = line.substr(0, line.find('/'));
        line.remove_prefix(root.Server.size());
    }
    root.Path = line;
    return root;
}

bool TCvsObject::CVS_SystemDirectory(const std::string& Name) { return Name == AdminDirectory; }

bool TCvsObject::CVS_SystemFile(const std::string& Name) {
    return framework::SameText(Name, IgnoreFile);
}

std::string TCvsObject::Get_RepositoryPath(const std::string& Path_) {
    const auto at = framework::UpperCase(Path_).find(framework::UpperCase(Modulename()));
    if (Modulename().empty() || at == std::string::npos) return {};
    return SlashSep(CVSROOT(), std::string_view(Path_).substr(at));
}

std::string TCvsObject::Get_RepositoryFileName(const std::string& Name, bool IsDirectory) {
    return IsDirectory ? Name : Name + ",v";
}

bool TCvsObject::GetIsVCSstored() {
    if (WorkingDirectory().empty()) return false;
    framework::TFileSearch search(SlashSep(WorkingDirectory(), "*.*"),
                                  framework::faHidden | framework::faDirectory);
    for (framework::TSearchRec entry; search.Next(entry);)
        if (entry.IsDirectory() && CVS_SystemDirectory(entry.Name)) return true;
    return false;
}

void TCvsObject::LoadVCSProjectInfo() {
    if (WorkingDirectory().empty()) return;
    std::string line;
    if (FirstLine(WorkingDirectory(), "Root", line)) {
        const TRootLine root = ParseRootLine(line);
        ConnectionType = root.ConnectionType;
        if (!root.User.empty()) UserName = root.User;
        if (!root.Server.empty()) Server = root.Server;
        Path = root.Path;
        SetCVSROOT(CompileCVSROOT(ConnectionType, Server, UserName, {}, {}, Path));
    }
    if (FirstLine(WorkingDirectory(), "Repository", line)) Set_Modulename(line);
}

}  // namespace tandrel
