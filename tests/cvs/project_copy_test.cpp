// Taking a project out of version control: the client's records go, everything else stays.

#include <gtest/gtest.h>
#include <windows.h>

#include <tlhelp32.h>

#include <algorithm>

#include "core/Cvs_files.h"
#include "core/ProjectFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "support/WaitUntil.h"
#include "tests/cvs/Sandbox.h"
#include "tests/framework/kept_entries.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Links.h"
#include "tests/support/Scanner.h"

namespace {

using namespace tandrel;
using framework::DirectoryExists;
using framework::FileExists;
using framework::FileHandle;
using framework::Format;

FileHandle OpenForOneself(const std::string& path) {
    FileHandle file(
        ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(file) << path;
    return file;
}

class ProjectCopy : public testing::Test {
protected:
    bool WasSaid(const std::string& text) const {
        return Obj.Messages.All().find(text) != std::string::npos;
    }
    static void ExpectClearedForm() {
        tests::ExpectForm("CVS ClearProjectData", [](framework::TForm& form) {
            EXPECT_EQ(tests::TextOf(form, "Label1"),
                      "CVS folders deleted from project successfuly completed");
            tests::Click(form, "BitBtn1");
        });
    }

    tests::TSandbox Sandbox;
    tests::TSandboxObject Obj{Sandbox};
    const std::string Root = Sandbox.Folder / "work", Copy = Root + "\\mod";
};

TEST_F(ProjectCopy, MovesTheFolderAside) {
    Obj.Set_WorkingDirectory(Copy);
    EXPECT_FALSE(Obj.CreateCopyProject());
    EXPECT_EQ(Obj.Messages.All(), "Create copy of directory(" + Copy +
                                      ")  is failed,Working directory is not exists \r\n");
    Sandbox.Write(Copy + "\\100%s\\a.c", "a\r\n");
    Obj.Messages.Clear();
    EXPECT_TRUE(Obj.CreateCopyProject());
    EXPECT_EQ(Obj.Messages.All(),
              Format("For directory(%s) created copy =  %s  \r\n", {Copy, Copy + ".precvs"}));
    EXPECT_FALSE(DirectoryExists(Copy));
    EXPECT_EQ(Sandbox.Read(Copy + ".precvs\\100%s\\a.c"), "a\r\n");
    // Never on top of something.
    Sandbox.Write(Copy + "\\a.c", "another\r\n");
    Obj.Messages.Clear();
    try {
        Obj.CreateCopyProject();
        ADD_FAILURE() << "it cannot be moved";
    } catch (const framework::EOSError& error) {
        EXPECT_NE(error.ErrorCode, 0u);
    }
    EXPECT_EQ(Obj.Messages.All(),
              Format("Copy directory(%s) to  %s is failed \r\n", {Copy, Copy + ".precvs"}));
    EXPECT_EQ(Sandbox.Read(Copy + "\\a.c"), "another\r\n");
    EXPECT_FALSE(FileExists(Copy + ".precvs\\a.c"));
}

TEST_F(ProjectCopy, ListsFilesButNoFoldersAndNothingBehindLinks) {
    for (const char* name : {"b.c", "hidden.c", "read only.c", "sub\\deep\\d.c", "sub\\e.c"})
        Sandbox.Write(Copy + "\\" + name, "");
    ::SetFileAttributesA((Copy + "\\hidden.c").c_str(),
                         FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    ::SetFileAttributesA((Copy + "\\read only.c").c_str(), FILE_ATTRIBUTE_READONLY);
    framework::ForceDirectories(Copy + "\\empty");
    Sandbox.Write(Root + "\\outside\\x.c", "");
    tests::MakeLink(Copy, "link", "../outside");
    framework::TStringList list;
    list.Add("as it was");
    TCvsObject::CreateCopyList(Copy, list);
    TCvsObject::CreateCopyList(Root + "\\nowhere", list);
    std::vector<std::string> names;
    for (const std::string& path : list)
        names.push_back(path.starts_with(Copy) ? path.substr(Copy.size() + 1) : path);
    EXPECT_EQ(names, (std::vector<std::string>{"as it was", "b.c", "hidden.c", "read only.c",
                                               "sub\\deep\\d.c", "sub\\e.c"}));
    tests::RemoveLink(Copy, "link");
}

// --- records ----------------------------------------------------------------------------------

TEST_F(ProjectCopy, LosesAllRecordsAndNothingElse) {
    for (const bool keepIgnore : {true, false}) {
        support::DeleteFolder(Root);
        Sandbox.CheckOut("work");
        Sandbox.Write(Copy + "\\.cvsignore", "*.x\r\n");
        Sandbox.Write(Copy + "\\sub\\.cvsignore", "*.x\r\n");
        Sandbox.Write(Copy + "\\plain\\cvs\\own.c", "own\r\n");
        Sandbox.Client("-Q tag -b BRANCH", Copy);
        Sandbox.Client("-Q update -r BRANCH", Copy);
        Sandbox.Client("-Q edit", Copy);
        ASSERT_TRUE(FileExists(Copy + "\\CVS\\Tag") && DirectoryExists(Copy + "\\CVS\\Base"));
        for (const char* name : {"Entries.Extra", "Entries.Old", "Entries.Extra.Old", "Entries.Log",
                                 "Entries.Backup", "Notify.tmp"})
            Sandbox.Write(Copy + "\\CVS\\" + name, "");
        Obj.Set_WorkingDirectory(Copy);
        Obj.KeepCvsIgnore = keepIgnore;
        Obj.Messages.Clear();
        ExpectClearedForm();
        EXPECT_TRUE(Obj.RemoveProjectFrom()) << Obj.Messages.All();
        EXPECT_FALSE(Obj.IsVCSStoredFlag);
        EXPECT_FALSE(DirectoryExists(Copy + "\\CVS") || DirectoryExists(Copy + "\\sub\\CVS"));
        EXPECT_EQ(FileExists(Copy + "\\.cvsignore"), keepIgnore);
        EXPECT_EQ(FileExists(Copy + "\\sub\\.cvsignore"), keepIgnore);
        EXPECT_EQ(Sandbox.Read(Copy + "\\sub\\c.c"), "c\r\n");
        EXPECT_EQ(Sandbox.Read(Copy + "\\plain\\cvs\\own.c"), "own\r\n");
        std::size_t at = 0;
        for (const char* name : {"Entries", "Entries.Extra", "Entries.Old", "Repository",
                                 "Entries.Extra.Old", "Root"}) {
            at = Obj.Messages.All().find("File " + Copy + "\\CVS\\" + name + " deleted \r\n", at);
            EXPECT_NE(at, std::string::npos) << name << Obj.Messages.All();
        }
        EXPECT_EQ(WasSaid("File " + Copy + "\\.cvsignore deleted "), !keepIgnore);
    }
    EXPECT_TRUE(DirectoryExists(Sandbox.Repository + "\\mod"));
}

TEST_F(ProjectCopy, TellsWhichRecordsAreInUseAndGoesOn) {
    Sandbox.CheckOut("work");
    Sandbox.Write(Copy + "\\CVS\\mine.txt", "not the client's\r\n");
    Obj.Set_WorkingDirectory(Copy);
    EXPECT_FALSE(Obj.RemoveProjectFrom()) << "and no form";
    EXPECT_TRUE(WasSaid("I/O Error = " + Copy + "\\CVS: ")) << Obj.Messages.All();
    EXPECT_EQ(std::ranges::count_if(Obj.Messages.Texts,
                                    [](const std::string& text) {
                                        return text.starts_with("I/O Error = ") &&
                                               text.ends_with(". \r\n");
                                    }),
              1);
    EXPECT_EQ(Sandbox.Read(Copy + "\\CVS\\mine.txt"), "not the client's\r\n");
    EXPECT_FALSE(DirectoryExists(Copy + "\\sub\\CVS"));

    support::DeleteFolder(Root);
    Sandbox.CheckOut("work");
    Obj.Messages.Clear();
    const std::string held = Copy + "\\sub\\CVS\\Repository";
    const tests::TScanner noWaiting(0);
    FileHandle open = OpenForOneself(held);
    EXPECT_FALSE(Obj.DeleteCVSDirs(Copy));
    EXPECT_TRUE(WasSaid("I/O Error = " + held + ": ")) << Obj.Messages.All();
    EXPECT_FALSE(WasSaid("File " + held));
    EXPECT_FALSE(DirectoryExists(Copy + "\\CVS"));
    EXPECT_THROW(Obj.TryDeleteFile(Copy + "\\sub\\CVS", "Repository"), framework::EInOutError);
    open.Reset();
    Obj.Messages.Clear();
    Obj.TryDeleteFile(Copy + "\\sub\\CVS", "Repository");
    Obj.TryDeleteFile(Copy + "\\sub\\CVS", "Repository");
    EXPECT_EQ(Obj.Messages.All(), "File " + held + " deleted \r\n") << "told once";
}

TEST_F(ProjectCopy, DoesNotTakeTheHostsErrorsForTheDisks) {
    Sandbox.CheckOut("work");
    Obj.Set_WorkingDirectory(Copy);
    int told = 0;
    Obj.OnMessage = [&](framework::TObject*, const std::string&) {
        ++told;
        throw framework::EInOutError(ERROR_DISK_FULL, "the host's protocol");
    };
    EXPECT_THROW(Obj.DeleteCVSDirs(Copy), framework::EInOutError);
    EXPECT_EQ(told, 1);
}

TEST_F(ProjectCopy, DoesNotReachThroughLinks) {
    Sandbox.CheckOut("other");
    Sandbox.Write(Copy + "\\a.c", "a\r\n");
    const std::string other = Sandbox.Folder / "other\\mod";
    Sandbox.Write(other + "\\.cvsignore", "*.x\r\n");
    tests::MakeLink(Copy, "link", "../../other/mod");
    tests::MakeLink(Copy, "CVS", "../../other/mod/CVS");
    Obj.KeepCvsIgnore = false;
    EXPECT_TRUE(Obj.DeleteCVSDirs(Copy)) << Obj.Messages.All();
    EXPECT_EQ(Obj.Messages.All(), "");
    EXPECT_TRUE(FileExists(other + "\\CVS\\Entries") && FileExists(other + "\\.cvsignore"));
    framework::ForceDirectories(Root + "\\CVS");
    tests::MakeLink(Root + "\\CVS", "Base", "../../other/mod");
    EXPECT_FALSE(Obj.DeleteCVSDirs(Root));
    EXPECT_TRUE(FileExists(other + "\\a.c"));
    tests::RemoveLink(Copy, "link");
    tests::RemoveLink(Copy, "CVS");
    tests::RemoveLink(Root + "\\CVS", "Base");
}

TEST_F(ProjectCopy, ReachesWhatACloudKeeps) {
    // As a cloud's service marks all folders, those of the records, too.
    const std::string kept = Copy + "\\kept";
    const auto make = [&] {
        Sandbox.Write(kept + "\\a.c", "a\r\n");
        for (const char* name : {"\\CVS\\Entries", "\\kept below\\CVS\\Root"})
            Sandbox.Write(kept + name, "");
    };
    make();
    Obj.Set_WorkingDirectory(Copy);
    for (const bool link : {true, false}) {
        const KeptEntries marked(link ? IO_REPARSE_TAG_MOUNT_POINT : KeptEntries::Cloud);
        Obj.Load_WorkDirTree();
        EXPECT_EQ(Obj.WorkDirTree.ItemExist(Copy, "kept")->Children->Count(), link ? 0 : 2);
        framework::TStringList list;
        TCvsObject::CreateCopyList(Copy, list);
        EXPECT_EQ(list.Count(), link ? 0 : 3);
        EXPECT_TRUE(Obj.DeleteCVSDirs(Copy));
        EXPECT_EQ(DirectoryExists(kept + "\\CVS"), link);
        EXPECT_EQ(DirectoryExists(kept + "\\kept below\\CVS"), link);
        make();
        EXPECT_EQ(RevoveDirExt(kept), !link);
        EXPECT_EQ(FileExists(kept + "\\a.c"), link);
    }
}

TEST_F(ProjectCopy, LeavesTheRepositoryWhenItIsNotMeant) {
    const std::string module = Sandbox.Repository + "\\mod";
    Sandbox.Write(Sandbox.Folder / "beside\\a.c", "a\r\n");
    struct {
        TConnectionType Type;
        bool Remove;
        const char* Module;
        bool Told;
    } const cases[] = {
        {cnLocal, false, "mod", false},     {cnPServer, true, "mod", false},
        {cnSSH, true, "mod", false},        {cnLocal, true, "", true},
        {cnLocal, true, "..", true},        {cnLocal, true, ".", true},
        {cnLocal, true, "../beside", true}, {cnLocal, true, "mod\\..\\..\\beside", true},
        {cnLocal, true, "mod\\.. ", true},  {cnLocal, true, "\\", true},
        {cnLocal, true, "mod/", true},      {cnLocal, true, "nowhere", true},
        {cnLocal, true, "m*d", true},       {cnLocal, true, "cvsroot/", true},
        {cnLocal, true, "CVSROOT", true},   {cnLocal, true, "CVSROOT.", true},
    };
    for (const auto& [type, remove, name, told] : cases) {
        SCOPED_TRACE(name);
        framework::ForceDirectories(Copy);
        Obj.Set_WorkingDirectory("");
        Obj.Set_ProjectRoot(Copy);
        Obj.Set_Modulename(name);
        Obj.ConnectionType = type;
        Obj.RemoveFromRepository = remove;
        Obj.Messages.Clear();
        ExpectClearedForm();
        EXPECT_TRUE(Obj.RemoveProjectFrom()) << Obj.Messages.All();
        EXPECT_EQ(WasSaid("directory(" + Sandbox.Repository + "\\"), told) << Obj.Messages.All();
        EXPECT_EQ(WasSaid(") is not exist   \r\n"), told) << Obj.Messages.All();
        EXPECT_FALSE(WasSaid(" deleted ")) << Obj.Messages.All();
        ASSERT_TRUE(FileExists(module + "\\sub\\c.c,v"));
        ASSERT_TRUE(FileExists(Sandbox.Repository + "\\CVSROOT\\modules"));
        ASSERT_TRUE(FileExists(Sandbox.Folder / "beside\\a.c"));
    }
}

TEST_F(ProjectCopy, DeletesTheModuleWhenItIsMeant) {
    Obj.Set_WorkingDirectory(Sandbox.CheckOut("work"));
    Obj.RemoveFromRepository = true;
    Sandbox.Write(Sandbox.Repository + "\\CVSROOT.old\\a.c,v", "");
    Obj.Set_Modulename("CVSROOT.old");
    ExpectClearedForm();
    EXPECT_TRUE(Obj.RemoveProjectFrom()) << Obj.Messages.All();
    EXPECT_FALSE(DirectoryExists(Sandbox.Repository + "\\CVSROOT.old"));
    Obj.Set_Modulename("mod/sub");
    ExpectClearedForm();
    EXPECT_TRUE(Obj.RemoveProjectFrom()) << Obj.Messages.All();
    EXPECT_TRUE(WasSaid("Directory  " + Sandbox.Repository + "\\mod\\sub deleted \r\n"));
    EXPECT_FALSE(DirectoryExists(Sandbox.Repository + "\\mod\\sub"));
    EXPECT_TRUE(FileExists(Sandbox.Repository + "\\mod\\a.c,v"));
}

// --- the ignore list in an editor -------------------------------------------------------------

/// The processes that this one started and that still run, by the name of their program.
std::vector<DWORD> Children(const std::string& program) {
    const FileHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32 process{};
    process.dwSize = sizeof process;
    std::vector<DWORD> children;
    for (BOOL more = ::Process32First(snapshot.Get(), &process); more;
         more = ::Process32Next(snapshot.Get(), &process))
        if (process.th32ParentProcessID == ::GetCurrentProcessId() && program == process.szExeFile)
            children.push_back(process.th32ProcessID);
    return children;
}

/// The visible window of a process whose title begins like this.
struct TWanted {
    DWORD Process;
    std::string Title;
    HWND Window;
};

BOOL CALLBACK Compare(HWND window, LPARAM parameter) {
    auto& wanted = *reinterpret_cast<TWanted*>(parameter);
    DWORD process = 0;
    char title[256] = "";
    ::GetWindowThreadProcessId(window, &process);
    ::GetWindowTextA(window, title, sizeof title);
    if (process != wanted.Process || !::IsWindowVisible(window) ||
        !std::string(title).starts_with(wanted.Title))
        return TRUE;
    wanted.Window = window;
    return FALSE;
}

TEST_F(ProjectCopy, OpensTheIgnoreListOfTheSelection) {
    const std::string folder = Root + "\\with blanks", list = folder + "\\.cvsignore";
    Sandbox.Write(folder + "\\here.c", "");
    Obj.Set_ProjectRoot(folder);
    Obj.Set_Modulename("");
    struct {
        bool Ignore, Keep;
        const char* Content;
    } const cases[] = {{true, false, "out\r\n*.o\r\n.cvsignore\r\n"},
                       {false, false, ".cvsignore\r\n"},
                       {true, true, "*.x\r\n!\r\nout\r\n*.o\r\n.cvsignore\r\n"}};
    for (const auto& [ignore, keep, content] : cases) {
        Sandbox.Write(list, "*.x\r\nhere.c\r\n*.o\r\n!\r\n.cvsignore\r\n");
        Obj.KeepIgnorePatterns = keep;
        Obj.FileItems.Clear();
        Obj.FileItems.AddFile(folder + "\\a.c", Km_none);
        if (ignore)
            Obj.FileItems.AddIgnore(folder + "\\out");
        Obj.FileItems.AddExt("*.o", ignore, Km_none);
        Obj.ExploreIgnore();
        EXPECT_EQ(Sandbox.Read(list), content);
        const auto editors = Children("notepad.exe");
        ASSERT_EQ(editors.size(), 1u);
        const framework::KernelHandle editor(::OpenProcess(SYNCHRONIZE, FALSE, editors.front()));
        TWanted wanted{editors.front(), ".cvsignore", nullptr};
        EXPECT_TRUE(support::WaitUntil([&] {
            ::EnumWindows(Compare, reinterpret_cast<LPARAM>(&wanted));
            return wanted.Window != nullptr;
        }));
        ::PostMessageW(wanted.Window, WM_CLOSE, 0, 0);
        ASSERT_EQ(::WaitForSingleObject(editor.Get(), 10000), WAIT_OBJECT_0);
    }
    Obj.Set_ProjectRoot(Root + "\\nowhere");
    EXPECT_THROW(Obj.ExploreIgnore(), framework::EInOutError);
    EXPECT_TRUE(Children("notepad.exe").empty());
}

// --- preferences ------------------------------------------------------------------------------

class CvsPreferences : public testing::Test {
protected:
    ~CvsPreferences() override { ::RegDeleteKeyA(HKEY_CURRENT_USER, Key.c_str()); }

    const std::string Key =
        "Software\\TandrelTest\\ProjectCopy" + std::to_string(::GetCurrentProcessId());
    framework::TRegistry Registry{HKEY_CURRENT_USER};
};

TEST_F(CvsPreferences, AreKeptInTheRegistry) {
    char before[16];
    const DWORD length = ::GetEnvironmentVariableA("CVS_RSH", before, sizeof before);
    {
        TCvsObject obj;
        obj.LoadPreferences(HKEY_CURRENT_USER, Key);
        EXPECT_TRUE(obj.PruneEmptyDirs) << "there is nothing to load";
        ASSERT_TRUE(Registry.OpenKey(Key, true));
        for (const auto& [text, prune] :
             {std::pair{"0", false}, {"1", true}, {"true", false}, {"", false}, {"1 ", false}}) {
            Registry.WriteString("PRUNE", text);
            obj.PruneEmptyDirs = !prune;
            obj.LoadPreferences(HKEY_CURRENT_USER, Key);
            EXPECT_EQ(obj.PruneEmptyDirs, prune) << text;
        }
        obj.Server = "host";
        obj.SavePreferences(HKEY_CURRENT_USER, Key);
        EXPECT_EQ(Registry.ReadString("PRUNE"), "0");
        EXPECT_EQ(Registry.ReadString("SERVER"), "host");
        EXPECT_FALSE(Registry.ValueExists("CVS_RSH")) << "an empty one is not written";
    }
    Registry.WriteString("CVS_RSH", "plink -i key");
    TCvsObject obj;
    obj.LoadPreferences(HKEY_CURRENT_USER, Key);
    EXPECT_EQ(obj.CVS_RSH() + " " + obj.Server, "plink -i key host");
    EXPECT_EQ(::GetEnvironmentVariableA("CVS_RSH", before, sizeof before), length);
    obj.PruneEmptyDirs = true;
    obj.SavePreferences(HKEY_CURRENT_USER, Key);
    EXPECT_EQ(Registry.ReadString("PRUNE") + Registry.ReadString("CVS_RSH"), "1plink -i key");
    EXPECT_THROW(obj.SavePreferences(nullptr, Key), framework::ERegistryError);
}

// --- bringing files back ----------------------------------------------------------------------

BOOL WINAPI NoSpaceToMove(const char*, const char*, DWORD) {
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

class MoveFileExt2 : public testing::Test {
protected:
    ~MoveFileExt2() override { framework::FileFunctions() = {}; }

    std::string From(const std::string& name) const { return Folder / ("from\\" + name); }
    std::string To(const std::string& name) const { return Folder / ("to\\" + name); }
    /// What is in a file; "-" when there is none.
    static std::string Bytes(const std::string& path) {
        return FileExists(path) ? support::ReadBytes(path) : "-";
    }
    bool Bring(bool deleteSource) {
        framework::TStringList from, to;
        TCvsObject::CreateCopyList(Folder / "from", from);
        TCvsObject::CreateCopyList(Folder / "to", to);
        Failures.clear();
        return tandrel::MoveFileExt2(Folder / "from\\", Folder / "to", from, to, deleteSource,
                                     [this](const std::string& path, const std::string& reason) {
                                         EXPECT_NE(reason, "");
                                         Failures.push_back(path);
                                     });
    }

    const support::TTempFolder Folder{"bring"};
    std::vector<std::string> Failures;
};

TEST_F(MoveFileExt2, PutsEachFileInItsPlace) {
    for (const bool move : {true, false}) {
        SCOPED_TRACE(move);
        support::WriteBytes(From("same"), "as it is");
        support::WriteBytes(To("SAME"), "as it is");
        ::SetFileAttributesA(From("same").c_str(), FILE_ATTRIBUTE_READONLY);
        support::WriteBytes(From("sub\\other"), "mine");
        support::WriteBytes(To("sub\\other"), "theirs, and longer");
        ::SetFileAttributesA(To("sub\\other").c_str(), FILE_ATTRIBUTE_READONLY);
        support::WriteBytes(From("new\\deep\\missing"), "only mine");
        support::WriteBytes(To("theirs"), "only theirs");
        EXPECT_TRUE(Bring(move));
        EXPECT_TRUE(Failures.empty());
        EXPECT_EQ(Bytes(To("same")) + "|" + Bytes(To("sub\\other")) + "|" +
                      Bytes(To("new\\deep\\missing")) + "|" + Bytes(To("theirs")),
                  "as it is|mine|only mine|only theirs");
        for (const char* name : {"same", "sub\\other", "new\\deep\\missing"})
            EXPECT_EQ(FileExists(From(name)), !move) << name;
        support::DeleteFolder(Folder / "from");
        support::DeleteFolder(Folder / "to");
    }
}

TEST_F(MoveFileExt2, LeavesWholeAtTheSourceWhatItCannotBring) {
    for (const char* name : {"open", "same and open", "folder in the way", "good"})
        support::WriteBytes(From(name), "mine");
    support::WriteBytes(To("open"), "theirs");
    support::WriteBytes(To("same and open"), "mine");
    framework::ForceDirectories(To("folder in the way"));
    const tests::TScanner noWaiting(0);
    FileHandle open = OpenForOneself(From("open")), same = OpenForOneself(From("same and open"));
    EXPECT_FALSE(Bring(true));
    open.Reset();
    same.Reset();
    std::ranges::sort(Failures);
    EXPECT_EQ(Failures, (std::vector<std::string>{From("folder in the way"), From("open"),
                                                  From("same and open")}));
    for (const std::string& path : Failures)
        EXPECT_EQ(Bytes(path), "mine");
    EXPECT_EQ(Bytes(To("open")), "theirs");
    EXPECT_EQ(Bytes(To("good")) + Bytes(From("good")), "mine-") << "the others are brought";

    framework::FileFunctions().Move = NoSpaceToMove;
    support::WriteBytes(To("open"), "theirs");
    EXPECT_FALSE(Bring(true));
    EXPECT_EQ(Bytes(From("open")), "mine");
    EXPECT_EQ(Bytes(To("open")), "theirs");
    framework::FileFunctions() = {};
    ::RemoveDirectoryA(To("folder in the way").c_str());
    EXPECT_TRUE(Bring(true)) << "later";
}

TEST_F(MoveFileExt2, ThenEmptyFoldersGo) {
    framework::ForceDirectories(From("a\\b\\c"));
    framework::ForceDirectories(From("link's place"));
    support::WriteBytes(From("d\\e\\file"), "");
    support::WriteBytes(Folder / "outside\\file", "");
    EXPECT_FALSE(RemoveEmptyDirs(Folder / "from"));
    EXPECT_FALSE(DirectoryExists(From("a")));
    EXPECT_TRUE(FileExists(From("d\\e\\file")));
    ::DeleteFileA(From("d\\e\\file").c_str());
    framework::ForceDirectories(Folder / "outside\\empty");
    tests::MakeLink(From("d"), "link", "../../outside");
    EXPECT_FALSE(RemoveEmptyDirs(Folder / "from")) << "a link is not nothing";
    EXPECT_TRUE(FileExists(Folder / "outside\\file") && DirectoryExists(From("d\\link\\empty")));
    tests::RemoveLink(From("d"), "link");
    framework::ForceDirectories(Folder / "nothing\\at all");
    EXPECT_TRUE(RemoveEmptyDirs(Folder / "nothing"));
    EXPECT_FALSE(DirectoryExists(Folder / "nothing"));
}

}  // namespace
