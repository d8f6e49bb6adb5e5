#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "core/Customvcs.h"

namespace tests {

/// Serves messages until the condition holds; false when it does not within the time.
bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds = 5000);

/// Keeps every text that a version-control object gives to the user.
class TMessageLog {
public:
    explicit TMessageLog(tandrel::TCustomCvsObj& obj);
    /// All texts as they came.
    std::vector<std::string> Texts;
    /// The same in one.
    std::string All() const;
    void Clear() { Texts.clear(); }
};

}  // namespace tests
