// tandrel-host [FOLDER...]
//
// Opens the folders as projects; without any, the one opened last.

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <memory>

#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "host/ChildJob.h"
#include "host/MainForm.h"
#include "package/Package.h"

namespace {

std::vector<std::string> Arguments() {
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
    return arguments;
}

int Run() {
    const host::TChildJob children;
    framework::TPackageRegistry packages;
    if (!TandrelRegister(packages, framework::InterfaceVersion)) {
        ::MessageBoxW(nullptr, L"tandrel.dll was built for another version of this program.",
                      L"Tandrel", MB_OK | MB_ICONERROR);
        return 1;
    }
    host::TSettings settings;
    {
        host::TMainForm form(settings, packages);
        std::vector<std::string> folders = Arguments();
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
