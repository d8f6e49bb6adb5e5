// What a run costs beyond the child itself.

#include <cstring>
#include <string>
#include <vector>

#include "bench/BareRun.h"
#include "bench/Table.h"
#include "core/Customvcs.h"
#include "framework/base/exceptions.h"
#include "support/Process.h"

namespace bench {
namespace {

void MeasureStart(TTable& table) {
    constexpr int Runs = 50;
    tandrel::TCustomCvsObj obj;
    obj.CvsExecutable = support::FakeClient();
    obj.CommandLine = " exit 0";
    const auto run = [&] { obj.Execute("C:\\"); };
    const auto bare = [&] { BareRun(support::FakeClient() + " exit 0", [](const char*) {}); };
    run();
    bare();
    std::vector<double> runs, bares;
    // Turn by turn, so that both meet the same weather.
    for (int i = 0; i < Runs; ++i) {
        bares.push_back(Time(bare));
        runs.push_back(Time(run));
        if (obj.ExitCode != 0)
            throw framework::Exception("the child of a run failed");
    }
    table.Add("Execute, child exits at once (median of 50)", Median(runs),
              "bare CreateProcess, read, wait", Median(bares), 1.3);
}

void MeasureRelay(TTable& table) {
    constexpr std::size_t Bytes = 50u << 20;
    const std::string arguments = " flood " + std::to_string(Bytes / 64);
    std::size_t received = 0;
    const auto count = [&](const char* chunk) { received += std::strlen(chunk); };
    const auto checked = [&](auto action) {
        received = 0;
        const double time = Time(action);
        if (received < Bytes)
            throw framework::Exception("output was lost");
        return time;
    };
    tandrel::TCustomCvsObj obj;
    obj.CvsExecutable = support::FakeClient();
    obj.CommandLine = arguments;
    obj.OnMessage = [&](framework::TObject*, const std::string& text) { received += text.size(); };
    const double relay = checked([&] { obj.Execute("C:\\"); });
    const double least = checked([&] { BareRelay(support::FakeClient() + arguments, count); });
    const double loop = checked([&] { BareRun(support::FakeClient() + arguments, count); });
    table.Add("50 MB of output to OnMessage", relay, "bare loop, one SendMessage a chunk", least,
              3);
    table.Add("50 MB of output to OnMessage", relay, "bare loop without hand-over", loop, 0);
}

}  // namespace

void MeasureRunner(TTable& table) {
    MeasureStart(table);
    MeasureRelay(table);
}

}  // namespace bench
