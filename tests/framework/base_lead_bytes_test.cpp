#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "framework/base/exceptions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"
#include "tests/support/Japanese.h"

namespace framework {
namespace {

using tests::Japanese;
using tests::Leads;

const std::string Source = tests::Source;

constexpr std::size_t None = std::string_view::npos;

TEST(LeadBytes, AreThoseOfTheCodePage) {
    ASSERT_EQ(::GetACP(), 1252u) << "this code page has none";
    EXPECT_FALSE(LeadBytes().Any());
    EXPECT_EQ(LetterSize(Source, 0), 1u);
    EXPECT_EQ(FindFirstOf(Source, "\\"), 1u);
    EXPECT_TRUE(EndsWith("\x83\\", '\\'));
    EXPECT_EQ(WholeLetters("a\x83"), "a\x83");
}

TEST(LeadBytes, MakeTheNextByteAPartOfTheirLetter) {
    const Japanese letters;
    // Each letter's first byte, and whether the second one is told from what it looks like.
    const std::string text = "\\" + Source + "\\" + Leads + "\\a\x83/\x83\r\n\x83";
    std::string whole;
    for (std::size_t at = 0; at < text.size(); at += LetterSize(text, at)) {
        EXPECT_FALSE(IsTrailByte(text, at)) << at;
        if (LetterSize(text, at) == 2) {
            EXPECT_TRUE(IsTrailByte(text, at + 1)) << at;
            whole += '2';
        } else {
            whole += text[at];
        }
    }
    EXPECT_EQ(whole, "\\222\\22\\a\x83/\x83\r\n\x83") << "no separator or line's end goes under";
    EXPECT_FALSE(IsTrailByte(text, text.size()));
    EXPECT_FALSE(IsTrailByte("\\", 0));
    EXPECT_TRUE(IsWhole(Source + "\\" + Leads));
    EXPECT_FALSE(IsWhole("\x83 a") || IsWhole("a\x83") || IsWhole("\x83\"\\"));
}

TEST(LeadBytes, LetNothingBeFoundInsideALetter) {
    const Japanese letters;
    const std::string path = Source + "\\" + Source;
    EXPECT_EQ(FindFirstOf(path, "\\["), 6u);
    EXPECT_EQ(FindFirstOf(path, "X\\", 7), None);
    EXPECT_EQ(FindLastOf(path, "[X\\"), 6u);
    EXPECT_EQ(FindLastOf(Source, "\\[X"), None);
    EXPECT_EQ(FindLastOf("", "\\"), None);
    EXPECT_EQ(FindText(path, Source, 1), 7u);
    EXPECT_EQ(FindText("\x83\\CVS\\\\CVS\\", "\\CVS\\"), 6u);
    EXPECT_EQ(FindText(path, "\\\x81"), None);
    EXPECT_EQ(FindLastNotOf("a\\\\", "\\"), 0u);
    EXPECT_EQ(FindLastNotOf("\x83\\\\\\", "\\"), 1u);
    EXPECT_EQ(FindLastNotOf("\\", "\\"), None);
    EXPECT_TRUE(EndsWith("\x83\\\\", '\\'));
    EXPECT_FALSE(EndsWith("\x83\\", '\\') || EndsWith("\x83\x83\x83\\", '\\'));
    EXPECT_TRUE(EndsWith("\x83\x83\\", '\\'));
    std::string replaced = path;
    ReplaceCharacter(replaced, '\\', '/');
    EXPECT_EQ(replaced, Source + "/" + Source);
}

TEST(LeadBytes, KeepPathsWhole) {
    const Japanese letters;
    const std::string root = "C:\\" + Source.substr(0, 2);
    struct {
        std::string path, name, folder, dir;
    } const cases[] = {
        {root + "\\" + Source + ".c", Source + ".c", root + "\\", root},
        {root + "\\\\b", "b", root + "\\\\", root},
        {"C:\\" + Source, Source, "C:\\", "C:\\"},
        {"\\" + Source, Source, "\\", "\\"},
        {Source, Source, "", ""},
        {root, Source.substr(0, 2), "C:\\", "C:\\"},
    };
    for (const auto& [path, name, folder, dir] : cases) {
        EXPECT_EQ(ExtractFileName(path), name) << path;
        EXPECT_EQ(ExtractFilePath(path), folder) << path;
        EXPECT_EQ(ExtractFileDir(path), dir) << path;
    }
    // Up to the root, and no further.
    std::string folder = root + "\\" + Source + "\\" + Leads;
    std::string way;
    while (folder != "C:\\" && way.size() < 10) {
        folder = ExtractFileDir(folder);
        way += std::to_string(folder.size()) + " ";
    }
    EXPECT_EQ(way, "12 5 3 ");
}

TEST(LeadBytes, HaveTheirLettersFoldedAsAWhole) {
    const Japanese letters;
    EXPECT_EQ(UpperCase("a\x83\x61z\xB1\x83"), "A\x83\x61Z\xB1\x83");
    EXPECT_TRUE(SameText("c:\\" + Source + "\\a", "C:\\" + Source + "\\A"));
    EXPECT_FALSE(SameText("\x83x", "\x83X")) << "two letters, not one in two cases";
    EXPECT_FALSE(SameText("A\x83\x61", "a\x83\x41"));
}

TEST(LeadBytes, WaitForTheSecondPieceOfTheirLetter) {
    const std::string text = "a" + Source + Leads + "\r\n" + Source + "\\";
    const auto inPieces = [&](std::size_t size) {
        TLetterPieces pieces;
        std::string all;
        for (std::size_t at = 0; at < text.size(); at += size) {
            const std::string piece = pieces.Next(text.substr(at, size));
            EXPECT_TRUE(IsWhole(piece)) << at;
            EXPECT_LE(pieces.Held().size(), 1u);
            all += piece;
        }
        return all + pieces.Rest();
    };
    {
        const Japanese letters;
        for (std::size_t size = 1; size < 5; ++size)
            EXPECT_EQ(inPieces(size), text) << size;
        TLetterPieces pieces;
        EXPECT_EQ(pieces.Next("a\x83"), "a");
        EXPECT_EQ(pieces.Next(""), "");
        EXPECT_EQ(pieces.Rest(), "\x83") << "though nothing came";
        EXPECT_EQ(pieces.Next("b"), "b");
        EXPECT_EQ(WholeLetters(Source, 3), Source.substr(0, 2));
        EXPECT_EQ(WholeLetters(Source, 4), Source.substr(0, 4));
        EXPECT_EQ(WholeLetters(Leads, 2), "\x83\x83");
    }
    TLetterPieces pieces;
    EXPECT_EQ(pieces.Next("\x83"), "\x83") << "a letter of its own in other code pages";
}

}  // namespace
}  // namespace framework
