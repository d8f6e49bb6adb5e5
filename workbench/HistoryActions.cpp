// What is done with what is chosen in a history.

#include <algorithm>
#include <map>

#include "framework/base/files.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "framework/ui/clipboard.h"
#include "workbench/HistoryForm.h"
#include "workbench/InputForm.h"

namespace workbench {

using namespace framework;
using namespace hosting;
using tandrel::TCvsObject;

void THistoryForm::AddActions() {
    const auto add = [this](const char* name, const char* caption, const char* item, TShortcut keys,
                            bool (THistoryForm::*can)() const, void (THistoryForm::*run)()) {
        Actions_.Add({name, caption, item, keys, [this, can] { return (this->*can)(); },
                      [this, run] { (this->*run)(); }});
    };
    using F = THistoryForm;
    add("Compare", "Compare", "&Compare", {'D', true}, &F::HasChanges, &F::Compare);
    add("CompareWorking", "With the working copy", "Compare with the &working copy",
        {'D', true, true}, &F::HasSinceThen, &F::CompareWorking);
    add("Annotate", "Annotate", "&Annotate", {'T', true}, &F::HasOneFile, &F::Annotate);
    add("Get", "Get", "&Get the text", {'G', true}, &F::HasOneFile, &F::GetText);
    add("Open", "Open", "&Open the file", {'O', true}, &F::HasFileHere, &F::OpenFile);
    if (!IsOneFile())
        add("History", "History", "&History of the file", {'L', true}, &F::HasOneFile,
            &F::ShowHistoryOfFile);
    add("Label", "Label...", "&Label...", {'B', true}, &F::HasFiles, &F::SetLabel);
    add("Copy", "Copy", "Co&py", {'C', true}, &F::HasRows, &F::Copy);
}

bool THistoryForm::HasFileHere() const {
    const std::vector<TFileAt> files = History_->Files(Chosen());
    return files.size() == 1 && FileExists(files.front().Path);
}

void THistoryForm::Compare() {
    if (const std::optional<TStates> states = History_->Changes(Chosen()))
        Host_.Compare(states->Paths, states->From, states->To);
}

void THistoryForm::CompareWorking() {
    if (const std::optional<TStates> states = History_->SinceThen(Chosen()))
        Host_.Compare(states->Paths, states->From, states->To);
}

void THistoryForm::Annotate() {
    if (!HasOneFile())
        return;
    const TFileAt file = History_->Files(Chosen()).front();
    Host_.Annotate(file.Path, file.Revision);
}

void THistoryForm::GetText() {
    if (!HasOneFile())
        return;
    const TFileAt file = History_->Files(Chosen()).front();
    const std::string name = ExtractFileName(file.Path);
    if (History_->IsBinary(file))
        return ShowStatus(name + " is kept as binary: there is no text to show");
    std::optional<TFetched> text;
    Host_.Query(
        [&](TQueries& queries) { text = queries.File(file.Path, TVersion::Of(file.Revision)); });
    if (!text)
        return ShowStatus("The client could not get the text: see the output");
    Host_.OpenText(name + " " + file.Revision, text->Text, ExtractFileDir(file.Path));
}

void THistoryForm::OpenFile() {
    if (HasFileHere())
        Host_.OpenFile(History_->Files(Chosen()).front().Path);
}

void THistoryForm::ShowHistoryOfFile() {
    if (HasOneFile())
        Host_.ShowHistory({History_->Files(Chosen()).front().Path});
}

void THistoryForm::SetLabel() {
    // One command takes all files of one revision's number.
    std::map<std::string, std::vector<std::string>> files;
    std::size_t count = 0;
    for (const TFileAt& file : History_->Files(Chosen())) {
        files[file.Revision].push_back(file.Path);
        ++count;
    }
    const std::string what =
        count == 1 ? ExtractFileName(files.begin()->second.front()) + " " + files.begin()->first
                   : std::to_string(count) + " files in the revisions that are chosen";
    std::vector<TInput> inputs = {{TInput::Text, "Label", "", {}},
                                  {TInput::Flag, "Move it if it is there already", "", {}},
                                  {TInput::Note, "", "For " + what + ".", {}}};
    if (files.empty() || !AskFor("Label", inputs))
        return;
    const std::string name = Trim(inputs[0].Value);
    if (name.empty())
        return;
    for (const auto& [revision, paths] : files) {
        const bool done = Host_.Operate(paths, [&, number = revision](TCvsObject& cvs) {
            cvs.TagName = name;
            cvs.TagForceMove = inputs[1].Value == "1";
            cvs.StikyType = tandrel::stTag;
            cvs.StikyTag = number;
            return cvs.Create_Tag(false);
        });
        if (!done)
            return ShowStatus("The label could not be set: see the output");
    }
    Load();
}

void THistoryForm::Copy() {
    std::string text;
    for (const int row : List_->SelectedIndices())
        text += (text.empty() ? "" : "\n") + History_->Text(row);
    std::string lines;
    lines.reserve(text.size());
    for (const char c : text)
        lines += c == '\n' ? std::string("\r\n") : std::string(1, c);
    PutOnClipboard(Handle(), lines);
}

}  // namespace workbench
