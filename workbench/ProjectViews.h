#pragma once

#include <string>
#include <vector>

#include "framework/ui/form.h"
#include "workbench/Viewers.h"

namespace workbench {

class TMainForm;

/// The windows that show the past of one project. Main thread only.
class TProjectViews : public TViewHost {
public:
    /// @param form must outlive the views. @param folder the project's.
    TProjectViews(TMainForm& form, std::string folder) : Form_(form), Folder_(std::move(folder)) {}
    /// Closes all of them.
    ~TProjectViews() override;
    TProjectViews(const TProjectViews&) = delete;
    TProjectViews& operator=(const TProjectViews&) = delete;

    bool Query(const std::function<void(hosting::TQueries& queries)>& action) override;
    bool Operate(const std::vector<std::string>& paths,
                 const std::function<bool(tandrel::TCvsObject&)>& operation) override;
    std::vector<hosting::TFileRow> Files(const std::vector<std::string>& paths) override;
    std::string Folder() const override { return Folder_; }
    void Compare(const std::vector<std::string>& paths, const hosting::TVersion& from,
                 const hosting::TVersion& to) override;
    void ShowLabels();
    void Commit(const std::vector<std::string>& paths) override;
    void ShowHistory(const std::vector<std::string>& paths) override;
    void Annotate(const std::string& file, const std::string& revision) override;
    void OpenText(const std::string& caption, const std::string& text,
                  const std::string& folder) override;
    void OpenFile(const std::string& path) override;
    hosting::TSettings& Settings() override;

private:
    /// Shows a new window once it has something to show; false when it has nothing.
    template <class TView, class... TArguments>
    bool Open(TArguments&&... arguments);
    void ForgetClosed();

    TMainForm& Form_;
    std::string Folder_;
    std::vector<framework::TForm*> Open_;  // the application's
};

}  // namespace workbench
