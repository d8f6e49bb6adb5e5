#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/ui/form.h"
#include "framework/ui/line_view.h"
#include "framework/ui/menus.h"
#include "framework/ui/status_bar.h"
#include "workbench/AnnotationText.h"
#include "workbench/LogText.h"
#include "workbench/Viewers.h"

namespace workbench {

/// Shows who wrote each line of a file, and when. Its components: "Lines", "Status", "Menu1".
class TAnnotationForm : public framework::TForm {
public:
    /// @param host must outlive the form. @param file its full path. @param revision empty for that
    /// of the working copy.
    TAnnotationForm(TViewHost& host, std::string file, std::string revision);
    ~TAnnotationForm() override;

    /// Asks the client, and shows it. False when it could not say.
    bool Load();

private:
    void Shown() override { Lines_->SetFocus(); }
    void AddMenu();
    bool Fetch(const std::string& revision);
    void ShowStatus();
    void ShowBefore();
    void ShowAgain();
    void CompareRevision();
    void AskForText();
    void FindNext();
    std::string Describe(const std::string& revision) const;
    const TAnnotatedLine* Current() const;
    framework::TViewLine LineAt(int line) const;

    TViewHost& Host_;
    const std::string File_;
    std::string Revision_;
    std::vector<TAnnotatedLine> Annotated_;
    TFileLog Log_;                        // of the file, as far as it could be had
    std::map<std::string, int> Percent_;  // how new a revision is among those shown
    std::string Remark_;
    std::string Sought_;
    /// What was shown before, to return to.
    struct TPlace {
        std::string Revision;
        int Line;
    };
    std::vector<TPlace> Before_;

    framework::TMainMenu* Menu_;
    framework::TMenuItem* BackItem_;
    framework::TLineView* Lines_;
    framework::TStatusBar* Status_;
};

}  // namespace workbench
