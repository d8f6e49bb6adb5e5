// What capturing a tool's output and loading the tools cost.

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

#include "bench/BareRun.h"
#include "bench/Table.h"
#include "framework/base/exceptions.h"
#include "support/Process.h"
#include "tools/Exec_obj.h"
#include "tools/Tools_obj.h"

namespace bench {
namespace {

void MeasureCapture(TTable& table) {
    constexpr int Turns = 5;
    constexpr std::size_t Bytes = 50u << 20;
    const std::string commandLine = support::FakeClient() + " flood " + std::to_string(Bytes / 64);
    std::size_t received = 0;
    const auto check = [&](std::size_t bytes) {
        if (bytes != Bytes)
            throw framework::Exception("output was lost");
    };
    const auto capture = [&] {
        framework::TMemoryStream stream;
        tandrel::TExecuteClass runner;
        runner.FRedirect = runner.FOemConvert = true;
        runner.FStream = &stream;
        runner.OnOutPutMessage = [&](framework::TObject*, const std::string& text) {
            received += text.size();
        };
        received = 0;
        runner.Execute("C:\\", commandLine);
        check(received);
        check(stream.Size());
    };
    const auto bare = [&] {
        received = 0;
        BareRelay(commandLine, [&](const char* chunk) { received += std::strlen(chunk); });
        check(received);
    };
    const TTurn turn = MedianTurn(Turns, capture, bare);
    table.Add("50 MB of a tool's output, kept and converted", turn.first,
              "bare loop, one SendMessage a chunk", turn.second, 3);
}

/// The key of the measurements, deleted with the object.
struct TToolsKey {
    TToolsKey() {
        Tools.RootKey = HKEY_CURRENT_USER;
        Tools.Keyname = "Software\\TandrelBench";
    }
    ~TToolsKey() { ::RegDeleteKeyA(HKEY_CURRENT_USER, Tools.Keyname.c_str()); }
    tandrel::TToolsClass Tools;
};

double TimeOfLoading(int count) {
    TToolsKey key;
    for (int i = 0; i < count; ++i) {
        auto& tool = key.Tools.Commands.AddCommand("Tool " + std::to_string(i));
        tool.FCommand = "C:\\Program Files\\Tools\\tool.exe";
        tool.FArguments = "-o \"$(Out)\" $(File) $(Line)";
        tool.FInitDir = "$(FileDir)";
    }
    key.Tools.SaveToRegistry();
    double best = 1e9;
    for (int turn = 0; turn < 5; ++turn)
        best = std::min(best, Time([&] { key.Tools.LoadFromRegistry(); }));
    if (key.Tools.Commands.Count() != count)
        throw framework::Exception("tools were lost");
    return best;
}

void MeasureLoading(TTable& table) {
    constexpr double Allowed = 50;
    const double thousand = TimeOfLoading(1000);
    const double tenThousand = TimeOfLoading(10000);
    table.Add("loading 1,000 tools", thousand, "what a menu may take", Allowed, 1);
    table.Add("loading 10,000 tools", tenThousand, "ten times as long as 1,000", 10 * thousand,
              1.5);
}

}  // namespace

void MeasureTools(TTable& table) {
    MeasureCapture(table);
    MeasureLoading(table);
}

}  // namespace bench
