#include "hosting/BinaryFiles.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <set>

#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace hosting {

using namespace framework;
using tandrel::SlashSep;

const char* const UsualBinaryEndings =
    "bmp gif ico cur jpg jpeg png tif tiff webp psd pdf doc docx xls xlsx ppt pptx odt ods odp mdb "
    "7z bz2 cab gz jar rar tar tgz xz zip avi mid mov mp3 mp4 mpg ogg wav wma wmv bin chm class "
    "com dll exe hlp lib msi o obj ocx pdb res so ttf";

namespace {

/// Looks at a file's bytes, block after block.
class TLook {
public:
    /// False when it is known to be no text, whatever follows.
    bool Next(std::string_view block) {
        constexpr std::size_t Most = 65536;
        if (Size_ == 0)
            Marked_ = block.starts_with("\xFF\xFE") || block.starts_with("\xFE\xFF");
        for (const char c : block.substr(0, Most - std::min(Most, Size_))) {
            ++Counted_;
            Odd_ += IsOdd(static_cast<unsigned char>(c)) ? 1u : 0u;
        }
        Size_ += block.size();
        constexpr std::string_view Ends("\0\x1A", 2);
        Marked_ = Marked_ || block.find_first_of(Ends) != std::string_view::npos;
        return !Marked_;
    }
    bool IsBinary() const { return Marked_ || Odd_ * 100 > Counted_; }

private:
    /// Tabs, line ends, form feeds, and what colours a terminal, do stand in texts.
    static bool IsOdd(unsigned char c) {
        return c < 8 || (c > 13 && c < 27) || (c > 27 && c < 32) || c == 127;
    }

    std::size_t Size_ = 0, Counted_ = 0, Odd_ = 0;
    bool Marked_ = false;
};

/// In upper case, with its dot; empty without one.
std::string EndingOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : UpperCase(name.substr(dot));
}

/// The name as a pattern of the client's, which ends at a blank, and in which brackets stand for
/// one of what is in them. The second byte of a letter may be such a one.
std::string PatternOf(std::string name) {
    for (std::size_t at = 0, size = 0; at < name.size(); at += size) {
        size = LetterSize(name, at);
        if (std::string_view(name).substr(at, size).find_first_of(" [\\'") != std::string::npos)
            name.replace(at, size, size, '?');
    }
    return name;
}

/// Files with the same ending; each of those without one is a group of its own.
struct TGroup {
    std::vector<std::string> Binary, Text;
};

std::map<std::string, TGroup> GroupsOf(const std::vector<std::string>& binary,
                                       const std::vector<std::string>& text) {
    std::map<std::string, TGroup> groups;
    const auto groupOf = [&](const std::string& path) -> TGroup& {
        const std::string name = ExtractFileName(path), ending = EndingOf(name);
        return groups[ending.empty() ? UpperCase(name) : ending];
    };
    for (const std::string& path : binary)
        groupOf(path).Binary.push_back(path);
    for (const std::string& path : text)
        groupOf(path).Text.push_back(path);
    std::erase_if(groups, [](const auto& group) { return group.second.Binary.empty(); });
    return groups;
}

/// Patterns for a group, each once; the client may tell upper from lower case.
void AddPatterns(const TGroup& group, bool byName, std::set<std::string>& patterns) {
    for (const std::string& path : group.Binary) {
        const std::string name = ExtractFileName(path);
        const std::size_t dot = byName ? std::string::npos : name.rfind('.');
        patterns.insert(dot == std::string::npos ? PatternOf(name)
                                                 : "*" + PatternOf(name.substr(dot)));
    }
}

/// The texts of a group that are called like one of its binary files.
void AddNamesakes(const TGroup& group, std::vector<std::string>& paths) {
    std::set<std::string> names;
    for (const std::string& path : group.Binary)
        names.insert(UpperCase(PatternOf(ExtractFileName(path))));
    for (const std::string& path : group.Text)
        if (names.contains(UpperCase(PatternOf(ExtractFileName(path)))))
            paths.push_back(path);
}

TWrappers Wrappers(const std::map<std::string, TGroup>& groups, bool byName) {
    std::set<std::string> patterns;
    TWrappers wrappers;
    for (const auto& [ending, group] : groups) {
        AddPatterns(group, byName && !group.Text.empty(), patterns);
        if (byName)
            AddNamesakes(group, wrappers.AlsoKept);
        else
            wrappers.AlsoKept.insert(wrappers.AlsoKept.end(), group.Text.begin(), group.Text.end());
    }
    wrappers.Patterns.assign(patterns.begin(), patterns.end());
    return wrappers;
}

/// Whether a command line has room for them.
bool IsShort(const std::vector<std::string>& patterns) {
    constexpr std::size_t Most = 16000, BesidesName = 14;  // bytes
    std::size_t size = 0;
    for (const std::string& pattern : patterns)
        size += pattern.size() + BesidesName;
    return size <= Most;
}

void AddIncluded(const tandrel::TWorkDirTree& items, std::vector<std::string>& files) {
    for (const tandrel::TWorkDirItem& item : items) {
        if (!item.Included)
            continue;
        if (item.IsDirectory)
            AddIncluded(*item.Children, files);
        else
            files.push_back(SlashSep(item.Directory, item.Name));
    }
}

}  // namespace

bool IsBinary(std::string_view content) {
    TLook look;
    look.Next(content);
    return look.IsBinary();
}

bool HasBinaryContent(const std::string& path) {
    const FileHandle file(::CreateFileA(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file)
        return false;
    std::vector<char> block(65536);
    TLook look;
    for (DWORD size = 0;
         ::ReadFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &size, nullptr) &&
         size != 0;)
        if (!look.Next({block.data(), size}))
            break;
    return look.IsBinary();
}

bool HasEnding(std::string_view name, std::string_view endings) {
    constexpr std::string_view Separators = " ,;\t\r\n";
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos)
        return false;
    for (std::size_t at = 0; (at = endings.find_first_not_of(Separators, at)) < endings.size();) {
        const std::size_t end = std::min(endings.find_first_of(Separators, at), endings.size());
        std::string_view ending = endings.substr(at, end - at);
        ending.remove_prefix(std::min(ending.find_first_not_of("*."), ending.size()));
        if (!ending.empty() && SameText(name.substr(dot + 1), ending))
            return true;
        at = end;
    }
    return false;
}

std::vector<TBinaryChoice> FindBinary(const std::vector<std::string>& files,
                                      std::string_view endings) {
    std::vector<TBinaryChoice> found;
    for (const std::string& path : files)
        if (HasEnding(ExtractFileName(path), endings) || HasBinaryContent(path))
            found.push_back({.Path = path});
    return found;
}

std::vector<std::string> IncludedFiles(const tandrel::TWorkDirTree& items) {
    std::vector<std::string> files;
    AddIncluded(items, files);
    return files;
}

TWrappers WrappersFor(const std::vector<std::string>& binary,
                      const std::vector<std::string>& text) {
    const std::map<std::string, TGroup> groups = GroupsOf(binary, text);
    for (const bool byName : {true, false})
        if (TWrappers wrappers = Wrappers(groups, byName); IsShort(wrappers.Patterns))
            return wrappers;
    return {.Patterns = {"*"}, .AlsoKept = text};
}

void RecordAsBinary(const std::string& folder, const std::string& name) {
    std::string line;
    tandrel::ForEachEntry(folder, true, [&](const tandrel::TEntryLine& entry) {
        if (entry.IsDirectory || !SameText(entry.Name, name))
            return;
        line = "A ";
        for (const std::string_view field :
             {entry.Name, entry.Revision, entry.TimeStamp, std::string_view("-kb"), entry.Tag}) {
            line += '/';
            line += field;
        }
    });
    const std::string records = SlashSep(folder, tandrel::AdminDirectoryName);
    if (line.empty())
        throw EInOutError(ERROR_FILE_NOT_FOUND, SlashSep(records, "Entries"));
    // The client's own journal: a line that is not written whole says nothing, and its records are
    // never half of them.
    const std::string journal = SlashSep(records, "Entries.Log");
    auto file = FileExists(journal) ? TTextFile::Append(journal) : TTextFile::Rewrite(journal);
    file.WriteLine(line);
    file.Close();
}

}  // namespace hosting
