#include "workbench/WindowState.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "framework/base/exceptions.h"

namespace workbench {

using namespace hosting;

namespace {

/// Whatever stands there: nothing that no window can have.
int Size(const std::string& text) {
    return std::clamp(std::atoi(text.c_str()), 0, 10000);
}

}  // namespace

TWindowState TWindowState::Load(const TSettings& settings) {
    const auto read = [&](const char* name) {
        return settings.Read(settings.WindowKey(), name, "");
    };
    TWindowState state;
    state.Width = Size(read("Width"));
    state.Height = Size(read("Height"));
    state.FilesHeight = Size(read("FilesHeight"));
    state.TreeWidth = Size(read("TreeWidth"));
    std::istringstream widths(read("Columns"));
    for (std::string width; widths >> width;)
        state.ColumnWidths.push_back(Size(width));
    state.View.SortColumn = Size(read("SortColumn"));
    state.View.Descending = read("Descending") == "1";
    state.View.ChangedOnly = read("ChangedOnly") == "1";
    state.View.HideIgnored = read("HideIgnored") == "1";
    state.WithFolders = read("WithFolders") == "1";
    return state;
}

void TWindowState::Store(TSettings& settings) const {
    const auto write = [&](const char* name, const std::string& value) {
        settings.Write(settings.WindowKey(), name, value);
    };
    std::string widths;
    for (const int width : ColumnWidths)
        widths += std::to_string(width) + " ";
    try {
        write("Width", std::to_string(Width));
        write("Height", std::to_string(Height));
        write("FilesHeight", std::to_string(FilesHeight));
        write("TreeWidth", std::to_string(TreeWidth));
        write("Columns", widths);
        write("SortColumn", std::to_string(View.SortColumn));
        write("Descending", View.Descending ? "1" : "0");
        write("ChangedOnly", View.ChangedOnly ? "1" : "0");
        write("HideIgnored", View.HideIgnored ? "1" : "0");
        write("WithFolders", WithFolders ? "1" : "0");
    } catch (const framework::ERegistryError&) {
        // The window closes all the same.
    }
}

}  // namespace workbench
