#include "hosting/Queries.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>

#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "cvs/CommandBuilder.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

namespace {

// What others have written into the client's own settings must not change what its texts look like.
constexpr const char* Plain = " -f -q ";
// And without a head.
constexpr const char* PlainText = " -f -Q ";

std::string DateText(TDateTime value, bool withSeconds) {
    const DateParts date = DecodeDate(value);
    const TimeParts time = DecodeTime(value);
    std::array<char, 40> text{};
    int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d", date.Year,
                               date.Month, date.Day, time.Hour, time.Minute);
    if (withSeconds)
        std::snprintf(text.data() + length, text.size() - static_cast<std::size_t>(length), ":%02d",
                      time.Second);
    return text.data();
}

std::string DateArgument(TDateTime utc) {
    return DateText(utc, true) + " UTC";
}

/// The option of "diff" for a side that is not the working copy.
std::string OptionOf(const TVersion& version) {
    switch (version.Kind) {
        case TVersion::TKind::WorkingCopy:
            return {};
        case TVersion::TKind::Base:
            return " -r BASE";
        case TVersion::TKind::Revision:
            // In one with the option it is none of its own, whatever it begins with.
            return " " + QuoteArgument("-r" + version.Revision, true);
        case TVersion::TKind::Date:
            return " " + QuoteArgument("-D" + DateArgument(version.Date), true);
    }
    return {};
}

bool HasEnded(int code, const std::string&) {
    return code == 0;
}

bool HasLog(int code, const std::string& output) {
    // One file of many that the repository does not have is no reason to show none.
    return code == 0 || output.find("total revisions:") != std::string::npos;
}

bool HasCompared(int code, const std::string& output) {
    // To the client a difference is a failure.
    return code == 0 || output.starts_with("Index: ") ||
           output.find("\nIndex: ") != std::string::npos;
}

/// Of forward slashes alone, and in upper case where the repository is on this machine.
std::string Comparable(std::string path) {
    std::ranges::replace(path, '\\', '/');
    return UpperCase(path);
}

/// The path of the repository on its machine.
std::string RootPath(const TCvsObject& cvs) {
    const std::string path = RemoveSlashSep(cvs.Path);
    // A port that is not the usual one stands in front of it.
    return cvs.ConnectionType == cnLocal
               ? path
               : path.substr(std::min(path.find_first_not_of("0123456789"), path.size()));
}

/// The repository's folder for a folder of the working copy, below its root.
std::string RepositoryOf(const std::string& folder, const TCvsObject& cvs) {
    const std::string file = SlashSep(SlashSep(folder, AdminDirectoryName), "Repository");
    std::string line;
    if (!FileExists(file) || !TTextFile::Reset(file).ReadLine(line))
        return {};
    line = Trim(line);
    std::ranges::replace(line, '\\', '/');
    const std::string prefix = Comparable(RootPath(cvs)) + "/";
    if (Comparable(line).starts_with(prefix))
        line.erase(0, prefix.size());
    return line;
}

std::string HashOf(const std::vector<std::string>& files) {
    std::string state;
    for (const std::string& file : files) {
        const std::string bytes = ReadFileBytes(file);
        state += std::to_string(bytes.size()) + " " +
                 std::to_string(std::hash<std::string>{}(bytes)) + " ";
    }
    return state;
}

}  // namespace

std::string TVersion::Text() const {
    switch (Kind) {
        case TKind::WorkingCopy:
            return "working copy";
        case TKind::Base:
            return "last update";
        case TKind::Revision:
            return Revision;
        case TKind::Date:
            return DateText(UTCToLocalTime(Date), false);
    }
    return {};
}

bool TVersion::IsNumber() const {
    return Kind == TKind::Revision && !Revision.empty() &&
           std::isdigit(static_cast<unsigned char>(Revision.front())) &&
           Revision.find_first_not_of("0123456789.") == std::string::npos &&
           // With an odd number of parts it is a branch, whose end moves on.
           std::ranges::count(Revision, '.') % 2 == 1;
}

std::string TFetched::Remark() const {
    return IsKept ? "fetched on " + DateText(Since, false) : "";
}

std::optional<TFetched> TQueries::Fetch(TOperationType kind,
                                        const std::vector<std::string>& commands, TLasting lasting,
                                        TSucceeded succeeded, const std::string& state) {
    TCvsObject& cvs = Project_.Cvs();
    std::string key =
        RootWithoutPassword(cvs) + "\n" + RepositoryOf(Project_.Folder(), cvs) + "\n" + state;
    for (const std::string& command : commands)
        key += "\n" + command;
    const bool isHere = cvs.ConnectionType == cnLocal;
    const auto kept = [&]() -> std::optional<TFetched> {
        if (lasting == TLasting::NotKept)
            return std::nullopt;
        auto text = Texts_.Find(key);
        if (!text)
            return std::nullopt;
        return TFetched{std::move(text->Text), true, text->Since};
    };
    if (lasting == TLasting::ForEver)
        if (auto text = kept()) {
            text->IsKept = false;
            return text;
        }
    if (!isHere && !Project_.Online()) {
        auto text = kept();
        if (!text)
            Project_.TellAnswer("The server is off-line, and this was not fetched before.\r\n");
        return text;
    }
    TFetched fetched;
    for (const std::string& command : commands) {
        std::string output;
        const std::optional<int> code = Project_.Ask(kind, command, output);
        if (!code)
            return std::nullopt;
        if (!succeeded(*code, output)) {
            Project_.TellAnswer(output);
            return isHere ? std::nullopt : kept();
        }
        fetched.Text += output;
    }
    if (lasting != TLasting::NotKept && !isHere)
        Texts_.Keep(key, fetched.Text);
    return fetched;
}

std::string TQueries::NameOf(const std::string& path) const {
    return path.substr(std::min(Project_.Folder().size() + 1, path.size()));
}

std::vector<std::string> TQueries::WithNames(const std::string& command,
                                             const std::vector<std::string>& paths) const {
    constexpr std::size_t Most = 24000;  // bytes
    if (paths.empty())
        return {command};
    std::vector<std::string> commands;
    std::string line;
    for (const std::string& path : paths) {
        const std::string name = NameOf(path);
        line += " " + QuoteArgument(name.empty() ? "." : name, true);
        if (line.size() > Most) {
            commands.push_back(command + " --" + line);
            line.clear();
        }
    }
    if (!line.empty())
        commands.push_back(command + " --" + line);
    return commands;
}

std::optional<TFetched> TQueries::Log(const std::vector<std::string>& files) {
    return Fetch(otLog, WithNames(std::string(Plain) + "log", files), TLasting::Changing, &HasLog);
}

std::optional<TFetched> TQueries::FolderLog(const std::vector<std::string>& folders,
                                            TDateTime since) {
    std::string command = std::string(Plain) + "rlog";
    if (since > 0)
        command += " -S " + QuoteArgument("-d" + DateArgument(since) + "<", true);
    command += " --";
    std::vector<std::string> commands;
    for (const std::string& folder : folders.empty() ? std::vector{Project_.Folder()} : folders) {
        const std::string repository = RepositoryOf(folder, Project_.Cvs());
        if (!repository.empty())
            commands.push_back(command + " " + QuoteArgument(repository, true));
    }
    if (commands.empty()) {
        Project_.TellAnswer("The repository has no such folder.\r\n");
        return std::nullopt;
    }
    return Fetch(otLog, commands, TLasting::Changing, &HasLog);
}

std::optional<TFetched> TQueries::Annotation(const std::string& file, const std::string& revision) {
    const TVersion version = TVersion::Of(revision);
    return Fetch(
        otAnnotate,
        WithNames(std::string(Plain) + "annotate" + (revision.empty() ? "" : OptionOf(version)),
                  {file}),
        version.IsNumber() ? TLasting::ForEver : TLasting::Changing, &HasEnded);
}

std::optional<TFetched> TQueries::File(const std::string& file, const TVersion& version) {
    return Fetch(otUpdate,
                 WithNames(std::string(PlainText) + "update -p" + OptionOf(version), {file}),
                 version.IsNumber() ? TLasting::ForEver : TLasting::Changing, &HasEnded);
}

std::optional<TFetched> TQueries::Comparison(const std::vector<std::string>& paths,
                                             const TVersion& from, const TVersion& to,
                                             bool ignoreBlanks, int context) {
    using enum TVersion::TKind;
    std::string command = std::string(Plain) + "diff -U" + std::to_string(context) + " -N" +
                          (ignoreBlanks ? " -w" : "");
    const bool isWorking = to.Kind == WorkingCopy;
    if (!isWorking || from.Kind != Base)
        command += OptionOf(from);
    command += OptionOf(to);
    TLasting lasting = TLasting::Changing;
    std::string state;
    if (isWorking) {
        // Which text was compared is known of files alone.
        if (!paths.empty() && std::ranges::all_of(paths, FileExists))
            state = HashOf(paths);
        else
            lasting = TLasting::NotKept;
    } else if (from.IsNumber() && to.IsNumber()) {
        lasting = TLasting::ForEver;
    }
    return Fetch(otDiff, WithNames(command, paths), lasting, &HasCompared, state);
}

std::string TQueries::PathOf(const std::string& repositoryFile) const {
    constexpr std::string_view Attic = "Attic/";
    std::string name = repositoryFile;
    std::ranges::replace(name, '\\', '/');
    if (name.ends_with(",v"))
        name.erase(name.size() - 2);
    const std::size_t last = name.rfind('/') + 1;
    if (last >= Attic.size() && name.substr(last - Attic.size(), Attic.size()) == Attic)
        name.erase(last - Attic.size(), Attic.size());
    const std::string prefix = Comparable(RootPath(Project_.Cvs())) + "/";
    if (Comparable(name).starts_with(prefix))
        name.erase(0, prefix.size() - 1);
    const std::string module = "/" + RepositoryOf(Project_.Folder(), Project_.Cvs()) + "/";
    const std::size_t at = module == "//" ? std::string::npos : name.find(module);
    if (at == std::string::npos)
        return {};
    name.erase(0, at + module.size());
    std::ranges::replace(name, '/', '\\');
    return IsNameBelow(name) ? SlashSep(Project_.Folder(), name) : std::string();
}

}  // namespace hosting
