#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/control.h"
#include "framework/ui/image_list.h"
#include "framework/ui/views.h"

namespace framework {

/// What a list view shows and allows beyond the usual.
struct TListViewStyle {
    bool Header = true;         ///< The columns' captions stand above the rows.
    bool EditCaptions = false;  ///< The user can change the rows' captions, also with F2.
    bool MultiSelect = false;   ///< Several rows can be selected.
    bool Sortable = false;      ///< The columns' captions can be clicked.
    bool Ticks = false;         ///< Each row has a box; a click on it and the space bar tick it.
};

/// A cell that is to be drawn. Its background is there already.
struct TListCell {
    int Row;
    HDC Dc;
    RECT Area;       ///< What the cell has of the window, in pixels.
    COLORREF Color;  ///< Of what is drawn, so that it shows on the background.
};

/// Rows of texts in columns, one or several of which can be selected as a whole. The selection
/// shows also without the focus. The control keeps the rows itself; the system asks for what it
/// draws.
class FRAMEWORK_API TListView : public TControl {
public:
    explicit TListView(TControl& parent, TListViewStyle style = {});

    /// Adds a column behind the last. @param width design units.
    void AddColumn(const std::string& caption, int width);
    /// The columns' widths in design units, in their order.
    std::vector<int> ColumnWidths();
    /// As ColumnWidths gave them; what is missing or not positive leaves a column as it is.
    void SetColumnWidths(const std::vector<int>& widths);
    /// Marks a column as the one that the rows are sorted by; -1 for none.
    void SetSortMark(int column, bool descending);
    /// The order in which the columns are seen, from the left.
    void SetColumnOrder(const std::vector<int>& order);
    /// Has the cells of a column drawn instead of showing their texts, which remain for programs
    /// that read screens aloud. @param column not the first. @param draw none for texts again.
    void SetDrawnColumn(int column, std::function<void(const TListCell& cell)> draw);
    /// Small images. The list stays its owner's and must live as long as the control; null for
    /// none.
    void SetImages(HIMAGELIST images);

    /// The rows, to be filled. Clearing them selects none and is no selection event.
    TListRows& Rows() { return Rows_; }
    int Count() const { return static_cast<int>(Rows_.Items.size()); }
    /// Raises std::out_of_range.
    const TListRow& Row(int index) const { return Rows_.Items.at(static_cast<std::size_t>(index)); }
    /// Puts other rows in the place of all: what stays alike is not drawn again, and the view stays
    /// where it was. @param selected the positions of those that are selected then, which is no
    /// event. @param focused the one that the keyboard goes on from; -1 for the first selected.
    void Replace(std::vector<TListRow> rows, const std::vector<int>& selected, int focused = -1);
    /// Removes a row, and the selection if it was on it, without an event. Raises
    /// std::out_of_range.
    void DeleteRow(int index);

    /// The selected row's position; -1 for none.
    int SelectedIndex() const;
    /// The selected row, or none.
    const TListRow* Selected() const;
    /// All selected rows' positions, ascending.
    std::vector<int> SelectedIndices() const;
    /// The row that the keyboard goes on from; -1 for none.
    int FocusedIndex() const;
    /// Selects a row, gives it the list's focus and brings it into view; -1 selects none. Others
    /// stay selected where several can be.
    void Select(int index);
    /// Selects all rows, where several can be.
    void SelectAll();
    /// Ticks rows or takes their ticks away, as the user does.
    void SetTicked(const std::vector<int>& indices, bool ticked);
    /// Lets the user change a row's caption in its place, if the style allows it.
    void EditCaption(int index);

    /// Another row was selected, or none, by the user or by Select.
    TNotifyEvent OnSelectItem;
    /// The selection or the rows have changed; once for a bracket.
    TNotifyEvent OnChange;
    TNotifyEvent OnClick;
    TNotifyEvent OnDblClick;
    /// The caption of a column was clicked.
    std::function<void(int column)> OnColumnClick;
    /// Ticks were put or taken away; once for rows that were changed together.
    TNotifyEvent OnTick;
    /// The user has given a row another caption; it already has it.
    std::function<void(int index, const std::string& caption)> OnEdited;
    /// Asked before a row is drawn: the colour of its text, or none for the usual one.
    std::function<std::optional<COLORREF>(const TListRow& row)> OnRowColor;

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Notify(NMHDR& header) override;
    POINT MenuPlace() const override;

private:
    class FRAMEWORK_API TRows final : public TListRows {
    public:
        explicit TRows(TListView& list) : List_(list) {}
        void BeginUpdate() override { ++Updating_; }
        void EndUpdate() override;
        void Clear() override;
        void Add(TListRow row) override;

        std::vector<TListRow> Items;

    private:
        TListView& List_;
        int Updating_ = 0;
        bool Cleared_ = false;
        bool Changed_ = false;
    };

    void RowsChanged(bool cleared);
    void SelectionChanged(const NMLISTVIEW& change);
    void Describe(LVITEMW& item) const;
    int Find(const NMLVFINDITEMW& search) const;
    LRESULT CustomDraw(NMLVCUSTOMDRAW& draw) const;
    std::optional<COLORREF> RowColor(int index) const;
    void DrawCell(int row, HDC dc) const;
    void Edited(const LVITEMW& item);
    void Clicked(const NMITEMACTIVATE& click, const TNotifyEvent& event);
    void TickSelected();
    const TListRow* RowAt(int index) const;
    void RedrawWhatDiffers(const std::vector<TListRow>& before);

    TRows Rows_;
    int Columns_ = 0;
    const bool Ticks_;
    int DrawnColumn_ = -1;
    std::function<void(const TListCell& cell)> DrawCell_;  // of that column
    bool Silent_ = false;  // what the selection does now is no event
};

}  // namespace framework
