#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbench/LogText.h"

namespace workbench {

/// Lanes of a tree, a bit for each.
using TLanes = std::uint64_t;
/// The most that are told apart: what stands further to the right stands in the last one.
inline constexpr int MostLanes = 64;

/// A row of the tree, with a revision. Lanes stand side by side, each for a line of revisions: the
/// trunk or a branch.
struct TTreeRow {
    std::size_t Revision = 0;  ///< Its position in the log.
    int Lane = 0;
    bool Above = false;  ///< A newer revision of its line stands above.
    bool Below = false;  ///< An older one stands below, or the one that the line leaves.
    TLanes Through = 0;  ///< Where other lines go from the row above to the row below.
    TLanes Ending = 0;   ///< Where lines come from above that leave this revision.

    bool operator==(const TTreeRow&) const = default;
};

struct TRevisionTree {
    std::vector<TTreeRow> Rows;
    int Lanes = 0;  ///< That are used, at most MostLanes.
};

/// Lays out revisions of a file, the newest first, but never one above those that were made from
/// it, whatever the clocks said. The trunk has the first lane; a branch has the first one that is
/// free from its newest revision down to where it leaves, and then others can have it.
/// @param revisions positions in the log: all, or those that are to be shown. It takes n log n.
TRevisionTree LayOut(const TFileLog& log, const std::vector<std::size_t>& revisions);

}  // namespace workbench
