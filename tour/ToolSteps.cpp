// The user's own tools.

#include <algorithm>

#include "framework/base/files.h"
#include "framework/ui/dialogs.h"
#include "framework/ui/edits.h"
#include "framework/ui/tool_bar.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "tour/Tour.h"

namespace tour {

using namespace framework;
using support::Part;
using support::Press;
using support::Type;
using support::WaitUntil;

namespace {

/// Lets the editor's timers come to rest.
void Rest(TForm& form) {
    WaitUntil([&] {
        return !Part<TTimer>(form, "Timer1").Enabled() && !Part<TTimer>(form, "Timer2").Enabled();
    });
}

/// The files that previews have left in the folder for temporary files.
std::vector<std::string> PreviewFiles() {
    char folder[MAX_PATH];
    ::GetTempPathA(MAX_PATH, folder);
    std::vector<std::string> files;
    TFileSearch search(std::string(folder) + "TXT*.*", faAnyFile);
    for (TSearchRec entry; search.Next(entry);)
        files.push_back(folder + entry.Name);
    return files;
}

std::size_t OpenDocuments() {
    return support::OpenForms<workbench::TDocumentForm>().size();
}

}  // namespace

void TTour::DefineTools() {
    const std::string program = support::ProgramBeside("fake_client.exe");
    const std::pair<const char*, const char*> tools[] = {
        {"CheckBox1", "arguments \"$(ProjectDir)\""},
        {"CheckBox3", "flood 3"},
        {"CheckBox2", "flood 2"},
    };
    Play_.ExpectForm("User Tools", [&](TForm& form) {
        for (const auto& [box, arguments] : tools) {
            Part<TToolButton>(form, "ToolButton1").Click();
            Rest(form);
            Type(form, "Edit1", program);
            Type(form, "Edit2", arguments);
            support::Check(form, "CheckBox5");
            support::Check(form, box);
            Rest(form);
        }
        // The user sees the arguments of the first before it runs.
        Part<TListView>(form, "ListView1").Select(0);
        Rest(form);
        support::Check(form, "CheckBox4");
        Rest(form);
        Play_.Picture(form.Handle(), "tools");
        Press(form, "BitBtn1");
    });
    Choose("Tools/Configure...");
    Expect(MenuItem("Tools").Items().size() == 5, "three tools stand in the menu");
}

void TTour::RunTools() {
    const auto& items = MenuItem("Tools").Items();
    Play_.ExpectForm("Enter Arguments", [&](TForm& form) {
        Play_.Picture(form.Handle(), "prompt");
        Expect(Part<TEdit>(form, "Edit1").Text().find(Project_) != std::string::npos,
               "the folder takes the macro's place");
        Type(form, "Edit1", "arguments typed");
        Press(form, "BitBtn1");
    });
    items[0]->Click();
    ExpectTold("[typed]");
    Expect(OpenDocuments() == 0, "no document yet");
    items[1]->Click();
    Expect(OpenDocuments() == 1, "the second shows a new document");
    // The third starts the viewer on a file with its output.
    const std::vector<std::string> before = PreviewFiles();
    items[2]->Click();
    const std::vector<std::string> after = PreviewFiles();
    Expect(after.size() == before.size() + 1, "there is one more file to look at");
    for (const std::string& file : after)
        if (std::find(before.begin(), before.end(), file) == before.end())
            Expect(support::ReadBytes(file).find("0000000000000001") != std::string::npos,
                   "the tool's output is in it");
}

}  // namespace tour
