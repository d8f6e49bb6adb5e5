#pragma once

#include <array>

#include "core/Customvcs_types.h"
#include "forms/FrameDetForm.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/page_control.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/splitter.h"
#include "framework/ui/tree_view.h"

namespace tandrel {

class TWorkDirItem;

/// The working copy as a tree and a list, with what the client tells of the chosen file. A page of
/// the browser.
class TStatusBrowser_Form : public TFrameDetForm {
public:
    TStatusBrowser_Form();
    ~TStatusBrowser_Form() override;
    bool StatusOk() override;
    void LoadFormData() override;

    /// Fills the tree's first level from the object's model.
    void LoadRootNodes();
    /// Fills the list from the model's first level.
    void LoadRootLw();
    /// Brings the pages up to date with what is selected.
    void Timer2Timer(framework::TObject* Sender = nullptr);
    /// Loads the pages that are wanted.
    void LoadFileData(TWorkDirItem& item);
    /// Colours the comparison.
    void HighlightDiffText();
    /// Loads the page that is shown, if nothing stands on it.
    void PageControl1Change(framework::TObject* Sender = nullptr);
    /// Opens what the selected row stands for.
    void ListView1DblClick(framework::TObject* Sender = nullptr);
    /// Asks the client anew for all pages that are wanted.
    void RefreschF51Click(framework::TObject* Sender = nullptr);
    /// Turns the wish for a page. @param Sender its entry of the menu.
    void StatusItemClick(framework::TObject* Sender);

private:
    /// One of the three pages under the list.
    struct TPage {
        framework::TTabSheet* Sheet = nullptr;
        framework::TRichEdit* Edit = nullptr;
        framework::TMenuItem* Item = nullptr;
        TOperationType Operation = otStatus;
    };
    enum { StatusPage, LogPage, DiffPage };

    void AddMenu();
    void AddControls();
    void AddPages(framework::TControl& parent);
    void BindEvents();

    bool TreeView1Expanding(framework::TTreeViewNode& node);
    void NodeDeleted(framework::TTreeViewNode& node);
    void Timer1Timer();
    void EnableDiff(bool enabled);
    /// Nothing is selected that the pages could tell of.
    void DisablePages();
    bool KeyPressed(WPARAM key);
    TWorkDirItem* SelectedInList() const;
    TWorkDirItem* SelectedInTree() const;

    // Until the form is filled: where it is shown may still have no size.
    std::optional<framework::TLayoutUpdate> Filling_{*this};
    bool ForceRefresh_ = false;
    framework::TPopupMenu* PopupMenu1_;
    framework::TMenuItem* RefreschF51_;
    framework::TTreeView* TreeView1_;
    framework::TListView* ListView1_;
    framework::TPageControl* PageControl1_;
    std::array<TPage, 3> Pages_;
    framework::TTimer* Timer1_;
    framework::TTimer* Timer2_;
};

/// The status form made last, or none.
extern TStatusBrowser_Form* StatusBrowser_Form;

}  // namespace tandrel
