#include "workbench/Commits.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "framework/base/text.h"
#include "workbench/LogNames.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

using framework::TDateTime;

namespace {

constexpr double SecondsPerDay = 86400, MostSeconds = 300;

/// A revision of one of the files.
struct TMade {
    std::size_t Log;
    const TRevision* Revision;
    std::string Before;  ///< The number of the one it was made from.
    std::string Branch;
};

/// What revisions of one commit have in common.
struct TCommonParts {
    std::string_view Id, Author, Message, Branch;
    auto operator<=>(const TCommonParts&) const = default;
};

/// The branch in a revision's number.
std::string_view BranchIn(std::string_view number) {
    return number.substr(0, std::min(number.rfind('.'), number.size()));
}

/// Whether the client has made the first revision of a file by itself, with what came next.
bool IsMadeByClient(const TRevision& revision,
                    const std::unordered_map<std::string_view, const TRevision*>& revisions) {
    if (revision.Number != "1.1")
        return false;
    if (revision.IsDead())
        return revision.Message.starts_with("file ") &&
               revision.Message.find(" was initially added on branch ") != std::string::npos;
    const auto imported = revisions.find("1.1.1.1");
    return imported != revisions.end() && revision.Message == "Initial revision" &&
           imported->second->Date == revision.Date && imported->second->Author == revision.Author;
}

/// The revisions of a file that somebody has committed, with what they were made from.
void AddRevisions(const std::vector<TFileLog>& logs, std::size_t index, std::vector<TMade>& made) {
    const TFileLog& log = logs[index];
    std::unordered_map<std::string_view, const TRevision*> revisions;
    for (const TRevision& revision : log.Revisions)
        revisions.emplace(revision.Number, &revision);
    std::vector<TRevisionNumber> numbers;
    for (const TRevision& revision : log.Revisions)
        numbers.push_back(ParseNumber(revision.Number).value_or(TRevisionNumber()));
    const auto before = RevisionsBefore(numbers);
    std::vector<std::string> branches = BranchesOf(log);
    // What a revision was made from comes in front of it.
    std::vector<std::size_t> sorted(numbers.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::ranges::stable_sort(
        sorted, {}, [&](std::size_t i) -> auto& { return numbers[i]; });
    for (const std::size_t i : sorted) {
        const TRevision& revision = log.Revisions[i];
        if (IsMadeByClient(revision, revisions))
            continue;
        const TRevision* const from = before[i] ? &log.Revisions[*before[i]] : nullptr;
        std::string number = from ? from->Number : std::string();
        if (!from && log.IsPart)
            number = TextOf(NumberBefore(numbers[i]));
        // What was imported was made from nothing, whatever it says; what came later was not.
        if (from && IsMadeByClient(*from, revisions) && (from->IsDead() || numbers[i].size() > 2))
            number.clear();
        made.push_back({index, &revision, std::move(number), std::move(branches[i])});
    }
}

/// Puts revisions, which come by their dates, to commits.
class TCommitMaker {
public:
    explicit TCommitMaker(const std::vector<TFileLog>& logs) : Names_(logs.size()) {
        std::ranges::transform(logs, Names_.begin(), FileNameOf);
    }

    void Add(const TMade& made) {
        const TRevision& revision = *made.Revision;
        TCommonParts parts{revision.CommitId, "", "", ""};
        if (revision.CommitId.empty())
            parts = {"", revision.Author, revision.Message, made.Branch};
        auto& open = Open_[parts];
        const bool isLate = !open || (revision.CommitId.empty() &&
                                      (revision.Date - Commits[open->Commit].Last) * SecondsPerDay >
                                          MostSeconds + 0.5);
        if (isLate || open->Files.contains(made.Log)) {
            open = TOpen{Commits.size(), {}};
            Commits.push_back({revision.Date,
                               revision.Date,
                               revision.Author,
                               revision.Message,
                               std::string(made.Branch),
                               {}});
        }
        open->Files.insert(made.Log);
        TCommit& commit = Commits[open->Commit];
        commit.Last = revision.Date;
        commit.Files.push_back(
            {Names_[made.Log], revision.Number, made.Before, revision.IsDead(), made.Log});
    }

    std::vector<TCommit> Commits;

private:
    struct TOpen {
        std::size_t Commit;
        std::unordered_set<std::size_t> Files;
    };

    std::vector<std::string> Names_;
    std::map<TCommonParts, std::optional<TOpen>> Open_;
};

// --- search -----------------------------------------------------------------------------------

/// Finds a part of texts, in any case.
class TPart {
public:
    explicit TPart(const std::string& part) : Upper_(framework::UpperCase(part)) {}

    bool Empty() const { return Upper_.empty(); }
    bool In(std::string_view text) const {
        return text.size() >= Upper_.size() &&
               framework::UpperCase(text).find(Upper_) != std::string::npos;
    }

private:
    const std::string Upper_;
};

/// Says which of a project's labels have this part in their names. There are few names, and many
/// files have each.
class TLabelFinder {
public:
    explicit TLabelFinder(const TPart& part) : Part_(part) {}

    /// The revisions and branches of a file that such labels mean.
    std::unordered_set<std::string> In(const TFileLog& log) {
        std::unordered_set<std::string> numbers;
        for (const TFileLabel& label : log.Labels) {
            const auto [known, isNew] = Known_.try_emplace(label.Name, false);
            if (isNew)
                known->second = Part_.In(label.Name);
            if (known->second)
                numbers.insert(label.IsBranch() ? TextOf(PlainBranch(*ParseNumber(label.Revision)))
                                                : label.Revision);
        }
        return numbers;
    }
    static bool Means(const std::unordered_set<std::string>& numbers, const std::string& revision) {
        return !numbers.empty() &&
               (numbers.contains(revision) || numbers.contains(std::string(BranchIn(revision))));
    }

private:
    const TPart& Part_;
    std::unordered_map<std::string_view, bool> Known_;
};

}  // namespace

std::string FileNameOf(const TFileLog& log) {
    if (!log.Name.empty())
        return log.Name;
    std::string name = log.Repository;
    if (name.ends_with(",v"))
        name.resize(name.size() - 2);
    constexpr std::string_view Removed = "Attic/";
    const std::size_t folder = name.rfind('/');
    if (folder != std::string::npos && name.substr(0, folder + 1).ends_with("/Attic/"))
        name.erase(folder + 1 - Removed.size(), Removed.size());
    return name;
}

std::vector<TCommit> CommitsOf(const std::vector<TFileLog>& logs) {
    std::vector<TMade> made;
    for (std::size_t i = 0; i < logs.size(); ++i)
        AddRevisions(logs, i, made);
    std::ranges::stable_sort(
        made, {}, [](const TMade& one) { return std::pair(one.Revision->Date, one.Log); });
    TCommitMaker maker(logs);
    for (const TMade& revision : made)
        maker.Add(revision);
    for (TCommit& commit : maker.Commits)
        std::ranges::stable_sort(commit.Files, {}, &TCommittedFile::Log);
    std::ranges::reverse(maker.Commits);
    std::ranges::stable_sort(maker.Commits, [](const TCommit& a, const TCommit& b) {
        return std::tie(a.Date, a.Last) > std::tie(b.Date, b.Last);
    });
    return std::move(maker.Commits);
}

std::vector<std::size_t> FindCommits(const std::vector<TCommit>& commits,
                                     const std::vector<TFileLog>& logs,
                                     const TCommitFilter& filter) {
    const TPart part(filter.Text);
    TLabelFinder labels(part);
    std::vector<std::unordered_set<std::string>> labelled(logs.size());
    std::vector<bool> named(logs.size());
    for (std::size_t i = 0; i < logs.size() && !part.Empty(); ++i) {
        labelled[i] = labels.In(logs[i]);
        named[i] = part.In(FileNameOf(logs[i]));
    }
    const auto has = [&](const TCommittedFile& file) {
        return named[file.Log] || TLabelFinder::Means(labelled[file.Log], file.Revision);
    };
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < commits.size(); ++i) {
        const TCommit& commit = commits[i];
        if (commit.Date >= filter.From &&
            (part.Empty() || part.In(commit.Message) || part.In(commit.Author) ||
             std::ranges::any_of(commit.Files, has)))
            found.push_back(i);
    }
    return found;
}

std::vector<std::size_t> FindRevisions(const TFileLog& log, const TCommitFilter& filter) {
    const TPart part(filter.Text);
    const auto labelled =
        part.Empty() ? std::unordered_set<std::string>() : TLabelFinder(part).In(log);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < log.Revisions.size(); ++i) {
        const TRevision& revision = log.Revisions[i];
        if (revision.Date >= filter.From &&
            (part.Empty() || part.In(revision.Message) || part.In(revision.Author) ||
             TLabelFinder::Means(labelled, revision.Number)))
            found.push_back(i);
    }
    return found;
}

std::vector<TProjectLabel> LabelsOf(const std::vector<TFileLog>& logs) {
    std::map<std::string_view, TProjectLabel> labels;
    std::unordered_map<std::string_view, TDateTime> dates;
    std::map<TRevisionNumber, TDateTime> branches;
    for (const TFileLog& log : logs) {
        dates.clear();
        branches.clear();
        for (const TRevision& revision : log.Revisions) {
            dates.emplace(revision.Number, revision.Date);
            TDateTime& newest =
                branches[BranchOf(ParseNumber(revision.Number).value_or(TRevisionNumber()))];
            newest = std::max(newest, revision.Date);
        }
        const auto dateOf = [&](std::string_view number) {
            const auto date = dates.find(number);
            return date == dates.end() ? 0 : date->second;
        };
        for (const TFileLabel& label : log.Labels) {
            TProjectLabel& all = labels[label.Name];
            ++all.Files;
            if (!label.IsBranch()) {
                all.Newest = std::max(all.Newest, dateOf(label.Revision));
                continue;
            }
            all.IsBranch = true;
            const TRevisionNumber branch = PlainBranch(*ParseNumber(label.Revision));
            const auto newest = branches.find(branch);
            all.Newest =
                std::max(all.Newest, newest != branches.end() ? newest->second
                                                              : dateOf(TextOf(RootOf(branch))));
        }
    }
    std::vector<TProjectLabel> result;
    result.reserve(labels.size());
    for (auto& [name, label] : labels) {
        label.Name = name;
        result.push_back(std::move(label));
    }
    return result;
}

}  // namespace workbench
