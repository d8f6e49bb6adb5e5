#include "workbench/FileList.h"

#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "framework/base/text.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

enum TColumn { NameColumn, StateColumn, RevisionColumn, StickyColumn, TimeColumn, FolderColumn };
constexpr std::array<std::pair<const char*, int>, 6> Columns = {{{"Filename", 155},
                                                                 {"Status", 105},
                                                                 {"Revision", 70},
                                                                 {"On", 80},
                                                                 {"TimeStamp", 145},
                                                                 {"Folder", 95}}};

std::optional<COLORREF> ColourOf(TFileState state) {
    switch (state) {
        case TFileState::Changed:
            return RGB(192, 0, 0);
        case TFileState::Conflict:
            return RGB(160, 0, 160);
        case TFileState::Added:
            return RGB(0, 0, 192);
        case TFileState::Removed:
        case TFileState::Missing:
            return RGB(160, 96, 0);
        case TFileState::Unknown:
            return RGB(0, 128, 0);
        case TFileState::Ignored:
            return RGB(128, 128, 128);
        default:
            return std::nullopt;
    }
}

/// @param folder the one that others are seen from.
TListRow ListRowOf(const TFileRow& row, const std::string& folder) {
    const bool isBelow = row.Directory.size() > folder.size();
    return {.Caption = row.Name,
            .SubItems = {StateName(row.State), row.Revision + (row.IsBinary ? " (binary)" : ""),
                         row.Sticky, row.TimeStamp,
                         isBelow ? row.Directory.substr(folder.size() +
                                                        (folder.ends_with('\\') ? 0 : 1))
                                 : ""},
            .ImageIndex = row.ImageIndex};
}

/// Numbers are compared as such: revision 1.10 comes behind 1.9.
int CompareRevisions(const std::string& a, const std::string& b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        const std::size_t m = std::min(a.find('.', i), a.size()),
                          n = std::min(b.find('.', j), b.size());
        const std::string left = a.substr(i, m - i), right = b.substr(j, n - j);
        if (left.size() != right.size())
            return left.size() < right.size() ? -1 : 1;
        if (const int order = left.compare(right))
            return order;
        i = m + 1;
        j = n + 1;
    }
    return (i < a.size()) - (j < b.size());
}

/// What rows are ordered by, made once for each.
struct TKeyed {
    std::string Text;  ///< Of the column, in capitals; empty where it is no text.
    std::string Name;
    TFileRow Row;
};

std::string TextKey(const TFileRow& row, int column) {
    switch (column) {
        case StickyColumn:
            return UpperCase(row.Sticky);
        case TimeColumn:
            return UpperCase(row.TimeStamp);
        case FolderColumn:
            return UpperCase(row.Directory);
        default:
            return {};
    }
}

int Compare(const TKeyed& a, const TKeyed& b, int column) {
    int order = a.Text.compare(b.Text);
    if (column == StateColumn)
        order = static_cast<int>(a.Row.State) - static_cast<int>(b.Row.State);
    if (column == RevisionColumn)
        order = CompareRevisions(a.Row.Revision, b.Row.Revision);
    return order != 0 ? order : a.Name.compare(b.Name);
}

bool Matches(const std::string& name, const std::string& filter) {
    if (filter.empty())
        return true;
    if (filter.find_first_of("*?") != std::string::npos)
        return ::PathMatchSpecA(name.c_str(), filter.c_str()) != FALSE;
    return UpperCase(name).find(UpperCase(filter)) != std::string::npos;
}

bool IsShown(const TFileRow& row, const TFileView& view) {
    if (row.State == TFileState::Ignored && (view.HideIgnored || view.ChangedOnly))
        return false;
    if (view.ChangedOnly && (row.State == TFileState::Unchanged || row.State == TFileState::Folder))
        return false;
    return Matches(row.Name, view.Filter);
}

}  // namespace

std::vector<TFileRow> Arrange(std::vector<TFileRow> rows, const TFileView& view) {
    std::vector<TKeyed> keyed;
    for (TFileRow& row : rows)
        if (IsShown(row, view))
            keyed.push_back({TextKey(row, view.SortColumn), UpperCase(row.Name), std::move(row)});
    std::ranges::stable_sort(keyed, [&](const TKeyed& a, const TKeyed& b) {
        if (a.Row.IsDirectory != b.Row.IsDirectory)
            return a.Row.IsDirectory;
        const int order = Compare(a, b, view.SortColumn);
        return view.Descending ? order > 0 : order < 0;
    });
    rows.clear();
    for (TKeyed& entry : keyed)
        rows.push_back(std::move(entry.Row));
    return rows;
}

TFileList::TFileList(TListView& list) : List_(list) {
    for (const auto& [caption, width] : Columns)
        List_.AddColumn(caption, width);
    List_.SetSortMark(View_.SortColumn, View_.Descending);
    List_.OnRowColor = [this](const TListRow& row) {
        const TFileRow* const shown = RowAt(static_cast<int>(&row - &List_.Row(0)));
        return shown ? ColourOf(shown->State) : std::nullopt;
    };
    List_.OnSelectItem = [this](TObject*) {
        if (OnSelect)
            OnSelect();
    };
    List_.OnColumnClick = [this](int column) { SortBy(column); };
}

const TFileRow* TFileList::RowAt(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < Shown_.size()
               ? &Shown_[static_cast<std::size_t>(index)]
               : nullptr;
}

std::vector<const TFileRow*> TFileList::Selection() const {
    std::vector<const TFileRow*> rows;
    for (const int index : List_.SelectedIndices())
        if (const TFileRow* const row = RowAt(index))
            rows.push_back(row);
    return rows;
}

void TFileList::Show(const std::string& folder, bool withFolders, std::vector<TFileRow> rows) {
    const bool isSame = SameText(std::exchange(Folder_, folder), folder) &&
                        std::exchange(WithFolders_, withFolders) == withFolders;
    if (isSame && rows == All_)
        return;
    std::vector<std::string> selected;
    std::string focused;
    if (isSame) {
        for (const TFileRow* row : Selection())
            selected.push_back(row->Path());
        if (const TFileRow* const row = RowAt(List_.FocusedIndex()))
            focused = row->Path();
    } else {
        List_.Rows().Clear();
    }
    All_ = std::move(rows);
    Refresh(selected, focused);
}

void TFileList::SetView(const TFileView& view) {
    if (view == View_)
        return;
    std::vector<std::string> selected;
    for (const TFileRow* row : Selection())
        selected.push_back(row->Path());
    const TFileRow* const at = RowAt(List_.FocusedIndex());
    const std::string focused = at ? at->Path() : "";
    View_ = view;
    List_.SetSortMark(View_.SortColumn, View_.Descending);
    Refresh(selected, focused);
}

void TFileList::Refresh(const std::vector<std::string>& selected, const std::string& focused) {
    Shown_ = Arrange(All_, View_);
    std::vector<TListRow> rows;
    rows.reserve(Shown_.size());
    std::unordered_map<std::string, int> places;
    const bool looks = !selected.empty() || !focused.empty();
    for (const TFileRow& row : Shown_) {
        if (looks)
            places.emplace(UpperCase(row.Path()), static_cast<int>(rows.size()));
        rows.push_back(ListRowOf(row, Folder_));
    }
    const auto placeOf = [&](const std::string& path) {
        const auto at = places.find(UpperCase(path));
        return at == places.end() ? -1 : at->second;
    };
    std::vector<int> stay;
    for (const std::string& path : selected)
        if (const int place = placeOf(path); place >= 0)
            stay.push_back(place);
    std::ranges::sort(stay);
    List_.Replace(std::move(rows), stay, focused.empty() ? -1 : placeOf(focused));
    if (OnSelect)
        OnSelect();
}

bool TFileList::Select(const std::string& path) {
    for (std::size_t i = 0; i < Shown_.size(); ++i) {
        if (!SameText(Shown_[i].Path(), path))
            continue;
        List_.Select(-1);
        List_.Select(static_cast<int>(i));
        return true;
    }
    return false;
}

void TFileList::SortBy(int column) {
    TFileView view = View_;
    view.Descending = view.SortColumn == column && !view.Descending;
    view.SortColumn = column;
    SetView(view);
    if (OnViewChange)
        OnViewChange();
}

}  // namespace workbench
