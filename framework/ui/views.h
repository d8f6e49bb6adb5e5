#pragma once

#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/base/object.h"

namespace framework {

// What a model needs to know of the controls that show it. The controls are built on these, so that
// a model can be filled in and tested without a window. Main thread only.

/// One node of a tree view.
class FRAMEWORK_API TTreeNode : public TObject {
public:
    ~TTreeNode() override;
    /// Adds a node below this one, behind its last child; it belongs to the tree.
    virtual TTreeNode& AddChild(const std::string& text) = 0;
    virtual void DeleteChildren() = 0;
    /// What the node stands for; the node does not own it.
    virtual void SetData(TObject* data) = 0;
    virtual TObject* Data() const = 0;
    /// Positions in the tree's image lists. @param selected the image while the node is selected.
    virtual void SetImages(int image, int selected, int state) = 0;
    /// Whether the node shows a button to expand it, children or not.
    virtual void SetHasChildren(bool hasChildren) = 0;
    virtual void SetSelected(bool selected) = 0;
};

/// One row of a list view in report style.
struct TListRow {
    std::string Caption;
    std::vector<std::string> SubItems;  ///< In the order of the columns behind the first.
    int ImageIndex = -1;
    TObject* Data = nullptr;  ///< What the row stands for; the row does not own it.
    bool Ticked = false;      ///< Shown by lists whose style has boxes to tick.

    bool operator==(const TListRow&) const = default;
};

/// The rows of a list view.
class FRAMEWORK_API TListRows : public TObject {
public:
    ~TListRows() override;
    /// Nothing is drawn between the two. Brackets may stand in brackets.
    virtual void BeginUpdate() = 0;
    virtual void EndUpdate() = 0;
    virtual void Clear() = 0;
    virtual void Add(TListRow row) = 0;
};

/// The bracket of BeginUpdate and EndUpdate.
class TListUpdate {
public:
    explicit TListUpdate(TListRows& rows) : Rows_(rows) { Rows_.BeginUpdate(); }
    ~TListUpdate() { Rows_.EndUpdate(); }
    TListUpdate(const TListUpdate&) = delete;
    TListUpdate& operator=(const TListUpdate&) = delete;

private:
    TListRows& Rows_;
};

/// A text with lines, such as a rich edit holds.
class FRAMEWORK_API TTextView : public TObject {
public:
    ~TTextView() override;
    virtual void Clear() = 0;
    /// Lines end in CR LF.
    virtual void SetText(const std::string& text) = 0;
};

}  // namespace framework
