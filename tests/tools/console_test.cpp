// Tools in a console: the test is the user who sits at it.

#include <gtest/gtest.h>

#include <thread>

#include "framework/base/handle.h"
#include "support/Process.h"
#include "tests/support/Leaks.h"
#include "tests/tools/ToolsFixture.h"
#include "tools/Exec_obj.h"

namespace {

using framework::FileHandle;
using framework::TObject;

FileHandle OpenConsole(const char* name) {
    return FileHandle(::CreateFileA(name, GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                    nullptr));
}

/// What the first lines of the process's console show; empty without a console.
std::string Screen() {
    const FileHandle output = OpenConsole("CONOUT$");
    std::string text(10 * 80, ' ');
    DWORD count = 0;
    if (!output || !::ReadConsoleOutputCharacterA(output.Get(), text.data(),
                                                  static_cast<DWORD>(text.size()), {}, &count))
        count = 0;
    text.resize(count);
    return text;
}

void PressEnter() {
    const FileHandle input = OpenConsole("CONIN$");
    INPUT_RECORD keys[2]{};
    for (INPUT_RECORD& key : keys) {
        key.EventType = KEY_EVENT;
        key.Event.KeyEvent.bKeyDown = &key == keys;
        key.Event.KeyEvent.wRepeatCount = 1;
        key.Event.KeyEvent.wVirtualKeyCode = VK_RETURN;
        key.Event.KeyEvent.uChar.AsciiChar = '\r';
    }
    DWORD count = 0;
    ::WriteConsoleInputA(input.Get(), keys, 2, &count);
}

int HandlesKeptByTheSystem() {
    const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE errors = ::GetStdHandle(STD_ERROR_HANDLE);
    const int before = tests::CountResources().Handles;
    ::AllocConsole();
    ::FreeConsole();
    ::SetStdHandle(STD_OUTPUT_HANDLE, output);
    ::SetStdHandle(STD_ERROR_HANDLE, errors);
    return tests::CountResources().Handles - before;
}

class ToolConsole : public testing::Test {
protected:
    ToolConsole() {
        ::FreeConsole();  // as in a program with windows only
        Runner.FThreaded = false;
        Runner.OnStart = [this](TObject*) { Events += "<"; };
        Runner.OnFinish = [this](TObject*) {
            Events += ">";
            HadConsole = ::GetConsoleWindow() != nullptr;
        };
    }

    /// Runs the fake tool; presses Enter when the console asks for it and keeps what it shows then.
    void Run(const std::string& commandLine) {
        Events.clear();
        std::jthread user([this] {
            const ULONGLONG end = ::GetTickCount64() + 60000;
            while (::GetTickCount64() < end) {
                Shown = Screen();
                if (Shown.find("Press enter to continue ...") != std::string::npos)
                    break;
                ::Sleep(20);
            }
            EXPECT_EQ(Events, "<") << "it waits";
            PressEnter();
        });
        Runner.Execute("C:\\", commandLine);
    }

    /// As above, for tools that end at once: again when the machine was too busy for one second.
    void RunToTheEnd(const std::string& commandLine) {
        do
            Run(commandLine);
        while (Runner.FExitCode == static_cast<int>(STILL_ACTIVE));
    }

    tandrel::TExecuteClass Runner;
    std::string Events, Shown;
    bool HadConsole = false;
};

TEST_F(ToolConsole, ShowsTheToolAndWaitsForEnter) {
    const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    RunToTheEnd(support::FakeClient() + " say-both standard+ error 7");
    EXPECT_EQ(Shown.substr(0, 14), "standard+error");
    EXPECT_EQ(Runner.FExitCode, 7);
    EXPECT_EQ(Events, "<>");
    EXPECT_FALSE(HadConsole) << "released before the end is told";
    EXPECT_TRUE(Runner.FFinished);
    EXPECT_EQ(::GetStdHandle(STD_OUTPUT_HANDLE), output);
    EXPECT_EQ(Screen(), "");

    Run(support::FakeClient() + " say-and-sleep long 2500");
    EXPECT_EQ(Shown.substr(0, 4), "long");
    EXPECT_EQ(Runner.FExitCode, static_cast<int>(STILL_ACTIVE)) << "it goes on alone";
    EXPECT_EQ(tests::MessageOf([&] { Run("no-such-tool"); }), "Could not create process ");
    EXPECT_EQ(Events, "<>") << "the end comes after an error, too";
    EXPECT_EQ(Shown.substr(0, 27), "Press enter to continue ...");
    EXPECT_EQ(Runner.FExitCode, 1);

    // The system itself may keep something for each console it has made, and now and then
    // something more; one for each run would be ours.
    constexpr int Runs = 6;
    const int keeps = HandlesKeptByTheSystem();
    const tests::TResources before = tests::CountResources();
    for (int i = 0; i < Runs; i += 2) {
        Run(support::FakeClient() + " exit 2");
        EXPECT_THROW(Run("no-such-tool"), framework::Exception);
    }
    const tests::TResources after = tests::CountResources();
    EXPECT_LT(after.Handles, before.Handles + Runs * (keeps + 1));
    EXPECT_EQ(after.Threads, before.Threads);
    EXPECT_EQ(after.Windows, before.Windows);
}

}  // namespace
