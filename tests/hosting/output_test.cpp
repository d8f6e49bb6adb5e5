// What commands say: what came of them in a few words, and all of it.

#include <gtest/gtest.h>

#include "framework/base/files.h"
#include "hosting/CommandSummary.h"
#include "hosting/KeptOutput.h"
#include "support/Files.h"

namespace {

using namespace framework;
using namespace hosting;
using support::ReadBytes;
using support::WriteBytes;

std::string SummaryOf(const std::string& said) {
    TCommandSummary summary;
    // In pieces that end anywhere.
    for (std::size_t i = 0; i < said.size(); i += 7)
        summary.Add(said.substr(i, 7));
    return summary.Text();
}

TEST(Summaries, SayWhatTheClientSaid) {
    EXPECT_EQ(
        SummaryOf("cvs update: Updating .\r\nU a.c\r\nP sub/b.c\r\n? new.c\r\n"
                  "RCS file: /repo/m.c,v\r\nMerging differences between 1.1 and 1.2 into m.c\r\n"
                  "M sub/m.c\r\nM other.c\r\n"
                  "Merging differences between 1.1 and 1.2 into README.txt\r\n"
                  "rcsmerge: warning: conflicts during merge\r\nC doc/README.txt\r\n"),
        "2 updated, 1 merged, 1 changed here, 1 not in the repository, "
        "1 conflict: doc/README.txt");
    // Of a branch that is merged it tells no letters.
    EXPECT_EQ(SummaryOf("cvs.exe update: Updating .\r\n"
                        "Merging differences between 1.1 and 1.1.2.1 into a.c\r\n"
                        "cvs.exe update: Updating sub\r\n"
                        "Merging differences between 1.1 and 1.1.2.1 into b.c\r\n"
                        "rcsmerge: warning: conflicts during merge\r\n"
                        "Merging differences between 1.1 and 1.1.2.1 into c.c\r\n"),
              "2 merged, 1 conflict: sub/b.c");
    EXPECT_EQ(
        SummaryOf("new revision: 1.2; previous revision: 1.1\r\n"
                  "initial revision: 1.1\r\nnew revision: delete; previous revision: 1.4\r\n"),
        "2 committed, 1 removed");
    EXPECT_EQ(SummaryOf("cvs add: scheduling file `n.c' for addition\r\n"
                        "cvs remove: scheduling `o.c' for removal\r\n"),
              "1 to be added, 1 to be removed");
    EXPECT_EQ(SummaryOf("U a.c\r\ncvs [update aborted]: connect to host failed\r\nC late.c"),
              "Failed: connect to host failed (1 updated)");
    EXPECT_EQ(SummaryOf("Usage: M this\r\nM  two blanks\r\nX y\r\n"), "");
}

TEST(KeptOutput, HoldsTheNewestTwenty) {
    const support::TTempFolder folder("output");
    for (int i = 0; i < 25; ++i)
        WriteBytes(folder / ("20200101-0000" + std::to_string(10 + i) + "-000.txt"), "old");
    TKeptOutput output(folder.Path());
    output.Add("before any command");
    EXPECT_EQ(output.Path(), "");
    output.Begin();
    output.Add("first, ");
    output.Add("second");
    output.Begin();
    EXPECT_EQ(ReadBytes(output.Path()), "first, second");
    std::size_t files = 0;
    TFileSearch search(folder / "*.txt", faAnyFile);
    for (TSearchRec entry; search.Next(entry);)
        ++files;
    EXPECT_EQ(files, TKeptOutput::MostKept);
    EXPECT_FALSE(FileExists(folder / "20200101-000010-000.txt"));
    EXPECT_TRUE(FileExists(folder / "20200101-000034-000.txt"));
}

}  // namespace
