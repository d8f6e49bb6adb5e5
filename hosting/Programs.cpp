#include "hosting/Programs.h"

#include <windows.h>

#include "core/Cvs_utils.h"
#include "framework/base/files.h"
#include "framework/base/import.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"

namespace hosting {

using namespace framework;
using tandrel::SlashSep;

namespace {

std::string Variable(const char* name) {
    std::string value(::GetEnvironmentVariableA(name, nullptr, 0), '\0');
    value.resize(::GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

std::string WindowsFolder() {
    char folder[MAX_PATH]{};
    ::GetWindowsDirectoryA(folder, MAX_PATH);
    return folder;
}

bool IsAbsolute(const std::string& folder) {
    return folder.starts_with("\\\\") ||
           (folder.size() > 2 && folder[1] == ':' && (folder[2] == '\\' || folder[2] == '/'));
}

}  // namespace

std::string LeaveCurrentDirectory() {
    std::string left(::GetCurrentDirectoryA(0, nullptr), '\0');
    left.resize(::GetCurrentDirectoryA(static_cast<DWORD>(left.size()), left.data()));
    // Neither the system nor the children's run-time libraries look there any more. The folder
    // itself can be renamed and deleted again, too.
    ::SetCurrentDirectoryA(WindowsFolder().c_str());
    ::SetEnvironmentVariableA("NoDefaultCurrentDirectoryInExePath", "1");
    ::SetDllDirectoryA("");
    // Not in every system.
    constexpr DWORD SafeSearch = 0x00000001, Permanent = 0x00008000;
    if (const auto setSearch =
            ImportFunction<BOOL WINAPI(DWORD)>(L"kernel32.dll", "SetSearchPathMode"))
        setSearch(SafeSearch | Permanent);
    return left;
}

std::string FindProgram(const std::string& name, std::vector<std::string>* looked) {
    const std::string file = name.find('.') == std::string::npos ? name + ".exe" : name;
    const std::string path = Variable("PATH");
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(';', start), path.size());
        std::string folder = path.substr(start, end - start);
        start = end + 1;
        std::erase(folder, '"');
        if (!IsAbsolute(folder))
            continue;
        if (looked)
            looked->push_back(folder);
        if (std::string found = SlashSep(folder, file); FileExists(found))
            return found;
    }
    return {};
}

std::string FindClient(const TSettings& settings, std::vector<std::string>* looked) {
    if (std::string chosen = settings.Client(); FileExists(chosen))
        return chosen;
    return FindProgram("cvs", looked);
}

std::string FindRemoteShell(const std::string& chosen) {
    if (FindFirstOf(chosen, "\\/:") != std::string::npos)
        return chosen;
    if (!chosen.empty())
        return FindProgram(chosen);
    const std::string ssh = FindProgram("ssh");
    return ssh.empty() ? FindProgram("rsh") : ssh;
}

std::string AsCommand(const std::string& path) {
    return "\"" + path + "\"";
}

std::string PreviewViewer() {
    return AsCommand(SlashSep(WindowsFolder(), "notepad.exe")) + " ";
}

}  // namespace hosting
