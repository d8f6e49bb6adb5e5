#include "workbench/RevisionTree.h"

#include <algorithm>
#include <map>
#include <optional>
#include <queue>
#include <set>
#include <tuple>

#include "workbench/RevisionNumbers.h"

namespace workbench {

namespace {

/// Which lanes are in use, and which is to be used next.
class TLaneKeeper {
public:
    /// @param first the least that others than the trunk may have.
    explicit TLaneKeeper(int first) : Next_(first) {}

    int Take() {
        int lane = 0;
        if (Free_.empty()) {
            lane = Next_++;
        } else {
            lane = *Free_.begin();
            Free_.erase(Free_.begin());
        }
        Use(lane);
        return lane;
    }
    void Use(int lane) {
        if (lane < MostLanes - 1)
            Used_ |= Bit(lane);
        else
            ++UsedBeyond_;
    }
    void GiveBack(int lane) {
        Free_.insert(lane);
        if (lane < MostLanes - 1)
            Used_ &= ~Bit(lane);
        else
            --UsedBeyond_;
    }
    TLanes Used() const { return Used_ | (UsedBeyond_ > 0 ? Bit(MostLanes - 1) : 0); }

    static TLanes Bit(int lane) { return TLanes{1} << std::min(lane, MostLanes - 1); }

private:
    int Next_;
    int UsedBeyond_ = 0;  // from the last lane that is told apart on
    TLanes Used_ = 0;
    std::set<int> Free_;
};

/// Gives the rows their lines, from the top.
class TTreeMaker {
public:
    TTreeMaker(const TFileLog& log, const std::vector<std::size_t>& revisions)
        : Log_(log), Positions_(revisions), Keeper_(1) {
        for (const std::size_t at : revisions)
            Numbers_.push_back(ParseNumber(log.Revisions[at].Number).value_or(TRevisionNumber()));
        Before_ = RevisionsBefore(Numbers_);
        Newer_.resize(Numbers_.size());
        for (const auto& before : Before_)
            if (before)
                ++Newer_[*before];
        if (!std::ranges::any_of(Numbers_, [](const auto& number) { return number.size() <= 2; }))
            Keeper_ = TLaneKeeper(0);
    }

    TRevisionTree Make() {
        std::priority_queue<TNext> next;
        for (std::size_t i = 0; i < Numbers_.size(); ++i)
            if (Newer_[i] == 0)
                next.push(NextOf(i));
        TRevisionTree tree;
        tree.Rows.reserve(Numbers_.size());
        while (!next.empty()) {
            const std::size_t at = std::get<std::size_t>(next.top());
            next.pop();
            tree.Rows.push_back(Add(at));
            const TTreeRow& row = tree.Rows.back();
            tree.Lanes = std::max({tree.Lanes, row.Lane + 1});
            if (Before_[at] && --Newer_[*Before_[at]] == 0)
                next.push(NextOf(*Before_[at]));
        }
        return tree;
    }

private:
    // The newest first; at the same time those that the log names first.
    using TNext = std::tuple<double, long long, std::size_t>;
    TNext NextOf(std::size_t at) const {
        return {Log_.Revisions[Positions_[at]].Date, -static_cast<long long>(at), at};
    }

    TTreeRow Add(std::size_t at) {
        const TRevisionNumber line = BranchOf(Numbers_[at]);
        TTreeRow row;
        row.Revision = Positions_[at];
        auto lane = LaneOf_.find(line);
        row.Above = lane != LaneOf_.end();
        if (!row.Above)
            lane = LaneOf_.emplace(line, TakeLane(line)).first;
        const int own = lane->second;
        row.Lane = std::min(own, MostLanes - 1);
        // The lines that leave it end here.
        for (const int ending : Ending_[at]) {
            row.Ending |= TLaneKeeper::Bit(ending);
            Keeper_.GiveBack(ending);
        }
        row.Through = Keeper_.Used();
        if (own < MostLanes - 1)
            row.Through &= ~TLaneKeeper::Bit(own);
        if (Before_[at]) {
            row.Below = true;
            if (BranchOf(Numbers_[*Before_[at]]) != line)
                Ending_[*Before_[at]].push_back(own);
        } else {
            Keeper_.GiveBack(own);
        }
        return row;
    }

    int TakeLane(const TRevisionNumber& line) {
        if (!line.empty())
            return Keeper_.Take();
        Keeper_.Use(0);
        return 0;
    }

    const TFileLog& Log_;
    const std::vector<std::size_t>& Positions_;
    std::vector<TRevisionNumber> Numbers_;
    std::vector<std::optional<std::size_t>> Before_;
    std::vector<std::size_t> Newer_;  // how many were made from each that have no row yet
    std::map<TRevisionNumber, int> LaneOf_;
    std::map<std::size_t, std::vector<int>> Ending_;  // lanes, by the revision they leave
    TLaneKeeper Keeper_;
};

}  // namespace

TRevisionTree LayOut(const TFileLog& log, const std::vector<std::size_t>& revisions) {
    return TTreeMaker(log, revisions).Make();
}

}  // namespace workbench
