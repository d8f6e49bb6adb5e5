// A small host: it loads the package, opens a working copy as a project, updates it, and uses forms
// and runner on its own. With the exit code it says whether that went well.
//
//   sample_host FOLDER

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <exception>

#include "framework/ui/application.h"
#include "framework/ui/form.h"
#include "hosting/ChildJob.h"
#include "hosting/Programs.h"
#include "hosting/Project.h"
#include "own_forms.h"
#include "package/Package.h"

namespace {

/// What projects ask. Nobody sits before this host: it says No.
class TWindow : public hosting::TProjectHost {
public:
    void Tell(const std::string& text) override { std::fputs(text.c_str(), stdout); }
    void ShowTold() override { std::fflush(stdout); }
    bool SaveDocuments() override { return true; }
    bool AskForTags(std::string&, std::string&) override { return false; }
    bool AskYesNo(const std::string&) override { return false; }
    bool AskRisk(const std::string&) override { return false; }
    framework::TAnswer AskYesNoCancel(const std::string&) override {
        return framework::TAnswer::Cancel;
    }
    bool ChooseBinary(std::vector<hosting::TBinaryChoice>&) override { return true; }
    std::string AskForClient() override { return {}; }
};

bool Work(const char* folder) {
    hosting::TSettings settings("Software\\Sample Host",
                                hosting::TSettings::UserDataFolder() + "\\Sample Host");
    TWindow window;
    hosting::TProject project(window, settings, folder);
    bool done = project.Operate(&tandrel::TCvsObject::UpdateSpecialAccepted);
    std::printf("update: %s\n", project.Outcome().c_str());
    done = done && project.Operate(UseForms) && project.Operate(UseEngine) && UseRunner();
    project.Save();
    return done;
}

int Run(const char* folder) {
    hosting::TProcessState::Inherited();
    hosting::LeaveCurrentDirectory();
    const hosting::TChildJob children;
    framework::TPackageRegistry packages;
    if (!TandrelRegister(packages, framework::InterfaceVersion))
        return 2;
    std::printf("Tandrel %s\n", packages.Packages().front().Version.c_str());
    // Operations show their result in forms, and end when these are answered.
    framework::Application().OnModalBegin = [](framework::TForm& form) {
        std::printf("form: %s\n", form.Text().c_str());
        form.ModalResult = framework::mrOk;
    };
    const bool done = Work(folder);
    TandrelUnregister(packages);
    return done && packages.Packages().empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    try {
        return count == 2 ? Run(arguments[1]) : 3;
    } catch (const std::exception& error) {
        std::printf("error: %s\n", error.what());
        return 1;
    }
}
