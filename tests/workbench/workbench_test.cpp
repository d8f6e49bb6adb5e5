// The host's own parts: documents, inputs, the program.

#include <gtest/gtest.h>

#include <cstring>

#include "framework/base/files.h"
#include "framework/ui/application.h"
#include "framework/ui/dialogs.h"
#include "support/Drive.h"
#include "support/Files.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "tests/support/FormDriver.h"
#include "tests/support/Started.h"
#include "tests/support/Tidy.h"
#include "workbench/DocumentForm.h"
#include "workbench/InputForm.h"

namespace {

using namespace framework;
using namespace workbench;
using support::ReadBytes;
using support::WriteBytes;

// --- documents --------------------------------------------------------------------------------

class Documents : public testing::Test {
protected:
    Documents() : Dialogs_(DialogFunctions()) {}
    ~Documents() override { DialogFunctions() = Dialogs_; }

    /// What the user answers to the next question.
    void Answer(TAnswer answer) {
        DialogFunctions().AskYesNoCancel = [this, answer](const std::string&, const std::string&) {
            ++Questions;
            return answer;
        };
    }

    const support::TTempFolder Folder{"documents"};
    int Questions = 0;

private:
    const TDialogFunctions Dialogs_;
};

TEST_F(Documents, KeepEveryByteThatTheUserDidNotChange) {
    for (const std::string& text :
         {std::string("one\r\ntwo\r\n"), std::string("unix\nlines\n"), std::string("no end"),
          std::string("\xE4 \x01 \t tab\r\n\r\n")}) {
        WriteBytes(Folder / "file", text);
        TDocumentForm form(Folder / "file");
        auto& memo = support::Part<TMemo>(form, "Memo1");
        EXPECT_FALSE(memo.ReadOnly()) << text;
        memo.SetText(memo.Text() + "more");
        EXPECT_TRUE(form.Modified());
        EXPECT_TRUE(form.Save());
        EXPECT_EQ(ReadBytes(Folder / "file"), text + "more");
    }
    for (const std::string& text :
         {std::string("mixed\r\nline\nends"), std::string("zero\0inside", 11)}) {
        WriteBytes(Folder / "file", text);
        TDocumentForm form(Folder / "file");
        EXPECT_TRUE(support::Part<TMemo>(form, "Memo1").ReadOnly()) << "it would be damaged";
    }
}

TEST_F(Documents, FollowTheFileUntilTheUserTypes) {
    WriteBytes(Folder / "file", "before");
    TDocumentForm form(Folder / "file");
    auto& memo = support::Part<TMemo>(form, "Memo1");
    WriteBytes(Folder / "file", "updated");
    form.Reload();
    EXPECT_EQ(memo.Text(), "updated");
    memo.SetText("typed");
    WriteBytes(Folder / "file", "again");
    form.Reload();
    EXPECT_EQ(memo.Text(), "typed");
    // What somebody else has written is not written over without a word.
    DialogFunctions().AskRisk = [](const std::string&, const std::string&) { return false; };
    EXPECT_FALSE(form.Save());
    EXPECT_EQ(ReadBytes(Folder / "file"), "again");
    form.Show();
    Answer(TAnswer::Cancel);
    form.Close();
    EXPECT_TRUE(form.Visible()) << "given up";
    Answer(TAnswer::No);
    form.Close();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(ReadBytes(Folder / "file"), "again") << "not to be saved";

    TDocumentForm fresh("Output", "of a tool", "");
    fresh.Show();
    fresh.Close();
    EXPECT_EQ(Questions, 2) << "nothing was typed: nothing is asked";
    fresh.Show();
    support::Part<TMemo>(fresh, "Memo1").SetText("of a user");
    Answer(TAnswer::Yes);
    DialogFunctions().SaveFile = [](const std::string&, std::string&) { return false; };
    fresh.Close();
    EXPECT_TRUE(fresh.Visible()) << "the user gave up";
    DialogFunctions().SaveFile = [this](const std::string&, std::string& file) {
        file = Folder / "saved";
        return true;
    };
    fresh.Close();
    EXPECT_EQ(ReadBytes(Folder / "saved"), "of a user");
}

TEST(Inputs, ComeBackAsTyped) {
    std::vector<TInput> inputs = {{TInput::Text, "Text", "a & b", {}},
                                  {TInput::Flag, "A flag", "1", {}},
                                  {TInput::Choice, "Choice", "two", {"one", "two"}}};
    tests::ExpectForm("Ask", [](TForm& form) {
        tests::ExpectTidy(form);
        support::Type(form, "Input1", "\"c\" \xE4");
        support::Check(form, "Input2", false);
        support::Choose(form, "Input3", 0);
        support::Press(form, "BitBtn1");
    });
    EXPECT_TRUE(AskFor("Ask", inputs));
    EXPECT_EQ(inputs[0].Value + "|" + inputs[1].Value + "|" + inputs[2].Value, "\"c\" \xE4||one");
    tests::ExpectForm("Ask", [](TForm& form) {
        support::Type(form, "Input1", "lost");
        tests::PressKey(form, VK_ESCAPE);
    });
    EXPECT_FALSE(AskFor("Ask", inputs));
    EXPECT_EQ(inputs[0].Value, "\"c\" \xE4");
}

// --- the process ------------------------------------------------------------------------------

/// A resource of a file; empty when it has none.
std::string ResourceOf(const std::string& file, int id, LPCSTR type) {
    const HMODULE module =
        ::LoadLibraryExA(support::ProgramBeside(file).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC found = ::FindResourceA(module, MAKEINTRESOURCEA(id), type);
    const auto* const bytes =
        found ? static_cast<const char*>(::LockResource(::LoadResource(module, found))) : nullptr;
    std::string resource = bytes ? std::string(bytes, ::SizeofResource(module, found)) : "";
    ::FreeLibrary(module);
    return resource;
}

TEST(Programs, SayWhatTheyAreAndWhatTheyRunOn) {
    const std::string manifest = ResourceOf("tandrel.exe", 1, RT_MANIFEST);
    for (const char* part :
         {"Common-Controls\" version=\"6", "asInvoker", ">true</dpiAware>",
          // Windows 7, 8, 8.1, and 10 with 11.
          "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}", "{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",
          "{1f676c76-80e1-4239-95bb-83d0f6d0da78}", "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"})
        EXPECT_NE(manifest.find(part), std::string::npos) << part;
    EXPECT_NE(ResourceOf("tandrel.exe", 1, RT_GROUP_ICON), "");
    const auto fixed = [](const std::string& file) {
        const std::string version = ResourceOf(file, 1, RT_VERSION);
        const std::size_t start = version.find("\xBD\x04\xEF\xFE");
        VS_FIXEDFILEINFO info{};
        if (start != std::string::npos)
            std::memcpy(&info, version.data() + start, sizeof info);
        return info;
    };
    const VS_FIXEDFILEINFO program = fixed("tandrel.exe");
    EXPECT_GT(program.dwFileVersionMS, 0u);
    EXPECT_EQ(program.dwFileType, static_cast<DWORD>(VFT_APP));
    for (const char* library : {"framework.dll", "tandrel.dll", "hosting.dll"}) {
        EXPECT_EQ(fixed(library).dwFileVersionMS, program.dwFileVersionMS) << library;
        EXPECT_EQ(fixed(library).dwFileType, static_cast<DWORD>(VFT_DLL)) << library;
    }
}

TEST(Host, OpensAFolderAndCloses) {
    const support::TTempFolder folder("started");
    WriteBytes(folder / "file.txt", "text");
    const tests::TStarted host("\"" + support::ProgramBeside("tandrel.exe") + "\" \"" +
                               folder.Path() + "\"");
    HWND window = nullptr;
    const std::string caption = folder.Path().substr(folder.Path().rfind('\\') + 1) + " - Tandrel";
    ASSERT_TRUE(support::WaitUntil([&] {
        window = ::FindWindowA("FrameworkForm", caption.c_str());
        return window && ::IsWindowVisible(window);
    }));
    ::PostMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(::WaitForSingleObject(host.Process.Get(), 60000), static_cast<DWORD>(WAIT_OBJECT_0));
    DWORD code = 99;
    ::GetExitCodeProcess(host.Process.Get(), &code);
    EXPECT_EQ(code, 0u);
}

}  // namespace
