#include "workbench/ColumnState.h"

#include <cstdlib>
#include <sstream>

#include "framework/base/exceptions.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

/// Whatever stands there: nothing that no window can have.
constexpr int MostUnits = 10000;

void Write(TSettings& settings, const std::string& name, const std::string& value) {
    try {
        settings.Write(settings.WindowKey(), name, value);
    } catch (const ERegistryError&) {
        // The window closes all the same.
    }
}

}  // namespace

void RestoreColumns(TListView& list, const TSettings& settings, const std::string& name) {
    std::istringstream stored(settings.Read(settings.WindowKey(), name + "Columns", ""));
    std::vector<int> widths;
    for (int width = 0; stored >> width;)
        widths.push_back(width <= MostUnits ? width : 0);
    list.SetColumnWidths(widths);
}

void StoreColumns(TListView& list, TSettings& settings, const std::string& name) {
    std::string widths;
    for (const int width : list.ColumnWidths())
        widths += std::to_string(width) + " ";
    Write(settings, name + "Columns", widths);
}

int StoredSize(const TSettings& settings, const std::string& name, int usual) {
    const int size = std::atoi(settings.Read(settings.WindowKey(), name, "").c_str());
    return size > 0 && size <= MostUnits ? size : usual;
}

void StoreSizeOf(TSettings& settings, const std::string& name, int size) {
    Write(settings, name, std::to_string(size));
}

}  // namespace workbench
