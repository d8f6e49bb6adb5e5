// What a working copy tells about itself in the client's administrative files.

#include "cvs/AdminFiles.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "core/Cvsroot.h"
#include "cvs/Cvstempl.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace tandrel {
namespace {

/// What a first line may have. The environment does not take more than twice as much.
constexpr std::size_t LongestFirstLine = 16 * 1024;

/// The first line of one of the working directory's administrative files; none when there is no
/// such file, and empty when there is nothing in it. Raises EInOutError for what is no line of the
/// client: a part of it would be the name of something else.
std::optional<std::string> FirstLine(const std::string& workingDirectory, const char* name) {
    const std::string path = SlashSep(SlashSep(workingDirectory, AdminDirectoryName), name);
    if (!framework::FileExists(path))
        return std::nullopt;
    std::string line;
    framework::TTextFile::Reset(path).ReadLine(line, LongestFirstLine);
    // To the client a zero ends the line, as it does in the environment.
    return line.substr(0, line.find('\0'));
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

/// What the client was about to change in a folder's records when it was cut short. It applies the
/// lines in their order, so the last one of a name counts.
class TJournal {
public:
    /// @param path the file, which is mostly not there; empty for none.
    explicit TJournal(const std::string& path) {
        if (path.empty() || !framework::FileExists(path))
            return;
        auto file = framework::TTextFile::Reset(path);
        for (std::string line; file.ReadLine(line);)
            Take(line);
    }
    /// Whether what the records say of the name counts no more.
    bool Names(std::string_view name) const {
        return !Last_.empty() && Last_.contains(framework::UpperCase(name));
    }
    /// The lines of the entries that are there in the end.
    std::vector<std::string> Added() const {
        std::vector<std::string> lines;
        for (const auto& [name, line] : Last_)
            if (!line.empty())
                lines.push_back(line);
        return lines;
    }

private:
    void Take(const std::string& line) {
        // A line of an older client is an entry alone, and means that it is there.
        const bool bare = line.size() < 2 || line[1] != ' ';
        const bool adds = bare || line.starts_with('A');
        if (!adds && !line.starts_with('R'))
            return;
        const std::string entry = bare ? line : line.substr(2);
        const std::string_view name = ParseEntryLine(entry).Name;
        if (!name.empty())
            Last_[framework::UpperCase(name)] = adds ? entry : std::string();
    }

    std::map<std::string, std::string> Last_;  // an empty line for an entry that is removed
};

/// How many entries a folder does not have; some of them by their names.
std::string MissingText(const std::string& dir, const std::vector<std::string>& names) {
    constexpr std::size_t Named = 3;
    std::string text = "Directory(" + dir + ") does not have " + std::to_string(names.size()) +
                       " of its entries: ";
    for (std::size_t at = 0; at < std::min(names.size(), Named); ++at)
        text += (at > 0 ? ", " : "") + names[at];
    return names.size() > Named ? text + ", ..." : text;
}

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
    entry.Options = CutField(line);
    // The last field has no slash behind it.
    entry.Tag = line;
    return entry;
}

void ForEachEntry(const std::string& folder, bool withJournal,
                  const std::function<void(const TEntryLine& entry)>& take) {
    const std::string records = SlashSep(folder, AdminDirectoryName);
    auto file = framework::TTextFile::Reset(SlashSep(records, "Entries"));
    const TJournal journal(withJournal ? SlashSep(records, "Entries.Log") : std::string());
    for (std::string line; file.ReadLine(line);) {
        const TEntryLine entry = ParseEntryLine(line);
        if (!entry.Name.empty() && !journal.Names(entry.Name))
            take(entry);
    }
    for (const std::string& line : journal.Added())
        take(ParseEntryLine(line));
}

TRootLine ParseRootLine(std::string_view line) {
    TRootLine root;
    if (!line.starts_with(':')) {
        root.HasMethod = root.IsLocal = true;
        root.Path = line;
        return root;
    }
    line.remove_prefix(1);
    const std::string_view method = CutUpTo(line, ':');
    root.HasMethod = !method.empty();
    root.ConnectionType = ConnTypeFromStr(method);
    // Both go without a server, and the colon of a local path stands behind its drive.
    if (framework::SameText(method, "local") || framework::SameText(method, "fork")) {
        root.IsLocal = true;
        root.Path = line;
        return root;
    }
    if (const std::size_t at = framework::FindFirstOf(line, "@"); at != line.npos) {
        std::string_view user = line.substr(0, at);
        line.remove_prefix(at + 1);
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
    const auto at =
        framework::FindText(framework::UpperCase(Path_), framework::UpperCase(Modulename()));
    if (Modulename().empty() || at == std::string::npos)
        return {};
    return SlashSep(CVSROOT(), std::string_view(Path_).substr(at));
}

std::string TCvsObject::Get_RepositoryFileName(const std::string& Name, bool IsDirectory) {
    return IsDirectory ? Name : Name + ",v";
}

void TCvsObject::ReadCVSInfo(TWorkDirTree& Tree, const std::string& Dir) {
    const TFolderIndex index(Tree, Dir);
    const TIME_ZONE_INFORMATION zone = PresentTimeZone();
    const std::string repositoryPath = Get_RepositoryPath(Dir);
    std::vector<std::string> missing;
    const auto complete = [&](const TEntryLine& entry) {
        TWorkDirItem* const item = index.Find(entry.Name);
        if (!item) {
            if (!ReadAllEntries)
                throw framework::Exception("Error  reading " +
                                           SlashSep(SlashSep(Dir, AdminDirectoryName), "Entries"));
            // One that the next commit takes out is not there on purpose.
            if (!entry.Revision.starts_with('-'))
                missing.emplace_back(entry.Name);
            return;
        }
        item->InRepository = true;
        item->Revision = entry.Revision;
        item->TimeStamp = entry.TimeStamp;
        item->RepositoryPath = repositoryPath;
        item->RepositoryFileName = Get_RepositoryFileName(item->Name, item->IsDirectory);
        item->RepositoryDate =
            item->TimeStamp.empty() ? 0 : InternetTimeToDateTime(item->TimeStamp);
        if (!entry.IsDirectory)
            item->Changed = CompareDateTime(item->FileDate, item->RepositoryDate, zone);
    };
    ForEachEntry(Dir, ReadAllEntries, complete);
    if (!missing.empty())
        throw framework::Exception(MissingText(Dir, missing));
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
    std::optional<std::string> rootLine;
    try {
        rootLine = FirstLine(WorkingDirectory(), "Root");
    } catch (const framework::EInOutError&) {
        // Whoever goes on in spite of the error is not to work on the repository of the folder
        // before.
        Path.clear();
        SetCVSROOT({});
        throw;
    }
    if (const auto& line = rootLine) {
        const TRootLine root = ParseRootLine(*line);
        if (root.HasMethod)
            ConnectionType = root.ConnectionType;
        // Of a remote root also what it does not name: it has no user of its own, not the one of
        // the folder before.
        if (!root.IsLocal) {
            UserName = root.User;
            Server = root.Server;
        }
        Path = root.Path;
        SetCVSROOT(CompileCVSROOT(ConnectionType, Server, UserName, {}, {}, Path));
    }
    if (const auto line = FirstLine(WorkingDirectory(), "Repository"); line && !line->empty())
        Set_Modulename(*line);
}

}  // namespace tandrel
