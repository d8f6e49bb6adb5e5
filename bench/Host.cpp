// What the host adds to a command: it prepares it, shows what it says, and reads the files again.

#include <windows.h>
// After the system's types.
#include <psapi.h>

#include <string>
#include <utility>

#include "bench/HandMadeCopy.h"
#include "bench/Table.h"
#include "framework/base/exceptions.h"
#include "framework/ui/application.h"
#include "support/Files.h"
#include "support/Process.h"
#include "workbench/MainForm.h"

namespace bench {
namespace {

using namespace framework;
using tandrel::TCvsObject;

constexpr int Folders = 1000, FilesPerFolder = 20;
constexpr int UpdateTurns = 3;
constexpr DWORD ClientDeadline = 600000;

/// The host's window on one working copy. Boxes with results are closed as they come.
class THostWindow {
public:
    THostWindow(const support::TTempFolder& folder, const std::string& path)
        : Settings_("Software\\Tandrel Bench", folder / "data"), Form_(Settings_, Packages_) {
        Application().OnModalBegin = [](TForm& form) { form.ModalResult = mrOk; };
        Form_.OpenProject(path);
        Form_.Show();
    }
    ~THostWindow() { Application().OnModalBegin = nullptr; }
    /// What the fake client floods the window with; its lines have 64 bytes.
    void Flood(long long lines) {
        Form_.Operate(
            [&](TCvsObject& cvs) {
                const std::string client = std::exchange(
                    cvs.CvsExecutable, support::FakeClient() + " flood " + std::to_string(lines));
                cvs.CommandLine.clear();
                cvs.Execute(cvs.WorkingDirectory());
                cvs.CvsExecutable = client;
                return Done_ = cvs.ExitCode == 0;
            },
            false);
        Require(Done_, "a flood has failed");
    }
    void Update() {
        Form_.Operate([this](TCvsObject& cvs) { return Done_ = cvs.Update(); }, false);
        Require(Done_, "an update has failed");
    }

private:
    hosting::TSettings Settings_;
    TPackageRegistry Packages_;
    workbench::TMainForm Form_;
    bool Done_ = false;
};

/// Megabytes that the process has had for itself at most.
double MostMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    Require(::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters) != FALSE,
            "the system does not tell of the memory");
    return static_cast<double>(counters.PeakWorkingSetSize) / (1 << 20);
}

}  // namespace

void MeasureFlood(TTable& table) {
    const support::TTempFolder folder("bench");
    support::WriteBytes(folder / "flooded\\a.c", Text);
    THostWindow window(folder, folder / "flooded");
    constexpr long long LinesOfAMegabyte = (1 << 20) / 64, Much = 200;
    const double few = Time([&] { window.Flood(LinesOfAMegabyte * Much / 10); });
    const double all = Time([&] { window.Flood(LinesOfAMegabyte * Much); });
    table.Add("200 MB of output in the host's window", all, "20 MB of it, ten times", 10 * few,
              1.5);
    table.Add("memory of the host after that, at most", MostMemory(), "allowed", 200, 1, "MB");
}

void MeasureHost(TTable& table) {
    const support::TTempFolder folder("bench");
    const std::string repository = folder / "repository";
    const std::string archive = MakeRepository(repository, folder / "seed");
    const TWorkingCopy copy(folder / "work", repository, Folders, FilesPerFolder);
    copy.WriteArchives(archive);
    THostWindow window(folder, copy.Path);
    TCvsObject bare;
    bare.Set_WorkingDirectory(copy.Path);
    const auto [whole, least] = MedianTurn(
        UpdateTurns, [&] { window.Update(); },
        [&] {
            const auto result = support::RunProcess("cvs update -P", copy.Path, {}, ClientDeadline);
            Require(result.ExitCode == 0, "the client: " + result.Output);
            bare.Load_WorkDirTree();
        });
    table.Add("update of nothing in 20,000 files, in the host", whole,
              "the bare client and one load", least, 1.1);
}

}  // namespace bench
