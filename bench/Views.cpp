// What the windows that show the past add to the client's own time.

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "bench/BareRun.h"
#include "bench/HandMadeCopy.h"
#include "bench/Table.h"
#include "framework/ui/application.h"
#include "framework/ui/line_view.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/Process.h"
#include "workbench/ComparisonForm.h"
#include "workbench/HistoryForm.h"
#include "workbench/MainForm.h"
#include "workbench/ProjectViews.h"

namespace bench {
namespace {

using namespace framework;

constexpr int Turns = 3;
constexpr DWORD ClientDeadline = 600000;

void Client(const std::string& arguments, const std::string& folder) {
    const auto result = support::RunProcess("cvs -f -q " + arguments, folder, {}, ClientDeadline);
    Require(result.ExitCode == 0, "the client: " + result.Output);
}

/// The form of a kind that is open.
template <class TView>
TView& OpenView() {
    const std::vector<TView*> open = support::OpenForms<TView>();
    Require(open.size() == 1, "a window is not there");
    return *open.front();
}

/// A text of many lines, some of them changed.
std::string ManyLines(int lines, int changedOf) {
    std::string text;
    for (int i = 0; i < lines; ++i)
        text += "    value[" + std::to_string(i) + "] = function(" +
                std::to_string(changedOf > 0 && i % changedOf == 0 ? -i : i * 7) +
                ", another, more);\r\n";
    return text;
}

void MeasureComparison(TTable& table, const std::string& work, workbench::TProjectViews& views) {
    constexpr int Lines = 50000, Changes = 5000;
    const std::string file = work + "\\large.c";
    support::WriteBytes(file, ManyLines(Lines, 0));
    Client("add large.c", work);
    Client("commit -m m large.c", work);
    support::WriteBytes(file, ManyLines(Lines, Lines / Changes));
    const auto close = [] {
        ::SendMessageW(OpenView<workbench::TComparisonForm>().Handle(), WM_CLOSE, 0, 0);
    };
    const auto [window, bare] = MedianTurn(
        Turns,
        [&] {
            views.Compare({file}, hosting::TVersion::Base(), hosting::TVersion::WorkingCopy());
            Application().ProcessMessages();
            Require(OpenView<workbench::TComparisonForm>().Compared().size() >= Lines,
                    "lines are missing");
            close();
        },
        [&] {
            std::size_t bytes = 0;
            BareRun(
                "cvs -f -q diff -U0 -N large.c",
                [&](const char* piece) { bytes += std::strlen(piece); }, work);
            Require(bytes > Changes * 50, "the client says too little");
        });
    table.Add("comparison of 50,000 lines, 5,000 changed, in its window", window, "the bare client",
              bare, 1.5);
    views.Compare({file}, hosting::TVersion::Base(), hosting::TVersion::WorkingCopy());
    auto& lines = support::Part<TLineView>(OpenView<workbench::TComparisonForm>(), "Lines");
    constexpr int Pages = 200;
    const double page = Time([&] {
                            for (int i = 0; i < Pages; ++i) {
                                ::SendMessageW(lines.Handle(), WM_VSCROLL, SB_PAGEDOWN, 0);
                                ::UpdateWindow(lines.Handle());
                            }
                        }) /
                        Pages;
    table.Add("a page of it, scrolled and drawn", page, "a picture of a smooth film", 1000.0 / 60,
              1);
    close();
}

/// An archive with many revisions and labels, as the client would have written it: it takes hours
/// for one.
std::string LongArchive(int revisions, int labels) {
    const auto number = [](int revision) { return "1." + std::to_string(revision); };
    std::string text = "head\t" + number(revisions) + ";\naccess;\nsymbols";
    for (int i = 0; i < labels; ++i)
        text += "\n\tRELEASE_" + std::to_string(i) + ":" + number(i % revisions + 1);
    text += ";\nlocks; strict;\ncomment\t@ * @;\n\n";
    for (int i = revisions; i > 0; --i) {
        char date[32];
        std::snprintf(date, sizeof date, "2004.%02d.%02d.%02d.%02d.00", 1 + i / 28 / 24 % 12,
                      1 + i / 24 % 28, i % 24, i % 60);
        text += "\n" + number(i) + "\ndate\t" + date +
                ";\tauthor somebody;\tstate Exp;\nbranches;\nnext\t" +
                (i > 1 ? number(i - 1) : "") + ";\n";
    }
    text += "\n\ndesc\n@@\n";
    for (int i = revisions; i > 0; --i)
        text += "\n\n" + number(i) + "\nlog\n@Change number " + std::to_string(i) +
                "\n\nBecause it was not right.\n@\ntext\n@" +
                (i == revisions ? "line\n" : "d1 1\na1 1\nline " + std::to_string(i) + "\n") +
                "@\n";
    return text;
}

void MeasureHistory(TTable& table, const std::string& work, const std::string& module,
                    workbench::TProjectViews& views) {
    constexpr int Revisions = 3000, Labels = 20000;
    support::WriteBytes(module + "\\long.c,v", LongArchive(Revisions, Labels));
    Client("update", work);
    const std::string file = work + "\\long.c";
    const auto [window, bare] = MedianTurn(
        Turns,
        [&] {
            views.ShowHistory({file});
            Application().ProcessMessages();
            auto& form = OpenView<workbench::THistoryForm>();
            Require(support::Part<TListView>(form, "List").Count() == Revisions,
                    "revisions are missing");
            ::SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
        },
        [&] {
            std::size_t bytes = 0;
            BareRun(
                "cvs -f -q log long.c", [&](const char* piece) { bytes += std::strlen(piece); },
                work);
            Require(bytes > Revisions * 50, "the client says too little");
        });
    table.Add("history of 3,000 revisions and 20,000 labels, in its window", window,
              "the bare client", bare, 1.2);
}

}  // namespace

void MeasureViews(TTable& table) {
    const support::TTempFolder folder("bench");
    const std::string repository = folder / "repository";
    MakeRepository(repository, folder / "seed");
    support::WriteBytes(folder / "start\\a.c", Text);
    const std::string root = "-d \"" + repository + "\" ";
    Client(root + "import -m m module V R", folder / "start");
    Client(root + "checkout module", folder.Path());
    const std::string copy = folder / "module";
    hosting::TSettings settings("Software\\Tandrel Bench", folder / "data");
    TPackageRegistry packages;
    Application().OnModalBegin = [](TForm& form) { form.ModalResult = mrOk; };
    {
        workbench::TMainForm form(settings, packages);
        form.OpenProject(copy);
        form.Show();
        workbench::TProjectViews views(form, copy);
        MeasureComparison(table, copy, views);
        MeasureHistory(table, copy, repository + "\\module", views);
    }
    Application().OnModalBegin = nullptr;
}

}  // namespace bench
