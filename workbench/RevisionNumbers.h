#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// A revision's number as its parts: 1.2.2.1 is {1, 2, 2, 1}. They sort as numbers do.
using TRevisionNumber = std::vector<int>;

/// The parts of "1.2" or "1.2.0.2"; none of a text that is not figures with dots between them.
std::optional<TRevisionNumber> ParseNumber(std::string_view text);

/// The number with its dots.
std::string TextOf(const TRevisionNumber& number);

/// Whether a number is of a branch: magic (1.2.0.2) or an odd number of parts (1.1.1).
bool IsBranchNumber(const TRevisionNumber& number);
/// A branch's number without its magic zero: {1, 2, 2} of 1.2.0.2, and of 1.2.2.
TRevisionNumber PlainBranch(TRevisionNumber number);

/// The branch that a revision is on: {1, 2, 2} of 1.2.2.1; nothing of one on the trunk.
TRevisionNumber BranchOf(const TRevisionNumber& revision);
/// The revision that a branch leaves: {1, 2} of 1.2.2.
TRevisionNumber RootOf(const TRevisionNumber& branch);

/// The number that the revision should have which one was made from: the next lower one of its line
/// of revisions, or the one that its branch leaves. Empty for the first of all.
TRevisionNumber NumberBefore(TRevisionNumber revision);

/// Whether the client's log names revision `a` before `b`: the trunk from its newest one down; then
/// the branches, those of the oldest revision of the trunk first, and of one revision the last
/// made first; each from its newest one down, and behind it those that leave it.
bool IsLoggedBefore(const TRevisionNumber& a, const TRevisionNumber& b);

/// For each of a file's revisions the position of the one that it was made from, or none where that
/// is not among them.
std::vector<std::optional<std::size_t>> RevisionsBefore(
    const std::vector<TRevisionNumber>& revisions);

}  // namespace workbench
