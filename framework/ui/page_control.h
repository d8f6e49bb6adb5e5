#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/control.h"

namespace framework {

class TTabSheet;

/// Pages, one of which is shown, and their tabs above it. Ctrl+Tab, Ctrl+Shift+Tab, Ctrl+Page Up
/// and Ctrl+Page Down turn them from anywhere on them, the first two also from beside the control.
/// The Tab key reaches the tabs before the page; the arrows turn the pages there. Pages are counted
/// from zero, in the order they were made, whether their tabs show or not.
class FRAMEWORK_API TPageControl : public TControl {
public:
    explicit TPageControl(TControl& parent);
    ~TPageControl() override;

    int PageCount() const { return static_cast<int>(Pages_.size()); }
    TTabSheet& Page(int index) const { return *Pages_.at(static_cast<std::size_t>(index)); }
    /// The page that is shown; -1 for none.
    int ActivePageIndex() const { return Active_; }
    /// Shows another page, without an event. A page whose tab does not show is not shown.
    void SetActivePageIndex(int index);

    /// The user is about to turn to another page; may refuse it. A disabled page can be turned to.
    std::function<void(bool& allow)> OnChanging;
    /// The user has turned to another page.
    TNotifyEvent OnChange;

protected:
    LRESULT Notify(NMHDR& header) override;
    void DrawItem(const DRAWITEMSTRUCT& item) override;
    void Resized() override { PlacePages(); }
    bool HandleKey(WPARAM key) override;

private:
    friend class TTabSheet;
    void Remove(TTabSheet& page);
    void RebuildTabs();
    /// Gives the last page its tab.
    void AddTab();
    void PlacePages();
    void ShowPage(int index);
    void Turn(int step);
    HWND FirstStop() const;
    bool TabKey(bool back);
    /// Whether the Tab key is to find the controls on the page, or the tabs alone.
    void WalkThrough(bool through);
    /// Positions of the tabs, of those pages that have one.
    int TabOf(int page) const;
    int PageOf(int tab) const;

    std::vector<TTabSheet*> Pages_;
    int Active_ = -1;
};

/// A page of a page control. Its text is the tab's caption; the tab of a disabled page is grey.
class FRAMEWORK_API TTabSheet : public TControl {
public:
    TTabSheet(TPageControl& pages, const std::string& caption);
    ~TTabSheet() override;

    std::string Text() const override { return Caption_; }
    void SetText(const std::string& text) override;
    /// Whether the tab shows. When that of the page shown goes, a page beside it is shown.
    bool TabVisible() const { return TabVisible_; }
    void SetTabVisible(bool visible);

protected:
    LRESULT WndProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    friend class TPageControl;
    TPageControl* Pages_;  // none when the control went first
    std::string Caption_;
    bool TabVisible_ = true;
};

}  // namespace framework
