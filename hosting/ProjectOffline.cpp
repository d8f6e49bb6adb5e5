// What waits for the server.

#include <algorithm>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/text.h"
#include "hosting/KeptCommand.h"
#include "hosting/PasswordMask.h"
#include "hosting/Project.h"
#include "hosting/Ticking.h"

namespace hosting {

using namespace framework;
using namespace tandrel;

bool TProject::TakeKept() {
    const auto refused = OfflineLog_.Take();
    if (!refused)
        return false;
    for (const std::string& line : *refused)
        Window_.Tell("Left out, because it neither adds nor removes files of this project: " +
                     MaskPasswords(line) + "\r\n");
    return true;
}

void TProject::KeepOffline() {
    if (Online())
        return;
    // What was kept must not be lost with a file that looks like nobody's, nor what is kept next.
    try {
        TakeKept();
        OfflineLog_.Continue();
    } catch (const EInOutError& error) {
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
}

void TProject::SetOnline(bool online) {
    if (online == Online())
        return;
    if (!online) {
        const std::string aside = OfflineLog_.Begin();
        if (!aside.empty())
            Window_.Tell("A log of commands that was not begun here is now called " + aside +
                         "\r\n");
        Cvs_.Set_ServerOnline(false);
        return Save();
    }
    // The package would drop what is left in its log.
    if (!TakeKept())
        return Window_.Tell(
            "Another host is running what waits for the server. Try again when it "
            "is done.\r\n");
    Cvs_.Set_ServerOnline(true);
    Save();
    RunWaiting();
}

bool TProject::RunKept(const TKeptCommand& kept) {
    std::vector<std::string> paths;
    for (const std::string& name : kept.Names) {
        // Folders on the way to a file come by themselves, in a command before its own.
        const bool isOnTheWay =
            std::any_of(kept.Names.begin(), kept.Names.end(), [&](const std::string& other) {
                return other.size() > name.size() && other[name.size()] == '\\' &&
                       SameText(other.substr(0, name.size()), name);
            });
        if (!isOnTheWay)
            paths.push_back(SlashSep(Folder_, name));
    }
    Prepare(paths);
    if (!FindPrograms())
        return false;
    const TFileItemsForCall cleared(Cvs_.FileItems);
    if (kept.IsBinary)
        for (TFileItem& item : Cvs_.FileItems)
            item.KeywordMode = Km_kb;
    Cvs_.CommitMessage = kept.Message;
    return kept.Removes ? Cvs_.Remove() : Cvs_.Add();
}

void TProject::SettleInterrupted() {
    try {
        const std::optional<TKeptCommand> command = OfflineLog_.Interrupted();
        if (!command)
            return;
        const bool isDone = Window_.AskRisk(
            "The host was ended, or could not write, while this command ran for the server:\r\n   "
            " " +
            command->Description() +
            "\r\nIt may have been done. Is it to be forgotten? Otherwise it waits, to be run once "
            "more.");
        OfflineLog_.SettleInterrupted(!isDone);
        Window_.Tell((isDone ? "Forgotten: " : "It waits again: ") + command->Description() +
                     "\r\n");
    } catch (const EInOutError& error) {
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
}

void TProject::RunWaiting() {
    if (Running())
        return;
    BeginCommand();
    if (!Online() || !MayRun() || !FindPrograms())
        return;
    SettleInterrupted();
    for (const TKeptCommand& kept : Waiting())
        Window_.Tell("Waiting: " + kept.Description() + "\r\n");
    const TTicking watching(CancelWatch_);
    bool done = false;
    try {
        done = OfflineLog_.Run([this](const TKeptCommand& kept) {
            return RunKept(kept) ||
                   !Window_.AskYesNo("The command\r\n" + kept.Description() +
                                     "\r\nhas failed. Keep it for later, with all behind it?");
        });
    } catch (const EInOutError& error) {
        Window_.Tell(std::string(error.what()) + "\r\n");
    }
    TellRest();
    if (!done)
        Window_.Tell("Commands are still waiting for the server.\r\n");
    Reload();
}

}  // namespace hosting
