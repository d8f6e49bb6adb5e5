// The run of one tool: what it writes, how it ends, what is left behind.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/threads/synchronize.h"
#include "framework/ui/application.h"
#include "support/Process.h"
#include "support/WaitUntil.h"
#include "tests/support/Japanese.h"
#include "tests/support/Leaks.h"
#include "tests/tools/ToolsFixture.h"
#include "tools/Exec_obj.h"
#include "tools/Exec_threads.h"

namespace {

using framework::TObject;

class ToolRunner : public testing::Test {
protected:
    ToolRunner() {
        Runner.FRedirect = true;
        Runner.OnStart = [this](TObject* sender) { Note(sender, "<"); };
        Runner.OnFinish = [this](TObject* sender) { Note(sender, ">"); };
        Runner.OnOutPutMessage = [this](TObject* sender, const std::string& text) {
            Note(sender, "o");
            Output += text;
        };
        Runner.OnOutPutErrorMessage = [this](TObject* sender, const std::string& text) {
            Note(sender, "e");
            Errors += text;
        };
    }

    void Note(TObject* sender, const char* event) {
        EXPECT_EQ(sender, &Runner);
        EXPECT_TRUE(framework::OnMainThread());
        Events += event;
    }

    void Run(const std::string& arguments) {
        Output.clear();
        Errors.clear();
        Events.clear();
        Runner.Execute("C:\\", support::FakeClient() + " " + arguments);
    }

    framework::TMemoryStream Stream;
    tandrel::TExecuteClass Runner;
    std::string Output, Errors, Events;
};

TEST_F(ToolRunner, HandsOnBothStreamsAndTheEnd) {
    Run("exit 3");
    EXPECT_EQ(Events, "<>") << "nothing written, nothing told";
    EXPECT_EQ(Runner.FExitCode, 3);
    EXPECT_TRUE(Runner.FFinished);
    Run("say-both standard error -2");
    EXPECT_EQ(Output, "standard");
    EXPECT_EQ(Errors, "error");
    EXPECT_EQ(Runner.FExitCode, -2);
    EXPECT_TRUE(Events == "<oe>" || Events == "<eo>") << Events;

    Runner.FEnvironment = std::string("FIRST=1\0TANDREL=a value\0", 24);
    Runner.Execute("C:\\windows", support::FakeClient() + " surroundings TANDREL");
    EXPECT_EQ(Output, "standardfolder:C:\\windows;TANDREL=a value;");
    Runner.FEnvironment.clear();

    std::vector<std::size_t> sizes;
    Runner.OnOutPutMessage = [&](TObject*, const std::string& text) {
        sizes.push_back(text.size());
    };
    Run("flood 20");  // in one block of 1280 bytes
    EXPECT_EQ(sizes, (std::vector<std::size_t>{1023, 257}));
    sizes.clear();
    Runner.OutPutMessage(std::string(1025, 'x'));
    EXPECT_EQ(sizes, std::vector<std::size_t>{1024});
}

TEST_F(ToolRunner, ConvertsTextButKeepsBytes) {
    Runner.FStream = &Stream;
    Run("all-bytes");
    std::string bytes = Output;
    ASSERT_EQ(bytes.size(), 256u) << "zeros, too, do not end a text";
    for (std::size_t i = 0; i < bytes.size(); ++i)
        EXPECT_EQ(bytes[i], static_cast<char>(i));
    Runner.FOemConvert = true;
    Stream.SetPosition(10);  // somebody has looked into it
    Run("all-bytes");
    ASSERT_NE(::GetOEMCP(), ::GetACP()) << "or nothing is to be seen here";
    std::string converted = bytes;
    ::OemToCharBuffA(bytes.data(), converted.data(), 256);
    EXPECT_EQ(Output, converted);
    EXPECT_NE(Output, bytes);
    EXPECT_EQ(Runner.FStream->Bytes(), bytes + bytes) << "kept as they were";
}

/// Checks the lines of one stream as they come, in pieces.
class TLines {
public:
    explicit TLines(char filling) : End_(std::string(46, filling) + "\r\n") {}
    void Take(const std::string& piece) {
        Rest_ += piece;
        std::size_t at = 0;
        for (; Rest_.size() - at >= 64; at += 64)
            Good = Good && std::stoi(Rest_.substr(at, 16)) == Count++ &&
                   Rest_.compare(at + 16, 48, End_) == 0;
        Rest_.erase(0, at);
    }
    int Count = 0;
    bool Good = true;

private:
    std::string End_, Rest_;
};

TEST_F(ToolRunner, KeepsUpWithFiftyMegabytesOnEachStream) {
    constexpr int Lines = 50 * 1024 * 1024 / 64;
    TLines output('.'), errors('!');
    Runner.FStream = &Stream;
    // What is kept has grown by just what the event tells.
    std::size_t kept = 0;
    bool same = true;
    const auto take = [&](TLines& lines, const std::string& text) {
        lines.Take(text);
        same = same && Runner.FStream->Bytes().substr(kept) == text;
        kept += text.size();
    };
    Runner.OnOutPutMessage = [&](TObject*, const std::string& text) { take(output, text); };
    Runner.OnOutPutErrorMessage = [&](TObject*, const std::string& text) { take(errors, text); };
    Run("flood-both " + std::to_string(Lines));
    EXPECT_EQ(output.Count, Lines);
    EXPECT_EQ(errors.Count, Lines);
    EXPECT_TRUE(output.Good);
    EXPECT_TRUE(errors.Good);
    EXPECT_TRUE(same);
    EXPECT_EQ(kept, Runner.FStream->Size());
    EXPECT_EQ(kept, Lines * 128u);
    EXPECT_EQ(Runner.FExitCode, 0);
}

TEST_F(ToolRunner, TellsWhatWentWrong) {
    Runner.Execute("C:\\", "no-such-tool");
    EXPECT_EQ(Errors, "Could not create process " +
                          framework::SysErrorMessage(ERROR_FILE_NOT_FOUND) + "\r\n");
    EXPECT_EQ(Events, "<ee>") << "what the system says, in a message of its own";
    EXPECT_EQ(Runner.FExitCode, 1);
    Runner.ErrorMessageProc("100%s");
    EXPECT_TRUE(Errors.ends_with("100%s\r\n"));

    for (const char* mode : {"close-output-and-stay", "close-output-and-stay errors",
                             "close-output-and-stay errors 15000"}) {
        const ULONGLONG start = ::GetTickCount64();
        Run(mode);
        EXPECT_GE(::GetTickCount64() - start, 3900u) << "one second of grace, three after the kill";
        EXPECT_LE(::GetTickCount64() - start, 12000u) << "not as long as it or another stays";
        EXPECT_EQ(Errors, "Process TIMEOUT occured, process terminated");
        EXPECT_EQ(Runner.FExitCode, 1);
    }
    // As long as it goes on writing errors it is waited for.
    Run("close-output-and-complain 5 400");
    EXPECT_EQ(Errors, "late late late late late ");
    EXPECT_EQ(Runner.FExitCode, 0);
    // Their input ends with their output, and the child with it.
    for (const char* mode : {"close-output-and-read", "close-output-and-read errors"}) {
        Run(mode);
        EXPECT_EQ(Errors, "") << mode;
        EXPECT_EQ(Runner.FExitCode, 5);
    }
}

TEST_F(ToolRunner, RefusesASecondRunAndIsNotStoppedByCancelling) {
    const std::string first = support::FakeClient() + " flood 100";
    Runner.OnOutPutMessage = [&](TObject*, const std::string& text) {
        if (Output.empty()) {
            Runner.Execute("C:\\", "another %s");
            EXPECT_FALSE(Runner.Thread->Terminated());
            Runner.CancelExecute();
            EXPECT_TRUE(Runner.Thread->Terminated());
        }
        Output += text;
    };
    Runner.Execute("C:\\", first);
    EXPECT_EQ(Errors,
              "Execute another %s failed,reason execute already running \r\n"
              "User cancel execute command  another %s  \r\n");
    EXPECT_EQ(Output.size(), 6400u);
    EXPECT_EQ(Runner.FExitCode, 0);
    EXPECT_EQ(Runner.Thread, nullptr);
    Runner.CancelExecute();
    EXPECT_TRUE(Errors.ends_with("  another %s  \r\n")) << "told also without a run";
}

TEST_F(ToolRunner, EndsAlthoughHandlersFail) {
    // A child that still has much to write must not block when nobody reads it any more.
    int calls = 0;
    Runner.OnOutPutMessage = [&](TObject*, const std::string&) {
        ++calls;
        framework::Abort();
    };
    Run("flood 20000");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(Errors, "");
    EXPECT_EQ(Runner.FExitCode, 0);

    calls = 0;
    TLines output('.');
    Runner.OnOutPutMessage = [&](TObject*, const std::string& text) { output.Take(text); };
    Runner.OnOutPutErrorMessage = [&](TObject*, const std::string&) {
        ++calls;
        throw framework::Exception("handler");
    };
    Run("flood-both 5000");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(output.Count, 5000);
    EXPECT_TRUE(output.Good);
    EXPECT_EQ(Runner.FExitCode, 0);

    std::string told;
    const auto before = framework::Application().OnException;
    framework::Application().OnException = [&](const std::exception& error) {
        told = error.what();
    };
    Runner.OnFinish = [](TObject*) { throw framework::Exception("at the end"); };
    Run("exit 0");
    framework::Application().OnException = before;
    EXPECT_EQ(told, "at the end");
    EXPECT_EQ(Runner.Thread, nullptr);
}

TEST_F(ToolRunner, AnswersQuestions) {
    std::string question;
    Runner.OnConfirm = [&](const std::string& text, std::string& answer, bool& again) {
        EXPECT_TRUE(framework::OnMainThread());
        EXPECT_TRUE(again);
        EXPECT_EQ(Output, "") << "asked before it is told";
        question += text;
        answer = "Yes\r\n";
        again = false;
    };
    Runner.FConfirmFlag = true;
    // The carriage returns: the one in the answer, and the one that ends the block.
    Run("ask 2");
    EXPECT_EQ(question, "Are you sure? ") << "what comes then is no question any more";
    EXPECT_EQ(Output, "Are you sure? answer:Yes\r\n;1024");
    EXPECT_FALSE(Runner.FConfirmFlag);

    int asked = 0;
    Runner.OnConfirm = [&](const std::string&, std::string&, bool&) {
        ++asked;
        Runner.FConfirmFlag = false;
    };
    Runner.FConfirmFlag = true;
    Run("say-and-sleep question 100 3");
    EXPECT_EQ(asked, 1) << "stopped at the runner itself";

    asked = 0;
    Runner.OnConfirm = [&](const std::string&, std::string& answer, bool&) {
        EXPECT_EQ(answer, ++asked > 1 ? "No" : "") << "the last answer is there";
        answer = "No";
    };
    Runner.FConfirmFlag = true;
    Run("never-read 200");
    EXPECT_GT(asked, 4) << "more blocks than a pipe holds";
    EXPECT_EQ(Runner.FExitCode, 0);
    EXPECT_FALSE(Runner.FConfirmFlag);
}

TEST_F(ToolRunner, DoesNotWaitWithoutRedirectionAndTellsTimes) {
    Runner.FRedirect = false;
    Run("sleep 2000");
    EXPECT_EQ(Runner.FExitCode, static_cast<int>(STILL_ACTIVE));
    EXPECT_EQ(Events, "<>");
    int timeouts = 0, stops = 0;
    Runner.OnTimeout = [&](TObject*) { ++timeouts; };
    Runner.OnStopTimer = [&](TObject*) { ++stops; };
    Runner.FRedirect = true;
    Runner.FTimeout = 1;
    Run("sleep 300");
    EXPECT_EQ(timeouts, 1);
    EXPECT_TRUE(Runner.Timer.Enabled());
    EXPECT_TRUE(support::WaitUntil([&] { return stops > 0; }));
    EXPECT_FALSE(Runner.Timer.Enabled());
    Runner.OnTimeout = [](TObject*) { throw framework::Exception("handler"); };
    EXPECT_THROW(Run("sleep 300"), framework::Exception);
    EXPECT_EQ(Runner.Thread, nullptr);
    EXPECT_TRUE(Runner.FFinished) << "seen to its end all the same";
}

/// Each piece comes after a write of nothing.
BOOL WINAPI ReadNothingFirst(HANDLE file, void* buffer, DWORD size, DWORD* read,
                             OVERLAPPED* overlapped) {
    static int Reads = 0;
    *read = 0;
    return ++Reads % 2 != 0 || ::ReadFile(file, buffer, size, read, overlapped);
}

TEST_F(ToolRunner, PassesOverWritesOfNothing) {
    framework::FileFunctions().Read = ReadNothingFirst;
    Run("ask 0");
    framework::FileFunctions() = {};
    EXPECT_EQ(Output, "Are you sure? answer:;0");
    EXPECT_LE(std::ranges::count(Events, 'o'), 2) << "nothing is told of nothing";
}

std::array<HANDLE, 3> StandardHandles() {
    return {::GetStdHandle(STD_INPUT_HANDLE), ::GetStdHandle(STD_OUTPUT_HANDLE),
            ::GetStdHandle(STD_ERROR_HANDLE)};
}

TEST_F(ToolRunner, HasAnotherWayThatPutsTheStandardHandlesBack) {
    const auto before = StandardHandles();
    Runner.FStream = &Stream;
    const auto run = [&](const std::string& commandLine) {
        Runner.FDir = "C:\\";
        Runner.FCmdLine = commandLine;
        tandrel::Exec_obj::TProgressThread thread(true, Runner);
        thread.ExecuteCmd_FromMSDN();
    };
    run(support::FakeClient() + " say-both standard error 4");
    EXPECT_EQ(Events, "oe");
    EXPECT_EQ(Output, "standard");
    EXPECT_EQ(Errors, "error");
    EXPECT_EQ(Runner.FStream->Bytes(), "standarderror");
    framework::FileFunctions().Read = ReadNothingFirst;
    run(support::FakeClient() + " say-both standard error 4");
    framework::FileFunctions() = {};
    EXPECT_EQ(Runner.FStream->Bytes(), "standarderrorstandarderror");
    EXPECT_EQ(tests::MessageOf([&] { run("no-such-tool"); }), "Could not create process ");
    EXPECT_EQ(StandardHandles(), before);
}

TEST_F(ToolRunner, CutsNoLetterInTwo) {
    const tests::Japanese letters;
    const std::string source = tests::Source, text = std::string(1022, 'x') + source;
    std::vector<std::string> outputs, errors;
    Runner.OnOutPutMessage = [&](TObject*, const std::string& piece) { outputs.push_back(piece); };
    Runner.OnOutPutErrorMessage = [&](TObject*, const std::string& piece) {
        errors.push_back(piece);
    };
    const std::vector<std::string> whole = {std::string(1022, 'x'), source};
    Runner.FStream = &Stream;
    const std::string arguments = "say-both " + text + " " + text + "\x83 0";
    Run(arguments);
    EXPECT_EQ(outputs, whole);
    ASSERT_EQ(errors.size(), 3u);
    EXPECT_EQ(errors[1], source);
    EXPECT_EQ(errors[2], "\x83") << "what never became a letter is told in the end";
    EXPECT_EQ(Stream.Size(), 2 * text.size() + 1);
    outputs.clear();
    errors.clear();
    Runner.FCmdLine = support::FakeClient() + " " + arguments;
    tandrel::Exec_obj::TProgressThread(true, Runner).ExecuteCmd_FromMSDN();
    EXPECT_EQ(outputs, whole);
    ASSERT_EQ(errors.size(), 3u);
    EXPECT_EQ(errors[1] + errors[2], source + "\x83");
    outputs.clear();
    Runner.OutPutMessage(std::string(1023, 'x') + source);
    EXPECT_EQ(outputs.front().size(), 1023u);
}

TEST_F(ToolRunner, LeavesNothingBehindAfterTwoHundredRuns) {
    const auto runs = [&](int count) {
        for (int i = 0; i < count; ++i) {
            Run("say-both standard error");
            ASSERT_EQ(Output + Errors, "standarderror");
            if (i % 20 == 0)
                Runner.Execute("C:\\", "no-such-tool");
        }
        Runner.Timer.SetEnabled(false);
    };
    runs(1);
    const tests::TResources before = tests::CountResources();
    runs(200);
    const tests::TResources after = tests::CountResources();
    EXPECT_EQ(after.Handles, before.Handles);
    EXPECT_EQ(after.Threads, before.Threads);
    EXPECT_EQ(after.Windows, before.Windows);
    EXPECT_EQ(after.GdiObjects, before.GdiObjects);
}

}  // namespace
