#include "workbench/ProjectViews.h"

#include "framework/ui/application.h"
#include "workbench/AnnotationForm.h"
#include "workbench/CommitForm.h"
#include "workbench/ComparisonForm.h"
#include "workbench/HistoryForm.h"
#include "workbench/LabelsForm.h"
#include "workbench/MainForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;

TProjectViews::~TProjectViews() {
    for (TForm* view : Open_)
        view->Free();
}

void TProjectViews::ForgetClosed() {
    std::erase_if(Open_, [](TForm* view) {
        if (view->Visible())
            return false;
        view->Free();
        return true;
    });
}

template <class TView, class... TArguments>
bool TProjectViews::Open(TArguments&&... arguments) {
    ForgetClosed();
    TView& view = Application().CreateForm<TView>(*this, std::forward<TArguments>(arguments)...);
    // Until it is shown it counts as closed.
    if (!view.Load()) {
        view.Free();
        return false;
    }
    Open_.push_back(&view);
    view.Show();
    ::SetForegroundWindow(view.Handle());
    return true;
}

bool TProjectViews::Query(const std::function<void(TQueries& queries)>& action) {
    return Form_.Query(Folder_, action);
}

bool TProjectViews::Operate(const std::vector<std::string>& paths,
                            const std::function<bool(tandrel::TCvsObject&)>& operation) {
    return Form_.OperateIn(Folder_, paths, operation);
}

std::vector<TFileRow> TProjectViews::Files(const std::vector<std::string>& paths) {
    return Form_.FilesIn(Folder_, paths);
}

void TProjectViews::Commit(const std::vector<std::string>& paths) {
    ForgetClosed();
    // There is one message, so there is one window.
    for (TForm* view : Open_)
        if (auto* const open = dynamic_cast<TCommitForm*>(view)) {
            open->ShowFiles(paths);
            open->Show();
            ::SetForegroundWindow(open->Handle());
            return;
        }
    if (!Open<TCommitForm>(paths))
        Form_.Tell("Nothing has changed that could be committed.\r\n");
}

void TProjectViews::ShowLabels() {
    Open<TLabelsForm>();
}

void TProjectViews::Compare(const std::vector<std::string>& paths, const TVersion& from,
                            const TVersion& to) {
    // What the editors hold is meant, too.
    if (to.Kind == TVersion::TKind::WorkingCopy && !Form_.SaveDocuments())
        return;
    Open<TComparisonForm>(paths, from, to);
}

void TProjectViews::ShowHistory(const std::vector<std::string>& paths) {
    Open<THistoryForm>(paths);
}

void TProjectViews::Annotate(const std::string& file, const std::string& revision) {
    Open<TAnnotationForm>(file, revision);
}

void TProjectViews::OpenText(const std::string& caption, const std::string& text,
                             const std::string& folder) {
    Form_.OpenText(caption, text, folder);
}

void TProjectViews::OpenFile(const std::string& path) {
    Form_.OpenDocument(path);
}

TSettings& TProjectViews::Settings() {
    return Form_.Settings();
}

}  // namespace workbench
