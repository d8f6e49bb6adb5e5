#pragma once

#include <string>
#include <vector>

#include "framework/base/paths.h"
#include "hosting/Project.h"

namespace tests {

/// Answers a project as it is told to, and keeps what it was asked.
class TTestHost : public hosting::TProjectHost {
public:
    void Tell(const std::string& text) override { Told += text; }
    bool SaveDocuments() override { return true; }
    bool AskForTags(std::string&, std::string&) override { return true; }
    bool AskYesNo(const std::string&) override { return true; }
    bool AskRisk(const std::string&) override { return true; }
    std::string AskForClient() override { return {}; }
    void ShowTold() override {}
    framework::TAnswer AskYesNoCancel(const std::string& question) override {
        Asked += question;
        return Answer;
    }
    bool ChooseBinary(std::vector<hosting::TBinaryChoice>& files) override {
        for (hosting::TBinaryChoice& file : files) {
            const std::string name = framework::ExtractFileName(file.Path);
            Shown += name + ' ';
            file.IsBinary = name != Text;
        }
        return Goes;
    }

    std::string Told, Asked;
    std::string Shown;  ///< The names of the files that are to be binary.
    std::string Text;   ///< The one that the user takes for a text.
    bool Goes = true;
    framework::TAnswer Answer = framework::TAnswer::Cancel;
};

}  // namespace tests
