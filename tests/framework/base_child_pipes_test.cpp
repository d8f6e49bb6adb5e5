#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "framework/base/child_pipes.h"

namespace framework {
namespace {

constexpr DWORD TimeToTake = TAnswerPipe::TimeToTake;

/// A child whose side the test plays.
class AnswerPipe : public testing::Test {
protected:
    AnswerPipe() {
        PipeRoom() = [this](HANDLE) { return Room; };
    }
    ~AnswerPipe() override { PipeRoom() = Asked_; }

    void Start() { Answers = TAnswerPipe(std::move(Input.Write)); }
    DWORD InPipe() const {
        DWORD available = 0;
        ::PeekNamedPipe(Input.Read.Get(), nullptr, 0, nullptr, &available, nullptr);
        return available;
    }
    std::string Take(DWORD count) const {
        std::string bytes(count, '\0');
        ::ReadFile(Input.Read.Get(), bytes.data(), count, &count, nullptr);
        return bytes.substr(0, count);
    }
    /// @param stop asked again and again; counts how often.
    void Wait(const std::function<bool(int)>& stop) {
        int asked = 0;
        Answers.EndWhenTaken(Output.Read.Get(), Child.Get(), [&] { return stop(++asked); });
    }

    std::optional<TPipeRoom> Room = TPipeRoom{4096, 4096};
    TPipe Input = MakePipe(), Output = MakePipe();
    KernelHandle Child{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    TAnswerPipe Answers;

private:
    const std::function<std::optional<TPipeRoom>(HANDLE)> Asked_ = PipeRoom();
};

TEST_F(AnswerPipe, EndsAnAnswerAsSoonAsItIsTaken) {
    Start();
    for (const bool readsOn : {false, true}) {
        Answers.Answer("Yes\r\n");
        Room->Free = 4096 - 1023;
        std::string block;
        const ULONGLONG start = ::GetTickCount64();
        Wait([&](int asked) {
            EXPECT_TRUE(asked > 2 || InPipe() == 1023) << "it waits for the child";
            if (asked == 3) {
                block = Take(4096);
                // A child that reads on has asked for more than the pipe holds.
                Room->Free = readsOn ? 0 : 4096;
            }
            return asked > 3 && (InPipe() > 0 || asked > 1000);
        });
        EXPECT_LT(::GetTickCount64() - start, TimeToTake);
        EXPECT_EQ(block, "Yes\r\n" + std::string(1018, '\0'));
        EXPECT_EQ(Take(4096), "\r");
        Room->Free = 4096;
    }
}

TEST_F(AnswerPipe, EndsAnAnswerLateWhereTheSystemDoesNotTell) {
    for (const auto& silent : {std::optional(TPipeRoom{4096, 0}), std::optional<TPipeRoom>()}) {
        Input = MakePipe();
        Room = silent;
        Start();
        Answers.Answer("Yes");
        const ULONGLONG start = ::GetTickCount64();
        Wait([&](int) { return InPipe() != 1023; });
        EXPECT_GE(::GetTickCount64() - start + 16, TimeToTake) << "a tick is 16 ms";
        EXPECT_EQ(InPipe(), 1024u);
    }
}

TEST_F(AnswerPipe, IsLeftForOutputAndForTheEnd) {
    Start();
    const auto block = [](const std::string& text) {
        return text + std::string(TAnswerPipe::BlockSize - text.size(), '\0');
    };
    Wait([](int) {
        ADD_FAILURE() << "there is no answer to wait for";
        return true;
    });
    Answers.Answer("a");
    Room->Free = 4096 - 1023;
    DWORD count = 0;
    ::WriteFile(Output.Write.Get(), "x", 1, &count, nullptr);
    Wait([](int asked) { return asked > 1; });
    Answers.Answer("b");
    EXPECT_EQ(Take(4096), block("a") + "\r" + block("b")) << "in this order, whatever happens";
    char byte = 0;
    ::ReadFile(Output.Read.Get(), &byte, 1, &count, nullptr);
    ::SetEvent(Child.Get());
    int asked = 0;
    Wait([&](int times) { return (asked = times) > 1; });
    EXPECT_EQ(asked, 1) << "the child has ended";
}

}  // namespace
}  // namespace framework
