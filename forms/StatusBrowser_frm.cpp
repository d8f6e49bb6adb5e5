#include "forms/StatusBrowser_frm.h"

#include <algorithm>

#include "core/ComForCall.h"
#include "core/Cvs_files.h"
#include "cvs/Cvstempl.h"
#include "forms/DiffColours.h"
#include "framework/base/text.h"

namespace tandrel {

using namespace framework;

TStatusBrowser_Form* StatusBrowser_Form = nullptr;

namespace {

constexpr COLORREF NotStoredColour = RGB(0, 128, 0);
constexpr COLORREF ChangedColour = RGB(255, 0, 0);

TWorkDirItem* ItemOf(TObject* data) {
    return static_cast<TWorkDirItem*>(data);
}

std::optional<COLORREF> NodeColour(const TWorkDirItem* item) {
    if (!item || !item->Included)
        return std::nullopt;
    if (!item->InRepository)
        return NotStoredColour;
    return item->Changed ? std::optional(ChangedColour) : std::nullopt;
}

/// The icon of the working directory. Folders look alike, and the shell takes long to answer.
int FolderIcon(const TCvsObject& cvs) {
    for (const TWorkDirItem& item : cvs.WorkDirTree)
        if (item.IsDirectory)
            return item.ImageIndex;
    const TComForCall com;
    return GetShellImage(cvs.WorkingDirectory(), false, false);
}

std::optional<COLORREF> RowColour(const TListRow& row) {
    return NodeColour(ItemOf(row.Data)).value_or(RGB(0, 0, 0));
}

}  // namespace

TStatusBrowser_Form::TStatusBrowser_Form() : TFrameDetForm("Status") {
    StatusBrowser_Form = this;
    AddMenu();
    AddControls();
    SetDesignSize(640, 480);
    Timer1_ = &MakeDelay(*this, "Timer1", 200, [this] { Timer1Timer(); });
    Timer2_ = &MakeDelay(*this, "Timer2", 200, [this] { Timer2Timer(); });
    BindEvents();
}

TStatusBrowser_Form::~TStatusBrowser_Form() {
    FreeComponents();
    if (StatusBrowser_Form == this)
        StatusBrowser_Form = nullptr;
}

void TStatusBrowser_Form::AddMenu() {
    PopupMenu1_ = &Make<TPopupMenu>("PopupMenu1");
    RefreschF51_ = &Make<TMenuItem>("RefreschF51", *PopupMenu1_, "Refresch(F5)");
    auto& options = Make<TMenuItem>("Proper1", *PopupMenu1_, "Options");
    constexpr struct {
        const char* Name;
        const char* Caption;
        TOperationType Operation;
    } Entries[] = {{"StatusItem", "Show status", otStatus},
                   {"LogItem", "Show log", otLog},
                   {"DiffItem", "Show diff", otDiff}};
    for (std::size_t i = 0; i < Pages_.size(); ++i) {
        Pages_[i].Item = &Make<TMenuItem>(Entries[i].Name, options, Entries[i].Caption);
        Pages_[i].Item->SetChecked(true);
        Pages_[i].Operation = Entries[i].Operation;
    }
}

void TStatusBrowser_Form::AddControls() {
    constexpr int TreeWidth = 177, ListHeight = 247;
    TreeView1_ = &Make<TTreeView>("TreeView1", *this);
    TreeView1_->SetBounds(0, 0, Scale(TreeWidth), 0);
    TreeView1_->SetIndent(20);
    TreeView1_->SetAccessibleName("Folders and files");
    TreeView1_->SetAlign(TAlign::Left);
    Make<TSplitter>("Splitter1", *this, *TreeView1_, TAlign::Left, 80);
    auto& panel = Make<TPanel>("Panel1", *this);
    ListView1_ = &Make<TListView>("ListView1", panel);
    ListView1_->SetBounds(0, 0, 0, Scale(ListHeight));
    ListView1_->SetAccessibleName("Files");
    ListView1_->SetAlign(TAlign::Top);
    Make<TSplitter>("Splitter2", panel, *ListView1_, TAlign::Top, 60);
    AddPages(panel);
    PageControl1_->SetAlign(TAlign::Client);
    panel.SetAlign(TAlign::Client);
    constexpr struct {
        const char* Caption;
        int Width;
    } Columns[] = {{"Filename", 150},  {"Status", 170},         {"Revision", 70},
                   {"TimeStamp", 150}, {"RepositoryPath", 150}, {"RepositoryFileName", 150}};
    for (const auto& column : Columns)
        ListView1_->AddColumn(column.Caption, column.Width);
}

void TStatusBrowser_Form::AddPages(TControl& parent) {
    PageControl1_ = &Make<TPageControl>("PageControl1", parent);
    constexpr struct {
        const char* Sheet;
        const char* Caption;
        const char* Edit;
    } Sheets[] = {{"TabSheet1", "Status file", "StatusEdit"},
                  {"TabSheet2", "Log file", "LogEdit"},
                  {"TabSheet3", "Workspace diff", "DiffEdit"}};
    for (std::size_t i = 0; i < Pages_.size(); ++i) {
        TPage& page = Pages_[i];
        page.Sheet = &Make<TTabSheet>(Sheets[i].Sheet, *PageControl1_, Sheets[i].Caption);
        page.Edit = &Make<TRichEdit>(Sheets[i].Edit, *page.Sheet);
        page.Edit->SetReadOnly(true);
        // The client puts its texts in columns.
        page.Edit->SetFixedPitch();
        page.Edit->SetAccessibleName(Sheets[i].Caption);
        page.Edit->SetAlign(TAlign::Client);
        page.Sheet->SetEnabled(false);
    }
    Pages_[DiffPage].Sheet->SetTabVisible(false);
}

void TStatusBrowser_Form::BindEvents() {
    TreeView1_->SetPopupMenu(PopupMenu1_);
    ListView1_->SetPopupMenu(PopupMenu1_);
    Pages_[StatusPage].Edit->SetPopupMenu(PopupMenu1_);

    TreeView1_->OnChange = TreeView1_->OnClick = [this](TObject*) { Timer1_->Restart(); };
    TreeView1_->OnExpanding = [this](TTreeViewNode& node) { return TreeView1Expanding(node); };
    TreeView1_->OnDeletion = [this](TTreeViewNode& node) { NodeDeleted(node); };
    TreeView1_->OnNodeColor = [](TTreeViewNode& node) { return NodeColour(ItemOf(node.Data())); };
    ListView1_->OnRowColor = RowColour;
    ListView1_->OnSelectItem = [this](TObject*) { Timer2_->Restart(); };
    ListView1_->OnDblClick = [this](TObject* sender) { ListView1DblClick(sender); };
    PageControl1_->OnChange = [this](TObject* sender) { PageControl1Change(sender); };
    PageControl1_->OnChanging = [this](bool& allow) {
        allow = std::any_of(Pages_.begin(), Pages_.end(),
                            [](const TPage& page) { return page.Sheet->Enabled(); });
    };
    RefreschF51_->OnClick = [this](TObject* sender) { RefreschF51Click(sender); };
    for (TPage& page : Pages_)
        page.Item->OnClick = [this](TObject* sender) { StatusItemClick(sender); };
    OnKeyPreview = [this](WPARAM key) { return KeyPressed(key); };
    Pages_[StatusPage].Edit->OnKeyUp = [this](WPARAM key) {
        if (key == VK_F5)
            RefreschF51Click();
    };
}

bool TStatusBrowser_Form::KeyPressed(WPARAM key) {
    const bool inList = ListView1_->Focused();
    if (key == VK_RETURN && inList) {
        ListView1DblClick();
        return true;
    }
    // On the status page it is the key's release that counts.
    if (key != VK_F5 ||
        !(inList || Pages_[LogPage].Edit->Focused() || Pages_[DiffPage].Edit->Focused()))
        return false;
    RefreschF51Click();
    return true;
}

// --- the tree and the list --------------------------------------------------------------------

bool TStatusBrowser_Form::StatusOk() {
    return !CvsObject->WorkDirTree.Empty();
}

void TStatusBrowser_Form::LoadFormData() {
    if (const HIMAGELIST icons = ShellSmallImageList()) {
        TreeView1_->SetImages(icons);
        ListView1_->SetImages(icons);
    }
    if (CvsObject->WorkDirTree.Empty())
        CvsObject->Load_WorkDirTree();
    LoadRootNodes();
    Filling_.reset();
}

void TStatusBrowser_Form::LoadRootNodes() {
    {
        const TTreeUpdate update(*TreeView1_);
        TreeView1_->Clear();
        TTreeViewNode& top = TreeView1_->Root().AddChild("Full list");
        const int folder = FolderIcon(*CvsObject);
        top.SetImages(folder, folder, 0);
        for (TWorkDirItem& item : CvsObject->WorkDirTree) {
            TTreeViewNode& node = top.AddChild(item.Name);
            node.SetData(&item);
            node.SetImages(item.ImageIndex, item.ImageIndex, 0);
            node.SetHasChildren(item.IsDirectory);
            item.TreeNode = &node;
        }
        // What the user came for; nobody has to open it first.
        top.SetExpanded(true);
        top.SetSelected(true);
    }
    LoadRootLw();
    // Filled again in a moment, the list would lose what the user has selected meanwhile.
    Timer1_->SetEnabled(false);
}

void TStatusBrowser_Form::LoadRootLw() {
    const TListUpdate update(ListView1_->Rows());
    ListView1_->Rows().Clear();
    for (TWorkDirItem& item : CvsObject->WorkDirTree)
        AddLwItems(ListView1_->Rows(), item);
}

bool TStatusBrowser_Form::TreeView1Expanding(TTreeViewNode& node) {
    TWorkDirItem* const item = ItemOf(node.Data());
    if (!item)
        return true;
    const TTreeUpdate update(*TreeView1_);
    bool allow = true;
    item->OnExpanding(node, allow);
    return allow;
}

void TStatusBrowser_Form::NodeDeleted(TTreeViewNode& node) {
    TWorkDirItem* const item = ItemOf(node.Data());
    if (item && item->TreeNode == &node)
        item->TreeNode = nullptr;
}

TWorkDirItem* TStatusBrowser_Form::SelectedInList() const {
    const TListRow* const row = ListView1_->Selected();
    return row ? ItemOf(row->Data) : nullptr;
}

TWorkDirItem* TStatusBrowser_Form::SelectedInTree() const {
    const TTreeViewNode* const node = TreeView1_->Selected();
    return node ? ItemOf(node->Data()) : nullptr;
}

void TStatusBrowser_Form::Timer1Timer() {
    TWorkDirItem* const item = SelectedInTree();
    if (!item) {
        LoadRootLw();
        return DisablePages();
    }
    item->OnSelect(ListView1_->Rows());
    if (item->IsDirectory)
        return;
    ListView1_->Select(0);
    Timer2_->Restart();
}

void TStatusBrowser_Form::ListView1DblClick(TObject*) {
    TWorkDirItem* const item = SelectedInList();
    if (!item)
        return;
    // The nodes of a level are made when it is opened.
    if (TTreeViewNode* const above = TreeView1_->Selected(); above && !item->TreeNode)
        above->SetExpanded(true);
    item->OnDblClick();
    if (TTreeViewNode* const node = TreeView1_->Selected(); node && !node->Expanded())
        node->SetExpanded(true);
    item->OnSelect(ListView1_->Rows());
}

// --- the pages --------------------------------------------------------------------------------

void TStatusBrowser_Form::Timer2Timer(TObject*) {
    TPage& diff = Pages_[DiffPage];
    Pages_[StatusPage].Sheet->SetEnabled(false);
    Pages_[LogPage].Sheet->SetEnabled(false);
    TWorkDirItem* item = SelectedInList();
    if (!item)
        item = SelectedInTree();
    if (!item)
        return;
    const bool stored = !item->IsDirectory && item->InRepository;
    for (const int index : {StatusPage, LogPage}) {
        const TPage& page = Pages_[static_cast<std::size_t>(index)];
        page.Sheet->SetEnabled(stored && page.Item->Checked());
    }
    const bool hasDiff = item->InRepository && item->Changed && diff.Item->Checked();
    EnableDiff(hasDiff);
    LoadFileData(*item);
    if (hasDiff)
        HighlightDiffText();
    ::InvalidateRect(PageControl1_->Handle(), nullptr, FALSE);
}

void TStatusBrowser_Form::EnableDiff(bool enabled) {
    if (!enabled && PageControl1_->ActivePageIndex() == DiffPage)
        PageControl1_->SetActivePageIndex(LogPage);
    Pages_[DiffPage].Sheet->SetEnabled(enabled);
    Pages_[DiffPage].Sheet->SetTabVisible(enabled);
}

void TStatusBrowser_Form::DisablePages() {
    Timer2_->SetEnabled(false);
    Pages_[StatusPage].Sheet->SetEnabled(false);
    Pages_[LogPage].Sheet->SetEnabled(false);
    EnableDiff(false);
}

void TStatusBrowser_Form::LoadFileData(TWorkDirItem& item) {
    for (TPage& page : Pages_)
        if (page.Item->Checked())
            item.OnSelect2(page.Operation, page.Edit->View(), ForceRefresh_);
}

void TStatusBrowser_Form::HighlightDiffText() {
    TRichEdit& edit = *Pages_[DiffPage].Edit;
    std::vector<TColoredRange> ranges;
    ForEachColouredLine(edit.Text(), [&](std::size_t start, std::size_t length, COLORREF colour) {
        ranges.push_back({start, length, colour});
    });
    edit.ColorRanges(ranges);
}

void TStatusBrowser_Form::PageControl1Change(TObject*) {
    TWorkDirItem* const item = SelectedInList();
    const int index = PageControl1_->ActivePageIndex();
    if (!item || index < 0)
        return;
    TPage& page = Pages_[static_cast<std::size_t>(index)];
    if (!page.Sheet->Enabled() || !Trim(page.Edit->Text()).empty())
        return;
    item->OnSelect2(page.Operation, page.Edit->View(), false);
    if (index == DiffPage)
        HighlightDiffText();
}

void TStatusBrowser_Form::RefreschF51Click(TObject*) {
    struct TForced {
        explicit TForced(bool& flag) : Flag(flag) { Flag = true; }
        ~TForced() { Flag = false; }
        bool& Flag;
    } const forced(ForceRefresh_);
    Timer2_->SetEnabled(false);
    Timer2Timer();
}

void TStatusBrowser_Form::StatusItemClick(TObject* Sender) {
    auto& clicked = dynamic_cast<TMenuItem&>(*Sender);
    clicked.SetChecked(!clicked.Checked());
    for (TPage& page : Pages_)
        page.Sheet->SetEnabled(page.Item->Checked());
    for (const int index : {StatusPage, LogPage})
        if (const TPage& page = Pages_[static_cast<std::size_t>(index)]; !page.Item->Checked())
            page.Edit->Clear();
    Timer2_->Restart();
}

}  // namespace tandrel
