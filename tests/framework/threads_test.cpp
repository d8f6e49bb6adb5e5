// Threads: their hand-over to the main thread, and waiting for them.

#include <gtest/gtest.h>

#include <atomic>

#include "framework/base/exceptions.h"
#include "framework/threads/synchronize.h"
#include "framework/threads/thread.h"
#include "tests/support/Leaks.h"

namespace {

class TTestThread final : public framework::TThread {
public:
    explicit TTestThread(std::function<void()> body, bool start = true) : Body_(std::move(body)) {
        if (start)
            Start();
    }
    ~TTestThread() override { WaitFor(); }

protected:
    void Execute() override { Body_(); }

private:
    std::function<void()> Body_;
};

TEST(Threads, HandOverRunsOnTheMainThreadWhileItWaits) {
    const DWORD main = ::GetCurrentThreadId();
    int handed = 0;
    TTestThread thread([&] {
        EXPECT_NE(::GetCurrentThreadId(), main);
        for (int i = 0; i < 100; ++i)
            framework::Synchronize([&] {
                EXPECT_EQ(::GetCurrentThreadId(), main);
                ++handed;
            });
    });
    thread.WaitFor();
    EXPECT_EQ(handed, 100);
    framework::Synchronize([&] { ++handed; });
    EXPECT_EQ(handed, 101) << "on the main thread it is simply called";
}

TEST(Threads, ErrorsGoBackToWhoHandedOver) {
    std::atomic<bool> caught{false};
    TTestThread thread([&] {
        try {
            framework::Synchronize([] { throw framework::EInOutError(5, "file"); });
        } catch (const framework::EInOutError& error) {
            caught = error.ErrorCode == 5;
        }
        throw framework::Exception("the body's own");
    });
    bool ended = false;
    // Assigned while the thread is already running: it counts.
    thread.OnTerminate = [&](framework::TObject* sender) { ended = sender == &thread; };
    thread.WaitFor();
    EXPECT_TRUE(caught);
    EXPECT_TRUE(ended);
    ASSERT_TRUE(thread.FatalException());
    EXPECT_THROW(std::rethrow_exception(thread.FatalException()), framework::Exception);
}

LRESULT CALLBACK CountPosted(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_USER)
        ++*reinterpret_cast<int*>(wParam);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

TEST(Threads, WaitingServesSentMessagesButLeavesPostedOnes) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = CountPosted;
    windowClass.lpszClassName = L"CountPosted";
    ::RegisterClassW(&windowClass);
    const HWND window = ::CreateWindowExW(0, L"CountPosted", L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                          nullptr, nullptr, nullptr);
    int posted = 0, sent = 0;
    ::PostMessageW(window, WM_USER, reinterpret_cast<WPARAM>(&posted), 0);
    TTestThread thread(
        [&] { ::SendMessageW(window, WM_USER, reinterpret_cast<WPARAM>(&sent), 0); });
    thread.WaitFor();
    EXPECT_EQ(sent, 1);
    EXPECT_EQ(posted, 0);

    // A single wait is for the object or a hand-over; a message that comes meanwhile is neither.
    const framework::KernelHandle never(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const framework::KernelHandle go(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    TTestThread sends([&] {
        ::SendMessageW(window, WM_USER, reinterpret_cast<WPARAM>(&sent), 0);
        ::WaitForSingleObject(go.Get(), INFINITE);
    });
    EXPECT_EQ(framework::WaitOnceServingHandOvers(never.Get(), 300), framework::TWaitEnd::TimedOut);
    EXPECT_EQ(sent, 2);
    // As its last act the thread hands over its end.
    ::SetEvent(go.Get());
    EXPECT_EQ(framework::WaitOnceServingHandOvers(never.Get(), 60000), framework::TWaitEnd::Served);
    EXPECT_EQ(framework::WaitOnceServingHandOvers(sends.Handle(), 60000),
              framework::TWaitEnd::Signalled);
    ::DestroyWindow(window);
}

TEST(Threads, OneThatNeverRanIsCleared) {
    {
        TTestThread warmUp([] {});
    }
    const tests::TResources before = tests::CountResources();
    for (int i = 0; i < 20; ++i) {
        TTestThread never([] { FAIL() << "it must not run"; }, false);
        never.WaitFor();
        TTestThread runs([] {});
    }
    const tests::TResources after = tests::CountResources();
    EXPECT_EQ(after.Handles, before.Handles);
    EXPECT_EQ(after.Threads, before.Threads);
}

}  // namespace
