#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/ui/buttons.h"
#include "framework/ui/form.h"
#include "framework/ui/labels.h"
#include "framework/ui/line_view.h"
#include "framework/ui/list_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/status_bar.h"
#include "workbench/ComparisonText.h"
#include "workbench/Viewers.h"

namespace workbench {

/// Shows two versions of files side by side. Its components: "Lines" with both texts, "FileList"
/// with the files where there are several, "ChangesOnly", "IgnoreBlanks", "Previous", "Next",
/// "Versions", "SavePatch".
class TComparisonForm : public framework::TForm {
public:
    /// @param host must outlive the form. @param paths full paths, none for the whole project.
    TComparisonForm(TViewHost& host, std::vector<std::string> paths, hosting::TVersion from,
                    hosting::TVersion to);
    ~TComparisonForm() override;

    /// Asks the client what differs, and shows it. False when it could not say.
    bool Load();
    const std::vector<TComparedLine>& Compared() const { return Compared_; }

private:
    void Shown() override { Lines_->SetFocus(); }
    void AddMenu();
    void AddBar();
    void AddHeads();
    void Resized() override;
    void ShowFiles();
    void ShowFile();
    void ShowHeads();
    void ShowStatus();
    void TurnToChange(bool next);
    void TurnToFile(int step);
    void ChooseVersions();
    void SavePatch();
    void OpenFile();
    std::string PathOf(const TFileDifference& file) const;
    const TFileDifference* ShownFile() const;
    std::vector<std::string> NewerLines(const TFileDifference& file, bool& known);
    bool ShowWholeFile(TFileDifference& file);
    framework::TViewLine LineAt(int line, int column) const;

    TViewHost& Host_;
    std::vector<std::string> Paths_;
    hosting::TVersion From_, To_;
    std::string Remark_;  // where it comes from
    TComparison Comparison_;
    int File_ = 0;
    std::vector<TComparedLine> Compared_;
    std::vector<int> Changes_;
    int NumberLetters_ = 1;

    framework::TMainMenu* Menu_;
    framework::TMenuItem* ChangesOnlyItem_;
    framework::TMenuItem* IgnoreBlanksItem_;
    framework::TCheckBox* ChangesOnly_;
    framework::TCheckBox* IgnoreBlanks_;
    framework::TPanel* Heads_;
    framework::TLabel* FromHead_;
    framework::TLabel* ToHead_;
    framework::TListView* Files_;
    framework::TPanel* Left_;
    framework::TLineView* Lines_;
    framework::TStatusBar* Status_;
};

/// The two sides of a comparison. The older one is not the working copy.
struct TVersionPair {
    hosting::TVersion From, To;
};
/// Lets the user choose them; nothing when he gave up.
std::optional<TVersionPair> AskForVersions(const TVersionPair& proposed);

/// A version as the user types it: "working copy", "last update", a date such as "2026-05-04" or
/// "2026-05-04 10:30" in local time, else a revision, label or branch.
hosting::TVersion VersionOf(const std::string& typed);

}  // namespace workbench
