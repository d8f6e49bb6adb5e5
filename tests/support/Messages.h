#pragma once

#include <string>
#include <vector>

#include "core/Customvcs.h"

namespace tests {

/// Keeps every text that a version-control object gives to the user.
class TMessageLog {
public:
    explicit TMessageLog(tandrel::TCustomCvsObj& obj) {
        obj.OnMessage = [this](framework::TObject*, const std::string& text) {
            Texts.push_back(text);
        };
    }
    /// All texts as they came.
    std::vector<std::string> Texts;
    /// The same in one.
    std::string All() const {
        std::string all;
        for (const std::string& text : Texts)
            all += text;
        return all;
    }
    void Clear() { Texts.clear(); }
};

}  // namespace tests
