#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/base/collection.h"
#include "framework/base/datetime.h"

namespace tandrel {

class TCustomCvsObj;
class TWorkDirTree;

/// One file or folder of a working copy, with what is known about it.
class TWorkDirItem {
public:
    explicit TWorkDirItem(TWorkDirTree& owner);
    ~TWorkDirItem();

    /// This item when it is `Name` in the folder `Dir` (upper and lower case alike), else none.
    TWorkDirItem* ItemExist(std::string_view Dir, std::string_view Name);

    bool IsDirectory = false;
    std::unique_ptr<TWorkDirTree> Children;  ///< The folder's own entries; empty for a file.
    std::string Directory;                   ///< The folder that holds the entry.
    std::string Name;
    bool Included = false;  ///< Not ignored.
    std::string Revision;
    std::string TimeStamp;  ///< As the client wrote it.
    int ImageIndex = 0;     ///< In the system's small image list.
    bool InRepository = false;
    bool Changed = false;                     ///< Differs from what was last fetched or committed.
    framework::TDateTime RepositoryDate = 0;  ///< UTC; zero when unknown.
    framework::TDateTime FileDate = 0;        ///< Local time.
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

private:
    TCustomCvsObj* CvsObj_;
};

}  // namespace tandrel
