#include "workbench/LabelsForm.h"

#include <algorithm>

#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/ui/buttons.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/labels.h"
#include "workbench/FormState.h"
#include "workbench/InputForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using tandrel::TCvsObject;

namespace {

constexpr const char* StateKey = "Labels";
constexpr const char* Caption = "Labels and branches";

enum TColumn { NameColumn, KindColumn, FilesColumn, NewestColumn };

const char* KindOf(const TProjectLabel& label) {
    return label.IsBranch ? "branch" : "label";
}

std::string CountOf(const TProjectLabel& label) {
    return std::to_string(label.Files) + (label.Files == 1 ? " file" : " files");
}

bool IsBefore(const TProjectLabel& a, const TProjectLabel& b, int column) {
    switch (column) {
        case KindColumn:
            return a.IsBranch < b.IsBranch;
        case FilesColumn:
            return a.Files < b.Files;
        case NewestColumn:
            return a.Newest < b.Newest;
        default:
            return UpperCase(a.Name) < UpperCase(b.Name);
    }
}

}  // namespace

TLabelsForm::TLabelsForm(TViewHost& host)
    : TForm(std::string(Caption) + " - " + ExtractFileName(host.Folder()), TFormBorder::Main),
      Host_(host) {
    SetMinClientSize(Scale(520), Scale(160));
    RestoreSize(*this, Host_.Settings(), StateKey, {560, 380});
    AddMenu();
    Status_ = &Make<TStatusBar>("Status", *this, std::vector{0});
    Status_->SetAlign(TAlign::Bottom);
    AddBar();
    List_ =
        &Make<TListView>("Labels", *this, TListViewStyle{.MultiSelect = true, .Sortable = true});
    List_->SetAccessibleName(Caption);
    for (const auto& [caption, width] :
         {std::pair{"Name", 200}, {"Kind", 70}, {"Files", 70}, {"Newest change", 140}})
        List_->AddColumn(caption, width);
    List_->SetAlign(TAlign::Client);
    List_->SetSortMark(SortColumn_, Descending_);
    List_->OnColumnClick = [this](int column) { SortBy(column); };
    List_->OnDblClick = [this](TObject*) { Compare(); };
    OnKeyPreview = [this](WPARAM key) {
        if (key != VK_RETURN || !List_->Focused())
            return false;
        Compare();
        return true;
    };
}

TLabelsForm::~TLabelsForm() {
    StoreSize(*this, Host_.Settings(), StateKey);
}

void TLabelsForm::AddMenu() {
    Menu_ = &Make<TMainMenu>("Menu1", *this);
    TMenuItem& menu = Menu_->Add("&Label");
    const auto add = [&menu](const char* caption, TShortcut keys, std::function<void()> action) {
        menu.Add(caption, keys).OnClick = [action](TObject*) { action(); };
    };
    add("&Compare", {'D', true}, [this] { Compare(); });
    add("&Update to it...", {'U', true}, [this] { UpdateTo(); });
    add("Back to the &trunk...", {}, [this] { ReturnToTrunk(); });
    menu.AddSeparator();
    add("C&reate...", {VK_INSERT}, [this] { Create(); });
    add("&Move...", {VK_F2}, [this] { Move(); });
    add("&Delete...", {VK_DELETE}, [this] { Delete(); });
    menu.AddSeparator();
    add("Re&fresh", {VK_F5}, [this] { Load(); });
    add("C&lose", {'W', true}, [this] { CloseQuery(); });
}

void TLabelsForm::AddBar() {
    auto& bar = Make<TPanel>("Bar", *this);
    bar.SetBounds(0, 0, ClientSize().cx, Scale(31));
    int left = Scale(4);
    const auto button = [&](const char* name, const char* caption, std::function<void()> action) {
        auto& made = Make<TButton>(name, bar, caption);
        const int width = made.TextSize(caption).cx + Scale(20);
        made.SetBounds(left, Scale(4), width, Scale(23));
        made.OnClick = [action](TObject*) { action(); };
        left += width + Scale(4);
    };
    button("Compare", "Compare", [this] { Compare(); });
    button("Update", "Update to it...", [this] { UpdateTo(); });
    button("Trunk", "Back to the trunk...", [this] { ReturnToTrunk(); });
    button("Create", "Create...", [this] { Create(); });
    button("Move", "Move...", [this] { Move(); });
    button("Delete", "Delete...", [this] { Delete(); });
    bar.SetAlign(TAlign::Top);
}

// --- what is shown ----------------------------------------------------------------------------

bool TLabelsForm::Load() {
    std::optional<TFetched> log;
    Host_.Query([&](TQueries& queries) { log = queries.FolderLog({}); });
    if (!log) {
        ShowStatus("The client could not tell: see the output");
        return false;
    }
    Remark_ = log->Remark();
    const std::vector<TProjectLabel> before = Selected();
    Labels_ = LabelsOf(ParseLog(log->Text));
    std::vector<std::string> names;
    for (const TProjectLabel& label : before)
        names.push_back(label.Name);
    ShowRows(names);
    const auto branches = std::ranges::count_if(Labels_, &TProjectLabel::IsBranch);
    ShowStatus(std::to_string(static_cast<std::ptrdiff_t>(Labels_.size()) - branches) +
               " labels, " + std::to_string(branches) + " branches" +
               (Remark_.empty() ? "" : "  (" + Remark_ + ")"));
    return true;
}

void TLabelsForm::ShowRows(const std::vector<std::string>& selected) {
    std::ranges::stable_sort(Labels_, [this](const TProjectLabel& a, const TProjectLabel& b) {
        return Descending_ ? IsBefore(b, a, SortColumn_) : IsBefore(a, b, SortColumn_);
    });
    std::vector<TListRow> rows;
    std::vector<int> selection;
    for (const TProjectLabel& label : Labels_) {
        if (std::ranges::find(selected, label.Name) != selected.end())
            selection.push_back(static_cast<int>(rows.size()));
        rows.push_back({.Caption = label.Name,
                        .SubItems = {KindOf(label), std::to_string(label.Files),
                                     label.Newest > 0 ? TVersion::At(label.Newest).Text() : ""}});
    }
    List_->Replace(std::move(rows), selection);
}

void TLabelsForm::SortBy(int column) {
    std::vector<std::string> names;
    for (const TProjectLabel& label : Selected())
        names.push_back(label.Name);
    Descending_ = column == SortColumn_ && !Descending_;
    SortColumn_ = column;
    List_->SetSortMark(SortColumn_, Descending_);
    ShowRows(names);
}

std::vector<TProjectLabel> TLabelsForm::Selected() const {
    std::vector<TProjectLabel> labels;
    for (const int index : List_->SelectedIndices())
        labels.push_back(Labels_.at(static_cast<std::size_t>(index)));
    return labels;
}

std::optional<TProjectLabel> TLabelsForm::TheSelected(const char* toDoWhat) {
    std::vector<TProjectLabel> labels = Selected();
    if (labels.size() == 1)
        return labels.front();
    ShowStatus(std::string("Choose one label or branch to ") + toDoWhat);
    return std::nullopt;
}

// --- what is done -----------------------------------------------------------------------------

void TLabelsForm::Operate(const std::function<bool(TCvsObject&)>& operation,
                          const std::string& what) {
    const bool done = Host_.Operate({}, [&](TCvsObject& cvs) {
        // A label is on the whole project, whatever else stays in one folder.
        cvs.LocalOnly = false;
        return operation(cvs);
    });
    Load();
    ShowStatus(done ? what : "Not done: the main window says why");
}

void TLabelsForm::Compare() {
    std::vector<TProjectLabel> labels = Selected();
    if (labels.size() == 1)
        return Host_.Compare({}, TVersion::Of(labels[0].Name), TVersion::WorkingCopy());
    if (labels.size() != 2)
        return ShowStatus("Choose two to compare, or one to compare with the working copy");
    std::ranges::stable_sort(labels, {}, &TProjectLabel::Newest);
    Host_.Compare({}, TVersion::Of(labels[0].Name), TVersion::Of(labels[1].Name));
}

void TLabelsForm::UpdateTo() {
    const std::optional<TProjectLabel> label = TheSelected("update to");
    if (!label)
        return;
    const std::string meaning =
        label->IsBranch
            ? "The working copy stays on the branch: what you commit then goes there, until you go "
              "back to the trunk."
            : "The working copy stays at the label: nothing can be committed from it, until you go "
              "back to the trunk.";
    if (!DialogFunctions().AskYesNo(Caption, "Update all files to " + label->Name + "?\r\n" +
                                                 meaning + "\r\nFiles that do not have it go."))
        return;
    Operate(
        [&](TCvsObject& cvs) {
            cvs.StikyType = tandrel::stTag;
            cvs.StikyTag = label->Name;
            return cvs.Update();
        },
        "The working copy is at " + label->Name);
}

void TLabelsForm::ReturnToTrunk() {
    if (!DialogFunctions().AskYesNo(Caption,
                                    "Update all files to the newest of the trunk? The working copy "
                                    "does not stay on any label, branch or date then."))
        return;
    Operate(
        [](TCvsObject& cvs) {
            cvs.ResetSticky = true;
            return cvs.Update();
        },
        "The working copy is on the trunk");
}

void TLabelsForm::Create() {
    const std::vector<std::string> kinds = {"label", "branch"};
    std::vector<TInput> inputs = {
        {TInput::Text, "Name", "", {}},
        {TInput::Choice, "Kind", kinds[0], kinds},
        {TInput::Flag, "Only when everything is committed", "1", {}},
        {TInput::Note,
         "",
         "It is put on the revisions that the working copy has. What is not committed is not in "
         "them.",
         {}}};
    if (!AskFor("Create", inputs))
        return;
    const std::string name = Trim(inputs[0].Value);
    if (name.empty())
        return;
    if (std::ranges::find(Labels_, name, &TProjectLabel::Name) != Labels_.end())
        return ShowStatus("There is already a " + name + ": \"Move\" moves a label");
    Operate(
        [&](TCvsObject& cvs) {
            cvs.TagName = name;
            cvs.TagBranch = inputs[1].Value == kinds[1];
            cvs.TagCheckUncommitted = inputs[2].Value == "1";
            return cvs.Create_Tag(false);
        },
        name + " is created");
}

void TLabelsForm::Move() {
    const std::optional<TProjectLabel> label = TheSelected("move");
    if (!label)
        return;
    if (label->IsBranch)
        return ShowStatus(label->Name + " is a branch, and stays where it leaves the trunk");
    if (!DialogFunctions().AskRisk(
            Caption, "Move the label " + label->Name +
                         " to the revisions that the working copy has? Nobody can tell then "
                         "where it was."))
        return;
    Operate(
        [&](TCvsObject& cvs) {
            cvs.TagName = label->Name;
            cvs.TagForceMove = true;
            return cvs.Create_Tag(false);
        },
        label->Name + " is moved");
}

void TLabelsForm::Delete() {
    const std::optional<TProjectLabel> label = TheSelected("delete");
    if (!label || !DialogFunctions().AskRisk(
                      Caption, std::string("Delete the ") + KindOf(*label) + " " + label->Name +
                                   " of " + CountOf(*label) + "? " +
                                   (label->IsBranch ? "What was committed to it has no name then."
                                                    : "Nobody can tell then where it was.")))
        return;
    Operate(
        [&](TCvsObject& cvs) {
            cvs.TagName = label->Name;
            // The client refuses the option for branches with a label.
            cvs.TagDeleteBranch = label->IsBranch;
            return cvs.Del_Rtag(false);
        },
        label->Name + " is deleted");
}

}  // namespace workbench
