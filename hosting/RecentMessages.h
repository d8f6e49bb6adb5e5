#pragma once

#include <string>
#include <vector>

#include "hosting/Settings.h"

namespace hosting {

/// The messages of the last commits, for all projects, in the settings. Each is a value of its own
/// with a name that nobody else makes: hosts that run at a time do not lose each other's.
class TRecentMessages {
public:
    static constexpr std::size_t MostKept = 20;

    /// @param settings must outlive it.
    explicit TRecentMessages(TSettings& settings) : Settings_(settings) {}

    /// The newest first, each once.
    std::vector<std::string> All() const;
    /// Puts a message to the front. Raises framework::ERegistryError when it cannot be written.
    void Remember(const std::string& message);

private:
    TSettings& Settings_;
};

}  // namespace hosting
