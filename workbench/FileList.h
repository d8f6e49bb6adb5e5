#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/ui/list_view.h"
#include "hosting/FileRows.h"

namespace workbench {

/// Which rows of a folder are shown, and in which order.
struct TFileView {
    bool ChangedOnly = false;
    bool HideIgnored = false;
    std::string Filter =
        {};  ///< A part of the name, any case; with "*" or "?" a pattern for all of it.
    int SortColumn = 0;
    bool Descending = false;

    bool operator==(const TFileView&) const = default;
};

/// The rows that the view lets through, in its order: folders first, and what is equal in that
/// column by its name.
std::vector<hosting::TFileRow> Arrange(std::vector<hosting::TFileRow> rows, const TFileView& view);

/// The files of a folder in a list view, which outlives it. Rows that stay the same stay where they
/// are, selected or not; only what has changed is drawn anew. Main thread only.
class TFileList {
public:
    explicit TFileList(framework::TListView& list);
    TFileList(const TFileList&) = delete;
    TFileList& operator=(const TFileList&) = delete;

    /// Shows these rows. Those of another place than before are seen from the first, with none
    /// selected. @param folder the one that is shown. @param withFolders also those below it.
    void Show(const std::string& folder, bool withFolders, std::vector<hosting::TFileRow> rows);
    const TFileView& View() const { return View_; }
    void SetView(const TFileView& view);

    /// The selected rows, in their order. They hold until the next Show or SetView.
    std::vector<const hosting::TFileRow*> Selection() const;
    /// Selects the row of this path alone, and brings it into view. @return false when it is not
    /// shown.
    bool Select(const std::string& path);
    /// How many rows there are, and how many of them are shown.
    std::size_t Count() const { return All_.size(); }
    std::size_t Shown() const { return Shown_.size(); }

    /// Another selection, by the user or because what was selected is no more.
    std::function<void()> OnSelect;
    /// The user has chosen another order.
    std::function<void()> OnViewChange;

private:
    void Refresh(const std::vector<std::string>& selected, const std::string& focused);
    void SortBy(int column);
    const hosting::TFileRow* RowAt(int index) const;

    framework::TListView& List_;
    TFileView View_;
    std::string Folder_;
    bool WithFolders_ = false;
    std::vector<hosting::TFileRow> All_, Shown_;
};

}  // namespace workbench
