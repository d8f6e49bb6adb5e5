#include "workbench/LogEntries.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <iterator>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

namespace workbench {

namespace {

constexpr std::size_t None = static_cast<std::size_t>(-1);

// What a row gains where an entry stands behind its neighbour, and where one tells of a branch that
// there is; and what it loses where numbers are left out, where an entry looks quoted, and where a
// message would quote what did not exist yet.
constexpr int NeighbourWorth = 4, BranchWorth = 2;
constexpr int LostByGap = 8, LostBySuspicion = 3, LostByQuoting = 5, LostByDate = 6;

struct TScore {
    int Worth = 0;
    std::size_t At = None;  // the entry that a row ends with; none for no row

    /// Of equal rows the one that ends early.
    bool operator<(const TScore& other) const {
        if (At == None || other.At == None)
            return At == None && other.At != None;
        return Worth != other.Worth ? Worth < other.Worth : At > other.At;
    }
};

/// Scores at places from 0, and the best in a range of places.
class TBestScores {
public:
    explicit TBestScores(std::size_t count)
        : Size_(std::bit_ceil(std::max<std::size_t>(count, 1))), Nodes_(2 * Size_) {}

    void Set(std::size_t place, const TScore& score) {
        std::size_t node = Size_ + place;
        Nodes_[node] = score;
        while (node /= 2)
            Nodes_[node] = std::max(Nodes_[2 * node], Nodes_[2 * node + 1]);
    }
    /// At places from `first` up to, not including, `end`.
    TScore Best(std::size_t first, std::size_t end) const {
        TScore best;
        for (first += Size_, end += Size_; first < end; first /= 2, end /= 2) {
            if (first % 2)
                best = std::max(best, Nodes_[first++]);
            if (end % 2)
                best = std::max(best, Nodes_[--end]);
        }
        return best;
    }

private:
    std::size_t Size_;
    std::vector<TScore> Nodes_;
};

/// Finds the best row of entries that can be what the client has written.
class TRow {
public:
    /// @param entryWorth what a row gains with each entry: the more, the longer it is.
    TRow(const std::vector<TLogEntry>& entries, const std::vector<std::size_t>& candidates,
         const TLogHead& head, int entryWorth)
        : Entries_(entries),
          Candidates_(candidates),
          Head_(head),
          EntryWorth_(entryWorth),
          Places_(Candidates_.size()),
          Scores_(Candidates_.size()),
          Before_(Candidates_.size(), None),
          Best_(Candidates_.size()) {
        Sort();
        FindNews();
        for (const std::size_t at : candidates)
            Branches_.insert(BranchOf(entries[at].Number));
        BeginsWithHead_ =
            head.Total == head.Selected && std::ranges::any_of(candidates, [&](std::size_t at) {
                return entries[at].Number == head.Head;
            });
    }

    /// Ascending positions of the entries.
    std::vector<std::size_t> Find() {
        TScore best;
        for (std::size_t at = 0; at < Candidates_.size(); ++at) {
            Outdate(at);
            const TScore score{Extend(at), at};
            if (score.Worth == None_)
                continue;
            Scores_[at] = score;
            Best_.Set(Places_[at], {score.Worth - LostBehind(at), at});
        }
        for (const TScore& score : Scores_) {
            if (score.At == None)
                continue;
            const int byDate = News_[score.At] < Candidates_.size() ? LostByDate : 0;
            best = std::max(best, {score.Worth - LostBehind(score.At) - byDate, score.At});
        }
        std::vector<std::size_t> row;
        for (std::size_t at = best.At; at != None; at = Before_[at])
            row.push_back(Candidates_[at]);
        std::ranges::reverse(row);
        return row;
    }

private:
    const TRevisionNumber& Number(std::size_t at) const { return Entries_[Candidates_[at]].Number; }

    /// Gives each candidate its place in the order of the log.
    void Sort() {
        Sorted_.resize(Candidates_.size());
        std::iota(Sorted_.begin(), Sorted_.end(), std::size_t{0});
        std::ranges::stable_sort(Sorted_, [this](std::size_t a, std::size_t b) {
            return IsLoggedBefore(Number(a), Number(b));
        });
        for (std::size_t place = 0; place < Sorted_.size(); ++place)
            Places_[Sorted_[place]] = place;
    }

    /// Finds for each candidate the first one behind it that is not older, which its message
    /// therefore cannot quote.
    void FindNews() {
        News_.assign(Candidates_.size(), Candidates_.size());
        std::vector<std::size_t> open;
        for (std::size_t at = 0; at < Candidates_.size(); ++at) {
            const double date = Entries_[Candidates_[at]].Date;
            while (!open.empty() && Entries_[Candidates_[open.back()]].Date <= date) {
                News_[open.back()] = at;
                open.pop_back();
            }
            open.push_back(at);
        }
        Outdated_.resize(Candidates_.size() + 1);
        for (std::size_t at = 0; at < Candidates_.size(); ++at)
            Outdated_[News_[at]].push_back(at);
    }

    /// What is lost when no neighbour comes behind an entry. Numbers begin with 1.
    int LostBehind(std::size_t at) const { return Number(at).back() == 1 ? 0 : LostByGap; }

    /// Rows that skip what is not older than their last entry lose from here on.
    void Outdate(std::size_t at) {
        if (at == 0)
            return;
        for (const std::size_t old : Outdated_[at - 1]) {
            if (Scores_[old].At == None)
                continue;
            Best_.Set(Places_[old], {Scores_[old].Worth - LostBehind(old) - LostByDate, old});
        }
    }

    /// The worth of the best row that ends with this candidate.
    int Extend(std::size_t at) {
        const auto isBefore = [this](std::size_t a, const TRevisionNumber& number) {
            return IsLoggedBefore(Number(a), number);
        };
        const auto placeOf = [&](const TRevisionNumber& number) {
            return static_cast<std::size_t>(
                std::lower_bound(Sorted_.begin(), Sorted_.end(), number, isBefore) -
                Sorted_.begin());
        };
        const std::size_t own = placeOf(Number(at));
        TScore best = Best_.Best(0, own);
        // The trunk is all in one piece.
        best.Worth -= best.At != None && Number(at).size() == 2 ? LostByGap : 0;
        TRevisionNumber neighbour = Number(at);
        ++neighbour.back();
        // The neighbours are next to it in the order, too.
        if (own > 0 && Number(Sorted_[own - 1]) == neighbour) {
            TScore beside = Best_.Best(placeOf(neighbour), own);
            beside.Worth += NeighbourWorth + LostByGap;
            best = std::max(best, beside);
        }
        if (best.At == None && BeginsWithHead_ && Number(at) != Head_.Head)
            return None_;
        Before_[at] = best.At;
        return best.Worth + WorthOf(Entries_[Candidates_[at]]) -
               // A description that holds revisions.
               (best.At == None && at > 0 ? LostByDate : 0);
    }

    int WorthOf(const TLogEntry& entry) const {
        int worth = EntryWorth_;
        for (const TRevisionNumber& branch : entry.Branches)
            worth += Branches_.contains(branch) ? BranchWorth : 0;
        worth -= entry.IsQuoted ? LostByQuoting : 0;
        return worth - (entry.IsSuspect ? LostBySuspicion : 0);
    }

    static constexpr int None_ = std::numeric_limits<int>::min();

    const std::vector<TLogEntry>& Entries_;
    const std::vector<std::size_t>& Candidates_;
    const TLogHead& Head_;
    const int EntryWorth_;
    std::set<TRevisionNumber> Branches_;  // that there are
    std::vector<std::size_t> Sorted_;     // candidates in the order of the log
    std::vector<std::size_t> Places_;     // of each candidate in it
    std::vector<std::size_t> News_;
    std::vector<std::vector<std::size_t>> Outdated_;  // by what they cannot quote
    std::vector<TScore> Scores_;
    std::vector<std::size_t> Before_;
    TBestScores Best_;
    bool BeginsWithHead_ = false;
};

/// Takes away what cannot be of this file, unless too few would be left.
void LeaveOutForeign(std::vector<std::size_t>& candidates, const std::vector<TLogEntry>& entries,
                     const TLogHead& head) {
    if (head.Total != head.Selected)
        return;
    // A branch is told by the revision that it leaves.
    std::set<TRevisionNumber> told;
    for (const std::size_t at : candidates)
        told.insert(entries[at].Branches.begin(), entries[at].Branches.end());
    std::vector<std::size_t> rest;
    std::ranges::copy_if(candidates, std::back_inserter(rest), [&](std::size_t at) {
        const TRevisionNumber branch = BranchOf(entries[at].Number);
        return branch.empty() ? entries[at].Number <= head.Head : told.contains(branch);
    });
    if (rest.size() >= head.Selected)
        candidates = std::move(rest);
}

/// Takes away those that stand least close to their neighbours until `count` are left.
void Shorten(std::vector<std::size_t>& row, std::size_t count,
             const std::vector<TLogEntry>& entries) {
    const auto isBeside = [&](std::size_t newer, std::size_t older) {
        TRevisionNumber number = entries[older].Number;
        ++number.back();
        return entries[newer].Number == number && entries[newer].Date >= entries[older].Date;
    };
    std::vector<std::pair<int, std::size_t>> held;
    for (std::size_t i = 0; i < row.size(); ++i)
        held.emplace_back((i == 0 ? 9 : isBeside(row[i - 1], row[i])) +
                              (i + 1 < row.size() && isBeside(row[i], row[i + 1])),
                          row[i]);
    std::ranges::stable_sort(held, std::ranges::greater(), &std::pair<int, std::size_t>::first);
    held.resize(count);
    row.clear();
    for (const auto& entry : held)
        row.push_back(entry.second);
    std::ranges::sort(row);
}

/// Fills a row up with numbers that it does not have yet, from the first on.
void Lengthen(std::vector<std::size_t>& row, std::size_t count,
              const std::vector<TLogEntry>& entries) {
    std::set<TRevisionNumber> numbers;
    for (const std::size_t at : row)
        numbers.insert(entries[at].Number);
    for (std::size_t at = 0; at < entries.size() && row.size() < count; ++at)
        if (numbers.insert(entries[at].Number).second)
            row.push_back(at);
    std::ranges::sort(row);
}

}  // namespace

std::vector<std::size_t> ChooseEntries(const std::vector<TLogEntry>& entries,
                                       const TLogHead& head) {
    std::vector<std::size_t> candidates(entries.size());
    std::iota(candidates.begin(), candidates.end(), std::size_t{0});
    if (entries.size() <= head.Selected)
        return candidates;
    if (head.Selected == 0)
        return {};
    LeaveOutForeign(candidates, entries, head);
    std::vector<std::size_t> row;
    for (int worth = 64; worth > 0 && row.size() != head.Selected; worth /= 4) {
        std::vector<std::size_t> other = TRow(entries, candidates, head, worth).Find();
        if (row.empty() || other.size() >= head.Selected)
            row = std::move(other);
    }
    if (row.size() > head.Selected)
        Shorten(row, head.Selected, entries);
    else if (row.size() < head.Selected)
        Lengthen(row, head.Selected, entries);
    return row;
}

}  // namespace workbench
