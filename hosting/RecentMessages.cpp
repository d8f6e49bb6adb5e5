#include "hosting/RecentMessages.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "framework/base/exceptions.h"

namespace hosting {

using namespace framework;

namespace {

/// Names sort as the moments do at which they were made.
std::string NewName(const std::string& newest) {
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    std::uint64_t moment = (std::uint64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime;
    // The clock ticks slowly, and may be set back.
    if (!newest.empty())
        moment = std::max(moment, std::uint64_t{std::strtoull(newest.c_str(), nullptr, 16)} + 1);
    std::array<char, 40> name{};
    std::snprintf(name.data(), name.size(), "%08lx%08lx-%08lx",
                  static_cast<unsigned long>(moment >> 32),
                  static_cast<unsigned long>(moment & 0xFFFFFFFFu), ::GetCurrentProcessId());
    return name.data();
}

/// Empty for one that another host has just taken away.
std::string TextOf(const TSettings& settings, const std::string& name) {
    try {
        return settings.Read(settings.MessagesKey(), name, "");
    } catch (const ERegistryError&) {
        return {};
    }
}

/// The names, the newest first.
std::vector<std::string> NamesIn(const TSettings& settings) {
    std::vector<std::string> names = settings.Names(settings.MessagesKey());
    std::ranges::sort(names, std::ranges::greater());
    return names;
}

}  // namespace

std::vector<std::string> TRecentMessages::All() const {
    std::vector<std::string> messages;
    for (const std::string& name : NamesIn(Settings_)) {
        std::string message = TextOf(Settings_, name);
        if (!message.empty() && std::ranges::find(messages, message) == messages.end() &&
            messages.size() < MostKept)
            messages.push_back(std::move(message));
    }
    return messages;
}

void TRecentMessages::Remember(const std::string& message) {
    const std::string key = Settings_.MessagesKey();
    const std::vector<std::string> before = NamesIn(Settings_);
    Settings_.Write(key, NewName(before.empty() ? "" : before.front()), message);
    // First it is there, then what it takes the place of goes.
    std::size_t kept = 1;
    for (const std::string& name : before)
        if (kept >= MostKept || TextOf(Settings_, name) == message)
            Settings_.Delete(key, name);
        else
            ++kept;
}

}  // namespace hosting
