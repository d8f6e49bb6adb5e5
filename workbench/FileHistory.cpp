// The history of one file.

#include <algorithm>
#include <numeric>

#include "core/Cvs_time.h"
#include "framework/base/exceptions.h"
#include "framework/base/paths.h"
#include "workbench/History.h"
#include "workbench/LogNames.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

using namespace framework;
using hosting::TVersion;

namespace {

constexpr TDateTime Second = 1.0 / 86400;
constexpr std::size_t MostLabels = 2;

std::string LineCounts(const TRevision& revision) {
    return revision.Added && revision.Removed
               ? "+" + std::to_string(*revision.Added) + " -" + std::to_string(*revision.Removed)
               : std::string();
}

class TFileHistory final : public THistory {
public:
    TFileHistory(TFileLog log, std::string path)
        : Log_(std::move(log)),
          Path_(std::move(path)),
          Branches_(BranchesOf(Log_)),
          Labels_(LabelsOfRevisions(Log_)) {
        for (const TRevision& revision : Log_.Revisions)
            Numbers_.push_back(ParseNumber(revision.Number).value_or(TRevisionNumber()));
        Before_ = RevisionsBefore(Numbers_);
        TFileHistory::Filter({});
    }

    const char* Kind() const override { return "revisions"; }

    std::vector<TColumn> Columns() const override {
        // The second one is the tree's.
        return {{"Revision", 70}, {"Tree", 60},  {"Branch", 80},  {"Date", 105},   {"Author", 80},
                {"State", 55},    {"Lines", 60}, {"Labels", 190}, {"Message", 230}};
    }
    std::vector<TColumn> DetailColumns() const override { return {{"Label", 150}, {"Kind", 100}}; }

    void Filter(const TCommitFilter& filter) override {
        Tree_ = LayOut(Log_, FindRevisions(Log_, filter));
    }
    std::size_t Count() const override { return Log_.Revisions.size(); }
    const TRevisionTree* Tree() const override { return &Tree_; }
    bool IsRemoval(int row) const override { return At(row).IsDead(); }

    std::vector<TListRow> Rows() const override {
        std::vector<TListRow> rows;
        rows.reserve(Tree_.Rows.size());
        for (const TTreeRow& row : Tree_.Rows) {
            const TRevision& revision = Log_.Revisions[row.Revision];
            std::vector<std::string> labels;
            for (const std::size_t at : Labels_[row.Revision])
                labels.push_back(Log_.Labels[at].Name);
            rows.push_back(
                {.Caption = revision.Number,
                 .SubItems = {row.Ending ? "branches leave" : "", Branches_[row.Revision],
                              LocalText(revision.Date), revision.Author,
                              revision.IsDead() ? "removed" : revision.State, LineCounts(revision),
                              FirstOf(labels, MostLabels), FirstLineOf(revision.Message)}});
        }
        return rows;
    }

    std::string Key(int row) const override { return At(row).Number; }
    std::string Message(int row) const override { return At(row).Message; }

    std::vector<TListRow> Details(int row) const override {
        const std::size_t revision = Position(row);
        std::vector<TListRow> rows;
        for (const std::size_t at : Labels_[revision]) {
            const TFileLabel& label = Log_.Labels[at];
            const char* kind = "label";
            if (label.IsBranch())
                kind = label.Name == Branches_[revision] ? "branch, its end" : "branch, its start";
            rows.push_back({.Caption = label.Name, .SubItems = {kind}});
        }
        return rows;
    }

    std::string Text(int row) const override {
        const TRevision& revision = At(row);
        return ExtractFileName(Path_) + " " + revision.Number + "  " + LocalText(revision.Date) +
               "  " + revision.Author + "\n" + revision.Message + "\n";
    }

    std::optional<TStates> Changes(const TChosen& chosen) const override {
        if (chosen.Rows.size() == 2)
            return TStates{{Path_}, Version(chosen.Rows[1]), Version(chosen.Rows[0])};
        if (chosen.Rows.size() != 1)
            return std::nullopt;
        const std::size_t at = Position(chosen.Rows[0]);
        TVersion before;
        if (Before_[at])
            before = TVersion::Of(Log_.Revisions[*Before_[at]].Number);
        else if (const TRevisionNumber number = NumberBefore(Numbers_[at]);
                 Log_.IsPart && !number.empty())
            before = TVersion::Of(TextOf(number));
        else if (Log_.Revisions[at].Date > 0)
            // Of nothing the client has no number.
            before = TVersion::At(Log_.Revisions[at].Date - Second);
        else
            return std::nullopt;
        return TStates{{Path_}, before, Version(chosen.Rows[0])};
    }

    std::optional<TStates> SinceThen(const TChosen& chosen) const override {
        if (chosen.Rows.size() != 1)
            return std::nullopt;
        return TStates{{Path_}, Version(chosen.Rows[0]), TVersion::WorkingCopy()};
    }

    std::vector<TFileAt> Files(const TChosen& chosen) const override {
        std::vector<TFileAt> files;
        for (const int row : chosen.Rows)
            if (!At(row).IsDead())
                files.push_back({Path_, At(row).Number});
        return files;
    }

    bool IsBinary(const TFileAt&) const override { return Log_.KeywordMode == "b"; }

private:
    std::size_t Position(int row) const {
        return Tree_.Rows.at(static_cast<std::size_t>(row)).Revision;
    }
    const TRevision& At(int row) const { return Log_.Revisions[Position(row)]; }
    TVersion Version(int row) const { return TVersion::Of(At(row).Number); }

    const TFileLog Log_;
    const std::string Path_;
    const std::vector<std::string> Branches_;
    const std::vector<std::vector<std::size_t>> Labels_;  // positions, for each revision
    std::vector<TRevisionNumber> Numbers_;
    std::vector<std::optional<std::size_t>> Before_;
    TRevisionTree Tree_;  // of what the filter lets through
};

}  // namespace

std::string LocalText(TDateTime utc) {
    if (utc == 0)
        return {};
    try {
        const TDateTime local = tandrel::UTCToLocalTime(utc);
        const DateParts date = DecodeDate(local);
        const TimeParts time = DecodeTime(local);
        const auto figures = [](int number) {
            return (number < 10 ? "0" : "") + std::to_string(number);
        };
        return std::to_string(date.Year) + "-" + figures(date.Month) + "-" + figures(date.Day) +
               " " + figures(time.Hour) + ":" + figures(time.Minute);
    } catch (const EConvertError&) {
        // A moment that the system's calendar does not reach.
        return {};
    }
}

std::unique_ptr<THistory> HistoryOfFile(TFileLog log, std::string path) {
    return std::make_unique<TFileHistory>(std::move(log), std::move(path));
}

}  // namespace workbench
