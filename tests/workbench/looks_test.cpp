// How the windows look: nothing cut off, nothing on top of each other, whatever the resolution.

#include "tests/support/Looks.h"
#include "framework/base/files.h"
#include "tests/workbench/Projects.h"
#include "workbench/BinaryForm.h"
#include "workbench/CommitForm.h"
#include "workbench/LabelsForm.h"

namespace {

using namespace tests;
using support::WriteBytes;

const std::string Conflict = "<<<<<<< a.c\r\nmine\r\n=======\r\ntheirs\r\n>>>>>>> 1.2\r\n";

/// A working copy with files of all states, and one too long a name.
class Looks : public Projects {
protected:
    Looks() {
        const std::string one = Folder / "one\\";
        Record("one", Folder / "repository",
               "/a.c/1.1/dummy//\r\n/conflict.c/1.2/Result of merge+x//\r\n"
               "/gone.c/1.10.2.3/dummy//TA_BRANCH\r\n/new.png/0/dummy/-kb/\r\n"
               "/taken.c/-1.3/dummy//\r\nD/a folder////\r\nD/lib////\r\n");
        for (const char* name : {"new.png", "stray.txt", "a folder\\deep\\x.c", "lib\\y.c"})
            WriteBytes(one + name, "text\r\n");
        WriteBytes(one + "conflict.c", "top\r\n" + Conflict + "end\r\n");
        WriteBytes(one + "a name that is longer than anybody would have thought.txt", "");
        WriteBytes(Folder / "repository\\module\\a.c,v", "");
        Form.OpenProject(Folder / "one");
        Form.Project()->Cvs().CvsExecutable = support::FakeClient() + " exit 0";
        Form.Show();
    }
    /// Chooses what opens a dialog, looks at it, and cancels it.
    static void LookAt(const std::string& caption, const std::string& name,
                       const std::function<void()>& open) {
        ExpectForm(caption, [&](TForm& form) {
            Look(form, name);
            form.ModalResult = mrCancel;
        });
        open();
    }
};

TEST_F(Looks, AreTidy) {
    Select("a.c");
    Look(Form, "window");
    EXPECT_LE(Form.Width(), ::GetSystemMetrics(SM_CXSCREEN));
    for (const auto& [item, caption, name] :
         {std::tuple{"Optio&ns...", "Options", "options"},
          {"P&references...", "Preferences", "working-copy"},
          {"&Import...", "Tags of the project", "tags"},
          {"&Export...", "Export", "export"},
          {"Changes of the m&odule...", "Changes of the module", "compare-module"},
          {"Pull a &module...", "Pull a module", "pull-module"},
          {"&Move...", "Move a.c", "move"},
          {"&Get a revision...", "Get a.c", "get-revision"}})
        LookAt(caption, name, [&, item = item] { Pick(Form, item); });
    LookAt("Find", "find", [this] {
        for (TMenuItem* item : support::Part<TPopupMenu>(Form, "OutputMenu").Items())
            if (item->Caption() == "&Find...")
                item->Click();
    });
    std::vector<TBinaryChoice> files;
    for (int i = 0; i < 40; ++i)
        files.push_back({Folder / ("one\\pictures\\number " + std::to_string(i) + ".png"), i != 3});
    LookAt("Binary files", "binary", [&] { AskForBinary(Folder / "one", files); });
    Pick(Form, "&Commit...");
    TCommitForm& commit = *support::OpenForms<TCommitForm>().at(0);
    support::Type(commit, "Message", "What has changed\r\n" + std::string(80, 'x'));
    Look(commit, "commit");
    commit.SetClientSize(commit.Scale(440), commit.Scale(300));
    Look(commit, "commit-small");
    TProjectViews views(Form, Folder / "one");
    TLabelsForm labels(views);
    labels.Show();
    Look(labels, "labels");
    LookAt("Create", "create-label", [&] { support::Press(labels, "Create"); });
    TDocumentForm document(Folder / "one\\conflict.c");
    document.Show();
    support::Pick(document, "Menu1", "&Next");
    Look(document, "conflicts");
    // What stands below one another in a file does so here.
    auto& memo = support::Part<TMemo>(document, "Memo1");
    memo.SetText("iiii\r\nWWWW");
    POINTL narrow{}, wide{};
    ::SendMessageW(memo.Handle(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&narrow), 4);
    ::SendMessageW(memo.Handle(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&wide), 9);
    EXPECT_GT(narrow.x, 0);
    EXPECT_EQ(narrow.x, wide.x);
}

TEST_F(Looks, AreTidyInTheSmallestWindow) {
    Form.SetClientSize(1, 1);
    Look(Form, "smallest-window");
}

TEST(LooksAtHighResolution, AreTidy) {
    RunAtHighResolution("Looks.*");
}

}  // namespace
