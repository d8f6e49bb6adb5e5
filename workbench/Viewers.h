#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosting/Queries.h"

namespace workbench {

/// What the windows that show a repository's past ask of the program. Files and folders are full
/// paths; none of them means the whole project. Main thread.
class TViewHost {
public:
    virtual ~TViewHost() = default;

    /// Asks the repository something: nothing else is started meanwhile, Stop ends it. @return
    /// false, and nothing was done, while a command runs or when the project is no longer open.
    virtual bool Query(const std::function<void(hosting::TQueries& queries)>& action) = 0;
    /// Runs an operation on them, and shows what has become of the files. @return what the
    /// operation says.
    virtual bool Operate(const std::vector<std::string>& paths,
                         const std::function<bool(tandrel::TCvsObject&)>& operation) = 0;
    /// The files that are meant by these paths, read anew; none while a command runs.
    virtual std::vector<hosting::TFileRow> Files(const std::vector<std::string>& paths) = 0;
    /// The folder of the project.
    virtual std::string Folder() const = 0;

    /// Shows what differs. @param from not the working copy.
    virtual void Compare(const std::vector<std::string>& paths, const hosting::TVersion& from,
                         const hosting::TVersion& to) = 0;
    /// Lets the user commit what has changed of them.
    virtual void Commit(const std::vector<std::string>& paths) = 0;
    virtual void ShowHistory(const std::vector<std::string>& paths) = 0;
    /// Shows who wrote the lines of a file. @param revision empty for that of the working copy.
    virtual void Annotate(const std::string& file, const std::string& revision) = 0;
    /// Shows a text that is no file. @param folder where it would be saved.
    virtual void OpenText(const std::string& caption, const std::string& text,
                          const std::string& folder) = 0;
    virtual void OpenFile(const std::string& path) = 0;
    virtual hosting::TSettings& Settings() = 0;
};

}  // namespace workbench
