// What the dialogs take that show much at a time, beside what the same takes with the bare
// controls.

// clang-format off
#include <windows.h>
#include <richedit.h>
// clang-format on

#include <functional>
#include <string>
#include <vector>

#include "bench/HandMadeCopy.h"
#include "bench/Table.h"
#include "core/WorkDirTree.h"
#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/rich_edit.h"
#include "framework/ui/tree_view.h"
#include "support/Drive.h"
#include "support/Files.h"

namespace bench {
namespace {

using namespace framework;
using support::Part;
using tandrel::TCvsObject;

constexpr int BrowserTurns = 9;
constexpr int FillTurns = 9;
constexpr int ColourTurns = 2;
constexpr int Many = 5000;
constexpr int ListWidth = 450, ListHeight = 250;

/// The least times of actions that take turns. What others do on the machine only adds.
TTurn LeastOfTurns(int count, const std::function<double()>& action,
                   const std::function<double()>& other) {
    TTurn least{action(), other()};
    for (int i = 1; i < count; ++i) {
        least.first = std::min(least.first, action());
        least.second = std::min(least.second, other());
    }
    return least;
}

/// Does something with the modal form that a call opens, and then cancels the form.
void WithForm(const std::function<void()>& open, const std::function<void(TForm& form)>& use) {
    struct TRestored {
        ~TRestored() { Application().OnModalBegin = nullptr; }
    } const restored;
    std::exception_ptr raised;
    Application().OnModalBegin = [&](TForm& form) {
        try {
            use(form);
        } catch (...) {
            raised = std::current_exception();
        }
        form.ModalResult = mrCancel;
    };
    open();
    if (raised)
        std::rethrow_exception(raised);
}

void Draw(TForm& form) {
    Application().ProcessMessages();
    ::RedrawWindow(form.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

/// A window with the bare controls on it.
class TBareForm {
public:
    TBareForm() {
        Form.SetClientSize(2 * ListWidth, ListHeight);
        const auto make = [this](const wchar_t* windowClass, DWORD style, int left) {
            return ::CreateWindowExW(WS_EX_CLIENTEDGE, windowClass, L"",
                                     WS_CHILD | WS_VISIBLE | style, left, 0, ListWidth, ListHeight,
                                     Form.Handle(), nullptr, ::GetModuleHandleW(nullptr), nullptr);
        };
        const INITCOMMONCONTROLSEX classes{sizeof classes,
                                           ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
        ::InitCommonControlsEx(&classes);
        Tree = make(WC_TREEVIEWW, TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT, 0);
        List = make(WC_LISTVIEWW, LVS_REPORT | LVS_SINGLESEL, ListWidth);
        Form.Show();
        Draw(Form);
    }
    void AddColumns(int count) const {
        for (int i = 0; i < count; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_WIDTH;
            column.cx = 100;
            ::SendMessageW(List, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                           reinterpret_cast<LPARAM>(&column));
        }
    }
    void Clear() const {
        ::SendMessageW(List, LVM_DELETEALLITEMS, 0, 0);
        ::SendMessageW(Tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    }
    void FillTree() const {
        ::SendMessageW(Tree, WM_SETREDRAW, FALSE, 0);
        const HTREEITEM top = AddNode(TVI_ROOT, "folder");
        for (int i = 0; i < Many; ++i)
            AddNode(top, "file" + std::to_string(i) + ".c");
        ::SendMessageW(Tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(top));
        ::SendMessageW(Tree, WM_SETREDRAW, TRUE, 0);
    }
    void FillList(const std::vector<std::string>& texts) const {
        ::SendMessageW(List, WM_SETREDRAW, FALSE, 0);
        for (int i = 0; i < Many; ++i) {
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_IMAGE;
            item.iItem = i;
            std::wstring text = ToWide("file" + std::to_string(i) + ".c");
            item.pszText = text.data();
            ::SendMessageW(List, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
            item.mask = LVIF_TEXT;
            for (const std::string& subItem : texts) {
                ++item.iSubItem;
                text = ToWide(subItem);
                item.pszText = text.data();
                ::SendMessageW(List, LVM_SETITEMTEXTW, static_cast<WPARAM>(i),
                               reinterpret_cast<LPARAM>(&item));
            }
        }
        ::SendMessageW(List, WM_SETREDRAW, TRUE, 0);
    }

    TForm Form{"bare"};
    HWND Tree, List;

private:
    HTREEITEM AddNode(HTREEITEM parent, const std::string& name) const {
        std::wstring text = ToWide(name);
        TVINSERTSTRUCTW insert{};
        insert.hParent = parent;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        insert.item.pszText = text.data();
        return reinterpret_cast<HTREEITEM>(
            ::SendMessageW(Tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    }
};

/// The time until the browser is drawn and has answered a key.
double OpenBrowser(TCvsObject& obj, int rows) {
    const double start = Milliseconds();
    double end = 0;
    WithForm([&] { obj.StatusBrowser(); },
             [&](TForm& browser) {
                 TForm& page = support::StepOf(browser);
                 auto& list = Part<TListView>(page, "ListView1");
                 Draw(browser);
                 list.SetFocus();
                 ::PostMessageW(list.Handle(), WM_KEYDOWN, VK_END, 1);
                 Application().ProcessMessages();
                 Require(list.SelectedIndex() == rows - 1, "a browser did not answer");
                 const auto& top = Part<TTreeView>(page, "TreeView1").Root().Children().front();
                 Require(static_cast<int>(top->Children().size()) == rows,
                         "a browser's tree is not full");
                 end = Milliseconds();
             });
    return end - start;
}

void MeasureOpeningOf(TTable& table, const std::string& what, const TWorkingCopy& copy, int rows,
                      double limit) {
    TCvsObject obj;
    obj.Set_WorkingDirectory(copy.Path);
    const auto load = [&] { return Time([&] { obj.Load_WorkDirTree(); }); };
    load();
    const auto [opened, loaded] = LeastOfTurns(
        BrowserTurns, [&] { return OpenBrowser(obj, rows); }, load);
    table.Add("browser of 20,000 files, " + what, opened, "Load_WorkDirTree of the same", loaded,
              limit);
}

void MeasureOpening(TTable& table, const support::TTempFolder& folder) {
    constexpr int Folders = 1000, PerFolder = 20, PerGroup = 50;
    const TWorkingCopy nested(folder / "work", folder / "repository", Folders, PerFolder, PerGroup);
    MeasureOpeningOf(table, "20 in the root", nested, Folders / PerGroup, 1.2);
    const TWorkingCopy wide(folder / "wide", folder / "repository", Folders, PerFolder);
    MeasureOpeningOf(table, "1,000 in the root", wide, Folders, 1.3);
}

void MeasureExpanding(TTable& table, const support::TTempFolder& folder) {
    const TWorkingCopy copy(folder / "flat", folder / "repository", 1, Many);
    TCvsObject obj;
    obj.Set_WorkingDirectory(copy.Path);
    TBareForm bare;
    bare.AddColumns(6);
    obj.Load_WorkDirTree();
    tandrel::TWorkDirItem& item = obj.WorkDirTree.GetItem(0);
    // A new browser each time: a folder that was open once has nodes to be deleted first.
    const auto expand = [&] {
        double time = 0;
        WithForm([&] { tandrel::Sh_StatusBrowser(obj); },
                 [&](TForm& browser) {
                     auto& list = Part<TListView>(support::StepOf(browser), "ListView1");
                     const auto& node = dynamic_cast<const TTreeViewNode&>(*item.TreeNode);
                     list.Select(0);
                     Draw(browser);
                     time = Time([&] {
                         list.OnDblClick(&list);
                         Draw(browser);
                     });
                     Require(
                         list.Count() == Many && node.Children().size() == Many && node.Expanded(),
                         "a folder was not opened");
                 });
        return time;
    };
    const tandrel::TWorkDirItem& file = item.Children->GetItem(0);
    const auto fill = [&] {
        bare.Clear();
        Draw(bare.Form);
        return Time([&] {
            bare.FillTree();
            bare.FillList({file.StatusName(), file.Revision, file.TimeStamp, file.RepositoryPath,
                           file.RepositoryFileName});
            Draw(bare.Form);
        });
    };
    const auto [expanded, filled] = LeastOfTurns(FillTurns, expand, fill);
    table.Add("browser opens a folder of 5,000 files", expanded, "bare fill of tree and list",
              filled, 1.5);
}

void MeasureLabels(TTable& table) {
    TCvsObject full, empty;
    for (int i = 0; i < Many; ++i)
        full.LogListA.Add("RELEASE_" + std::to_string(i), "1.1", true);
    TBareForm bare;
    bare.AddColumns(2);
    const auto open = [](TCvsObject& obj) {
        const double start = Milliseconds();
        double end = 0;
        std::string name;
        WithForm([&] { tandrel::Get_ProjectTag(obj, tandrel::tsoAll, name); },
                 [&](TForm& form) {
                     Draw(form);
                     Require(Part<TListView>(form, "ListView1").Count() == obj.LogListA.Count(),
                             "names are missing");
                     end = Milliseconds();
                 });
        return end - start;
    };
    const auto fill = [&] {
        bare.Clear();
        return open(empty) + Time([&] {
                   bare.FillList({"Version Label(Revision)"});
                   Draw(bare.Form);
               });
    };
    const auto [opened, filled] = LeastOfTurns(
        FillTurns, [&] { return open(full); }, fill);
    table.Add("label selection with 5,000 names", opened, "an empty one and a bare fill", filled,
              1.5);
}

/// Its comparison is a text that is given.
class TDifferent : public TCvsObject {
public:
    std::string DiffFileEx(const std::string&) override { return Difference; }
    std::string Difference;
};

/// A comparison of that size: two lines for two lines again and again.
std::string MakeDifference(std::size_t size) {
    std::string text;
    for (int i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i);
        text += number + "," + number + "c" + number + "," + number + "\r\n";
        for (const char* line : {"< ", "< ", "---", "> ", "> "})
            text += std::string(line) +
                    (*line == '-' ? "" : "    a line of the length that lines have;") + "\r\n";
    }
    return text;
}

/// The same with the bare control: each line is found, selected and coloured.
double BareColouring(TRichEdit& edit, const std::string& text) {
    return Time([&] {
        edit.SetText(text);
        ::SendMessageW(edit.Handle(), WM_SETREDRAW, FALSE, 0);
        LONG start = 0;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            const auto length = static_cast<LONG>(end - at);
            if (text[at] == '<' || text[at] == '>') {
                CHARRANGE range{start, start + length};
                CHARFORMAT2W format{};
                format.cbSize = sizeof format;
                format.dwMask = CFM_COLOR;
                format.crTextColor = text[at] == '<' ? RGB(255, 0, 0) : RGB(0, 0, 255);
                ::SendMessageW(edit.Handle(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
                ::SendMessageW(edit.Handle(), EM_SETCHARFORMAT, SCF_SELECTION,
                               reinterpret_cast<LPARAM>(&format));
            }
            start += length + 1;
            at = end + 2;
        }
        ::SendMessageW(edit.Handle(), WM_SETREDRAW, TRUE, 0);
    });
}

void MeasureColouring(TTable& table, const support::TTempFolder& folder) {
    constexpr std::size_t Size = 1024 * 1024;
    const TWorkingCopy copy(folder / "one", folder / "repository", 1, 1);
    TDifferent obj;
    obj.Set_WorkingDirectory(copy.Path);
    obj.Load_WorkDirTree();
    tandrel::TWorkDirItem& file = obj.WorkDirTree.GetItem(0).Children->GetItem(0);
    file.Changed = true;
    const std::string half = MakeDifference(Size), whole = MakeDifference(2 * Size);
    const auto measure = [&](TForm& browser) {
        TForm& page = support::StepOf(browser);
        auto& list = Part<TListView>(page, "ListView1");
        for (const char* entry : {"StatusItem", "LogItem"})
            Part<TMenuItem>(page, entry).Click();
        list.Rows().Clear();
        AddLwItems(list.Rows(), file);
        list.Select(0);
        auto& edit = Part<TRichEdit>(page, "DiffEdit");
        TForm bareForm("bare");
        auto& bare = bareForm.Make<TRichEdit>("edit", bareForm);
        bare.SetBounds(0, 0, edit.Width(), edit.Height());
        const auto colour = [&](const std::string& text) {
            obj.Difference = text;
            const double time = Time([&] { Part<TMenuItem>(page, "RefreschF51").Click(); });
            Require(edit.Text() == text, "a comparison is not shown");
            return time;
        };
        const auto [ofWhole, ofHalf] = LeastOfTurns(
            ColourTurns, [&] { return colour(whole); }, [&] { return colour(half); });
        table.Add("comparison of 2 MB shown in colours", ofWhole, "the same, 1 MB", ofHalf, 2.3);
        const auto [again, asBare] = LeastOfTurns(
            ColourTurns, [&] { return colour(whole); }, [&] { return BareColouring(bare, whole); });
        table.Add("comparison of 2 MB shown in colours", again, "bare select and colour", asBare,
                  1.5);
    };
    WithForm([&] { tandrel::Sh_StatusBrowser(obj); }, measure);
}

}  // namespace

void MeasureForms(TTable& table) {
    const support::TTempFolder folder("bench");
    MeasureOpening(table, folder);
    MeasureExpanding(table, folder);
    MeasureLabels(table);
    MeasureColouring(table, folder);
}

}  // namespace bench
