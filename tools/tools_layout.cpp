// The controls of the tools' editor and where they stand.

#include <span>
#include <string_view>

#include "framework/ui/dialog_sizes.h"
#include "framework/ui/labels.h"
#include "framework/ui/ok_cancel.h"
#include "framework/ui/tool_bar.h"
#include "tools/tools_frm.h"

namespace tandrel {

using namespace framework;

namespace {

// Design units.
constexpr int FormWidth = 400, Margin = TDialogSizes::Margin, Gap = TDialogSizes::Gap;
constexpr int Inner = FormWidth - 2 * Margin;
constexpr int ListTop = Margin + 28, ListHeight = 120;
constexpr int FieldsTop = ListTop + ListHeight + Margin, FieldLeft = 84,
              FieldHeight = TDialogSizes::EditHeight;
constexpr int DotsWidth = 24;
constexpr int GroupTop = FieldsTop + 3 * (FieldHeight + Gap) + 4;
constexpr int BoxesTop = GroupTop + 20, BoxLeft = Margin + 12, BoxHeight = 17, BoxStep = 24;
constexpr int BoxWidth = 240, TypeLeft = BoxLeft + BoxWidth + Gap;
constexpr int GroupHeight = BoxesTop + 5 * BoxStep - GroupTop;
constexpr int ButtonsTop = GroupTop + GroupHeight + Margin;

constexpr COLORREF Green = RGB(40, 136, 64);
constexpr COLORREF Red = RGB(192, 48, 40);
constexpr COLORREF Blue = RGB(40, 96, 168);

/// Fills a shape given in a square of sixteen units.
void Fill(HDC dc, const RECT& area, COLORREF colour, std::span<const POINT> shape) {
    std::array<POINT, 12> corners{};
    for (std::size_t i = 0; i < shape.size(); ++i)
        corners[i] = {area.left + ::MulDiv(static_cast<int>(shape[i].x),
                                           static_cast<int>(area.right - area.left), 16),
                      area.top + ::MulDiv(static_cast<int>(shape[i].y),
                                          static_cast<int>(area.bottom - area.top), 16)};
    const GdiObject brush(::CreateSolidBrush(colour));
    const HGDIOBJ brushBefore = ::SelectObject(dc, brush.Get());
    const HGDIOBJ penBefore = ::SelectObject(dc, ::GetStockObject(NULL_PEN));
    ::Polygon(dc, corners.data(), static_cast<int>(shape.size()));
    ::SelectObject(dc, penBefore);
    ::SelectObject(dc, brushBefore);
}

constexpr POINT Plus[] = {{6, 2},   {10, 2}, {10, 6}, {14, 6}, {14, 10}, {10, 10},
                          {10, 14}, {6, 14}, {6, 10}, {2, 10}, {2, 6},   {6, 6}};
constexpr POINT Cross[] = {{2, 4},   {4, 2},   {8, 6},  {12, 2}, {14, 4}, {10, 8},
                           {14, 12}, {12, 14}, {8, 10}, {4, 14}, {2, 12}, {6, 8}};
constexpr POINT Down[] = {{6, 2}, {10, 2}, {10, 8}, {14, 8}, {8, 14}, {2, 8}, {6, 8}};
constexpr POINT Up[] = {{6, 14}, {10, 14}, {10, 8}, {14, 8}, {8, 2}, {2, 8}, {6, 8}};

}  // namespace

void TUserToolsForm::BuildControls() {
    BuildToolBar();
    BuildList();
    BuildFields();
    BuildOptions();
    BuildDirectoryMenu();
    PopupMenu2_ = &Make<TPopupMenu>("PopupMenu2");
    Timer1_ = &Make<TFormTimer>("Timer1", *this, 250u);
    Timer1_->OnTimer = [this](TObject*) { SelectionTimer(); };
    Timer2_ = &Make<TFormTimer>("Timer2", *this, 100u);
    Timer2_->OnTimer = [this](TObject*) { OptionTimer(); };
    OnKeyPreview = [this](WPARAM key) { return ListKey(key); };
}

void TUserToolsForm::BuildToolBar() {
    const struct {
        const char* Name;
        const wchar_t* Hint;
        COLORREF Colour;
        std::span<const POINT> Shape;
        std::function<void()> Click;
    } tools[] = {
        {"ToolButton1", L"Просмотр отчета ", Green, Plus, [this] { AddClick(); }},
        {"ToolButton2", L"Delete", Red, Cross, [this] { DeleteClick(); }},
        {"ToolButton3", L"Move down", Blue, Down, [this] { MoveClick(1); }},
        {"ToolButton4", L"Move up", Blue, Up, [this] { MoveClick(-1); }},
    };
    Pictures_.Add(static_cast<int>(std::size(tools)), [&](int index, HDC dc, const RECT& area) {
        Fill(dc, area, tools[index].Colour, tools[index].Shape);
    });
    auto& bar = Make<TToolBar>("ToolBar1", *this, Pictures_);
    bar.SetAccessibleName("Tools");
    int image = 0;
    for (const auto& tool : tools)
        Make<TToolButton>(tool.Name, bar, image++, tool.Hint).OnClick =
            [click = tool.Click](TObject*) { click(); };
    const int width = bar.Width() * image;
    const int top = Scale(ListTop) - bar.Height();
    bar.SetBounds(Scale(FormWidth - Margin) - width, top, width, bar.Height());
    auto& header = Make<TLabel>("Label1", *this, "Tools menu contents");
    header.SetBounds(Scale(Margin), top + (bar.Height() - header.Height()) / 2, header.Width(),
                     header.Height());
}

void TUserToolsForm::BuildList() {
    ListView1_ =
        &Make<TListView>("ListView1", *this, TListViewStyle{.Header = false, .EditCaptions = true});
    ListView1_->SetBounds(Scale(Margin), Scale(ListTop), Scale(Inner), Scale(ListHeight));
    constexpr int RoomForBar = 24;
    ListView1_->AddColumn("", Inner - RoomForBar);
    ListView1_->OnSelectItem = ListView1_->OnClick = [this](TObject*) { Timer1_->Restart(); };
    ListView1_->OnEdited = [this](int index, const std::string& caption) {
        CaptionEdited(index, caption);
    };
}

TEdit& TUserToolsForm::AddField(const char* name, const char* caption, int top, const char* button,
                                const char* buttonCaption, void (TUserToolsForm::*click)()) {
    auto& label = Make<TLabel>("", *this, caption);
    label.SetBounds(Scale(Margin), Scale(top) + (Scale(FieldHeight) - label.Height()) / 2,
                    label.Width(), label.Height());
    auto& edit = Make<TEdit>(name, *this);
    edit.SetBounds(Scale(FieldLeft), Scale(top),
                   Scale(FormWidth - Margin - DotsWidth - 2 - FieldLeft), Scale(FieldHeight));
    auto& dots = Make<TButton>(button, *this, buttonCaption);
    dots.SetBounds(Scale(FormWidth - Margin - DotsWidth), Scale(top), Scale(DotsWidth),
                   Scale(FieldHeight));
    // "Command :" is the caption's own spelling.
    dots.SetAccessibleName(std::string(caption, std::string_view(caption).find(' ')) +
                           (std::string_view(buttonCaption) == "..." ? ": Browse" : ": Insert"));
    dots.OnClick = [this, click](TObject*) { (this->*click)(); };
    return edit;
}

void TUserToolsForm::BuildFields() {
    constexpr int Step = FieldHeight + Gap;
    Edit1_ =
        &AddField("Edit1", "Command :", FieldsTop, "Button1", "...", &TUserToolsForm::CommandClick);
    Edit2_ = &AddField("Edit2", "Arguments :", FieldsTop + Step, "Button2", ">",
                       &TUserToolsForm::ArgumentsClick);
    Edit3_ = &AddField("Edit3", "Initial :", FieldsTop + 2 * Step, "Button3", ">",
                       &TUserToolsForm::InitialClick);
}

void TUserToolsForm::BuildOptions() {
    constexpr const char* Captions[] = {" Capture Output in Tool View ",
                                        "Preview Output external Browser",
                                        "&Capture Output in new document of type",
                                        "Promt for arguments", "Close window on exiting"};
    auto& group = Make<TGroupBox>("GroupBox1", *this, "Tools Option");
    group.SetBounds(Scale(Margin), Scale(GroupTop), Scale(Inner), Scale(GroupHeight));
    for (std::size_t i = 0; i < Boxes_.size(); ++i) {
        const int top = BoxesTop + static_cast<int>(i) * BoxStep;
        auto& box = Make<TCheckBox>("CheckBox" + std::to_string(i + 1), *this, "");
        Boxes_[i] = &box;
        box.SetMnemonicText(Captions[i]);
        box.SetBounds(Scale(BoxLeft), Scale(top), Scale(BoxWidth), Scale(BoxHeight));
        if (i < 3)
            box.OnClick = [this, &box](TObject*) { CaptureClick(box); };
        if (i != 2)
            continue;
        ComboBox1_ = &Make<TComboBox>("ComboBox1", *this);
        ComboBox1_->SetAccessibleName("Type of the new document");
        ComboBox1_->SetBounds(Scale(TypeLeft), Scale(top) - Scale(2),
                              Scale(FormWidth - Margin - 12 - TypeLeft), Scale(FieldHeight));
    }
    Boxes_.back()->OnClick = [this](TObject*) { Timer2_->Restart(); };

    AddOkCancel(*this, Scale(FormWidth), Scale(ButtonsTop)).Ok.OnClick = [this](TObject*) {
        OkClick();
    };
}

void TUserToolsForm::BuildDirectoryMenu() {
    PopupMenu1_ = &Make<TPopupMenu>("PopupMenu1");
    for (const auto& [caption, macro] : {std::pair{"File Directory", "FileDir"},
                                         {"Current Directory", "CurDir"},
                                         {"Project Directory", "ProjectDir"}}) {
        PopupMenu1_->Add(caption).OnClick = [this, macro = macro](TObject*) {
            Edit3_->SetText(AddParam(macro));
        };
        PopupMenu1_->AddSeparator();
    }
    PopupMenu1_->Add("Browse...").OnClick = [this](TObject*) { BrowseClick(); };
}

}  // namespace tandrel
