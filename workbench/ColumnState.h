#pragma once

#include <string>
#include <vector>

#include "framework/ui/list_view.h"
#include "hosting/Settings.h"

namespace workbench {

/// Gives a table the widths that the user gave its columns before. @param name the table's.
void RestoreColumns(framework::TListView& list, const hosting::TSettings& settings,
                    const std::string& name);
/// Remembers them. What cannot be stored is as it was at the next time.
void StoreColumns(framework::TListView& list, hosting::TSettings& settings,
                  const std::string& name);

/// A size that the user chose, in design units. @param usual for the first time.
int StoredSize(const hosting::TSettings& settings, const std::string& name, int usual);
/// Remembers it, likewise.
void StoreSizeOf(hosting::TSettings& settings, const std::string& name, int size);

}  // namespace workbench
