// tandrel [FOLDER...]
//
// Opens the folders as projects; without any, the one opened last.

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <memory>

#include "core/Cvs_utils.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "hosting/ChildJob.h"
#include "hosting/Programs.h"
#include "package/Package.h"
#include "workbench/MainForm.h"

namespace {

std::vector<std::string> Arguments(const std::string& folder) {
    std::vector<std::string> arguments;
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> all(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), ::LocalFree);
    for (int i = 1; all && i < count; ++i)
        arguments.push_back(framework::FromWide(all.get()[i]));
    // A switch of the package's.
    std::erase_if(arguments, [](const std::string& argument) {
        return framework::SameText(argument, "-DEBUG");
    });
    // They are meant from the folder that the program was started in.
    for (std::string& argument : arguments)
        if (!argument.starts_with('\\') && argument.find(':') == std::string::npos)
            argument = tandrel::SlashSep(folder, argument);
    return arguments;
}

int Run() {
    hosting::TProcessState::Inherited();
    const std::string folder = hosting::LeaveCurrentDirectory();
    const hosting::TChildJob children;
    framework::TPackageRegistry packages;
    if (!TandrelRegister(packages, framework::InterfaceVersion)) {
        ::MessageBoxW(nullptr, L"tandrel.dll was built for another version of this program.",
                      L"Tandrel", MB_OK | MB_ICONERROR);
        return 1;
    }
    hosting::TSettings settings;
    {
        workbench::TMainForm form(settings, packages);
        std::vector<std::string> folders = Arguments(folder);
        if (folders.empty())
            if (const auto recent = settings.RecentProjects(); !recent.empty())
                folders.push_back(recent.front());
        for (const std::string& folder : folders)
            form.OpenProject(folder);
        form.Show();
        framework::Application().Run();
    }
    TandrelUnregister(packages);
    return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // Boxes of the system's about drives without disks would stand in the way of what asks for
    // them; windows that wait for a tool must not become ghosts that a click kills.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    ::DisableProcessWindowsGhosting();
    // The icons of files come from the shell, which wants this.
    const bool com = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    int code = 1;
    try {
        code = Run();
    } catch (...) {
        framework::Application().HandleException();
    }
    if (com)
        ::CoUninitialize();
    return code;
}
