#include <windows.h>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "framework/threads/synchronize.h"
#include "framework/ui/application.h"
#include "tests/support/FormDriver.h"

// Every test program starts here: what would wait for a person fails instead.
int main(int count, char** arguments) {
    ::_set_error_mode(_OUT_TO_STDERR);
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    framework::BindMainThread();
    framework::Application().OnException = [](const std::exception& error) {
        ADD_FAILURE() << "An exception reached the window procedure: " << error.what();
    };
    testing::InitGoogleTest(&count, arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new tests::TFormGuard);
    return RUN_ALL_TESTS();
}
