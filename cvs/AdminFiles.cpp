// What a working copy tells about itself in the client's administrative files.

#include "cvs/AdminFiles.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "core/Cvsroot.h"
#include "cvs/Cvstempl.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace tandrel {
namespace {

/// The first line of one of the working directory's administrative files; false when it has none.
bool FirstLine(const std::string& workingDirectory, const char* name, std::string& line) {
    const std::string path = SlashSep(SlashSep(workingDirectory, AdminDirectoryName), name);
    if (!framework::FileExists(path))
        return false;
    return framework::TTextFile::Reset(path).ReadLine(line);
}

/// Cuts the text before the first `separator` off and returns it.
std::string_view CutUpTo(std::string_view& text, char separator) {
    const std::size_t at = std::min(text.find(separator), text.size());
    const std::string_view head = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return head;
}

/// Takes the next field of an entry off the line; empty when no slash ends it.
std::string_view CutField(std::string_view& line) {
    if (line.find('/') == std::string_view::npos)
        return {};
    return CutUpTo(line, '/');
}

/// Finds the items of one folder by their names, upper and lower case alike. Folders hold thousands
/// of them, and each is looked for.
class TFolderIndex {
public:
    TFolderIndex(const TWorkDirTree& tree, const std::string& dir) {
        Items_.reserve(static_cast<std::size_t>(tree.Count()));
        for (TWorkDirItem& item : tree)
            if (item.Directory == dir || framework::SameText(item.Directory, dir))
                Items_.try_emplace(item.Name, &item);
    }
    TWorkDirItem* Find(std::string_view name) const {
        const auto found = Items_.find(name);
        return found == Items_.end() ? nullptr : found->second;
    }

private:
    /// Names are mostly ASCII, and asking the system for each in upper case would take longer than
    /// all the rest.
    struct THash {
        std::size_t operator()(std::string_view name) const {
            const bool isAscii = std::ranges::all_of(
                name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
            return isAscii ? OfUpper(name) : OfUpper(framework::UpperCase(name));
        }
        static std::size_t OfUpper(std::string_view name) {
            std::uint32_t hash = 2166136261u;
            for (const char c : name) {
                const auto code = static_cast<unsigned char>(c);
                hash = (hash ^ (code >= 'a' && code <= 'z' ? code - 0x20u : code)) * 16777619u;
            }
            return hash;
        }
    };
    struct TSameName {
        bool operator()(std::string_view a, std::string_view b) const {
            return framework::SameText(a, b);
        }
    };

    std::unordered_map<std::string_view, TWorkDirItem*, THash, TSameName> Items_;
};

}  // namespace

TEntryLine ParseEntryLine(std::string_view line) {
    TEntryLine entry;
    entry.IsDirectory = line.starts_with("D/");
    // "/D/1.1/..." is a file of that name.
    if (entry.IsDirectory)
        line.remove_prefix(2);
    else if (line.starts_with('/'))
        line.remove_prefix(1);
    entry.Name = CutField(line);
    if (entry.IsDirectory)
        return entry;
    entry.Revision = CutField(line);
    entry.TimeStamp = CutField(line);
    return entry;
}

TRootLine ParseRootLine(std::string_view line) {
    TRootLine root;
    if (!line.starts_with(':')) {
        root.HasMethod = true;
        root.Path = line;
        return root;
    }
    line.remove_prefix(1);
    const std::string_view method = CutUpTo(line, ':');
    root.HasMethod = !method.empty();
    root.ConnectionType = ConnTypeFromStr(method);
    // Both go without a server, and the colon of a local path stands behind its drive.
    if (framework::SameText(method, "local") || framework::SameText(method, "fork")) {
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

bool TCvsObject::CVS_SystemDirectory(const std::string& Name) {
    return Name == AdminDirectoryName;
}

bool TCvsObject::CVS_SystemFile(const std::string& Name) {
    return framework::SameText(Name, IgnoreFileName);
}

std::string TCvsObject::Get_RepositoryPath(const std::string& Path_) {
    const auto at = framework::UpperCase(Path_).find(framework::UpperCase(Modulename()));
    if (Modulename().empty() || at == std::string::npos)
        return {};
    return SlashSep(CVSROOT(), std::string_view(Path_).substr(at));
}

std::string TCvsObject::Get_RepositoryFileName(const std::string& Name, bool IsDirectory) {
    return IsDirectory ? Name : Name + ",v";
}

void TCvsObject::ReadCVSInfo(TWorkDirTree& Tree, const std::string& Dir) {
    const std::string path = SlashSep(SlashSep(Dir, AdminDirectoryName), "Entries");
    auto file = framework::TTextFile::Reset(path);
    const TFolderIndex index(Tree, Dir);
    const TIME_ZONE_INFORMATION zone = PresentTimeZone();
    const std::string repositoryPath = Get_RepositoryPath(Dir);
    for (std::string line; file.ReadLine(line);) {
        const TEntryLine entry = ParseEntryLine(line);
        if (entry.Name.empty())
            continue;
        TWorkDirItem* const item = index.Find(entry.Name);
        if (!item)
            throw framework::Exception("Error  reading " + path);
        item->InRepository = true;
        item->Revision = entry.Revision;
        item->TimeStamp = entry.TimeStamp;
        item->RepositoryPath = repositoryPath;
        item->RepositoryFileName = Get_RepositoryFileName(item->Name, item->IsDirectory);
        item->RepositoryDate =
            item->TimeStamp.empty() ? 0 : InternetTimeToDateTime(item->TimeStamp);
        if (!entry.IsDirectory)
            item->Changed = CompareDateTime(item->FileDate, item->RepositoryDate, zone);
    }
}

void TCvsObject::ReadCVS_SystemFile(TWorkDirTree& Tree, const std::string& Dir) {
    if (Tree.JustListed && !Tree.ItemExist(Dir, IgnoreFileName))
        return;
    auto file = framework::TTextFile::Reset(SlashSep(Dir, IgnoreFileName));
    const TFolderIndex index(Tree, Dir);
    for (std::string line; file.ReadLine(line);)
        if (TWorkDirItem* const item = index.Find(framework::Trim(line)))
            item->Included = false;
}

bool TCvsObject::GetIsVCSstored() {
    if (WorkingDirectory().empty())
        return false;
    try {
        framework::TFileSearch search(SlashSep(WorkingDirectory(), "*.*"),
                                      framework::faHidden | framework::faDirectory);
        for (framework::TSearchRec entry; search.Next(entry);)
            if (entry.IsDirectory() && CVS_SystemDirectory(entry.Name))
                return true;
    } catch (const framework::EInOutError&) {
        // A folder that may not be listed is no working copy to work with.
    }
    return false;
}

void TCvsObject::LoadVCSProjectInfo() {
    if (WorkingDirectory().empty())
        return;
    std::string line;
    if (FirstLine(WorkingDirectory(), "Root", line)) {
        const TRootLine root = ParseRootLine(line);
        if (root.HasMethod)
            ConnectionType = root.ConnectionType;
        if (!root.User.empty())
            UserName = root.User;
        if (!root.Server.empty())
            Server = root.Server;
        Path = root.Path;
        SetCVSROOT(CompileCVSROOT(ConnectionType, Server, UserName, {}, {}, Path));
    }
    if (FirstLine(WorkingDirectory(), "Repository", line))
        Set_Modulename(line);
}

}  // namespace tandrel
