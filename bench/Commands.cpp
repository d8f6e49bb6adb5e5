// How command lines of many files grow.

#include <algorithm>
#include <string>

#include "bench/Table.h"
#include "cvs/Cvstempl.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "support/Files.h"

namespace bench {
namespace {

constexpr int FilesPerFolder = 50;
constexpr int Repetitions = 7;

void Select(tandrel::TCvsObject& cvs, int files) {
    cvs.FileItems.Clear();
    for (int i = 0; i < files; ++i)
        cvs.FileItems.AddFile(cvs.WorkingDirectory() + "\\folder" +
                                  std::to_string(i / FilesPerFolder) + "\\inner\\file" +
                                  std::to_string(i) + ".c",
                              tandrel::Km_none);
}

/// The best time of building the operation's command for so many files.
double BuildTime(tandrel::TCvsObject& cvs, tandrel::TOperationType operation, int files) {
    Select(cvs, files);
    cvs.Operation = operation;
    double best = 0;
    for (int i = 0; i < Repetitions; ++i) {
        cvs.CommandLine.clear();
        const double time = Time([&] {
            if (!cvs.ParseCommand())
                throw framework::Exception("no command was built");
        });
        best = i == 0 ? time : std::min(best, time);
    }
    return best;
}

}  // namespace

void MeasureCommands(TTable& table) {
    const support::TTempFolder folder("bench");
    constexpr int Many = 10000;
    for (int i = 0; i < Many / FilesPerFolder; ++i)
        framework::ForceDirectories(folder / ("work\\folder" + std::to_string(i) + "\\inner"));
    tandrel::TCvsObject cvs;
    cvs.Set_WorkingDirectory(folder / "work");
    for (const auto& [operation, name] : {std::pair{tandrel::otAdd, "add (AddFilesToCommad)"},
                                          {tandrel::otUpdate, "update (file step)"}}) {
        const double half = BuildTime(cvs, operation, Many / 2);
        const double whole = BuildTime(cvs, operation, Many);
        table.Add(std::string(name) + ", 10,000 files", whole, "the same, 5,000 files", half, 2.5);
    }
}

}  // namespace bench
