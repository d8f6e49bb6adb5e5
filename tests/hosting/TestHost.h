#pragma once

#include <gtest/gtest.h>

#include <optional>
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
    std::string AskForClient() override { return {}; }
    void ShowTold() override {}
    bool AskYesNo(const std::string& question) override {
        return AskYesNoCancel(question) == framework::TAnswer::Yes;
    }
    bool AskRisk(const std::string& question) override { return AskYesNo(question); }
    framework::TAnswer AskYesNoCancel(const std::string& question) override {
        Asked += question + "\n";
        EXPECT_TRUE(Answer) << "Nobody expected the question " << question;
        return Answer.value_or(framework::TAnswer::Cancel);
    }
    bool ChooseBinary(std::vector<hosting::TBinaryChoice>& files) override {
        for (hosting::TBinaryChoice& file : files) {
            const std::string name = framework::ExtractFileName(file.Path);
            Shown += name + ' ';
            file.IsBinary = name != Text;
        }
        return Goes;
    }
    /// The answer to each question that comes.
    void Say(bool yes) { Answer = yes ? framework::TAnswer::Yes : framework::TAnswer::No; }

    std::string Told, Asked;
    std::string Shown;  ///< The names of the files that are to be binary.
    std::string Text;   ///< The one that the user takes for a text.
    bool Goes = true;
    std::optional<framework::TAnswer> Answer;  ///< None while no question is to come.
};

}  // namespace tests
