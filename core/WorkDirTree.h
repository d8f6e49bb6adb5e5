#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/Customvcs_types.h"
#include "framework/base/collection.h"
#include "framework/base/datetime.h"
#include "framework/base/object.h"

namespace framework {
class TListRows;
class TTextView;
class TTreeNode;
}  // namespace framework

namespace tandrel {

class TCustomCvsObj;
class TWorkDirTree;

/// One file or folder of a working copy, with what is known about it.
class TWorkDirItem : public framework::TObject {
public:
    explicit TWorkDirItem(TWorkDirTree& owner);
    ~TWorkDirItem() override;

    /// This item when it is `Name` in the folder `Dir` (upper and lower case alike), else none.
    TWorkDirItem* ItemExist(std::string_view Dir, std::string_view Name);
    /// Writes the ignore lists of what is below this item.
    void SaveIgnore(const std::string& FileName) const;

    /// A tree node is about to be expanded: fills in the children of the item it carries.
    void OnExpanding(framework::TTreeNode& Node, bool& AllowExpansion);
    /// The item was selected in a tree: fills the list with a folder's entries, or with a file.
    void OnSelect(framework::TListRows& ListView);
    /// Shows the file's status, log or difference. What was fetched once is shown again unless
    /// `Force` is set.
    void OnSelect2(TOperationType Operation, framework::TTextView& RichEdit, bool Force);
    /// Selects the item's tree node as if it had not been selected before.
    void OnDblClick();
    /// What the user reads about the item's state.
    const char* StatusName() const;

    bool IsDirectory = false;
    std::unique_ptr<TWorkDirTree> Children;  ///< The folder's own entries; empty for a file.
    std::string Directory;                   ///< The folder that holds the entry.
    std::string Name;
    bool Included = false;  ///< Not ignored.
    std::string Revision;
    std::string TimeStamp;  ///< As the client wrote it.
    std::string RepositoryPath;
    std::string RepositoryFileName;
    int ImageIndex = 0;                       ///< In the system's small image list.
    bool InRepository = false;                ///< The client's records name it.
    bool Changed = false;                     ///< Its time is not the one that the client recorded.
    framework::TDateTime RepositoryDate = 0;  ///< UTC; zero when unknown.
    framework::TDateTime FileDate = 0;        ///< Local time.
    framework::TTreeNode* TreeNode = nullptr;  ///< The node that shows it, or none.
    std::string StatusText;                    ///< The texts as they were fetched.
    std::string DiffText;
    std::string LogText;
    bool DiffLoaded = false;  ///< An empty difference is a result, too.

private:
    /// Fetches a text when `again` is set; true when it did.
    bool Fetch(std::string& text, bool again,
               std::string (TCustomCvsObj::*fetch)(const std::string&));

    TWorkDirTree& Owner_;
};

/// The entries of one folder of a working copy.
class TWorkDirTree : public framework::TCollection<TWorkDirItem> {
public:
    explicit TWorkDirTree(TCustomCvsObj* cvsObj) : CvsObj_(cvsObj) {}

    /// The version-control object whose model this is.
    TCustomCvsObj* CvsObj() const { return CvsObj_; }
    /// Appends an item with a child tree of its own.
    TWorkDirItem& Add();
    /// The first item of this tree, not of its child trees, that is `Name` in `Dir`, or none.
    TWorkDirItem* ItemExist(std::string_view Dir, std::string_view Name) const;
    /// Writes a list of this name into each folder that has entries that are not included, with
    /// their names and, last, its own (".cvsignore"). Other folders' lists stay as they are. Raises
    /// EInOutError.
    void SaveIgnore(const std::string& FileName) const;

    /// True while a load completes a folder that it has just listed: what is not here is not in the
    /// folder either, and nobody needs to ask the disk for it.
    bool JustListed = false;

private:
    TCustomCvsObj* CvsObj_;
};

/// Appends the list row of an item.
void AddLwItems(framework::TListRows& ListView, TWorkDirItem& Item);

}  // namespace tandrel
