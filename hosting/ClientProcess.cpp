#include "hosting/ClientProcess.h"

#include <windows.h>
// After the system's types.
#include <tlhelp32.h>

#include <algorithm>

#include "framework/base/handle.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"

namespace hosting {

using namespace framework;

namespace {

/// The file name of the program that a command line starts.
std::string ProgramOf(const std::string& command) {
    const bool quoted = command.starts_with('"');
    const std::string path =
        command.substr(quoted ? 1 : 0, command.find(quoted ? '"' : ' ', 1) - (quoted ? 1 : 0));
    const std::string name = ExtractFileName(path);
    return name.find('.') == std::string::npos ? name + ".exe" : name;
}

/// When a process was made; 0 when it cannot be asked.
std::uint64_t CreationTime(DWORD id) {
    const KernelHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    FILETIME created{}, ended{}, kernel{}, user{};
    if (!process || !::GetProcessTimes(process.Get(), &created, &ended, &kernel, &user))
        return 0;
    return (std::uint64_t{created.dwHighDateTime} << 32) | created.dwLowDateTime;
}

}  // namespace

bool TClientTree::IsChildOfKnown(DWORD parent, std::uint64_t created) const {
    for (const TProcess& known : Known_)
        if (known.Id == parent && created >= known.Created)
            return true;
    return false;
}

void TClientTree::Look(const std::string& command) {
    const std::string program = ProgramOf(command);
    // Children of children stand behind their parents only as a rule.
    for (bool more = true; more;) {
        more = false;
        const FileHandle all(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
        PROCESSENTRY32W entry{};
        entry.dwSize = sizeof entry;
        for (BOOL found = ::Process32FirstW(all.Get(), &entry); found;
             found = ::Process32NextW(all.Get(), &entry)) {
            const bool isClient = entry.th32ParentProcessID == ::GetCurrentProcessId() &&
                                  SameText(FromWide(entry.szExeFile), program);
            const std::uint64_t created = CreationTime(entry.th32ProcessID);
            const auto isKnown = [&](const TProcess& known) {
                return known.Id == entry.th32ProcessID && known.Created == created;
            };
            if (!created || std::ranges::any_of(Known_, isKnown) ||
                (!isClient && !IsChildOfKnown(entry.th32ParentProcessID, created)))
                continue;
            Known_.push_back({entry.th32ProcessID, created});
            more = true;
        }
    }
}

bool TClientTree::End(const std::string& command) {
    Look(command);
    bool ended = false;
    for (const TProcess& known : Known_) {
        const KernelHandle process(
            ::OpenProcess(PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, known.Id));
        if (process && CreationTime(known.Id) == known.Created)
            ended = ::TerminateProcess(process.Get(), 1) || ended;
    }
    return ended;
}

}  // namespace hosting
