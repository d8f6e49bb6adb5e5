// A run in a process that was started with -DEBUG: it waits without looking at messages.

#include <gtest/gtest.h>

#include "core/Cvs_files.h"
#include "framework/ui/timer.h"
#include "support/WaitUntil.h"
#include "tests/core/TestObject.h"

namespace {

TEST(DebugMode, WaitsWithoutServingMessages) {
    ASSERT_TRUE(tandrel::IsDebuggerPresent()) << "start this program with -DEBUG";
    tests::TTestObject obj;
    int ticks = 0;
    framework::TTimer timer(50);
    timer.OnTimer = [&](framework::TObject*) { ++ticks; };
    timer.SetEnabled(true);
    obj.OnMessage = [&](framework::TObject*, const std::string& text) {
        EXPECT_FALSE(obj.ExecuteClass->ProgressForm->Visible());
        obj.Messages.Texts.push_back(text);
    };
    const ULONGLONG start = ::GetTickCount64();
    obj.Run("say-and-sleep text 2500");
    EXPECT_GE(::GetTickCount64() - start, 2400u) << "to the end of the child all the same";
    EXPECT_EQ(ticks, 0);
    EXPECT_FALSE(obj.ExecuteClass->ProgressForm->Visible());
    EXPECT_EQ(obj.Messages.All(), "text CVS command execute successful  with Exitcode 0\r\n");
    EXPECT_TRUE(support::WaitUntil([&] { return ticks > 0; }));
    EXPECT_TRUE(support::WaitUntil([&] { return obj.ExecuteClass->ProgressForm == nullptr; }));
}

}  // namespace
