#include "workbench/RevisionNumbers.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <numeric>

namespace workbench {

std::optional<TRevisionNumber> ParseNumber(std::string_view text) {
    TRevisionNumber number;
    for (;;) {
        int part = 0;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, part);
        // There is always a next one.
        if (error != std::errc() || part < 0 || part == std::numeric_limits<int>::max())
            return std::nullopt;
        number.push_back(part);
        if (stop == end)
            return number;
        if (*stop != '.')
            return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(stop + 1 - text.data()));
    }
}

std::string TextOf(const TRevisionNumber& number) {
    std::string text;
    for (const int part : number)
        text += (text.empty() ? "" : ".") + std::to_string(part);
    return text;
}

bool IsBranchNumber(const TRevisionNumber& number) {
    return number.size() % 2 == 1 || (number.size() > 2 && number[number.size() - 2] == 0);
}

TRevisionNumber PlainBranch(TRevisionNumber number) {
    if (number.size() > 2 && number.size() % 2 == 0 && number[number.size() - 2] == 0)
        number.erase(number.end() - 2);
    return number;
}

TRevisionNumber BranchOf(const TRevisionNumber& revision) {
    return revision.size() <= 2 ? TRevisionNumber()
                                : TRevisionNumber(revision.begin(), revision.end() - 1);
}

TRevisionNumber RootOf(const TRevisionNumber& branch) {
    return branch.empty() ? branch : TRevisionNumber(branch.begin(), branch.end() - 1);
}

TRevisionNumber NumberBefore(TRevisionNumber revision) {
    if (revision.empty())
        return {};
    if (revision.back() <= 1)
        return RootOf(BranchOf(revision));
    --revision.back();
    return revision;
}

bool IsLoggedBefore(const TRevisionNumber& a, const TRevisionNumber& b) {
    if (a.size() <= 2 || b.size() <= 2)
        return a.size() <= 2 && b.size() <= 2 ? a > b : a.size() < b.size();
    if (!std::equal(a.begin(), a.begin() + 2, b.begin()))
        return a < b;
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() || inB == b.end())
        return a.size() < b.size();
    // On one branch, a revision of the branch itself comes before all that leave the branch.
    const auto at = inA - a.begin();
    const bool isLastOfA = at + 1 == static_cast<std::ptrdiff_t>(a.size());
    const bool isLastOfB = at + 1 == static_cast<std::ptrdiff_t>(b.size());
    return isLastOfA != isLastOfB ? isLastOfA : *inA > *inB;
}

std::vector<std::optional<std::size_t>> RevisionsBefore(
    const std::vector<TRevisionNumber>& revisions) {
    std::vector<std::size_t> sorted(revisions.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::ranges::stable_sort(
        sorted, [&](std::size_t a, std::size_t b) { return revisions[a] < revisions[b]; });
    // In this order what leaves a revision stands between it and the next on its branch.
    std::map<TRevisionNumber, std::size_t> known, last;
    std::vector<std::optional<std::size_t>> before(revisions.size());
    for (const std::size_t at : sorted) {
        const TRevisionNumber branch = BranchOf(revisions[at]);
        const auto above = last.find(branch);
        if (above != last.end())
            before[at] = above->second;
        else if (const auto root = known.find(RootOf(branch)); root != known.end())
            before[at] = root->second;
        known[revisions[at]] = last[branch] = at;
    }
    return before;
}

}  // namespace workbench
