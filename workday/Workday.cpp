#include "workday/Workday.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "core/CvsExecute.h"
#include "core/Cvsroot.h"
#include "framework/base/files.h"
#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/labels.h"
#include "support/Process.h"
#include "workday/Sample.h"

namespace workday {
namespace {

/// The result box is answered as a user would who has read it.
void AnswerForm(framework::TForm& form) {
    const auto* label = form.Find<framework::TLabel>("Label1");
    Write("  [" + form.Text() + "] " + (label ? label->Text() : "") + "\n");
    if (auto* ok = form.Find<framework::TButton>("BitBtn1")) ok->Click();
}

}  // namespace

void Write(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
    static std::FILE* const transcript = [] {
        const char* const folder = std::getenv("TANDREL_OUT");
        return folder ? std::fopen((std::string(folder) + "\\transcript.txt").c_str(), "wb")
                      : nullptr;
    }();
    if (!transcript) return;
    std::fwrite(text.data(), 1, text.size(), transcript);
    std::fflush(transcript);
}

TWorkday::TWorkday() {
    framework::Application().OnModalBegin = AnswerForm;
    framework::Application().OnException = [](const std::exception& error) {
        Write(std::string("error: ") + error.what() + "\n");
    };
    Connect(Alice_, "alice");
    Connect(Bob_, "bob");
}

void TWorkday::Connect(tandrel::TCvsObject& cvs, const std::string& folder) {
    framework::ForceDirectories(Folder_ / folder);
    cvs.ConnectionType = tandrel::cnLocal;
    cvs.Path = Folder_ / "repository";
    cvs.SetCVSROOT(tandrel::CompileCVSROOT(cvs.ConnectionType, "", "", "", "", cvs.Path));
    cvs.Set_ProjectRoot(Folder_ / folder);
    cvs.Set_Modulename(Module);
    cvs.ExecuteClass->OnEndProgress = [&cvs](framework::TObject*) {
        Write("command:   " + cvs.CvsExecutable + cvs.CommandLine + "\n");
        Write("exit code: " + std::to_string(cvs.ExitCode) + "\n");
    };
    cvs.OnMessage = [this](framework::TObject*, const std::string& text) {
        Messages_ += text;
        Write(text);
    };
}

bool TWorkday::Play() {
    Step("Create a repository", [this] { CreateRepository(); });
    Step("Import a project", [this] { ImportProject(); });
    Step("Check it out", [this] { CheckOut(Alice_); });
    Step("Check it out once more", [this] { CheckOut(Bob_); });
    Step("Change a file", [this] { ChangeFile(); });
    Step("Add files, one in a new folder", [this] { AddFiles(); });
    Step("Look at the status", [this] { ShowStatus(); });
    Step("Look at the difference", [this] { ShowDiff(); });
    Step("Commit", [this] { Commit(); });
    Step("Tag", [this] { Tag(); });
    Step("Look at the log", [this] { ShowLog(); });
    Step("Update the second working copy", [this] { UpdateSecondCopy(); });
    Step("Remove a file", [this] { RemoveFile(); });
    Step("Place an existing project", [this] { PlaceOldProject(); });
    Step("Look at the model of its working copy", [this] { ShowModel(); });
    Step("Look at labels and branches", [this] { ShowNames(); });
    Step("Pull a label by export", [this] { PullByExport(); });
    Step("Take the placed project out of version control", [this] { TakeOldProjectOut(); });
    return Summary();
}

void TWorkday::Step(const std::string& title, const std::function<void()>& play) {
    Write("\n=== " + title + "\n");
    Messages_.clear();
    Failure_.clear();
    // Options stay as an operation leaves them; the next one is not to find them.
    for (tandrel::TCvsObject* cvs : {&Alice_, &Bob_, &Placer_}) cvs->ResetOptions();
    try {
        play();
    } catch (const std::exception& error) {
        Failure_ = error.what();
    }
    Write(Failure_.empty() ? "done\n" : "FAILED: " + Failure_ + "\n");
    Steps_.push_back({title, Failure_.empty()});
}

void TWorkday::Expect(bool condition, const std::string& what) {
    if (!condition && Failure_.empty()) Failure_ = what;
}

std::string TWorkday::AskClient(const std::string& arguments) {
    return support::RunProcess("cvs -Q -d \":local:" + Alice_.Path + "\" " + arguments,
                               Folder_.Path())
        .Output;
}

bool TWorkday::Summary() const {
    int failed = 0;
    Write("\n=== Summary\n");
    for (const TStep& step : Steps_) {
        Write((step.Done ? "  done    " : "  FAILED  ") + step.Title + "\n");
        failed += step.Done ? 0 : 1;
    }
    Write(std::to_string(Steps_.size()) + " steps, " + std::to_string(failed) + " failed\n");
    return failed == 0;
}

}  // namespace workday
