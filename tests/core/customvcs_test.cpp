// The abstract object itself: properties, per-file operations, preferences, messages.

#include <gtest/gtest.h>

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/registry.h"
#include "support/Files.h"
#include "tests/core/TestObject.h"
#include "tests/support/Japanese.h"

namespace {

using namespace tandrel;
using framework::FileExists;
using support::ReadBytes;
using support::WriteBytes;

/// Notes the list operations that per-file operations end in, with the files they were given.
class RecordingObject : public tests::TTestObject {
public:
    bool Add() override { return Note("add", TTestObject::Add()); }
    bool Remove() override { return Note("remove", TTestObject::Remove()); }
    bool Status() override { return Note("status", TTestObject::Status()); }
    bool Diff() override {
        MessageProc2("first line\r\nsec");
        MessageProc2("ond line\r\n\r\n");
        return Note("diff", TTestObject::Diff());
    }
    bool GetIsVCSstored() override { return Stored; }
    void LoadVCSProjectInfo() override { Set_Modulename("module"); }

    std::string Calls;
    bool Result = true;
    bool Stored = false;

private:
    bool Note(const char* name, bool) {
        Calls += name;
        for (const TFileItem& item : FileItems)
            Calls += " " + item.Directory + "|" + item.Name;
        Calls += "; ";
        return Result;
    }
};

class Customvcs : public testing::Test {
protected:
    support::TTempFolder Folder{"customvcs"};
    RecordingObject Obj;
};

TEST_F(Customvcs, StartsWithItsDefaults) {
    EXPECT_EQ(Obj.OutputListLimit, 50);
    EXPECT_EQ(Obj.ConnectionType, cnLocal);
    EXPECT_FALSE(Obj.Aborted || Obj.SuppressOutput || Obj.AnswerPrompts || Obj.ServerOnline() ||
                 Obj.OsMoveFilesFlag() || Obj.DeleteLocalFiles || Obj.IsVCSStoredFlag);
    EXPECT_EQ(Obj.WorkDirTree.CvsObj(), &Obj);
    EXPECT_EQ(Obj.Get_CurrentProcDirectory(), "");
    EXPECT_EQ(Obj.GetEnvVariable(), "");
}

TEST_F(Customvcs, RecordsTheKindOfOperationsWithoutABody) {
    using T = TCustomCvsObj;
    tests::TTestObject base;
    const std::pair<bool (T::*)(), TOperationType> plain[] = {
        {&T::Update, otUpdate},
        {&T::Add, otAdd},
        {&T::Remove, otRemove},
        {&T::Release, otRelease},
        {&T::Status, otStatus},
        {&T::Admin, otAdmin},
        {&T::Annotate, otAnnotate},
        {&T::Diff, otDiff},
        {&T::Edit, otEdit},
        {&T::Editors, otEditors},
        {&T::History, otHistory},
        {&T::Log, otLog},
        {&T::Rdiff, otRdiff},
        {&T::Unedit, otUnedit},
        {&T::watch, otWatch},
        {&T::Watchers, otWatchers},
        {&T::CreateLocalRepository, otCreateLRep}};
    const std::pair<bool (T::*)(bool), TOperationType> interactive[] = {
        {&T::CheckOut, otCheckOut}, {&T::Commit, otCommit}, {&T::Import, otImport},
        {&T::Export_cmd, otExport}, {&T::Login, otLogin},   {&T::Logout, otLogout},
        {&T::Create_Rtag, otRtag},  {&T::Del_Rtag, otRtag}, {&T::Create_Tag, otTag},
        {&T::Del_Tag, otTag}};
    for (const auto& [operate, kind] : plain) {
        base.Operation = otRlog;
        EXPECT_FALSE((base.*operate)());
        EXPECT_EQ(base.Operation, kind);
    }
    for (const auto& [operate, kind] : interactive) {
        base.Operation = otRlog;
        EXPECT_FALSE((base.*operate)(true));
        EXPECT_EQ(base.Operation, kind);
    }
    for (const auto abstract : {&T::PlaceProject, &T::PullProject, &T::WatchersBrowser,
                                &T::StatusBrowser, &T::CommitBrowser, &T::Preferences})
        EXPECT_THROW((base.*abstract)(), framework::EAbstractError);
    EXPECT_THROW(base.LoadVCSProjectInfo(), framework::EAbstractError);
    EXPECT_THROW(base.ReadCVSInfo(base.WorkDirTree, ""), framework::EAbstractError);
    EXPECT_THROW(base.ReadCVS_SystemFile(base.WorkDirTree, ""), framework::EAbstractError);
    base.Set_WorkingDirectory("");
    base.IsVCSStoredFlag = true;
    EXPECT_FALSE(base.TCustomCvsObj::RemoveProjectFrom());
    EXPECT_FALSE(base.IsVCSStoredFlag);
    EXPECT_FALSE(base.TCustomCvsObj::Login(false));
    EXPECT_EQ(base.Operation, otLogin);
    char temporary[MAX_PATH];
    ::GetTempPathA(sizeof temporary, temporary);
    EXPECT_EQ(base.WorkingDirectory(), temporary);
    EXPECT_THROW(base.TCustomCvsObj::GetIsVCSstored(), framework::EAbstractError);
    EXPECT_THROW(base.Get_Version(), framework::EAbstractError);
    EXPECT_THROW(base.HelpCommand(otAdd), framework::EAbstractError);
}

TEST_F(Customvcs, SplitsTheWorkingDirectory) {
    struct {
        const char *Value, *Module, *Root;
    } const cases[] = {
        {"C:\\A\\Mod\\", "Mod", "C:\\A\\"},
        {"C:\\A\\Mod", "Mod", "C:\\A\\"},
        {"C:\\MODULES\\mod", "mod", "C:\\"},  // the first occurrence counts, in any case
        {"D:\\Mod", "Mod", "D:\\"},
    };
    for (const auto& [value, module, root] : cases) {
        Obj.Set_WorkingDirectory(value);
        EXPECT_EQ(Obj.Modulename(), module) << value;
        EXPECT_EQ(Obj.ProjectRoot(), root) << value;
        EXPECT_EQ(Obj.WorkingDirectory(), value);
    }
    Obj.Set_WorkingDirectory("");
    EXPECT_EQ(Obj.Modulename(), "Mod") << "an empty directory changes nothing else";

    Obj.Set_ProjectRoot("C:\\new");
    EXPECT_EQ(Obj.WorkingDirectory(), "C:\\new\\Mod");
    Obj.Set_Modulename("other");
    EXPECT_EQ(Obj.WorkingDirectory(), "C:\\new\\other");
    Obj.Set_Modulename("");
    Obj.Set_ProjectRoot("C:\\new");
    EXPECT_EQ(Obj.WorkingDirectory(), "C:\\new");
}

TEST_F(Customvcs, KeepsTheDirectoryOfAWorkingCopyUnderAnotherName) {
    Obj.Stored = true;
    Obj.Set_WorkingDirectory("C:\\work\\branch-of-it");
    EXPECT_TRUE(Obj.IsVCSStoredFlag);
    EXPECT_EQ(Obj.Modulename(), "module");
    EXPECT_EQ(Obj.WorkingDirectory(), "C:\\work\\branch-of-it");
}

TEST_F(Customvcs, GivesABackupName) {
    EXPECT_EQ(Obj.Get_NewName(), "");
    Obj.Set_WorkingDirectory("C:\\A\\Mod\\");
    EXPECT_EQ(Obj.Get_NewName(), "");
    Obj.Set_WorkingDirectory("C:\\A\\Mod");
    EXPECT_EQ(Obj.Get_NewName(), "C:\\A\\Mod.precvs");
}

TEST_F(Customvcs, SplitsADirectoryWithLettersOfTwoBytes) {
    const tests::Japanese letters;
    const std::string source = tests::Source, so = source.substr(0, 2);
    for (const auto& [module, root] : {std::pair{source, "C:\\" + so + "\\"},
                                       {source, std::string("C:\\")},
                                       {so, "C:\\\x83\x83\\"},
                                       {std::string("X"), "C:\\" + source + "\\"}}) {
        Obj.Set_WorkingDirectory(root + module);
        EXPECT_EQ(Obj.Modulename(), module);
        EXPECT_EQ(Obj.ProjectRoot(), root);
        EXPECT_EQ(Obj.Get_NewName(), root + module + ".precvs");
    }
    Obj.Set_ProjectRoot("C:\\" + so);
    EXPECT_EQ(Obj.WorkingDirectory(), "C:\\" + so + "\\X");
    TFileItem& item = Obj.FileItems.AddFile("C:\\" + so + "\\" + source + ".c", Km_none);
    EXPECT_EQ(item.Directory + "|" + item.Name, "C:\\" + so + "|" + source + ".c");
}

TEST_F(Customvcs, FormatsMessagesOnlyWithArguments) {
    Obj.MessageProc("100% of %s");
    Obj.MessageProc("%s is %d%%", {"a %s", 5});
    EXPECT_EQ(Obj.Messages.All(), "100% of %s\r\na %s is 5%\r\n");
    Obj.OnMessage = nullptr;
    Obj.MessageProc("nobody listens");
}

TEST_F(Customvcs, PerFileOperationsUseAndEmptyTheList) {
    EXPECT_TRUE(Obj.AddFile("C:\\a\\b.c"));
    EXPECT_TRUE(Obj.StatusFile("C:\\a\\b.c"));
    Obj.Result = false;
    EXPECT_FALSE(Obj.AddFile("C:\\b.c"));
    EXPECT_EQ(Obj.Calls, "add C:\\a|b.c; status C:\\a|b.c; add C:|b.c; ");
    EXPECT_TRUE(Obj.FileItems.Empty());
}

TEST_F(Customvcs, RemovesAFileHereOnlyWhenAsked) {
    const std::string file = Folder / "a.c";
    WriteBytes(file, "text");
    EXPECT_TRUE(Obj.RemoveFile(file, false));
    EXPECT_TRUE(FileExists(file));
    EXPECT_TRUE(Obj.RemoveFile(file, true));
    EXPECT_FALSE(FileExists(file));
    EXPECT_TRUE(Obj.FileItems.Empty());
    Obj.Calls.clear();
    EXPECT_FALSE(Obj.RemoveFile(file, true));
    EXPECT_EQ(Obj.Calls, "") << "nothing is taken out of version control that was not deleted";
    EXPECT_EQ(Obj.Messages.All(), "file " + file + " not deleted\r\n");
    EXPECT_EQ(Obj.FileItems.Count(), 1) << "the list then stays";
}

TEST_F(Customvcs, MovesAFileItselfOrAfterTheMove) {
    const std::string from = Folder / "from.c", to = Folder / "to.c";
    WriteBytes(from, "text");
    Obj.DeleteLocalFiles = true;
    EXPECT_TRUE(Obj.MoveFile(from, to, true));
    EXPECT_FALSE(Obj.DeleteLocalFiles) << "or the file that was moved away would be deleted";
    EXPECT_FALSE(FileExists(from));
    EXPECT_EQ(ReadBytes(to), "text");
    const std::string calls =
        "remove " + Folder.Path() + "|from.c; add " + Folder.Path() + "|to.c; ";
    EXPECT_EQ(Obj.Calls, calls);
    Obj.Calls.clear();
    EXPECT_TRUE(Obj.MoveFile(from, to, false));
    EXPECT_EQ(Obj.Calls, calls);

    Obj.Calls.clear();
    EXPECT_FALSE(Obj.MoveFile(Folder / "gone.c", Folder / "new.c", true));
    EXPECT_FALSE(Obj.MoveFile(to, Folder / "new.c", false));
    const std::string complaint = "file " + (Folder / "new.c") + " is not Exists\r\n";
    EXPECT_EQ(Obj.Messages.All(), complaint + complaint);
    EXPECT_EQ(Obj.Calls, "");
    Obj.Result = false;
    EXPECT_FALSE(Obj.MoveFile(from, to, false));
    EXPECT_EQ(Obj.Calls, "remove " + Folder.Path() + "|from.c; ") << "no add after a failure";
}

TEST_F(Customvcs, ReportsAMoveThatFailed) {
    const std::string from = Folder / "from.c";
    WriteBytes(from, "text");
    const framework::FileHandle open(
        ::CreateFileA(from.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(Obj.MoveFile(from, Folder / "to.c", true));
    EXPECT_EQ(Obj.Messages.All(), "file " + from + " not moved to " + (Folder / "to.c") + "\r\n");
    EXPECT_TRUE(FileExists(from));
    EXPECT_EQ(Obj.Calls, "");
}

TEST_F(Customvcs, CapturesWholeLinesOfAFilesOutput) {
    EXPECT_EQ(Obj.DiffFileEx("a.c"), "first line\r\nsecond line\r\n");
    EXPECT_EQ(Obj.OutputList.load(), nullptr);
}

TEST_F(Customvcs, DeletesNothingForAnEmptyList) {
    WriteBytes(Folder / "kept.c", "text");
    Obj.FileItems.AddDir(Folder.Path());
    Obj.FileItems.AddExt("*.c", true, Km_none);
    EXPECT_TRUE(Obj.DeleteFileListsFiles()) << "nothing was to be deleted";
    EXPECT_TRUE(FileExists(Folder / "kept.c"));
    // Neither does an empty name stand for the folder, nor a folder's for a file.
    Obj.FileItems.Clear();
    Obj.FileItems.AddFile(Folder.Path(), Km_none);
    EXPECT_FALSE(Obj.DeleteFileListsFiles());
    EXPECT_TRUE(FileExists(Folder / "kept.c"));
}

TEST_F(Customvcs, SplitsItemsAsTheirKindAsks) {
    TFileItems items;
    items.AddFile("C:\\a b\\ c.txt", Km_kb);
    items.AddDir("C:\\dir\\sub");
    items.AddIgnore("C:\\dir\\out.o");
    items.AddExt("C:\\*.exe", false, Km_kb);
    EXPECT_EQ(items.GetItem(0).Directory + "|" + items.GetItem(0).Name, "C:\\a b| c.txt");
    EXPECT_EQ(items.GetItem(0).KeywordMode, Km_kb);
    EXPECT_EQ(items.GetItem(1).FileType, fi_dir);
    EXPECT_TRUE(items.GetItem(2).Ignore);
    EXPECT_EQ(items.GetItem(2).FileType, fi_igrnore);
    EXPECT_EQ(items.GetItem(3).Directory + "|" + items.GetItem(3).Name, "|C:\\*.exe");
    EXPECT_THROW(items.GetItem(4), framework::EListError);
}

TEST_F(Customvcs, FindsModelItemsInAnyCaseButNotInSubtrees) {
    TWorkDirItem& source = Obj.WorkDirTree.Add();
    source.Directory = "C:\\A";
    source.Name = "Src";
    TWorkDirItem& inner = source.Children->Add();
    inner.Directory = "C:\\A\\Src";
    inner.Name = "x.c";
    EXPECT_EQ(Obj.WorkDirTree.ItemExist("c:\\a", "SRC"), &source);
    EXPECT_EQ(Obj.WorkDirTree.ItemExist("C:\\A\\Src", "x.c"), nullptr);
    EXPECT_EQ(source.Children->CvsObj(), &Obj);
}

TEST_F(Customvcs, KeepsPreferencesInTheRegistry) {
    const std::string key =
        "Software\\TandrelTest\\Customvcs" + std::to_string(::GetCurrentProcessId());
    Obj.LoadPreferences(HKEY_CURRENT_USER, key);
    EXPECT_EQ(Obj.Server, "");
    Obj.Server = "server";
    Obj.Path = "/repository";
    Obj.UserName = "me";
    Obj.SetCVSROOT(":pserver:me@server:/repository");
    Obj.Set_Modulename("module");
    Obj.SavePreferences(HKEY_CURRENT_USER, key);

    tests::TTestObject other;
    other.UserName = "somebody else";
    other.LoadPreferences(HKEY_CURRENT_USER, key);
    EXPECT_EQ(other.Server, "server");
    EXPECT_EQ(other.Path, "/repository");
    EXPECT_EQ(other.UserName, "somebody else") << "what is set is not replaced";
    EXPECT_EQ(other.SpecialPort, "");
    EXPECT_EQ(other.CVSROOT(), ":pserver:me@server:/repository");
    EXPECT_EQ(other.Modulename(), "module");
    EXPECT_EQ(other.WorkingDirectory(), "") << "the field alone, not what hangs on it";

    other.Server.clear();
    other.SavePreferences(HKEY_CURRENT_USER, key);
    framework::TRegistry registry(HKEY_CURRENT_USER);
    ASSERT_TRUE(registry.OpenKeyReadOnly(key));
    EXPECT_EQ(registry.ReadString("SERVER"), "server") << "an empty field leaves the old value";
    registry.CloseKey();
    ::RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str());

    EXPECT_THROW(Obj.SavePreferences(nullptr, key), framework::ERegistryError);
    Obj.LoadPreferences(nullptr, key);
    EXPECT_EQ(Obj.Server, "server");
}

}  // namespace
