#include "own_forms.h"

#include "core/CvsExecute.h"
#include "core/Cvs_utils.h"
#include "core/Progress_frm.h"
#include "cvs/Dialogs.h"
#include "forms/Browsers.h"
#include "forms/CrLabelFrm.h"
#include "forms/Diff_Frm.h"
#include "forms/Filter_frm.h"
#include "forms/Frames.h"
#include "forms/InitFrm.h"
#include "forms/Msg_frm.h"
#include "forms/Pref_Frm.h"
#include "forms/SelTagFrm.h"
#include "forms/StatusBrowser_frm.h"
#include "tools/Exec_obj.h"
#include "tools/Exec_threads.h"
#include "tools/tools_frm.h"

namespace {

using namespace tandrel;

/// A step that asks for the message in one line.
class TOwnStep : public TValidatedForm {
public:
    TOwnStep() : TValidatedForm("Own step") {
        TFormRows rows(*this, 300, 80);
        Edit_ = rows.Field<framework::TEdit>("Edit1", "Message", 0);
        AddButtons(rows);
        auto& delay = MakeDelay(*this, "Timer1", 100, [this] { SetValid(IsValid()); });
        Edit_->OnChange = [&delay](framework::TObject*) { delay.Restart(); };
    }
    void LoadFormData() override {
        Edit_->SetText(CvsObject->CommitMessage);
        SetValid(IsValid());
    }
    void SaveFormData() override { CvsObject->CommitMessage = Edit_->Text() + "!"; }

private:
    bool IsValid() const { return !Edit_->Text().empty(); }

    TField<framework::TEdit> Edit_;
};

bool UseFrame(TCvsObject& cvs) {
    TFrame_Frm frame("By hand");
    for (int i = 0; i < 2; ++i)
        frame.AddFrame(NewForm<TOwnStep>, cvs);
    frame.ShowFirst();
    frame.BitBtn4Click();
    const bool second = frame.Text() == "By hand-step 2";
    frame.BitBtn3Click(nullptr);
    TOwnStep step;
    frame.FrameStatusChange(step, false);
    frame.SetBtnEnablen();
    frame.SaveFrameFalues();
    return second && frame.CheckValidate() && frame.Text() == "By hand-step 1";
}

bool UseBrowser(TCvsObject& cvs) {
    TBrowser_Form browser("By hand");
    browser.AddTabs(NewForm<TStatusBrowser_Form>, cvs);
    browser.AddTabs(NewForm<TFilter_FormReadOnly>, cvs);
    auto& page = *StatusBrowser_Form;
    page.LoadRootNodes();
    page.LoadRootLw();
    page.Timer2Timer();
    page.HighlightDiffText();
    page.PageControl1Change();
    page.ListView1DblClick();
    page.StatusItemClick(page.FindComponent("LogItem"));
    // Everything is in its place without another call.
    const auto* tree = page.Find<framework::TTreeView>("TreeView1");
    return page.StatusOk() && page.Width() > tree->Width() && tree->Height() == page.Height() &&
           tree->Height() > 300;
}

}  // namespace

bool UseForms(TCvsObject& cvs) {
    cvs.CommitMessage = "a message";
    TCrRepos_Frm create;
    create.CvsObject = &cvs;
    create.CheckIsEmptyDir();
    create.SetCVSRoot();
    TPreferences_Form preferences;
    preferences.CvsObject = &cvs;
    preferences.LoadFormData();
    preferences.CheckCVSDir("");
    return Show_Frames("Own wizard", {NewForm<TOwnStep>}, cvs) &&
           cvs.CommitMessage == "a message!" && UseFrame(cvs) && UseBrowser(cvs);
}

bool UseRunner() {
    framework::TMemoryStream stream;
    std::string told;
    int stops = 0, ends = 0;
    TExecuteClass runner;
    runner.FStream = &stream;
    runner.FRedirect = true;
    runner.OnOutPutMessage = [&](framework::TObject*, const std::string& text) { told += text; };
    runner.OnStopTimer = [&](framework::TObject*) { ++stops; };
    runner.OnFinish = [&](framework::TObject*) { ++ends; };
    runner.Execute("C:\\", "cmd /c echo out");
    runner.StopTimer(&runner);
    runner.OnTerminate(&runner);
    {
        Exec_obj::TProgressThread worker(true, runner);
        worker.Msg = worker.ErrMsg = worker.ConfText = " more";
        worker.AMessageProc();
        worker.AErrorMessageProc();
        worker.AProcessConfirm();
    }
    // A run in a console would wait for somebody to press Enter.
    void (TExecuteClass::*const inConsole)() = &TExecuteClass::ExecuteCommand;
    void (Exec_obj::TErrorReadThread::*const errors)() =
        &Exec_obj::TErrorReadThread::AErrorMessageProc;
    void (Exec_obj::TProgressThread::*const run)() = &Exec_obj::TProgressThread::ExecuteCmd;
    return inConsole && errors && run && stops == 1 && ends == 2 &&
           stream.Bytes().starts_with("out") && told.starts_with("out") && told.ends_with(" more");
}

bool UseEngine(tandrel::TCvsObject& cvs) {
    using namespace tandrel;
    // What a host may call or listen to by hand.
    const auto terminate = &TCvsExecuteClass::OnTerminate;
    const auto stop = &TCvsExecuteClass::OnStopTimer;
    const auto command = &Progress_frm::TProgressThread::ExecuteCommand;
    const auto message = &Progress_frm::TProgressThread::SendMsg;
    const auto chunk = &Progress_frm::TProgressThread::SendMsg2;
    int ended = 0;
    cvs.ExecuteClass->OnEndProgress = [&](framework::TObject*) { ++ended; };
    (cvs.ExecuteClass.get()->*terminate)(nullptr);
    (cvs.ExecuteClass.get()->*stop)(nullptr);
    cvs.ExecuteClass->OnEndProgress = nullptr;
    TWorkDirItem& item = cvs.WorkDirTree.Add();
    item.StatusText = item.DiffText = item.LogText = "as fetched";
    item.DiffLoaded = true;
    cvs.WorkDirTree.Clear();
    framework::TStringList files;
    TCvsObject::CreateCopyList(cvs.WorkingDirectory(), files);
    return command && message && chunk && ended == 1 && files.Count() > 0 &&
           LastPos("a-b-c", "-") == 4 && RemoveBeforeString("-kb", "-") == "kb";
}
