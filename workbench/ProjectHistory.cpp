// The history of several files: their commits.

#include <algorithm>

#include "framework/base/paths.h"
#include "workbench/History.h"
#include "workbench/LogNames.h"

namespace workbench {

using namespace framework;
using hosting::TVersion;

namespace {

constexpr TDateTime Second = 1.0 / 86400;

/// A branch as it was at a moment; the trunk for none.
TVersion StateOf(const std::string& branch, TDateTime utc) {
    if (branch.empty())
        return TVersion::At(utc);
    const DateParts date = DecodeDate(utc);
    const auto figures = [](int number) {
        return (number < 10 ? "0" : "") + std::to_string(number);
    };
    return TVersion::Of(branch + ":" + std::to_string(date.Year) + "-" + figures(date.Month) + "-" +
                        figures(date.Day) + " " + TimeToStr(utc) + " UTC");
}

class TProjectHistory final : public THistory {
public:
    TProjectHistory(std::vector<TFileLog> logs, std::vector<std::string> paths,
                    const std::string& folder, std::vector<std::string> about)
        : Logs_(std::move(logs)), Paths_(std::move(paths)), About_(std::move(about)) {
        const std::string top = folder + "\\";
        for (std::size_t i = 0; i < Logs_.size(); ++i) {
            if (!Paths_[i].starts_with(top))
                continue;
            Logs_[i].Name = Paths_[i].substr(top.size());
            std::ranges::replace(Logs_[i].Name, '\\', '/');
        }
        Commits_ = CommitsOf(Logs_);
        TProjectHistory::Filter({});
    }

    const char* Kind() const override { return "commits"; }
    std::vector<TColumn> Columns() const override {
        return {{"Date", 105}, {"Author", 80}, {"Branch", 90}, {"Files", 150}, {"Message", 420}};
    }
    std::vector<TColumn> DetailColumns() const override {
        return {{"File", 190}, {"Revision", 70}, {"Change", 70}};
    }

    void Filter(const TCommitFilter& filter) override {
        Shown_ = FindCommits(Commits_, Logs_, filter);
    }
    std::size_t Count() const override { return Commits_.size(); }

    std::vector<TListRow> Rows() const override {
        std::vector<TListRow> rows;
        rows.reserve(Shown_.size());
        for (const std::size_t at : Shown_) {
            const TCommit& commit = Commits_[at];
            std::vector<std::string> names;
            for (const TCommittedFile& file : commit.Files)
                names.push_back(file.Name);
            rows.push_back({.Caption = LocalText(commit.Date),
                            .SubItems = {commit.Author, commit.Branch,
                                         names.size() > 2 ? std::to_string(names.size()) + " files"
                                                          : FirstOf(names, 2),
                                         FirstLineOf(commit.Message)}});
        }
        return rows;
    }

    std::string Key(int row) const override {
        const TCommittedFile& file = At(row).Files.front();
        return file.Name + " " + file.Revision;
    }
    std::string Message(int row) const override { return At(row).Message; }

    std::vector<TListRow> Details(int row) const override {
        std::vector<TListRow> rows;
        for (const TCommittedFile& file : At(row).Files)
            rows.push_back({.Caption = file.Name,
                            .SubItems = {file.Revision, file.Removed          ? "removed"
                                                        : file.Before.empty() ? "new"
                                                                              : "changed"}});
        return rows;
    }

    std::string Text(int row) const override {
        const TCommit& commit = At(row);
        std::string text = LocalText(commit.Date) + "  " + commit.Author +
                           (commit.Branch.empty() ? "" : "  " + commit.Branch) + "\n" +
                           commit.Message + "\n";
        for (const TCommittedFile& file : commit.Files)
            text += "    " + file.Name + " " + file.Revision + (file.Removed ? " (removed)" : "") +
                    "\n";
        return text;
    }

    std::optional<TStates> Changes(const TChosen& chosen) const override {
        if (chosen.Rows.size() == 2) {
            const TCommit& newer = At(chosen.Rows[0]);
            const TCommit& older = At(chosen.Rows[1]);
            if (older.Date == 0 || newer.Date == 0)
                return std::nullopt;
            return TStates{About_, StateOf(older.Branch, older.Last),
                           StateOf(newer.Branch, newer.Last)};
        }
        if (chosen.Rows.size() != 1)
            return std::nullopt;
        const TCommit& commit = At(chosen.Rows[0]);
        const std::vector<const TCommittedFile*> files = Here(chosen);
        if (files.empty() || commit.Date == 0)
            return std::nullopt;
        // One file has numbers; several have only the moment in common.
        if (files.size() == 1 && !files[0]->Before.empty())
            return TStates{PathsOf(files), TVersion::Of(files[0]->Before),
                           TVersion::Of(files[0]->Revision)};
        return TStates{PathsOf(files), StateOf(commit.Branch, commit.Date - Second),
                       StateOf(commit.Branch, commit.Last)};
    }

    std::optional<TStates> SinceThen(const TChosen& chosen) const override {
        const std::vector<const TCommittedFile*> files = Here(chosen);
        if (chosen.Rows.size() != 1 || files.empty())
            return std::nullopt;
        const TCommit& commit = At(chosen.Rows[0]);
        if (files.size() > 1 && commit.Date == 0)
            return std::nullopt;
        return TStates{PathsOf(files),
                       files.size() == 1 ? TVersion::Of(files[0]->Revision)
                                         : StateOf(commit.Branch, commit.Last),
                       TVersion::WorkingCopy()};
    }

    std::vector<TFileAt> Files(const TChosen& chosen) const override {
        std::vector<TFileAt> files;
        for (const TCommittedFile* file : Here(chosen))
            if (!file->Removed)
                files.push_back({Paths_[file->Log], file->Revision});
        return files;
    }

    bool IsBinary(const TFileAt& file) const override {
        const auto at = std::ranges::find(Paths_, file.Path);
        return at != Paths_.end() &&
               Logs_[static_cast<std::size_t>(at - Paths_.begin())].KeywordMode == "b";
    }

private:
    const TCommit& At(int row) const { return Commits_[Shown_.at(static_cast<std::size_t>(row))]; }

    /// The files of one commit that are chosen, else all; without those that no working copy has.
    std::vector<const TCommittedFile*> Here(const TChosen& chosen) const {
        if (chosen.Rows.size() != 1)
            return {};
        const TCommit& commit = At(chosen.Rows[0]);
        std::vector<const TCommittedFile*> files;
        for (const int detail : chosen.Details)
            files.push_back(&commit.Files.at(static_cast<std::size_t>(detail)));
        if (files.empty())
            std::ranges::transform(commit.Files, std::back_inserter(files),
                                   [](const TCommittedFile& file) { return &file; });
        std::erase_if(files, [this](const auto* file) { return Paths_[file->Log].empty(); });
        return files;
    }

    std::vector<std::string> PathsOf(const std::vector<const TCommittedFile*>& files) const {
        std::vector<std::string> paths;
        paths.reserve(files.size());
        for (const TCommittedFile* file : files)
            paths.push_back(Paths_[file->Log]);
        return paths;
    }

    std::vector<TFileLog> Logs_;
    const std::vector<std::string> Paths_;
    const std::vector<std::string> About_;
    std::vector<TCommit> Commits_;
    std::vector<std::size_t> Shown_;
};

}  // namespace

std::unique_ptr<THistory> HistoryOfProject(std::vector<TFileLog> logs,
                                           std::vector<std::string> paths,
                                           const std::string& folder,
                                           std::vector<std::string> about) {
    return std::make_unique<TProjectHistory>(std::move(logs), std::move(paths), folder,
                                             std::move(about));
}

}  // namespace workbench
