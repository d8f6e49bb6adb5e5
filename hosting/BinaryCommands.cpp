// A project's commands that have to know which files are no texts.

#include <windows.h>

#include <algorithm>
#include <set>
#include <utility>

#include "core/Cvs_files.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "hosting/FileRows.h"
#include "hosting/Project.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

namespace {

/// Up to ten of the paths, as they are called below the folder.
std::string Named(const std::vector<std::string>& paths, const std::string& folder) {
    constexpr std::size_t Most = 10;
    const std::string top = SlashSep(folder, "");
    std::string text;
    for (std::size_t i = 0; i < std::min(paths.size(), Most); ++i)
        text += (i == 0 ? "" : ", ") +
                (paths[i].starts_with(top) ? paths[i].substr(top.size()) : paths[i]);
    if (paths.size() > Most)
        text += " and " + std::to_string(paths.size() - Most) + " more";
    return text;
}

std::string Counted(std::size_t count, const std::string& one, const std::string& several) {
    return count == 1 ? "1 " + one : std::to_string(count) + " " + several;
}

std::vector<std::string> PathsOf(const std::vector<TFileRow>& rows) {
    std::vector<std::string> paths;
    paths.reserve(rows.size());
    for (const TFileRow& row : rows)
        paths.push_back(row.Path());
    return paths;
}

/// Lets other commands run within one, which goes on with its own files and options.
class TAside {
public:
    explicit TAside(TCvsObject& cvs) : Cvs_(cvs), Options_(cvs) {
        for (const TFileItem& item : cvs.FileItems)
            Items_.push_back(item);
        static_cast<TCvsOptions&>(cvs) = TCvsOptions{};
    }
    ~TAside() {
        static_cast<TCvsOptions&>(Cvs_) = Options_;
        Cvs_.FileItems.Clear();
        for (const TFileItem& item : Items_) {
            TFileItem& again = Cvs_.FileItems.AddDir(SlashSep(item.Directory, item.Name));
            again = item;
        }
    }
    TAside(const TAside&) = delete;
    TAside& operator=(const TAside&) = delete;

private:
    TCvsObject& Cvs_;
    const TCvsOptions Options_;
    std::vector<TFileItem> Items_;
};

/// Has the repository keep these files byte for byte from now on.
bool KeepBytesInRepository(TCvsObject& cvs, const std::vector<std::string>& paths) {
    constexpr std::size_t AtOnce = 50;  // names that a command line takes, whatever they are
    for (std::size_t at = 0; at < paths.size(); at += AtOnce) {
        cvs.FileItems.Clear();
        for (std::size_t i = at; i < std::min(at + AtOnce, paths.size()); ++i)
            cvs.FileItems.AddFile(paths[i], Km_kb);
        // The package's own command of that name says nothing of modes.
        const std::string command = " admin";
        cvs.Operation = otAdmin;
        cvs.CommandLine.clear();
        if (!cvs.ParseCommand() || !cvs.CommandLine.starts_with(command))
            return false;
        cvs.CommandLine.insert(command.size(), " -kb");
        cvs.Execute(cvs.Get_CurrentProcDirectory());
        if (cvs.ExitCode != 0)
            return false;
    }
    return true;
}

}  // namespace

std::optional<std::vector<std::string>> TProject::ChooseBinary(
    const std::vector<std::string>& files) {
    std::vector<TBinaryChoice> found = FindBinary(files, Settings_.BinaryEndings());
    if (!found.empty() && !Window_.ChooseBinary(found))
        return std::nullopt;
    std::vector<std::string> binary;
    for (const TBinaryChoice& choice : found)
        if (choice.IsBinary)
            binary.push_back(choice.Path);
    if (!binary.empty())
        Window_.Tell(Counted(binary.size(), "file is", "files are") +
                     " kept as binary: " + Named(binary, Folder_) + "\r\n");
    return binary;
}

bool TProject::Add(const std::vector<std::string>& paths) {
    std::set<std::string> binary;
    return Operate(
        [&](TCvsObject& cvs) {
            if (!IsFurtherPart()) {
                const auto chosen = ChooseBinary(paths);
                if (!chosen)
                    return false;
                for (const std::string& path : *chosen)
                    binary.insert(UpperCase(path));
            }
            for (TFileItem& item : cvs.FileItems)
                item.KeywordMode = binary.contains(UpperCase(SlashSep(item.Directory, item.Name)))
                                       ? Km_kb
                                       : Km_none;
            return cvs.Add();
        },
        paths);
}

bool TProject::NameBinary(const std::vector<std::string>& files) {
    const auto binary = ChooseBinary(files);
    if (!binary)
        return false;
    // Wrappers make the package write a mark that ends all ignoring, unless it is to write none.
    Cvs_.UseDefaultIgnore = true;
    const std::set<std::string> isBinary(binary->begin(), binary->end());
    std::vector<std::string> text;
    std::ranges::copy_if(files, std::back_inserter(text),
                         [&](const std::string& path) { return !isBinary.contains(path); });
    const TWrappers wrappers = WrappersFor(*binary, text);
    for (const std::string& pattern : wrappers.Patterns)
        Cvs_.FileItems.AddExt(pattern, false, Km_kb);
    if (!wrappers.AlsoKept.empty())
        Window_.Tell("Kept as binary, too, because the client cannot tell " +
                     Counted(wrappers.AlsoKept.size(), "file", "files") +
                     " from binary ones: " + Named(wrappers.AlsoKept, Folder_) + "\r\n");
    return true;
}

bool TProject::Import(const std::string& vendor, const std::string& release) {
    return Operate([&](TCvsObject& cvs) {
        cvs.VendorTag = vendor;
        cvs.ReleaseTag = release;
        return NameBinary(PathsOf(RowsBelow(Folder_, cvs.WorkDirTree))) && cvs.Import(true);
    });
}

void TProject::PlaceWhatIsTicked() {
    const TWorkDirTree& items = Cvs_.WorkDirTree;
    if (items.Empty() || !SameText(items.GetItem(0).Directory, Cvs_.WorkingDirectory()))
        Cvs_.Load_WorkDirTree();
    if (!NameBinary(IncludedFiles(items)))
        Abort();
    // The client's own list of what it passes over ends at the mark; Operate puts the variable
    // back.
    Cvs_.SetEnvVariable("CVSIGNORE", "! " + Cvs_.CVSIGNORE());
}

bool TProject::MoveBinary(const std::string& from, const std::string& to) {
    const bool isKept = !Cvs_.ServerOnline() && Cvs_.ConnectionType != cnLocal;
    Cvs_.ModelCurrent = false;
    if (!MoveFileExt(from, to, true)) {
        Window_.Tell(from + " is not moved to " + to + "\r\n");
        return false;
    }
    // A command that is kept has no success.
    if (!Cvs_.RemoveFile(from, false) && !isKept)
        return false;
    Cvs_.FileItems.AddFile(to, Km_kb);
    return Cvs_.Add();
}

bool TProject::IsKeptAsBinary(const std::string& path) const {
    const std::vector<TFileRow> rows = RowsIn({path}, Folder_, Cvs_.WorkDirTree);
    return (!rows.empty() && rows.front().IsBinary) || HasBinaryContent(path);
}

void TProject::BeforeCommit() {
    // Kept commands are none of these.
    if (!Online() && Cvs_.ConnectionType != cnLocal)
        return;
    // Editors have written since the files were read.
    const TMessageEvent told = std::exchange(Cvs_.OnMessage, nullptr);
    Cvs_.Load_WorkDirTree();
    Cvs_.OnMessage = told;
    std::vector<std::string> paths;
    for (const TFileItem& item : Cvs_.FileItems)
        if (item.FileType == fi_file)
            paths.push_back(SlashSep(item.Directory, item.Name));
    if (paths.empty())
        paths.push_back(Folder_);
    std::vector<TFileRow> rows = RowsIn(paths, Folder_, Cvs_.WorkDirTree);
    std::erase_if(rows, [](const TFileRow& row) {
        const bool changes = row.State == TFileState::Added || row.State == TFileState::Changed ||
                             row.State == TFileState::Conflict;
        return !changes || row.IsBinary || !HasBinaryContent(row.Path());
    });
    if (rows.empty())
        return;
    switch (Window_.AskYesNoCancel(
        "The commit would damage " +
        Counted(rows.size(), "file that is no text", "files that are no texts") +
        " in the repository:\r\n" + Named(PathsOf(rows), Folder_) +
        "\r\nKeep them byte for byte from now on? No commits them as texts.")) {
        case TAnswer::Yes:
            if (!KeepBytes(rows)) {
                Window_.Tell("Nothing is committed.\r\n");
                Abort();
            }
            return;
        case TAnswer::No:
            return;
        case TAnswer::Cancel:
            Abort();
    }
}

bool TProject::KeepBytes(const std::vector<TFileRow>& rows) {
    const TAside aside(Cvs_);
    std::vector<std::string> stored;
    for (const TFileRow& row : rows)
        if (row.State != TFileState::Added)
            stored.push_back(row.Path());
    // The repository decides for all others, the records for what this working copy sends. Files
    // are not fetched anew: they would come as they are damaged there.
    if (!KeepBytesInRepository(Cvs_, stored))
        return false;
    for (const TFileRow& row : rows)
        RecordAsBinary(row.Directory, row.Name);
    return true;
}

}  // namespace hosting
