#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "core/Customvcs_types.h"
#include "cvs/Cvstempl_types.h"
#include "framework/base/datetime.h"

namespace tandrel {

/// A revision number, tag or branch name: a fixed field of 64 characters, zero-terminated when the
/// text is shorter. Longer texts are cut.
class TRevisionText {
public:
    TRevisionText& operator=(std::string_view text) {
        std::array<char, 64> fresh{};
        std::copy_n(text.data(), std::min(text.size(), fresh.size()), fresh.data());
        Text_ = fresh;
        return *this;
    }
    operator std::string_view() const {
        return {Text_.data(), static_cast<std::size_t>(std::find(Text_.begin(), Text_.end(), '\0') -
                                                       Text_.begin())};
    }
    bool empty() const { return Text_.front() == '\0'; }

private:
    std::array<char, 64> Text_{};
};

/// One or two revisions, each perhaps with a date, and what they are for.
template <class TKind>
struct TSpec {
    TKind Kind{};
    TRevisionText Rev1;
    bool UseDate1 = false;
    framework::TDateTime Date1 = 0;  ///< Local time. Counts only with UseDate1 and above zero.
    TRevisionText Rev2;
    bool UseDate2 = false;
    framework::TDateTime Date2 = 0;

    bool HasDate1() const { return UseDate1 && Date1 > 0; }
    bool HasDate2() const { return UseDate2 && Date2 > 0; }
};

/// What a comparison compares.
using TRevisionSpec = TSpec<TDiffCompareType>;
/// What an update or check-out merges.
using TMergeSpec = TSpec<TMergeType>;

/// The options of all operations. They keep their values from one operation to the next; the names
/// in brackets are the client's options.
struct TCvsOptions {
    std::string CommitMessage;      ///< [-m] of commit, add, import.
    bool LocalOnly = false;         ///< [-l]
    bool PruneEmptyDirs = true;     ///< [-P] of check-out, update.
    bool ResetSticky = false;       ///< [-A] of check-out, update.
    bool ToStandardOutput = false;  ///< [-p] of check-out, update.
    bool UseTargetDir = false;      ///< [-d TargetDir] of check-out, export.
    std::string TargetDir;
    bool CreateDirs = false;        ///< [-d] of update.
    bool ForceFlag = false;         ///< [-f] of commit, remove, log, rlog; [-d] of import.
    bool UseDefaultIgnore = false;  ///< Import gives no [-I] at all.
    std::string VendorTag;
    std::string ReleaseTag;
    TKeywordMode KeywordMode = Km_none;
    TStikyType StikyType = stNone;  ///< Which revision to work with.
    std::string StikyBranch;
    std::string StikyTag;
    framework::TDateTime StikyDate = 0;  ///< Local time.
    TMergeSpec MergeSpec;                ///< [-j]
    TRevisionSpec DiffSpec;              ///< Revisions of diff and rdiff.
    bool ReleaseExport = false;          ///< [-e]
    bool ReleaseDelete = false;          ///< [-d]
    bool ReleaseForce = false;           ///< [-f]
    bool StatusVerbose = false;          ///< [-v]
    TActionEdit EditAction = aeNone;     ///< [-a] of edit, watch.
    TWatchSubcommand WatchCommand = wsOn;
    bool LogHeaderOnly = false;     ///< [-h]
    bool LogSuppressEmpty = false;  ///< [-S]
    bool LogNoFiles = false;        ///< Log names no files.
    std::string TagName;
    bool TagDelete = false;            ///< [-d]
    bool TagBranch = false;            ///< [-b]
    bool TagCheckUncommitted = false;  ///< [-c]
    bool TagForceMove = false;         ///< [-F]
    bool TagClearRemoved = false;      ///< [-a]
    bool TagDeleteBranch = true;       ///< [-B], together with [-d] only.
};

}  // namespace tandrel
