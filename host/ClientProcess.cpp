#include "host/ClientProcess.h"

#include <windows.h>
// After the system's types.
#include <tlhelp32.h>

#include "framework/base/handle.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"

namespace host {

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

}  // namespace

bool EndChildren(const std::string& command) {
    const std::string program = ProgramOf(command);
    const FileHandle all(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    bool ended = false;
    for (BOOL found = ::Process32FirstW(all.Get(), &entry); found;
         found = ::Process32NextW(all.Get(), &entry)) {
        if (entry.th32ParentProcessID != ::GetCurrentProcessId() ||
            !SameText(FromWide(entry.szExeFile), program))
            continue;
        const KernelHandle child(::OpenProcess(PROCESS_TERMINATE, FALSE, entry.th32ProcessID));
        ended = (child && ::TerminateProcess(child.Get(), 1)) || ended;
    }
    return ended;
}

}  // namespace host
