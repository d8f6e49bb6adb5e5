#pragma once

#include <string>
#include <string_view>

#include "core/Customvcs_types.h"
#include "framework/base/collection.h"

namespace tandrel {

/// One file, folder or pattern that the next operation works on.
class TFileItem {
public:
    std::string Directory;  ///< The folder, without a trailing backslash; empty for a pattern.
    std::string Name;       ///< The name in the folder, or the pattern.
    TKeywordMode KeywordMode = Km_none;
    bool Ignore = false;  ///< Import is to ignore it.
    TFileType FileType = fi_file;
};

/// The list of them.
class TFileItems : public framework::TCollection<TFileItem> {
public:
    /// Adds a file by its path.
    TFileItem& AddFile(std::string_view Path, TKeywordMode Mode);
    /// Adds a folder by its path.
    TFileItem& AddDir(std::string_view Path);
    /// Adds something to ignore by its path.
    TFileItem& AddIgnore(std::string_view Path);
    /// Adds a pattern. @param Flag whether it is to be ignored.
    TFileItem& AddExt(std::string_view Pattern, bool Flag, TKeywordMode Mode);

private:
    TFileItem& AddPath(std::string_view Path, TFileType Type);
};

/// Empties the list when the operation is over, however it ends.
class TFileItemsForCall {
public:
    explicit TFileItemsForCall(TFileItems& items) : Items_(items) {}
    ~TFileItemsForCall() { Items_.Clear(); }
    TFileItemsForCall(const TFileItemsForCall&) = delete;
    TFileItemsForCall& operator=(const TFileItemsForCall&) = delete;

private:
    TFileItems& Items_;
};

}  // namespace tandrel
