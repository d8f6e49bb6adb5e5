// While a command runs, whatever else is asked for is refused and leaves the run alone.

#include <gtest/gtest.h>

#include <functional>

#include "core/CvsExecute.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "framework/ui/views.h"
#include "tests/cvs/Sandbox.h"

namespace {

using namespace tandrel;

class RefusedOperations : public testing::Test {
protected:
    /// All that an operation could spoil for the one that runs.
    std::string State() const {
        return framework::Format(
            "%s|%s|%s|%d|%d|%d|%d|%d|%d|%d|%d|%d|%d",
            {Obj.CommandLine, Obj.WorkingDirectory(), Obj.Modulename(), Obj.ExitCode.load(),
             Obj.AnswerPrompts.load(), static_cast<int>(Obj.Operation), Obj.FileItems.Count(),
             Obj.LocalOnly, Obj.StatusVerbose + Obj.TagBranch + Obj.TagDelete + Obj.LogHeaderOnly,
             static_cast<int>(Obj.DiffSpec.Kind), Obj.DeleteLocalFiles + Obj.OsMoveFilesFlag(),
             Obj.LogListA.Count(), Obj.IsVCSStoredFlag});
    }
    void ExpectRefused(const char* name, const std::function<bool()>& operate) {
        SCOPED_TRACE(name);
        const std::string before = State();
        Obj.Messages.Clear();
        EXPECT_FALSE(operate());
        EXPECT_EQ(State(), before);
        ASSERT_EQ(Obj.Messages.Texts.size(), 1u) << Obj.Messages.All();
        EXPECT_TRUE(Obj.Messages.Texts.front().starts_with("Cvs execute "));
        EXPECT_TRUE(
            Obj.Messages.Texts.front().ends_with(" failed,reason execute already running \r\n"));
        EXPECT_EQ(Obj.Messages.All().find("say-and-sleep"), std::string::npos)
            << "it is not the running one that has failed";
    }
    void ExpectAllRefused();

    tests::TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work"), File = Copy + "\\a.c";
    tests::TSandboxObject Obj{Sandbox, Copy};
};

void RefusedOperations::ExpectAllRefused() {
    using T = TCvsObject;
    const std::pair<const char*, bool (T::*)()> plain[] = {
        {"Update", &T::Update},
        {"UpdateSpecial", &T::UpdateSpecial},
        {"UpdateSpecialAccepted", &T::UpdateSpecialAccepted},
        {"Add", &T::Add},
        {"Remove", &T::Remove},
        {"Release", &T::Release},
        {"ReleaseAccepted", &T::ReleaseAccepted},
        {"Status", &T::Status},
        {"Admin", &T::Admin},
        {"Annotate", &T::Annotate},
        {"Diff", &T::Diff},
        {"Edit", &T::Edit},
        {"Editors", &T::Editors},
        {"History", &T::History},
        {"Log", &T::Log},
        {"RLog", &T::RLog},
        {"Rdiff", &T::Rdiff},
        {"Unedit", &T::Unedit},
        {"watch", &T::watch},
        {"Watchers", &T::Watchers},
        {"CreateLocalRepository", &T::CreateLocalRepository},
        {"CreateLocalRepositoryAccepted", &T::CreateLocalRepositoryAccepted},
        {"PlaceProject", &T::PlaceProject},
        {"PlaceProjectAccepted", &T::PlaceProjectAccepted},
        {"PullProject", &T::PullProject},
        {"PullProjectAccepted", &T::PullProjectAccepted},
        {"RemoveProjectFrom", &T::RemoveProjectFrom},
        {"StatusBrowser", &T::StatusBrowser},
        {"Preferences", &T::Preferences},
        {"ParseLogInfo", &T::ParseLogInfo},
        {"ParseLogInfoForRevDate", &T::ParseLogInfoForRevDate},
    };
    const std::pair<const char*, bool (T::*)(bool)> interactive[] = {
        {"CheckOut", &T::CheckOut},
        {"Commit", &T::Commit},
        {"Import", &T::Import},
        {"Export_cmd", &T::Export_cmd},
        {"Login", &T::Login},
        {"Logout", &T::Logout},
        {"Create_Rtag", &T::Create_Rtag},
        {"Del_Rtag", &T::Del_Rtag},
        {"Create_Tag", &T::Create_Tag},
        {"Del_Tag", &T::Del_Tag},
    };
    for (const auto& [name, operate] : plain)
        ExpectRefused(name, [this, operate = operate] { return (Obj.*operate)(); });
    for (const auto& [name, operate] : interactive)
        for (const bool asks : {false, true})
            ExpectRefused(name, [this, operate = operate, asks] { return (Obj.*operate)(asks); });
    ExpectRefused("AddFile", [&] { return Obj.AddFile(File); });
    ExpectRefused("RemoveFile", [&] { return Obj.RemoveFile(File, true); });
    ExpectRefused("MoveFile", [&] { return Obj.MoveFile(File, Copy + "\\moved.c", true); });
    ExpectRefused("StatusFile", [&] { return Obj.StatusFile(File); });
    ExpectRefused("LogFile", [&] { return Obj.LogFile(File); });
    ExpectRefused("DiffFile", [&] { return Obj.DiffFile(true, File); });
    ExpectRefused("StatusFileEx", [&] { return !Obj.StatusFileEx(File).empty(); });
    ExpectRefused("LogFileEx", [&] { return !Obj.LogFileEx(File).empty(); });
    ExpectRefused("DiffFileEx", [&] { return !Obj.DiffFileEx(File).empty(); });
    ExpectRefused("a label", [&] { return !Obj.Get_CVSProjectTag(tsoAll).empty(); });
    ExpectRefused("a date", [&] { return Obj.Get_CVSFileRevDate() != 0; });
    EXPECT_TRUE(framework::FileExists(File));
    EXPECT_TRUE(framework::DirectoryExists(Copy + "\\CVS"));
}

TEST_F(RefusedOperations, LeaveTheRunAlone) {
    // What each of them would have to leave as it is.
    Obj.ConnectionType = cnPServer;
    Obj.Set_ServerOnline(true);
    Obj.StrictQuoting = true;
    Obj.TagName = "LABEL";
    Obj.DiffSpec.Kind = dctMostRecent;
    Obj.DeleteLocalFiles = true;
    Obj.FileItems.AddFile(File, Km_none);
    Obj.Operation = otWatch;
    for (auto* const event : {&Obj.OnPlaceProject, &Obj.OnPullProject, &Obj.OnCommit, &Obj.OnUpdate,
                              &Obj.OnRelease, &Obj.OnLogin, &Obj.OnLogout, &Obj.OnDiff})
        *event = [](TCvsObject&) { ADD_FAILURE() << "nothing is about to begin"; };
    int times = 0;
    Obj.OnMessage = [&, before = Obj.OnMessage](framework::TObject* sender,
                                                const std::string& text) {
        before(sender, text);
        if (text != "working")
            return;
        ++times;
        Obj.AnswerPrompts = true;
        ExpectAllRefused();
        Obj.AnswerPrompts = false;
    };
    Obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) {
        ++times;
        EXPECT_EQ(Obj.ExitCode, 0);
        ExpectAllRefused();
    };
    Obj.CvsExecutable = support::FakeClient();
    Obj.CommandLine = " say-and-sleep working 0";
    Obj.Execute(Copy);
    EXPECT_EQ(times, 2);
    EXPECT_EQ(Obj.ExitCode, 0);
}

class TTestText final : public framework::TTextView {
public:
    void Clear() override { Text.clear(); }
    void SetText(const std::string& text) override { Text = text; }
    std::string Text;
};

TEST_F(RefusedOperations, AreNotTakenForAnAnswer) {
    Sandbox.Write(File, "changed\r\n");
    tests::Touch(File);
    Obj.OutputListLimit = 1000;
    Obj.Load_WorkDirTree();
    TWorkDirItem& item = *Obj.WorkDirTree.ItemExist(Copy, "a.c");
    ASSERT_TRUE(item.Changed);
    TTestText text;
    item.OnSelect2(otStatus, text, false);
    const std::string status = text.Text;
    EXPECT_NE(status.find("Locally Modified"), std::string::npos) << status;
    int times = 0;
    Obj.ExecuteClass->OnEndProgress = [&](framework::TObject*) {
        ++times;
        item.OnSelect2(otStatus, text, true);
        EXPECT_EQ(text.Text, status) << "what there is";
        item.OnSelect2(otDiff, text, false);
        EXPECT_EQ(text.Text, "");
    };
    EXPECT_TRUE(Obj.Editors());
    EXPECT_EQ(times, 1);
    Obj.ExecuteClass->OnEndProgress = nullptr;
    item.OnSelect2(otDiff, text, false);
    EXPECT_NE(text.Text.find("> changed"), std::string::npos) << "it is asked for again";
}

}  // namespace
