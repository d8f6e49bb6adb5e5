// The run of one command: what the child does, what the user is told, what is left behind.

#include <gtest/gtest.h>

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/threads/synchronize.h"
#include "framework/ui/application.h"
#include "framework/ui/timer.h"
#include "support/WaitUntil.h"
#include "tests/core/TestObject.h"
#include "tests/support/Japanese.h"
#include "tests/support/Leaks.h"

namespace {

using tests::TTestObject;

class Runner : public testing::Test {
protected:
    TTestObject Obj;
};

TEST_F(Runner, TellsTheExitCode) {
    Obj.Run("exit 0");
    EXPECT_EQ(Obj.ExitCode, 0);
    EXPECT_EQ(Obj.Messages.All(), " CVS command execute successful  with Exitcode 0\r\n");
    Obj.Run("exit 3");
    EXPECT_EQ(Obj.ExitCode, 3);
    EXPECT_EQ(Obj.Messages.All(), " CVS command execute  with Exitcode 3\r\n");
    Obj.Run("exit -1");
    EXPECT_EQ(Obj.ExitCode, -1);
}

TEST_F(Runner, RunsInTheGivenFolderWithTheProcessEnvironment) {
    Obj.SetEnvVariable("TANDREL_TEST", "a value");
    Obj.SetEnvVariable("", "nothing");
    Obj.Run("surroundings TANDREL_TEST");
    EXPECT_EQ(Obj.Messages.Texts.front(), "folder:C:\\;TANDREL_TEST=a value;");
    Obj.Set_WorkingDirectory("C:\\windows");
    Obj.Execute("");
    EXPECT_EQ(Obj.Messages.Texts[2], "folder:C:\\windows;TANDREL_TEST=a value;");
}

TEST_F(Runner, TellsWhenTheClientCannotBeStarted) {
    int ends = 0;
    Obj.ExecuteClass->OnEndProgress = [&](framework::TObject* sender) {
        EXPECT_EQ(sender, Obj.ExecuteClass.get());
        ++ends;
    };
    const auto complaint = [](DWORD reason) {
        return "Could not create process \r\n" + framework::SysErrorMessage(reason) + "\r\n";
    };
    Obj.CvsExecutable = "no-such-client";
    Obj.Run("update");
    EXPECT_EQ(Obj.Messages.All(), complaint(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Obj.ExitCode, 1);
    Obj.CvsExecutable = support::FakeClient();
    Obj.Messages.Clear();
    Obj.Execute("C:\\a folder that is gone");
    EXPECT_EQ(Obj.Messages.All(), complaint(ERROR_DIRECTORY));
    // No folder at all must not turn into the host's own.
    Obj.Messages.Clear();
    Obj.Execute("");
    EXPECT_EQ(Obj.Messages.All(), complaint(ERROR_DIRECTORY));
    EXPECT_EQ(Obj.ExitCode, 1);
    EXPECT_EQ(ends, 3);
}

TEST_F(Runner, HandsOverLongOutputWholeAndInOrder) {
    Obj.Run("flood 1000");
    std::string output = Obj.Messages.All();
    for (const std::string& chunk : Obj.Messages.Texts)
        EXPECT_LE(chunk.size(), 1023u);
    EXPECT_GT(Obj.Messages.Texts.size(), 63u);
    for (int line = 0; line < 1000; ++line)
        ASSERT_EQ(std::stoi(output.substr(static_cast<std::size_t>(line) * 64, 16)), line);
    EXPECT_EQ(output.substr(64000), " CVS command execute successful  with Exitcode 0\r\n");
}

TEST_F(Runner, KeepsUpWithAHundredMegabytes) {
    constexpr long long Lines = 100LL * 1024 * 1024 / 64;
    long long bytes = 0;
    std::string last;
    Obj.OnMessage = [&](framework::TObject*, const std::string& text) {
        if (text.starts_with(" CVS"))
            return;
        bytes += static_cast<long long>(text.size());
        last = (last + text)
                   .substr(last.size() + text.size() > 64 ? last.size() + text.size() - 64 : 0);
    };
    Obj.Run("flood " + std::to_string(Lines));
    EXPECT_EQ(bytes, Lines * 64);
    EXPECT_EQ(std::stoll(last.substr(0, 16)), Lines - 1);
    EXPECT_EQ(Obj.ExitCode, 0);
}

TEST_F(Runner, EndsAFloodWhenItIsAborted) {
    long long bytes = 0;
    Obj.OnMessage = [&](framework::TObject*, const std::string& text) {
        bytes += static_cast<long long>(text.size());
        if (bytes > 1000000)
            Obj.Aborted = true;
        if (!text.starts_with("0") && !text.starts_with("."))
            Obj.Messages.Texts.push_back(text);
    };
    Obj.Run("flood 0");
    ASSERT_FALSE(Obj.Messages.Texts.empty());
    EXPECT_EQ(Obj.Messages.Texts.back(), "User cancel execute command   flood 0  \r\n");
    EXPECT_EQ(Obj.ExitCode, 1);
    EXPECT_TRUE(Obj.Aborted) << "only a run that ends by itself clears the mark";
    Obj.OnMessage = nullptr;
    Obj.Run("exit 0");
    EXPECT_EQ(Obj.ExitCode, 0) << "the next run clears it first";
    EXPECT_FALSE(Obj.Aborted);
}

TEST_F(Runner, KillsAChildThatStaysAfterItsOutput) {
    const ULONGLONG start = ::GetTickCount64();
    Obj.Run("close-output-and-stay");
    const ULONGLONG time = ::GetTickCount64() - start;
    EXPECT_EQ(Obj.ExitCode, 1);
    EXPECT_EQ(Obj.Messages.All(), "") << "a kill is not told";
    EXPECT_GE(time, 3900u) << "one second of grace, three after the kill";
    EXPECT_LT(time, 15000u);
}

TEST_F(Runner, WaitsForAGrandchildThatKeepsTheOutput) {
    const ULONGLONG start = ::GetTickCount64();
    Obj.Run("grandchild 1500 7");
    EXPECT_GE(::GetTickCount64() - start, 1400u);
    EXPECT_EQ(Obj.ExitCode, 7) << "the child's code, not the grandchild's";
}

TEST_F(Runner, CutsAChunkAtABinaryZero) {
    Obj.Run("zeros");
    ASSERT_EQ(Obj.Messages.Texts.size(), 2u);
    EXPECT_EQ(Obj.Messages.Texts[0], "before");
}

TEST_F(Runner, ContainsErrorsOfTheHostsHandler) {
    int told = 0;
    const auto before = framework::Application().OnException;
    framework::Application().OnException = [&](const std::exception& error) {
        EXPECT_STREQ(error.what(), "handler");
        ++told;
    };
    Obj.OnMessage = [](framework::TObject*, const std::string&) {
        throw framework::Exception("handler");
    };
    Obj.ExecuteClass->OnEndProgress = [](framework::TObject*) {
        throw framework::Exception("handler");
    };
    Obj.Run("say-and-sleep text 0");
    framework::Application().OnException = before;
    EXPECT_EQ(told, 3) << "the output, the exit message, the end";
    EXPECT_EQ(Obj.ExitCode, 0);
}

// --- captured output --------------------------------------------------------------------------

TEST_F(Runner, CapturesUpToTheLimit) {
    std::string text;
    {
        const tandrel::TOutputCapture capture(Obj);
        Obj.Run("flood 6400");  // 400 KB
        text = capture.Text();
        EXPECT_EQ(Obj.OutputList.load()->Count(), 51);
    }
    EXPECT_EQ(Obj.OutputList.load(), nullptr);
    EXPECT_LE(text.size(), 51u * 1023 + 2) << "and the end of the last line";
    EXPECT_EQ(text.find("\r\n0000000000000001"), 62u) << "lines that two chunks share are whole";
}

BOOL WINAPI ReadOneByte(HANDLE file, void* buffer, DWORD, DWORD* read, OVERLAPPED* overlapped) {
    return ::ReadFile(file, buffer, 1, read, overlapped);
}

TEST_F(Runner, CutsNoLetterInTwo) {
    const tests::Japanese letters;
    const std::string source = tests::Source;
    Obj.Run("say-and-sleep " + std::string(1022, 'x') + source + " 0");
    ASSERT_EQ(Obj.Messages.Texts.size(), 3u);
    EXPECT_EQ(Obj.Messages.Texts[0].size(), 1022u);
    EXPECT_EQ(Obj.Messages.Texts[1], source);
    framework::FileFunctions().Read = ReadOneByte;
    Obj.Run("say-and-sleep " + source + "a\x83 0");
    framework::FileFunctions() = {};
    Obj.Messages.Texts.pop_back();
    EXPECT_EQ(Obj.Messages.Texts,
              (std::vector<std::string>{source.substr(0, 2), source.substr(2, 2), source.substr(4),
                                        "a", "\x83"}))
        << "what never became a letter is told in the end";
}

TEST_F(Runner, WithholdsSuppressedOutputOnlyWhileCapturing) {
    Obj.SuppressOutput = true;
    Obj.Run("say-and-sleep shown 0");
    EXPECT_EQ(Obj.Messages.Texts.front(), "shown");
    const tandrel::TOutputCapture capture(Obj);
    Obj.Run("say-and-sleep withheld 0");
    EXPECT_EQ(Obj.Messages.All(), " CVS command execute successful  with Exitcode 0\r\n");
    EXPECT_EQ(capture.Text(), "");
}

// --- questions --------------------------------------------------------------------------------

class AnsweringObject : public TTestObject {
public:
    void ProcessConfirm(const std::string& output, std::string& answer) override {
        EXPECT_TRUE(framework::OnMainThread());
        Questions.push_back(output);
        answer = Reply;
    }
    std::vector<std::string> Questions;
    std::string Reply;
};

TEST(RunnerAnswers, WritesOneFixedBlockForEachChunk) {
    AnsweringObject obj;
    obj.Reply = "Yes\r\n";
    obj.AnswerPrompts = true;
    // The carriage returns: the one in the answer, and the one that ends the block.
    obj.Run("ask 2");
    ASSERT_EQ(obj.Questions.size(), 2u);
    EXPECT_EQ(obj.Questions[0], "Are you sure? ");
    EXPECT_EQ(obj.Messages.Texts[1], "answer:Yes\r\n;1024");
    EXPECT_FALSE(obj.AnswerPrompts) << "for one run only";
    obj.Run("say-and-sleep x 0");
    EXPECT_EQ(obj.Questions.size(), 2u);
}

/// Each piece comes after two writes of nothing.
BOOL WINAPI ReadNothingFirst(HANDLE file, void* buffer, DWORD size, DWORD* read,
                             OVERLAPPED* overlapped) {
    static int Reads = 0;
    *read = 0;
    return ++Reads % 3 != 0 || ::ReadFile(file, buffer, size, read, overlapped);
}

TEST(RunnerAnswers, PassesOverWritesOfNothing) {
    AnsweringObject obj;
    obj.AnswerPrompts = true;
    framework::FileFunctions().Read = ReadNothingFirst;
    obj.Run("ask 1");
    framework::FileFunctions() = {};
    EXPECT_EQ(obj.Questions.size(), 2u);
    EXPECT_EQ(obj.Messages.Texts.size(), 3u) << "two pieces, and how it ended";
    EXPECT_TRUE(obj.Messages.All().starts_with("Are you sure? answer:;1024"));
}

TEST(RunnerAnswers, CutsAnAnswerThatIsTooLong) {
    AnsweringObject obj;
    obj.Reply = std::string(5000, 'y');
    obj.AnswerPrompts = true;
    obj.Run("ask 1");
    EXPECT_TRUE(obj.Messages.All().starts_with("Are you sure? answer:" + std::string(1023, 'y') +
                                               "\r;1024"));
}

TEST(RunnerAnswers, AreAskedForInOneRunWhateverBecomesOfIt) {
    AnsweringObject obj;
    obj.AnswerPrompts = true;
    obj.CvsExecutable = "no-such-client";
    obj.Run("update");
    EXPECT_FALSE(obj.AnswerPrompts);
    obj.AnswerPrompts = true;
    obj.ConnectionType = tandrel::cnPServer;
    obj.Run("update");
    EXPECT_FALSE(obj.AnswerPrompts);
}

// What finds no room in the pipe is dropped, though each chunk is to be answered: the child has
// answers enough waiting, and a write that blocks would stop the reading of its output for good.
TEST(RunnerAnswers, DoesNotHangOnAChildThatNeverReads) {
    AnsweringObject obj;
    obj.Reply = "Yes\r\n";
    obj.AnswerPrompts = true;
    obj.Run("never-read 200");
    EXPECT_GT(obj.Questions.size(), 4u) << "more blocks than a pipe holds";
    EXPECT_EQ(obj.ExitCode, 0);
}

TEST(RunnerAnswers, CanBeGivenUpWhileTheChildTakesNone) {
    AnsweringObject obj;
    obj.AnswerPrompts = true;
    framework::TTimer cancel(300);
    cancel.OnTimer = [&](framework::TObject*) {
        cancel.SetEnabled(false);
        obj.Aborted = true;
    };
    obj.OnMessage = [&, log = obj.OnMessage](framework::TObject* sender, const std::string& text) {
        log(sender, text);
        cancel.SetEnabled(true);
    };
    obj.Run("say-and-sleep question 30000");
    EXPECT_EQ(obj.Messages.All(),
              "questionUser cancel execute command   say-and-sleep question 30000  \r\n");
    EXPECT_EQ(obj.ExitCode, 1);
}

// --- nothing left behind ----------------------------------------------------------------------

void WaitForFormToGo(TTestObject& obj) {
    EXPECT_TRUE(support::WaitUntil([&] { return obj.ExecuteClass->ProgressForm == nullptr; }));
}

/// How many forms a test makes, at the least, while it counts.
constexpr int Forms = 5;

void ExpectSame(const tests::TResources& before, const tests::TResources& after) {
    EXPECT_EQ(after.Handles, before.Handles);
    EXPECT_EQ(after.Threads, before.Threads);
    EXPECT_EQ(after.Windows, before.Windows);
    // The system keeps a few drawing objects for the next time, more of them when drawing is slow.
    // What a form forgot would be there once for each.
    EXPECT_LT(after.GdiObjects - before.GdiObjects, Forms);
}

TEST_F(Runner, LeavesNothingBehindAfterTwoHundredRuns) {
    // Long enough for the form to show: what the system keeps of the first drawing counts as there,
    // because on a busy machine any of the runs may be as long.
    Obj.Run("sleep 1500");
    WaitForFormToGo(Obj);
    const tests::TResources before = tests::CountResources();
    for (int i = 0; i < 200; ++i) {
        Obj.Run("exit 0");
        ASSERT_EQ(Obj.ExitCode, 0);
        // Some runs find the last one's form, some have to make their own.
        if (i % 40 == 0)
            WaitForFormToGo(Obj);
    }
    WaitForFormToGo(Obj);
    ExpectSame(before, tests::CountResources());
}

TEST_F(Runner, LeavesNothingBehindAfterKills) {
    Obj.Run("close-output-and-stay");
    WaitForFormToGo(Obj);
    const tests::TResources before = tests::CountResources();
    for (int i = 0; i < Forms; ++i)
        Obj.Run("close-output-and-stay");
    WaitForFormToGo(Obj);
    ExpectSame(before, tests::CountResources());
}

}  // namespace
