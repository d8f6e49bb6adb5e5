// All controls together: how they look, and that nothing stays behind. With TANDREL_OUT set, the
// picture of the form is left in that folder.

#include <gtest/gtest.h>

#include <cstdlib>

#include "framework/ui/application.h"
#include "framework/ui/buttons.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/form.h"
#include "framework/ui/image_list.h"
#include "framework/ui/labels.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/page_control.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/splitter.h"
#include "framework/ui/tool_bar.h"
#include "framework/ui/tree_view.h"
#include "support/Files.h"
#include "support/Screenshot.h"
#include "tests/support/Leaks.h"

namespace {

using namespace framework;

class TGallery : public TForm {
public:
    TGallery() : TForm("Gallery", TFormBorder::Main) {
        AddMenus();
        Checks_.Add(
            6, [](int i, HDC dc, const RECT& area) { TImageList::DrawCheckBox(dc, area, i == 5); });
        AddToolBar();
        AddTree();
        Make<TSplitter>("Splitter1", *this, *Tree, TAlign::Left);
        TControl& right = Make<TPanel>("Panel1", *this);
        AddList(right);
        Make<TSplitter>("Splitter2", right, *List, TAlign::Top);
        AddPages(right);
        right.SetAlign(TAlign::Client);
        SetClientSize(Scale(640), Scale(420));
    }
    ~TGallery() override { FreeComponents(); }

    TTreeView* Tree;
    TListView* List;
    TPageControl* Pages;

private:
    void AddMenus() {
        auto& menu = Make<TMainMenu>("MainMenu1", *this);
        for (const char* caption : {"&File", "&Tools"})
            Make<TMenuItem>("", menu, caption).Add("Item", {VK_F7, true});
        auto& popup = Make<TPopupMenu>("PopupMenu1");
        popup.Add("Refresh(F5)");
        SetPopupMenu(&popup);
    }
    void AddToolBar() {
        auto& bar = Make<TToolBar>("ToolBar1", *this, Checks_);
        for (int i = 0; i < 4; ++i)
            Make<TToolButton>("ToolButton" + std::to_string(i), bar, 4 + i % 2, L"hint")
                .SetEnabled(i != 3);
        bar.SetAlign(TAlign::Top);
    }
    void AddTree() {
        Tree = &Make<TTreeView>("TreeView1", *this);
        Tree->SetBounds(0, 0, Scale(177), Scale(10));
        Tree->SetAlign(TAlign::Left);
        Tree->SetImages(ShellSmallImageList());
        Tree->SetStateImages(Checks_.Get());
        Tree->OnNodeColor = [](TTreeViewNode& node) {
            return node.StateImage() == 4 ? std::optional(RGB(0, 128, 0)) : std::nullopt;
        };
        const TTreeUpdate update(*Tree);
        auto& top = Tree->Root().AddChild("Full list");
        for (int i = 0; i < 40; ++i) {
            auto& node = top.AddChild("node " + std::to_string(i));
            node.SetImages(i % 3, i % 3, 4 + i % 2);
            node.SetHasChildren(i % 3 == 0);
        }
        top.SetExpanded(true);
    }
    void AddList(TControl& parent) {
        List = &Make<TListView>("ListView1", parent);
        List->SetBounds(0, 0, Scale(10), Scale(180));
        List->SetAlign(TAlign::Top);
        List->SetImages(ShellSmallImageList());
        List->AddColumn("Filename", 150);
        List->AddColumn("Status", 170);
        List->OnRowColor = [](const TListRow& row) {
            return std::optional(row.ImageIndex == 1 ? RGB(255, 0, 0) : RGB(0, 0, 0));
        };
        const TListUpdate update(List->Rows());
        for (int i = 0; i < 100; ++i)
            List->Rows().Add(
                {"file" + std::to_string(i) + ".txt", {"Not changed"}, i % 3, nullptr});
    }
    void AddPages(TControl& parent) {
        Pages = &Make<TPageControl>("PageControl1", parent);
        const std::string captions[] = {"Status file", "Log file", "Workspace diff"};
        for (const std::string& caption : captions) {
            auto& sheet = Make<TTabSheet>(caption, *Pages, caption);
            auto& edit = Make<TRichEdit>("Edit of " + caption, sheet);
            edit.SetText("1c1\r\n< \xE4lt\r\n---\r\n> neu\r\n");
            edit.ColorRanges({{5, 5, RGB(255, 0, 0)}});
            edit.SetReadOnly(true);
            edit.SetAlign(TAlign::Client);
            sheet.SetEnabled(caption != captions[1]);
        }
        Pages->SetAlign(TAlign::Client);
    }

    TImageList Checks_;
};

TEST(Gallery, ShowsAllControls) {
    TGallery form;
    form.Show();
    form.Tree->Root().Children()[0]->Children()[2]->SetSelected(true);
    form.List->Select(1);
    form.List->SetFocus();
    EXPECT_GT(form.List->Width(), form.Scale(400));
    EXPECT_GT(form.Pages->Height(), form.Scale(150));
    const support::TTempFolder folder("gallery");
    const char* const out = std::getenv("TANDREL_OUT");
    const std::string path = (out ? std::string(out) : folder.Path()) + "\\gallery-" +
                             std::to_string(form.Scale(96)) + ".png";
    support::SaveScreenshot(form.Handle(), path);
    const std::string png = support::ReadBytes(path);
    EXPECT_EQ(png.substr(0, 4), "\x89PNG");
    EXPECT_GT(png.size(), 5000u) << "more than an empty area";
}

TEST(Gallery, LeavesNothingBehind) {
    const auto open = [] {
        TGallery form;
        form.Show();
        form.List->Select(1);
        form.Pages->SetActivePageIndex(2);
        Application().ProcessMessages();
    };
    tests::ExpectNothingLeft(100, open);
}

}  // namespace
