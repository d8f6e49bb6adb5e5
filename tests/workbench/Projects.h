#pragma once

#include <string>

#include "framework/ui/application.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/menus.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/timer.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "tests/hosting/TwoFolders.h"
#include "tests/support/FormDriver.h"
#include "workbench/MainForm.h"

namespace tests {

using namespace framework;
using namespace hosting;
using namespace workbench;
using tandrel::TCvsObject;

/// Chooses an item of the form's menu.
inline void Pick(const TForm& form, const std::string& caption) {
    support::Pick(form, "Menu", caption);
}

/// The user closes the window while a command runs.
class TCloseDuringRun {
public:
    explicit TCloseDuringRun(const TForm& form) {
        Timer_.OnTimer = [this, &form](TObject*) {
            Timer_.SetEnabled(false);
            ::SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
            EXPECT_FALSE(Application().Terminated()) << "the command goes on";
            Closed = true;
        };
        Timer_.SetEnabled(true);
    }
    bool Closed = false;

private:
    TTimer Timer_{200};
};

/// The host's window, with two folders to open.
class Projects : public TwoFolders {
protected:
    ~Projects() override {
        Application().SetMainWindow(nullptr);
        DialogFunctions() = Dialogs_;
    }

    /// What the user answers to the next questions.
    void Answer(bool yes) {
        DialogFunctions().AskYesNo =
            DialogFunctions().AskRisk = [this, yes](const std::string&, const std::string& text) {
                Asked += text + "\n";
                return yes;
            };
        DialogFunctions().AskYesNoCancel = [this, yes](const std::string&,
                                                       const std::string& text) {
            Asked += text + "\n";
            return yes ? TAnswer::Yes : TAnswer::No;
        };
    }
    std::string Told() { return support::Part<TRichEdit>(Form, "Output").Text(); }
    void ExpectTold(const std::string& text) { ExpectIn(Told(), text); }
    /// Chooses a row of the list, and no other.
    void Select(const std::string& name) { support::SelectRow(Form, "List", name); }
    /// Does something with the project at hand, as the menu does: the rows show what there is
    /// afterwards.
    bool Operate(const std::function<bool(TCvsObject&)>& operation) {
        bool done = false;
        Form.Operate([&](TCvsObject& cvs) { return done = operation(cvs); }, false);
        return done;
    }
    /// Runs the fake client in the project at hand.
    bool Run(const std::string& arguments) {
        return Operate([&](TCvsObject& cvs) {
            cvs.CvsExecutable = support::FakeClient();
            cvs.CommandLine = " " + arguments;
            cvs.Execute(Folder.Path());
            return cvs.ExitCode == 0;
        });
    }

    TPackageRegistry Packages;
    TMainForm Form{Settings, Packages};
    std::string Asked;

private:
    const TDialogFunctions Dialogs_ = DialogFunctions();
};

}  // namespace tests
