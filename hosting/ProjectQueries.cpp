// What is asked of the client, and changes nothing.

#include <algorithm>
#include <sstream>

#include "core/Cvs_utils.h"
#include "cvs/CommandBuilder.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"
#include "hosting/PasswordMask.h"
#include "hosting/Project.h"
#include "hosting/Ticking.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

namespace {

// Pieces of a kilobyte. More is no answer that anybody looks at.
constexpr int LongestAnswer = 100 * 1024;

/// Has an object's output collected in a list, and no longer than that.
class TCapturing {
public:
    TCapturing(TCvsObject& cvs, TStringList& pieces) : Cvs_(cvs), Limit_(cvs.OutputListLimit) {
        Cvs_.OutputListLimit = LongestAnswer;
        Cvs_.OutputList = &pieces;
    }
    ~TCapturing() {
        Cvs_.OutputList = nullptr;
        Cvs_.OutputListLimit = Limit_;
    }
    TCapturing(const TCapturing&) = delete;
    TCapturing& operator=(const TCapturing&) = delete;

private:
    TCvsObject& Cvs_;
    int Limit_;
};

}  // namespace

std::optional<int> TProject::Ask(TOperationType kind, const std::string& arguments,
                                 std::string& output) {
    output.clear();
    if (Running())
        return std::nullopt;
    BeginCommand();
    Succeeded_ = false;
    if (!MayRun())
        return std::nullopt;
    // Going to the folder that it is in forgets what is known of it.
    const bool isCurrent = Cvs_.ModelCurrent;
    Prepare({});
    if (!FindPrograms())
        return std::nullopt;
    Cvs_.Operation = kind;
    Cvs_.CommandLine = arguments;
    TStringList pieces;
    {
        const TTicking watching(CancelWatch_);
        const TFlagForCall quiet(Capturing_);
        const TCapturing capturing(Cvs_, pieces);
        Cvs_.Execute(Folder_);
    }
    TellRest();
    ReturnToFolder();
    Cvs_.ModelCurrent = isCurrent;
    for (int i = 0; i < pieces.Count(); ++i)
        output += pieces[i];
    Succeeded_ = Cvs_.ExitCode == 0;
    if (Stopped_ || Cvs_.Aborted)
        return std::nullopt;
    return Cvs_.ExitCode.load();
}

void TProject::TellAnswer(const std::string& output) {
    if (!output.empty())
        Window_.Tell(MaskPasswords(output, KnownPassword()));
}

std::vector<std::string> TProject::Modules() {
    std::vector<std::string> modules;
    // On this machine the client cannot list a repository, but its folders are there to be seen.
    const bool isLocal = Cvs_.ConnectionType == cnLocal;
    if (isLocal) {
        TFileSearch search(SlashSep(RemoveSlashSep(Cvs_.CVSROOT()), "*.*"), faDirectory);
        for (TSearchRec entry; search.Next(entry);)
            if (entry.IsDirectory() && entry.Name != "." && entry.Name != ".." &&
                entry.Name != "CVSROOT")
                modules.push_back(entry.Name);
    }
    // What the repository's own list names, a line for each, and its folders.
    for (const char* command : {" -Q checkout -s", " -Q rls"}) {
        if (isLocal && std::string_view(command) == " -Q rls")
            continue;
        std::string output;
        if (Ask(otCheckOut, command, output) != 0) {
            TellAnswer(output);
            continue;
        }
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);) {
            const std::string name = line.substr(0, line.find_first_of(" \t\r"));
            if (!name.empty() && name != "CVSROOT" && IsNameBelow(name))
                modules.push_back(name);
        }
    }
    std::ranges::sort(modules);
    modules.erase(std::unique(modules.begin(), modules.end()), modules.end());
    return modules;
}

std::string TProject::FileOf(const std::string& name) const {
    std::string path = name;
    std::ranges::replace(path, '/', '\\');
    if (!IsNameBelow(path))
        return {};
    // Commands that name the module run above its folder.
    for (const std::string& from : {Folder_, ExtractFileDir(Folder_)})
        if (std::string file = SlashSep(from, path);
            FileExists(file) && SameText(file.substr(0, Folder_.size()), Folder_))
            return file;
    return {};
}

}  // namespace hosting
