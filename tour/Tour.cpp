#include "tour/Tour.h"

#include "framework/base/files.h"
#include "framework/ui/application.h"
#include "framework/ui/dialogs.h"
#include "package/Package.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "workbench/CommitForm.h"

namespace tour {

using namespace framework;

TTour::TTour(const std::string& out) : Play_(out) {
    TandrelRegister(Packages_, InterfaceVersion);
    for (const auto& [name, text] :
         {std::pair{"main.c", "int main(void) {\r\n    return 0;\r\n}\r\n"},
          {"notes.txt", "Nothing to note yet.\r\n"},
          {"lib\\list.c", "/* $Id$ */\r\nint list;\r\n"},
          {"lib\\list.o", "an object file"},
          {"build.log", "built\r\n"}})
        support::WriteBytes(Project_ + "\\" + name, text);
    // Questions of the host's; they stand in the transcript.
    DialogFunctions().AskYesNo =
        DialogFunctions().AskRisk = [this](const std::string&, const std::string& text) {
            // What was pulled is looked at on disk.
            const bool yes = !text.starts_with("Open\r\n");
            Play_.Tell("asked: " + text + "\r\nanswered: " + (yes ? "Yes" : "No") + "\r\n");
            return yes;
        };
    DialogFunctions().AskYesNoCancel = [this](const std::string&, const std::string& text) {
        Play_.Tell("asked: " + text + "\r\nanswered: Yes\r\n");
        return TAnswer::Yes;
    };
    Application().OnException = [](const std::exception& error) {
        throw std::runtime_error(std::string("the host says: ") + error.what());
    };
}

bool TTour::Play() {
    const std::pair<const char*, void (TTour::*)()> steps[] = {
        {"Open a folder as a project", &TTour::OpenTheProject},
        {"Create a repository", &TTour::CreateARepository},
        {"Place the project, without what is built", &TTour::PlaceTheProject},
        {"Edit a file and commit it", &TTour::EditAndCommit},
        {"Add a file, remove and move others", &TTour::AddAndRemoveFiles},
        {"Create a label and a branch, and delete them", &TTour::CreateALabelAndABranch},
        {"Update to a branch, with a merge", &TTour::UpdateToTheBranch},
        {"Compare a file", &TTour::Compare},
        {"Browse the status", &TTour::Browse},
        {"Look at log, annotations, editors and watchers", &TTour::Annotate},
        {"Pull the project into another folder", &TTour::PullElsewhere},
        {"Work in two projects with two repositories", &TTour::WorkInTwoProjects},
        {"Define three tools", &TTour::DefineTools},
        {"Run them", &TTour::RunTools},
        {"Log in to a server and pull from it", &TTour::LogIn},
        {"Add and remove while the server is off-line", &TTour::WorkOffLine},
        {"Log out", &TTour::LogOut},
        {"Release a working copy", &TTour::ReleaseTheCopy},
        {"Take a project out of version control", &TTour::TakeOut},
        {"Look at what was before", &TTour::LookAtThePast},
        {"Work a morning on forty changed files", &TTour::WorkAMorning},
    };
    for (const auto& [name, step] : steps)
        Play_.Step(name, [this, step = step] {
            if (Form_)
                ToldBefore_ = support::Part<TRichEdit>(*Form_, "Output").Text().size();
            (this->*step)();
            Play_.Tell(Told());
        });
    Form_.reset();
    TandrelUnregister(Packages_);
    Play_.Tell("\r\n" + std::to_string(Play_.Steps()) + " steps, " +
               std::to_string(Play_.Failed()) + " failed\r\n");
    return Play_.Failed() == 0;
}

TMenuItem& TTour::MenuItem(const std::string& path) {
    TMenuItem* item = &support::Part<TMainMenu>(*Form_, "Menu");
    std::size_t start = 0;
    while (start <= path.size()) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        const std::string wanted = path.substr(start, end - start);
        TMenuItem* found = nullptr;
        for (TMenuItem* below : item->Items()) {
            std::string caption = below->Caption();
            std::erase(caption, '&');
            if (caption == wanted)
                found = below;
        }
        if (!found)
            throw std::runtime_error("the menu has no " + path);
        item = found;
        start = end + 1;
    }
    return *item;
}

void TTour::Choose(const std::string& path) {
    TMenuItem& item = MenuItem(path);
    Expect(item.Enabled(), path + " can be chosen");
    item.Click();
}

void TTour::Commit(const std::string& message, const std::string& item,
                   const std::string& picture) {
    Choose(item);
    const auto windows = support::OpenForms<workbench::TCommitForm>();
    Expect(windows.size() == 1, "what there is to commit is shown");
    workbench::TCommitForm& window = *windows.front();
    support::Type(window, "Message", message);
    if (!picture.empty())
        Play_.Picture(window.Handle(), picture);
    support::Press(window, "Commit");
    Expect(!window.Visible(), "it is committed:\r\n" + Told());
}

void TTour::CommitByWizard(const std::string& message) {
    const auto choose = [this](bool package) {
        Play_.ExpectForm("Options", [package](TForm& form) {
            support::Check(form, "Input9", package);
            support::Press(form, "BitBtn1");
        });
        Choose("Repository/Options...");
    };
    choose(true);
    Play_.ExpectForm("CVS commit-step 1", [this, message](TForm& form) {
        Next(form);
        support::Type(support::StepOf(form), "Memo1", message);
        support::Press(form, "BitBtn1");
    });
    ExpectSuccess("CVS commit");
    Choose("Working copy/Commit...");
    choose(false);
}

void TTour::CreateRepository(const std::string& folder) {
    Play_.ExpectForm("Create CVS repository", [folder](TForm& form) {
        support::Type(support::StepOf(form), "Edit3", folder);
        support::Press(form, "BitBtn1");
    });
    ExpectSuccess("CVS init");
    Choose("Repository/Create...");
}

void TTour::Place() {
    Play_.ExpectForm("Place project into CVS-step 1", [this](TForm& form) {
        for (int i = 0; i < 3; ++i)
            Next(form);
        support::Press(form, "BitBtn1");
    });
    Play_.ExpectForm("Tags of the project", [](TForm& form) { support::Press(form, "BitBtn1"); });
    ExpectSuccess("CVS PlaceProject");
    Choose("Repository/Place project...");
}

void TTour::Pull(const std::string& folder, const std::string& module, const std::string& exported,
                 const std::string& item) {
    ForceDirectories(folder);
    Play_.ExpectForm("Pull project from CVS-step 1", [&, this](TForm& form) {
        support::Type(support::StepOf(form), "Edit3", folder);
        if (!exported.empty())
            support::Check(support::StepOf(form), "CheckBox1");
        Next(form);
        support::Type(support::StepOf(form), "Edit5", module);
        Next(form);
        TForm& revision = support::StepOf(form);
        if (!exported.empty()) {
            support::Choose(revision, "ComboBox1", tandrel::stTag);
            WaitFor(revision, "Button2");
            support::Type(revision, "Edit6", exported);
        }
        support::Press(form, "BitBtn1");
    });
    ExpectSuccess("CVS Pull Project ");
    Choose(item);
}

void TTour::Show(const std::string& item, const std::string& caption, const std::string& picture) {
    Play_.ExpectForm(caption, [this, picture](TForm& form) {
        Play_.Picture(form.Handle(), picture);
        support::Press(form, "BitBtn2");
    });
    Choose(item);
}

void TTour::MergeAndFinish(TForm& form, const std::string& revision) {
    TForm& step = support::StepOf(form);
    support::Choose(step, "ComboBox1", tandrel::mtThisRev);
    WaitFor(step, "Button1");
    support::Type(step, "Edit3", revision);
    support::Press(form, "BitBtn1");
}

void TTour::WaitFor(TForm& form, const std::string& button) {
    Expect(support::WaitUntil([&] { return support::Part<TButton>(form, button).Enabled(); }),
           button + " can be pressed");
}

void TTour::Next(TForm& form) {
    support::Press(form, "BitBtn4");
    Play_.PictureOf(form);
}

void TTour::TellModel(const tandrel::TWorkDirTree& tree, const std::string& indent) {
    for (const tandrel::TWorkDirItem& item : tree) {
        Play_.Tell(indent + item.Name + "  " + item.StatusName() + "  " + item.Revision + "\r\n");
        TellModel(*item.Children, indent + "  ");
    }
}

void TTour::Select(const std::string& name) {
    support::SelectRow(*Form_, "List", name);
}

void TTour::ExpectSuccess(const std::string& caption) {
    Play_.ExpectForm(caption, [this](TForm& form) {
        const std::string text = support::Part<TControl>(form, "Label1").Text();
        support::Press(form, "BitBtn1");
        Expect(text.ends_with(" successfuly completed"), "a success: " + text + "\r\n" + Told());
    });
}

std::string TTour::Told() {
    return Form_ ? support::Part<TRichEdit>(*Form_, "Output").Text().substr(ToldBefore_) : "";
}

void TTour::ExpectTold(const std::string& text) {
    Expect(Told().find(text) != std::string::npos, "told \"" + text + "\", but:\r\n" + Told());
}

std::string TTour::Ask(const std::string& root, const std::string& arguments) {
    const auto result =
        support::RunProcess("cvs -Q -d \"" + root + "\" " + arguments, Folder_.Path());
    Expect(result.ExitCode == 0, "the client's answer to " + arguments + ": " + result.Output);
    return result.Output;
}

}  // namespace tour
