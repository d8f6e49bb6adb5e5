// A small host: it loads the package, works on a folder that is a working copy, updates it, and
// uses forms and runner on its own. With the exit code it says whether that went well.
//
//   sample_host FOLDER

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <exception>

#include "cvs/Cvstempl.h"
#include "framework/ui/application.h"
#include "framework/ui/form.h"
#include "own_forms.h"
#include "package/Package.h"

namespace {

/// Operations show their result to the user; nobody sits before this host.
void AnswerDialogs() {
    framework::Application().OnModalBegin = [](framework::TForm& form) {
        std::printf("form: %s\n", form.Text().c_str());
        form.ModalResult = framework::mrOk;
    };
}

int Update(const char* folder) {
    framework::TPackageRegistry packages;
    if (!TandrelRegister(packages, framework::InterfaceVersion))
        return 2;
    std::printf("%s %s\n", packages.Packages().front().Name.c_str(),
                packages.Packages().front().Version.c_str());
    bool done = false;
    {
        tandrel::TCvsObject cvs;
        cvs.StrictQuoting = true;
        cvs.Set_ServerOnline(true);
        cvs.OnMessage = [](framework::TObject*, const std::string& text) {
            std::fputs(text.c_str(), stdout);
        };
        // Reads the repository and the module from the working copy's records.
        cvs.Set_WorkingDirectory(folder);
        // Events come before the command is built: the place to save what editors hold.
        cvs.OnUpdate = [](tandrel::TCvsObject& sender) { sender.CreateDirs = true; };
        done = cvs.UpdateSpecialAccepted();
        std::printf("%d entries\n", cvs.WorkDirTree.Count());
        const bool forms = UseForms(cvs), runner = UseRunner(), engine = UseEngine(cvs);
        std::printf("own forms: %d, own runner: %d, engine: %d\n", forms, runner, engine);
        done = done && forms && runner && engine;
    }
    TandrelUnregister(packages);
    return done && packages.Packages().empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    AnswerDialogs();
    try {
        return count == 2 ? Update(arguments[1]) : 3;
    } catch (const std::exception& error) {
        std::printf("error: %s\n", error.what());
        return 1;
    }
}
