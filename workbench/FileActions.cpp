// What the menu does with the chosen files and folders.

#include <algorithm>
#include <memory>

#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"
#include "framework/ui/dialogs.h"
#include "workbench/ComparisonForm.h"
#include "workbench/InputForm.h"
#include "workbench/MainForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using namespace tandrel;

namespace {

/// What the user typed for a file: without a drive or server it is meant from the folder on.
std::string FullName(const std::string& typed, const std::string& folder) {
    const bool isFull = typed.starts_with('\\') || typed.find(':') != std::string::npos;
    return typed.empty() || isFull ? typed : SlashSep(folder, typed);
}

/// Adds what an ignore list holds, which would be lost when it is written anew; without its own
/// name and `except`, which come anyway.
void AddIgnored(TFileItems& items, const std::string& list,
                const std::vector<std::string>& except) {
    if (!FileExists(list))
        return;
    auto file = TTextFile::Reset(list);
    for (std::string line; file.ReadLine(line);) {
        const std::string name = Trim(line);
        if (!name.empty() && !SameText(name, IgnoreFileName) &&
            std::ranges::find(except, name) == except.end())
            items.AddExt(name, true, Km_none);
    }
}

/// Up to ten names, a line for each, and how many more there are.
std::string Listed(const std::vector<std::string>& names) {
    constexpr std::size_t Most = 10;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), Most); ++i)
        text += names[i] + "\r\n";
    if (names.size() > Most)
        text += "and " + std::to_string(names.size() - Most) + " more\r\n";
    return text;
}

std::vector<std::string> PathsOf(const std::vector<TFileRow>& rows) {
    std::vector<std::string> paths;
    paths.reserve(rows.size());
    for (const TFileRow& row : rows)
        paths.push_back(row.Path());
    return paths;
}

/// Gives a file the name that the client itself gives to what it puts aside, or the next one that
/// is free. @return the name. Raises EInOutError.
std::string PutAside(const TFileRow& row) {
    const std::string usual = ".#" + row.Name + "." + row.Revision;
    std::string name = usual;
    for (int number = 2; FileExists(SlashSep(row.Directory, name)); ++number)
        name = usual + "." + std::to_string(number);
    if (!TPatience().Move(row.Path(), SlashSep(row.Directory, name), 0))
        throw EInOutError(::GetLastError(), row.Path());
    return name;
}

/// A commit that asks for its message once, however many commands it takes.
std::function<bool(TCvsObject&)> Committing(TProject& project) {
    const auto message = std::make_shared<std::string>();
    return [&project, message](TCvsObject& cvs) {
        if (project.IsFurtherPart()) {
            cvs.CommitMessage = *message;
            return cvs.Commit(false);
        }
        const bool done = cvs.Commit(true);
        *message = cvs.CommitMessage;
        return done;
    };
}

}  // namespace

void TMainForm::OpenSelection() {
    const std::vector<std::string> selection = Selection();
    if (selection.size() == 1 && Folders_->Select(selection.front()))
        return List_->SetFocus();
    constexpr std::size_t Most = 10;
    if (selection.size() > Most &&
        !AskYesNo("Open " + std::to_string(selection.size()) + " files, each in its own window?"))
        return;
    for (const std::string& path : selection)
        if (FileExists(path))
            OpenDocument(path);
}

void TMainForm::AddSelection() {
    Busily([this](TProject& project) { project.Add(Selection()); });
}

std::vector<TFileRow> TMainForm::SelectedFiles(std::initializer_list<TFileState> states) const {
    std::vector<TFileRow> rows =
        RowsIn(Selection(), Current_->Folder(), Current_->Cvs().WorkDirTree);
    std::erase_if(rows, [&](const TFileRow& row) {
        return std::ranges::find(states, row.State) == states.end();
    });
    return rows;
}

void TMainForm::RemoveSelection(bool deleteFiles) {
    using enum TFileState;
    const std::vector<std::string> files =
        PathsOf(SelectedFiles({Unchanged, Changed, Added, Missing, Conflict}));
    if (files.empty())
        return Tell("There is no file under version control in what is chosen.\r\n");
    std::vector<std::string> there;
    std::ranges::copy_if(files, std::back_inserter(there), FileExists);
    if (deleteFiles && !there.empty() &&
        !AskRisk("These files will be deleted here, and removed by the next commit:\r\n" +
                 Listed(there) + "Go on?"))
        return;
    OperateOn(files, [deleteFiles](TCvsObject& cvs) {
        cvs.DeleteLocalFiles = deleteFiles;
        return cvs.Remove();
    });
}

void TMainForm::CommitFiles(const std::vector<std::string>& paths) {
    if (Settings_.CommitsByPackage())
        return OperateOn(paths, Committing(*Current_));
    // What only the editors have is to be seen, too.
    if (SaveDocuments())
        Views().Commit(paths);
}

void TMainForm::UpdateProject() {
    Operate(&TCvsObject::Update, false);
}

void TMainForm::UpdateSelection() {
    Operate(&TCvsObject::Update, true);
}

void TMainForm::RevertSelection() {
    using enum TFileState;
    const std::vector<TFileRow> rows = SelectedFiles({Changed, Conflict, Missing});
    if (rows.empty())
        return Tell("Nothing in what is chosen was changed.\r\n");
    if (!AskRisk("These files will be as in the repository again:\r\n" + Listed(PathsOf(rows)) +
                 "Your texts stay beside them, under names that begin with .#   Go on?"))
        return;
    Busily([&](TProject& project) {
        for (const TFileRow& row : rows)
            if (row.State != Missing)
                Tell(row.Path() + " is now called " + PutAside(row) + "\r\n");
        // The client gets what is missing.
        project.Operate(&TCvsObject::Update, PathsOf(rows));
    });
}

void TMainForm::CompareSelection() {
    Views().Compare(Selection(), TVersion::Base(), TVersion::WorkingCopy());
}

void TMainForm::CompareWith() {
    const std::optional<TVersionPair> versions =
        AskForVersions({TVersion::Base(), TVersion::WorkingCopy()});
    if (versions)
        Views().Compare(Selection(), versions->From, versions->To);
}

void TMainForm::CompareAsText() {
    const std::vector<std::string> selection = Selection();
    if (selection.size() == 1 && FileExists(selection.front()))
        return Operate(
            [path = selection.front()](TCvsObject& cvs) { return cvs.DiffFile(true, path); },
            false);
    Operate(&TCvsObject::Diff, true);
}

void TMainForm::AnnotateSelection() {
    const std::vector<std::string> selection = Selection();
    if (selection.size() == 1 && FileExists(selection.front()))
        return Views().Annotate(selection.front(), "");
    Operate(&TCvsObject::Annotate, true);
}

void TMainForm::GetRevision() {
    const auto rows = Rows_->Selection();
    if (rows.size() != 1 || rows.front()->IsDirectory)
        return;
    const TFileRow row = *rows.front();
    if (row.IsBinary)
        return Tell(row.Name + " is kept as binary: there is no text to show.\r\n");
    std::vector<TInput> inputs = {
        {TInput::Text, "Revision", row.Revision, {}},
        {TInput::Note,
         "",
         "A revision, a label, a branch, or a date such as 2026-05-04 or 2026-05-04 10:30.",
         {}}};
    if (!AskFor("Get " + row.Name, inputs))
        return;
    const TVersion version = VersionOf(inputs[0].Value);
    if (version.Kind == TVersion::TKind::WorkingCopy)
        return OpenDocument(row.Path());
    std::optional<TFetched> text;
    Query(Current_->Folder(), [&](TQueries& queries) { text = queries.File(row.Path(), version); });
    if (text && text->Text.empty())
        Tell(row.Name + " was empty then, or not there.\r\n");
    else if (text)
        OpenText(row.Name + " " + version.Text(), text->Text, row.Directory);
}

void TMainForm::AskForNewName() {
    const std::vector<std::string> selection = Selection();
    if (selection.empty() || !FileExists(selection.front()))
        return;
    const std::string& from = selection.front();
    std::vector<TInput> inputs = {{TInput::Text, "New name", from, {}}};
    if (!AskFor("Move " + ExtractFileName(from), inputs))
        return;
    const std::string to = FullName(inputs[0].Value, ExtractFileDir(from));
    Busily([&](TProject& project) { project.Move(from, to); });
    if (FileExists(to) && !FileExists(from))
        Documents_.Moved(from, to);
}

void TMainForm::IgnoreSelection() {
    // A list is about the names in its own folder.
    std::vector<std::string> folders;
    const std::vector<std::string> selection = Selection();
    for (const std::string& path : selection)
        if (const std::string folder = ExtractFileDir(path);
            std::ranges::find(folders, folder) == folders.end())
            folders.push_back(folder);
    Operate(
        [&](TCvsObject& cvs) {
            for (const std::string& folder : folders) {
                std::vector<std::string> names;
                // The project returns to its own folder afterwards.
                cvs.Set_Modulename("");
                cvs.Set_ProjectRoot(folder);
                for (const std::string& path : selection)
                    if (SameText(ExtractFileDir(path), folder))
                        names.push_back(ExtractFileName(path));
                cvs.FileItems.Clear();
                AddIgnored(cvs.FileItems, SlashSep(cvs.WorkingDirectory(), IgnoreFileName), names);
                for (const std::string& name : names)
                    cvs.FileItems.AddIgnore(SlashSep(folder, name));
                cvs.ExploreIgnore();
            }
            return true;
        },
        false);
}

}  // namespace workbench
