#include "host/OfflineLog.h"

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/text_file.h"

namespace host {

using namespace framework;

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

TOfflineLog::TOfflineLog(const std::string& directory)
    : Log_(directory + "\\vcsCommand.log"), Pending_(directory + "\\vcsCommand.pending") {}

void TOfflineLog::Begin() const {
    if (!FileExists(Log_))
        ReplaceTextFile(Log_, {});
}

void TOfflineLog::Take() const {
    // In one step where it can be: a host that is killed between two would run a command twice.
    if (::MoveFileExA(Log_.c_str(), Pending_.c_str(), 0))
        return;
    const std::vector<std::string> fresh = ReadLines(Log_);
    if (!fresh.empty()) {
        std::vector<std::string> lines = ReadLines(Pending_);
        lines.insert(lines.end(), fresh.begin(), fresh.end());
        ReplaceTextFile(Pending_, lines);
    }
    if (FileExists(Log_))
        EraseFile(Log_);
}

bool TOfflineLog::HasPending() const {
    return FileExists(Pending_);
}

bool TOfflineLog::Run(const std::function<bool(const TKeptCommand&)>& run) const {
    const TTurn turn(Pending_ + ".lock");
    if (!turn.Taken())
        return false;
    std::vector<std::string> lines = ReadLines(Pending_);
    while (!lines.empty()) {
        const std::string& line = lines.front();
        // The folder stands behind the last semicolon: a file's name may hold others.
        const std::size_t at = line.rfind(';');
        const bool done = at == std::string::npos || run({line.substr(0, at), line.substr(at + 1)});
        if (!done)
            return false;
        lines.erase(lines.begin());
        ReplaceTextFile(Pending_, lines);
    }
    if (FileExists(Pending_))
        EraseFile(Pending_);
    return true;
}

}  // namespace host
