#include "hosting/OfflineLog.h"

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"
#include "framework/base/text_file.h"

namespace hosting {

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
        : File_(TPatience().Open(path, GENERIC_WRITE, 0, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE)) {}
    bool Taken() const { return static_cast<bool>(File_); }

private:
    FileHandle File_;
};

}  // namespace

TOfflineLog::TOfflineLog(const std::string& directory, const std::string& waiting)
    : Folder_(directory),
      Log_(SlashSep(directory, "vcsCommand.log")),
      Waiting_(waiting),
      Running_(waiting + ".running") {}

std::string TOfflineLog::Begin() const {
    std::string aside;
    if (FileExists(Log_)) {
        int number = 0;
        do
            aside = Log_ + "." + std::to_string(++number);
        while (FileExists(aside));
        if (!TPatience().Move(Log_, aside, 0))
            throw EInOutError(::GetLastError(), Log_);
    }
    ReplaceTextFile(Log_, {});
    return aside;
}

void TOfflineLog::Continue() const {
    if (!FileExists(Log_))
        ReplaceTextFile(Log_, {});
}

std::optional<std::vector<std::string>> TOfflineLog::Take() const {
    ForceDirectories(ExtractFileDir(Waiting_));
    const TTurn turn(Waiting_ + ".lock");
    if (!turn.Taken())
        return std::nullopt;
    std::vector<std::string> refused;
    for (std::string& line : ReadLines(Log_))
        if (!ParseKeptCommand(line, Folder_))
            refused.push_back(std::move(line));
    const std::vector<TKeptCommand> before = Waiting(false);
    // A host that is killed between the two steps finds commands twice. The client refuses the
    // second time; the other way round they would be lost.
    Write(Waiting(true));
    try {
        if (FileExists(Log_))
            EraseFile(Log_);
    } catch (const EInOutError&) {
        Write(before);
        throw;
    }
    return refused;
}

void TOfflineLog::Write(const std::vector<TKeptCommand>& commands) const {
    std::vector<std::string> lines;
    lines.reserve(commands.size());
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
    if (!FileExists(Waiting_) && !FileExists(Running_))
        return true;
    const TTurn turn(Waiting_ + ".lock");
    if (!turn.Taken() || Marked())
        return false;
    for (std::vector<TKeptCommand> commands = Waiting(false); !commands.empty();) {
        const std::vector<TKeptCommand> others(commands.begin() + 1, commands.end());
        Start(commands.front(), others);
        const bool done = run(commands.front());
        if (!done)
            Write(commands);
        EraseFile(Running_);
        if (!done)
            return false;
        commands = others;
    }
    Write({});
    return true;
}

void TOfflineLog::Start(const TKeptCommand& command,
                        const std::vector<TKeptCommand>& others) const {
    // First the mark: of a command that is in both files it is known that it still has to be run.
    ReplaceTextFile(Running_, {KeptLine(command, Folder_)});
    try {
        Write(others);
    } catch (const EInOutError&) {
        TPatience().Delete(Running_);
        throw;
    }
}

std::optional<TKeptCommand> TOfflineLog::Marked() const {
    const std::vector<std::string> lines = ReadLines(Running_);
    const std::vector<TKeptCommand> waiting = Waiting(false);
    if (lines.empty() || (!waiting.empty() && KeptLine(waiting.front(), Folder_) == lines.front()))
        return std::nullopt;
    return ParseKeptCommand(lines.front(), Folder_);
}

std::optional<TKeptCommand> TOfflineLog::Interrupted() const {
    if (!FileExists(Running_))
        return std::nullopt;
    // Another host may be running it.
    const TTurn turn(Waiting_ + ".lock");
    return turn.Taken() ? Marked() : std::nullopt;
}

void TOfflineLog::SettleInterrupted(bool again) const {
    const TTurn turn(Waiting_ + ".lock");
    std::optional<TKeptCommand> command;
    if (!turn.Taken() || !(command = Marked()))
        return;
    if (again) {
        std::vector<TKeptCommand> commands = Waiting(false);
        commands.insert(commands.begin(), std::move(*command));
        Write(commands);
    }
    EraseFile(Running_);
}

}  // namespace hosting
