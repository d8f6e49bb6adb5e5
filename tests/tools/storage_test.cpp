// The tools in the registry, byte by byte.

#include <string>

#include "tests/tools/ToolsFixture.h"

namespace {

using namespace std::string_literals;
using tandrel::TCommand;

using ToolsStorage = tests::TToolsTest;

TEST_F(ToolsStorage, IsOneValueOfFixedForm) {
    Tools.SaveToRegistry();
    EXPECT_EQ(Stored(), "\x01\0"s);
    Tools.LoadFromRegistry();
    EXPECT_TRUE(Tools.Commands.Empty());

    const std::string shortName(255, 's'), longName(256, 'l');
    Tools.Commands.AddCommand(shortName);
    TCommand& tool = Tools.Commands.AddCommand(longName);
    tool.FCommand = "C:\\T\\x.exe";
    tool.FArguments = "-x $(File) \xE4\0b"s;
    tool.FInitDir = "$(CurDir)";
    tool.FCaptureToolView = tool.FCaptureNewDoc = true;
    tool.FCloseOnExit = false;
    tool.FDocType = "text";
    tool.FProjectDir = "not stored";
    tool.FDeleted = tool.FCancelled = true;
    Tools.SaveToRegistry();
    const std::string first =
        "\x06\xFF"s + shortName + "\x06\0\x06\0\x06\0\x08\x08\x08\x08\x09\x06\0"s;
    const std::string second = "\x0C\0\x01\0\0"s + longName +
                               "\x06\x0A"s
                               "C:\\T\\x.exe"s
                               "\x06\x0E"s
                               "-x $(File) \xE4\0b"s
                               "\x06\x09"s
                               "$(CurDir)"s
                               "\x09\x08\x09\x08\x08"s
                               "\x06\x04"s
                               "text"s;
    EXPECT_EQ(Stored(), "\x01"s + first + second + "\0"s);

    Tools.FCurrent = &tool;
    Tools.LoadFromRegistry();
    EXPECT_EQ(Tools.FCurrent, nullptr) << "the tool of the last run is gone";
    ASSERT_EQ(Tools.Commands.Count(), 2);
    EXPECT_EQ(Tools.Commands.GetItem(0).FName, shortName);
    EXPECT_TRUE(Tools.Commands.GetItem(0).FCloseOnExit);
    const TCommand& loaded = Tools.Commands.GetItem(1);
    EXPECT_EQ(loaded.FName, longName);
    EXPECT_EQ(loaded.FArguments, "-x $(File) \xE4\0b"s);
    EXPECT_EQ(loaded.FInitDir, "$(CurDir)");
    EXPECT_EQ(loaded.FDocType, "text");
    EXPECT_EQ(loaded.FProjectDir, "");
    EXPECT_FALSE(loaded.FDeleted || loaded.FCancelled);
    Tools.SaveToRegistry();
    EXPECT_EQ(Stored(), "\x01"s + first + second + "\0"s);
}

TEST_F(ToolsStorage, KeepsEveryCombinationOfFlagsAndTextsOfAnyLength) {
    constexpr bool TCommand::*Flags[] = {&TCommand::FCaptureToolView, &TCommand::FPreviewExternal,
                                         &TCommand::FCaptureNewDoc, &TCommand::FPromptArgs,
                                         &TCommand::FCloseOnExit};
    for (unsigned bits = 0; bits < 32; ++bits) {
        // Around the sizes of the buffer and of short texts.
        TCommand& tool = Tools.Commands.AddCommand(std::string(bits * 37, 'n'));
        tool.FArguments = std::string(1000 + bits, 'a');
        for (unsigned flag = 0; flag < 5; ++flag)
            tool.*Flags[flag] = (bits >> flag & 1) != 0;
    }
    Tools.SaveToRegistry();
    Tools.LoadFromRegistry();
    ASSERT_EQ(Tools.Commands.Count(), 32);
    for (unsigned bits = 0; bits < 32; ++bits) {
        const TCommand& tool = Tools.Commands.GetItem(static_cast<int>(bits));
        EXPECT_EQ(tool.FName.size(), bits * 37);
        EXPECT_EQ(tool.FArguments, std::string(1000 + bits, 'a'));
        for (unsigned flag = 0; flag < 5; ++flag)
            EXPECT_EQ(tool.*Flags[flag], (bits >> flag & 1) != 0);
    }
}

TEST_F(ToolsStorage, SurvivesDamage) {
    Tools.Commands.AddCommand("one").FCommand = "1";
    const std::size_t oneTool = 1 + 5 + 3 + 2 + 2 + 5 + 2;
    Tools.Commands.AddCommand(std::string(300, '2')).FCommand = "2";
    Tools.SaveToRegistry();
    const std::string whole = Stored();
    const auto load = [&](const std::string& bytes, int expected) {
        Store(bytes);
        Tools.LoadFromRegistry();
        ASSERT_EQ(Tools.Commands.Count(), expected) << bytes.size();
        for (const TCommand& tool : Tools.Commands)
            EXPECT_EQ(tool.FCommand, tool.FName == "one" ? "1" : "2");
        EXPECT_TRUE(Stored() == bytes) << "loading must not write";
    };
    for (std::size_t size = 0; size < whole.size(); ++size)
        load(whole.substr(0, size), size < oneTool ? 0 : size < whole.size() - 1 ? 1 : 2);
    load(whole + "behind the end", 2);
    // Every byte of the first tool that tells a kind, and a length.
    for (const std::size_t at : {0, 1, 2, 6, 9, 11, 13, 14, 17, 18}) {
        std::string damaged = whole;
        damaged[at] = '\x7F';
        load(damaged, 0);
    }
    for (const std::string& length : {"\0\0\0\x40"s, "\xFF\xFF\xFF\xFF"s, "\x2D\x01\0\0"s + "3"}) {
        load(whole.substr(0, oneTool) + "\x0C"s + length, 1);
        load("\x01\x0C"s + length, 0);
    }
    // A list of nothing but beginnings.
    load(std::string(100'000, '\x01'), 0);

    Store("text", REG_SZ);
    Tools.LoadFromRegistry();
    EXPECT_TRUE(Tools.Commands.Empty());
    Tools.RootKey = nullptr;
    Tools.Commands.AddCommand("x");
    EXPECT_NO_THROW(Tools.SaveToRegistry());
    EXPECT_NO_THROW(Tools.LoadFromRegistry());
    EXPECT_TRUE(Tools.Commands.Empty());
}

}  // namespace
