#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/base/datetime.h"
#include "hosting/KeptTexts.h"
#include "hosting/Project.h"

namespace hosting {

/// A state of files.
struct TVersion {
    enum class TKind {
        WorkingCopy,  ///< What is on disk.
        Base,         ///< What the working copy was when it was last updated.
        Revision,     ///< A revision's number, a label, or a branch: its end.
        Date          ///< The newest before a moment.
    };
    TKind Kind = TKind::WorkingCopy;
    std::string Revision;           ///< Of Revision.
    framework::TDateTime Date = 0;  ///< Of Date, in UTC.

    static TVersion WorkingCopy() { return {}; }
    static TVersion Base() { return {TKind::Base, {}, 0}; }
    static TVersion Of(std::string revision) { return {TKind::Revision, std::move(revision), 0}; }
    static TVersion At(framework::TDateTime utc) { return {TKind::Date, {}, utc}; }
    bool operator==(const TVersion&) const = default;

    /// As users read it: "working copy", "1.4", "2026-05-04 10:30".
    std::string Text() const;
    /// A number, behind which always the same text is.
    bool IsNumber() const;
};

/// What the client has answered.
struct TFetched {
    std::string Text;                ///< Lines end as the client ends them.
    bool IsKept = false;             ///< It comes from what was fetched before.
    framework::TDateTime Since = 0;  ///< When that was, local time.

    /// Says so to the user; empty when it is fresh.
    std::string Remark() const;
};

/// What the repository says about the files of a project: fetched, or what is kept of it while
/// there is no server. Nothing for what cannot be had, and the user is told. Main thread; runs
/// commands, so an operation must not be running.
class TQueries {
public:
    TQueries(TProject& project, const TSettings& settings)
        : Project_(project), Texts_(settings.DataFolder("Texts")) {}

    /// The text of "log". @param files full paths.
    std::optional<TFetched> Log(const std::vector<std::string>& files);
    /// The text of "rlog" of all that the repository has for these folders (full paths; the
    /// project's own among them means all), what was removed included.
    /// @param since UTC; only newer revisions. 0 for all.
    std::optional<TFetched> FolderLog(const std::vector<std::string>& folders,
                                      framework::TDateTime since = 0);
    /// The text of "annotate". @param revision empty for that of the working copy.
    std::optional<TFetched> Annotation(const std::string& file, const std::string& revision);
    /// A file as it was, byte for byte but for the ends of its lines.
    /// @param version not the working copy.
    std::optional<TFetched> File(const std::string& file, const TVersion& version);
    /// The unified text of "diff", new and removed files as a whole; empty when nothing differs.
    /// @param paths files and folders, none for all. @param from not the working copy.
    /// @param context lines around each change.
    std::optional<TFetched> Comparison(const std::vector<std::string>& paths, const TVersion& from,
                                       const TVersion& to, bool ignoreBlanks, int context = 3);

    /// The full path of a file in the working copy, by what "rlog" calls it; empty for a file that
    /// is not the project's.
    std::string PathOf(const std::string& repositoryFile) const;

private:
    enum class TLasting {
        Changing,  ///< May be another text the next time.
        ForEver,   ///< Always the same: what is kept is as good.
        NotKept
    };
    using TSucceeded = bool (*)(int code, const std::string& output);
    std::optional<TFetched> Fetch(tandrel::TOperationType kind,
                                  const std::vector<std::string>& commands, TLasting lasting,
                                  TSucceeded succeeded, const std::string& state = {});
    std::string NameOf(const std::string& path) const;
    std::vector<std::string> WithNames(const std::string& command,
                                       const std::vector<std::string>& paths) const;

    TProject& Project_;
    TKeptTexts Texts_;
};

}  // namespace hosting
