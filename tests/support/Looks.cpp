#include "tests/support/Looks.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/Process.h"
#include "support/Screenshot.h"
#include "tests/support/Names.h"
#include "tests/support/Tidy.h"

namespace tests {
namespace {

/// Sets the resolution that programs find which start from now on.
class TResolution {
public:
    explicit TResolution(DWORD dpi) { Set(dpi); }
    ~TResolution() { Set(96); }
    TResolution(const TResolution&) = delete;
    TResolution& operator=(const TResolution&) = delete;

private:
    static void Set(DWORD dpi) {
        ::RegSetKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels", REG_DWORD,
                          &dpi, sizeof dpi);
    }
};

}  // namespace

void Look(const framework::TForm& form, const std::string& name) {
    ExpectTidy(form);
    ExpectNamed(form);
    if (const char* out = std::getenv("TANDREL_OUT"))
        support::SaveScreenshot(form.Handle(), std::string(out) + "\\" + name + "-" +
                                                   std::to_string(form.Scale(96)) + ".png");
}

void RunAtHighResolution(const std::string& filter) {
    const TResolution resolution(144);
    char program[MAX_PATH];
    ::GetModuleFileNameA(nullptr, program, MAX_PATH);
    const support::TProcessResult result = support::RunProcess(
        "\"" + std::string(program) + "\" --gtest_filter=" + filter, "C:\\", {}, 180000);
    EXPECT_EQ(result.ExitCode, 0u) << result.Output;
}

}  // namespace tests
