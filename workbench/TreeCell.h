#pragma once

#include "framework/ui/list_view.h"
#include "workbench/RevisionTree.h"

namespace workbench {

/// Draws a row of a tree into its cell, in the one colour that shows there: so it looks right with
/// any theme. A revision is a dot; one that took the file away is a ring.
/// @param dpi the resolution that it is drawn for.
void DrawTreeCell(const framework::TListCell& cell, const TTreeRow& row, bool isRemoval, int dpi);

/// The width that a tree takes, in design units.
int TreeWidth(int lanes);

}  // namespace workbench
