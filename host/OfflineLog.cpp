#include "host/OfflineLog.h"

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/paths.h"
#include "framework/base/text_file.h"

namespace host {

using namespace framework;
using tandrel::SlashSep;

namespace {

std::vector<std::string> ReadLines(const std::string& path) {
    std::vector<std::string> lines;
    if (!FileExists(path))
        return lines;
    auto file = TTextFile::Reset(path);
    for (std::string line; file.ReadLine(line);)
        if (!line.empty())
            lines.push_back(line);
    file.Close();
    return lines;
}

/// One host at a time runs what waits; the lock goes with its process.
class TTurn {
public:
    explicit TTurn(const std::string& path)
        : File_(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                              FILE_FLAG_DELETE_ON_CLOSE, nullptr)) {}
    bool Taken() const { return static_cast<bool>(File_); }

private:
    FileHandle File_;
};

}  // namespace

TOfflineLog::TOfflineLog(const std::string& directory, const std::string& waiting)
    : Folder_(directory), Log_(SlashSep(directory, "vcsCommand.log")), Waiting_(waiting) {}

std::string TOfflineLog::Begin() const {
    std::string aside;
    if (FileExists(Log_)) {
        int number = 0;
        do
            aside = Log_ + "." + std::to_string(++number);
        while (FileExists(aside));
        if (!::MoveFileExA(Log_.c_str(), aside.c_str(), 0))
            throw EInOutError(::GetLastError(), Log_);
    }
    ReplaceTextFile(Log_, {});
    return aside;
}

void TOfflineLog::Continue() const {
    if (!FileExists(Log_))
        ReplaceTextFile(Log_, {});
}

std::vector<std::string> TOfflineLog::Take() const {
    // A host that is killed between the two steps finds commands twice. The client refuses the
    // second time; the other way round they would be lost.
    ForceDirectories(ExtractFileDir(Waiting_));
    const TTurn turn(Waiting_ + ".lock");
    if (!turn.Taken())
        return {};
    std::vector<std::string> refused;
    for (std::string& line : ReadLines(Log_))
        if (!ParseKeptCommand(line, Folder_))
            refused.push_back(std::move(line));
    Write(Waiting(true));
    if (FileExists(Log_))
        EraseFile(Log_);
    return refused;
}

void TOfflineLog::Write(const std::vector<TKeptCommand>& commands) const {
    std::vector<std::string> lines;
    for (const TKeptCommand& kept : commands)
        lines.push_back(KeptLine(kept, Folder_));
    if (!lines.empty())
        ReplaceTextFile(Waiting_, lines);
    else if (FileExists(Waiting_))
        EraseFile(Waiting_);
}

std::vector<TKeptCommand> TOfflineLog::Waiting(bool isOffLine) const {
    std::vector<std::string> lines = ReadLines(Waiting_);
    if (isOffLine) {
        const std::vector<std::string> fresh = ReadLines(Log_);
        lines.insert(lines.end(), fresh.begin(), fresh.end());
    }
    std::vector<TKeptCommand> waiting;
    for (const std::string& line : lines)
        if (auto kept = ParseKeptCommand(line, Folder_))
            waiting.push_back(std::move(*kept));
    return WithoutTakenBack(std::move(waiting));
}

bool TOfflineLog::Run(const std::function<bool(const TKeptCommand&)>& run) const {
    if (!FileExists(Waiting_))
        return true;
    const TTurn turn(Waiting_ + ".lock");
    if (!turn.Taken())
        return false;
    for (std::vector<TKeptCommand> commands = Waiting(false); !commands.empty();) {
        if (!run(commands.front()))
            return false;
        commands.erase(commands.begin());
        Write(commands);
    }
    Write({});
    return true;
}

}  // namespace host
