// The model of a working copy: its views, its ignore lists, its loading.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/files.h"
#include "framework/base/format.h"
#include "framework/base/handle.h"
#include "framework/base/text.h"
#include "framework/ui/views.h"
#include "support/Files.h"
#include "tests/core/TestObject.h"

namespace {

using namespace tandrel;

/// Views that keep what they are told.
class TTestNode final : public framework::TTreeNode {
public:
    TTreeNode& AddChild(const std::string& text) override {
        Nodes.push_back(std::make_unique<TTestNode>());
        Nodes.back()->Text = text;
        return *Nodes.back();
    }
    void DeleteChildren() override { Nodes.clear(); }
    void SetData(TObject* data) override { Data_ = data; }
    TObject* Data() const override { return Data_; }
    void SetImages(int image, int selected, int state) override {
        Images = framework::Format("%d %d %d", {image, selected, state});
    }
    void SetHasChildren(bool hasChildren) override { HasChildren = hasChildren; }
    void SetSelected(bool selected) override { Selections += selected ? "on " : "off "; }

    std::vector<std::unique_ptr<TTestNode>> Nodes;
    std::string Text, Images, Selections;
    bool HasChildren = false;

private:
    TObject* Data_ = nullptr;
};

class TTestRows final : public framework::TListRows {
public:
    void BeginUpdate() override { ++Brackets; }
    void EndUpdate() override { --Brackets; }
    void Clear() override {
        EXPECT_EQ(Brackets, 1);
        Rows.clear();
    }
    void Add(framework::TListRow row) override {
        EXPECT_EQ(Brackets, 1) << "rows are added between BeginUpdate and EndUpdate";
        Rows.push_back(std::move(row));
    }
    int Brackets = 0;
    std::vector<framework::TListRow> Rows;
};

class TTestText final : public framework::TTextView {
public:
    void Clear() override { Text = "cleared"; }
    void SetText(const std::string& text) override { Text = text; }
    std::string Text;
};

/// Counts what is fetched.
class FetchingObject : public tests::TTestObject {
public:
    bool Status() override { return Fetch("status"); }
    bool Diff() override { return Fetch(""); }
    bool Fetch(const std::string& text) {
        ++Fetched;
        if (!text.empty())
            MessageProc2(text + std::to_string(Fetched));
        return true;
    }
    bool Log() override { return Fetch("log"); }
    void ReadCVSInfo(TWorkDirTree&, const std::string& dir) override {
        Read += "info ";
        if (dir.ends_with("bad"))
            throw framework::Exception("bad records");
        throw framework::EInOutError(ERROR_FILE_NOT_FOUND, dir);
    }
    void ReadCVS_SystemFile(TWorkDirTree& tree, const std::string& dir) override {
        Read += "ignore ";
        if (TWorkDirItem* item = tree.ItemExist(dir, "IGNORED.txt"))
            item->Included = false;
    }
    bool CVS_SystemDirectory(const std::string& name) override { return name == "CVS"; }
    bool CVS_SystemFile(const std::string& name) override {
        return framework::SameText(name, ".cvsignore");
    }
    int Fetched = 0;
    std::string Read;
};

class WorkDirTree : public testing::Test {
protected:
    TWorkDirItem& Add(TWorkDirTree& tree, const std::string& name, bool directory = false) {
        TWorkDirItem& item = tree.Add();
        item.Directory = Folder.Path();
        item.Name = name;
        item.IsDirectory = directory;
        item.Included = true;
        item.ImageIndex = 7;
        return item;
    }
    support::TTempFolder Folder{"tree"};
    FetchingObject Obj;
};

TEST_F(WorkDirTree, FillsATreeNode) {
    TWorkDirItem& root = Add(Obj.WorkDirTree, "root", true);
    TTestNode node;
    bool allow = true;
    node.AddChild("what was there before");
    root.OnExpanding(node, allow);
    EXPECT_FALSE(allow);
    EXPECT_TRUE(node.Nodes.empty());
    TWorkDirItem& folder = Add(*root.Children, "folder", true);
    Add(*root.Children, "file").Included = false;
    root.OnExpanding(node, allow);
    EXPECT_TRUE(allow);
    ASSERT_EQ(node.Nodes.size(), 2u);
    EXPECT_EQ(node.Nodes[0]->Text, "folder");
    EXPECT_EQ(node.Nodes[0]->Data(), &folder);
    EXPECT_EQ(node.Nodes[0]->Images, "7 7 5");
    EXPECT_TRUE(node.Nodes[0]->HasChildren);
    EXPECT_EQ(node.Nodes[1]->Images, "7 7 4");
    EXPECT_FALSE(node.Nodes[1]->HasChildren);
    folder.OnDblClick();
    EXPECT_EQ(node.Nodes[0]->Selections, "off on ");
    root.OnDblClick();
}

TEST_F(WorkDirTree, FillsAListWithStates) {
    TWorkDirItem& root = Add(Obj.WorkDirTree, "root", true);
    Add(*root.Children, "ignored", true).Included = false;
    Add(*root.Children, "folder", true);
    Add(*root.Children, "unknown");
    TWorkDirItem& changed = Add(*root.Children, "changed");
    changed.InRepository = changed.Changed = true;
    TWorkDirItem& same = Add(*root.Children, "same");
    same.InRepository = true;
    same.Revision = "1.2";
    same.TimeStamp = "now";
    same.RepositoryPath = "C:\\repository";
    same.RepositoryFileName = "same,v";
    TTestRows rows;
    root.OnSelect(rows);
    std::string states;
    for (const auto& row : rows.Rows)
        states += row.Caption + ": " + row.SubItems[0] + "; ";
    EXPECT_EQ(states,
              "ignored: Ignore; folder: Directory; unknown: Not in repository; "
              "changed: Changed in workspace; same: Not changed; ");
    EXPECT_EQ(rows.Rows[4].SubItems,
              (std::vector<std::string>{"Not changed", "1.2", "now", "C:\\repository", "same,v"}));
    EXPECT_EQ(rows.Rows[4].Data, &same);
    EXPECT_EQ(rows.Rows[4].ImageIndex, 7);
    same.OnSelect(rows);
    EXPECT_EQ(rows.Rows.size(), 1u);
    EXPECT_EQ(rows.Brackets, 0);
}

TEST_F(WorkDirTree, FetchesTextsOnce) {
    TWorkDirItem& item = Add(Obj.WorkDirTree, "a.c");
    TTestText text;
    item.OnSelect2(otStatus, text, false);
    EXPECT_EQ(text.Text + std::to_string(Obj.Fetched), "cleared0") << "not in the repository";
    item.InRepository = true;
    item.OnSelect2(otDiff, text, true);
    EXPECT_EQ(Obj.Fetched, 0) << "nothing changed, nothing to compare";
    item.OnSelect2(otStatus, text, false);
    item.OnSelect2(otStatus, text, false);
    EXPECT_EQ(text.Text, "status1\r\n");
    item.OnSelect2(otStatus, text, true);
    EXPECT_EQ(text.Text, "status2\r\n");
    EXPECT_EQ(item.StatusText, "status2\r\n");
    EXPECT_FALSE(item.DiffLoaded);
    item.OnSelect2(otLog, text, false);
    EXPECT_EQ(text.Text, "log3\r\n");
    item.Changed = true;
    item.OnSelect2(otDiff, text, false);
    item.OnSelect2(otDiff, text, false);
    EXPECT_EQ(text.Text, "");
    EXPECT_EQ(Obj.Fetched, 4) << "an empty difference is a result";
    EXPECT_TRUE(item.DiffLoaded);
    item.OnSelect2(otDiff, text, true);
    EXPECT_EQ(Obj.Fetched, 5);
    item.OnSelect2(otUpdate, text, true);
    EXPECT_EQ(text.Text, "cleared");
}

TEST_F(WorkDirTree, WritesIgnoreLists) {
    Add(Obj.WorkDirTree, "a.o").Included = false;
    TWorkDirItem& folder = Add(Obj.WorkDirTree, "folder", true);
    TWorkDirItem& inner = Add(*folder.Children, "b.o");
    inner.Directory = Folder / "folder";
    inner.Included = false;
    TWorkDirItem& other = Add(Obj.WorkDirTree, "other", true);
    other.Included = false;
    Add(*other.Children, "not visited").Included = false;
    Add(Obj.WorkDirTree, "included.c");
    support::WriteBytes(Folder / "folder\\.cvsignore", "old\r\n");
    support::WriteBytes(Folder / "other\\.cvsignore", "old\r\n");
    Obj.WorkDirTree.SaveIgnore(".cvsignore");
    EXPECT_EQ(support::ReadBytes(Folder / ".cvsignore"), "a.o\r\nother\r\n.cvsignore\r\n");
    EXPECT_EQ(support::ReadBytes(Folder / "folder\\.cvsignore"), "b.o\r\n.cvsignore\r\n");
    EXPECT_EQ(support::ReadBytes(Folder / "other\\.cvsignore"), "old\r\n");
    // Two folders on one level make one list, where the last excluded entry is.
    ::DeleteFileA((Folder / ".cvsignore").c_str());
    other.Directory = Folder / "other";
    Obj.WorkDirTree.SaveIgnore("list");
    EXPECT_EQ(support::ReadBytes(Folder / "other\\list"), "a.o\r\nother\r\n.cvsignore\r\n");
    EXPECT_FALSE(framework::FileExists(Folder / "list"));
    inner.Directory = Folder / "gone";
    EXPECT_THROW(Obj.WorkDirTree.SaveIgnore(".cvsignore"), framework::EInOutError);
}

TEST_F(WorkDirTree, LeavesAListAloneThatExcludesNothingButItself) {
    Add(Obj.WorkDirTree, ".cvsIgnore").Included = false;
    support::WriteBytes(Folder / ".cvsignore", "*.o\r\n.cvsignore\r\n");
    for (const bool keep : {false, true}) {
        Obj.KeepIgnorePatterns = keep;
        Obj.WorkDirTree.SaveIgnore(".cvsignore");
        EXPECT_EQ(support::ReadBytes(Folder / ".cvsignore"), "*.o\r\n.cvsignore\r\n");
    }
    Obj.KeepIgnorePatterns = false;
    Add(Obj.WorkDirTree, "a.c").Included = false;
    Obj.WorkDirTree.SaveIgnore(".cvsignore");
    EXPECT_EQ(support::ReadBytes(Folder / ".cvsignore"), "a.c\r\n.cvsignore\r\n")
        << "its own line stands once";
}

TEST_F(WorkDirTree, KeepsThePatternsOfAListWhenAskedTo) {
    Obj.KeepIgnorePatterns = true;
    Add(Obj.WorkDirTree, ".cvsignore").Included = false;
    Add(Obj.WorkDirTree, "out", true).Included = false;
    Add(Obj.WorkDirTree, "back.c");
    TWorkDirItem& folder = Add(Obj.WorkDirTree, "sub", true);
    TWorkDirItem& inner = Add(*folder.Children, "x.o");
    inner.Directory = Folder / "sub";
    inner.Included = false;
    framework::ForceDirectories(Folder / "sub");
    support::WriteBytes(Folder / ".cvsignore",
                        "*.o  *.x\n OUT \n\n!\n.CVSIGNORE\nback.c\nnot there.c\nout");
    const std::string expected = "*.o  *.x\r\n!\r\nnot there.c\r\nout\r\n.cvsignore\r\n";
    for (int round = 0; round < 2; ++round) {
        Obj.WorkDirTree.SaveIgnore(".cvsignore");
        EXPECT_EQ(support::ReadBytes(Folder / ".cvsignore"), expected);
        EXPECT_EQ(support::ReadBytes(Folder / "sub\\.cvsignore"), "x.o\r\n.cvsignore\r\n");
    }
    // A list that cannot be read, or not to its end, is not replaced.
    const std::string endless = "*.o\r\n" + std::string(2000000, 'x');
    support::WriteBytes(Folder / ".cvsignore", endless);
    EXPECT_THROW(Obj.WorkDirTree.SaveIgnore(".cvsignore"), framework::EInOutError);
    EXPECT_TRUE(support::ReadBytes(Folder / ".cvsignore") == endless);
    const framework::FileHandle held(::CreateFileA((Folder / ".cvsignore").c_str(), GENERIC_READ, 0,
                                                   nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_THROW(Obj.WorkDirTree.SaveIgnore(".cvsignore"), framework::EInOutError);
}

BOOL WINAPI NoSpace(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) {
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

TEST_F(WorkDirTree, KeepsTheOldIgnoreListWhenTheDiskIsFull) {
    Add(Obj.WorkDirTree, "a.o").Included = false;
    support::WriteBytes(Folder / ".cvsignore", "the user's\r\n");
    framework::FileFunctions().Write = NoSpace;
    EXPECT_THROW(Obj.WorkDirTree.SaveIgnore(".cvsignore"), framework::EInOutError);
    framework::FileFunctions() = {};
    EXPECT_EQ(support::ReadBytes(Folder / ".cvsignore"), "the user's\r\n");
    framework::TFileSearch search(Folder / "*.*", framework::faAnyFile);
    int entries = 0;
    for (framework::TSearchRec entry; search.Next(entry);)
        ++entries;
    EXPECT_EQ(entries, 3) << "and no half-written file beside it";
}

TEST_F(WorkDirTree, LoadsEveryFolderAndGoesOnAfterErrors) {
    for (const char* name :
         {"a.txt", "ignored.txt", "CVS\\Entries", "bad\\x.txt", "sub\\deep\\y.txt"})
        support::WriteBytes(Folder / name, "text");
    ::SetFileAttributesA((Folder / "a.txt").c_str(), FILE_ATTRIBUTE_HIDDEN);
    Obj.Set_WorkingDirectory(Folder.Path());
    Obj.Load_WorkDirTree();
    Obj.Load_WorkDirTree();
    const auto* file = Obj.WorkDirTree.ItemExist(Folder.Path(), "a.txt");
    ASSERT_NE(file, nullptr) << "hidden files are listed";
    EXPECT_TRUE(file->Included);
    EXPECT_FALSE(file->InRepository || file->Changed || file->IsDirectory);
    EXPECT_EQ(Obj.WorkDirTree.ItemExist(Folder.Path(), "CVS"), nullptr);
    EXPECT_FALSE(Obj.WorkDirTree.ItemExist(Folder.Path(), "ignored.txt")->Included);
    const auto* sub = Obj.WorkDirTree.ItemExist(Folder.Path(), "sub");
    ASSERT_NE(sub, nullptr);
    ASSERT_EQ(sub->Children->Count(), 1);
    EXPECT_EQ(sub->Children->GetItem(0).Children->GetItem(0).Name, "y.txt");
    EXPECT_EQ(Obj.WorkDirTree.Count(), 4) << "the second load replaces the first";
    EXPECT_EQ(Obj.Messages.All(), "bad records\r\nbad records\r\n") << "a missing list is no error";
    EXPECT_EQ(Obj.Read,
              "info ignore info ignore info ignore info ignore "
              "info ignore info ignore info ignore info ignore ");
    Obj.Messages.Clear();
    Obj.Set_WorkingDirectory(Folder / "gone");
    EXPECT_FALSE(Obj.ModelCurrent) << "it is that of another folder";
    Obj.Load_WorkDirTree();
    EXPECT_EQ(Obj.Messages.All(), "working  directory is not set\r\n");
    EXPECT_TRUE(Obj.WorkDirTree.Empty());
    EXPECT_TRUE(Obj.ModelCurrent);
}

TEST_F(WorkDirTree, CanBeLoadedAnewByTheOneWhoIsTold) {
    support::WriteBytes(Folder / "bad\\x.txt", "text");
    support::WriteBytes(Folder / "z.txt", "text");
    Obj.Set_WorkingDirectory(Folder.Path());
    int told = 0;
    Obj.OnMessage = [&](framework::TObject*, const std::string& text) {
        EXPECT_EQ(text, "bad records\r\n");
        if (++told == 1)
            Obj.Load_WorkDirTree();
        EXPECT_EQ(Obj.WorkDirTree.Count(), 2);
    };
    Obj.Load_WorkDirTree();
    EXPECT_EQ(told, 2);
    EXPECT_NE(Obj.WorkDirTree.ItemExist(Folder.Path(), "z.txt"), nullptr);
}

TEST_F(WorkDirTree, ShowsNamesThatCannotBeWrittenAndGoesNowhereByThem) {
    // The code page has no long vowels, and the system's look-alikes are plain letters.
    const std::wstring path = framework::ToWide(Folder.Path()) + L"\\a\u0101";
    ASSERT_TRUE(framework::FileHandle(::CreateFileW((path + L".txt").c_str(), GENERIC_WRITE, 0,
                                                    nullptr, CREATE_NEW, 0, nullptr)));
    ASSERT_TRUE(::CreateDirectoryW(path.c_str(), nullptr));
    support::WriteBytes(Folder / "aa\\x.c", "text");
    support::WriteBytes(Folder / "b.txt", "text");
    Obj.Set_WorkingDirectory(Folder.Path());
    Obj.Load_WorkDirTree();
    std::multiset<std::string> listed;
    for (const TWorkDirItem& item : Obj.WorkDirTree)
        listed.insert(item.Name + (item.ImageIndex < 0 ? " none " : " icon ") +
                      std::to_string(item.Children->Count()));
    EXPECT_EQ(listed, (std::multiset<std::string>{"a? icon 0", "a?.txt none 0", "aa icon 1",
                                                  "b.txt icon 0"}))
        << "a kind has its icon in spite of a name that finds none";
    const framework::EInOutError error(ERROR_INVALID_NAME, Folder / "a?");
    EXPECT_EQ(Obj.Messages.All(), std::string(error.what()) + "\r\n");
}

}  // namespace
