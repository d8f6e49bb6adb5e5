// What the repository says about files, with a server and without.

#include <gtest/gtest.h>

#include "hosting/Queries.h"
#include "tests/cvs/Sandbox.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Unique.h"

namespace {

using namespace tests;

class Queries : public Projects {
protected:
    /// What a query answers, or its absence.
    static std::string TextOf(const std::optional<TFetched>& fetched) {
        return fetched ? fetched->Text : "(nothing)";
    }
    const TSandbox Sandbox;
};

TEST_F(Queries, ReachWhatTheWorkingCopyNoLongerHas) {
    const std::string copy = Sandbox.CheckOut("work");
    Sandbox.Client("remove -f b.c", copy);
    Sandbox.Client("commit -m gone", copy);
    Sandbox.Write(copy + "\\-odd [1].txt", "x\r\n");
    Sandbox.Client("add -- \"-odd [1].txt\"", copy);
    Sandbox.Client("commit -m odd", copy);
    Host.Say(true);
    TProject project(Host, Settings, copy);
    TQueries queries(project, Settings);
    const std::string all = TextOf(queries.FolderLog({}));
    std::string paths;
    for (std::size_t at = 0; (at = all.find("RCS file: ", at)) != std::string::npos; ++at)
        paths += queries.PathOf(all.substr(at + 10, all.find("\r\n", at) - at - 10))
                     .substr(copy.size()) +
                 ";";
    EXPECT_EQ(paths, "\\-odd [1].txt;\\a.c;\\b.c;\\sub\\c.c;") << all;
    EXPECT_EQ(queries.PathOf("/elsewhere/other/a.c,v"), "");
    EXPECT_EQ(TextOf(queries.FolderLog({copy + "\\sub"})).find("a.c"), std::string::npos);
    // Only what is newer.
    EXPECT_EQ(TextOf(queries.FolderLog({}, EncodeDate(2036, 1, 1))), "");
    EXPECT_EQ(TextOf(queries.File(copy + "\\-odd [1].txt", TVersion::Of("1.1"))), "x\r\n")
        << Host.Told;
    EXPECT_NE(TextOf(queries.Log({copy + "\\-odd [1].txt", copy + "\\a.c"})).find("odd"),
              std::string::npos);
    EXPECT_NE(TextOf(queries.Annotation(copy + "\\-odd [1].txt", "")).find("): x"),
              std::string::npos);
    // What cannot be had is told, and the files are not read anew for it.
    project.Cvs().ModelCurrent = true;
    EXPECT_FALSE(queries.File(copy + "\\a.c", TVersion::Of("no_such")));
    ExpectTold("no_such");
    EXPECT_FALSE(queries.Annotation(copy + "\\new.c", ""));
    EXPECT_TRUE(project.Cvs().ModelCurrent);
    EXPECT_FALSE(queries.Comparison({}, TVersion::Of("no_such"), TVersion::WorkingCopy(), false));
}

TEST_F(Queries, AreAnsweredFromWhatWasFetchedWhileThereIsNoServer) {
    TSandboxObject object(Sandbox);
    ConnectToServer(object);
    ASSERT_TRUE(object.Login(false)) << object.Messages.All();
    const std::string module = "mod" + UniqueWord(), root = object.CVSROOT();
    const auto client = [&](const std::string& arguments, const std::string& folder) {
        const auto result = support::RunProcess("cvs -Q -d \"" + root + "\" " + arguments, folder);
        EXPECT_EQ(result.ExitCode, 0u) << arguments << "\n" << result.Output;
    };
    support::WriteBytes(Sandbox.Folder / "start\\a.c", "a\r\n");
    client("import -m x " + module + " V R", Sandbox.Folder / "start");
    client("checkout " + module, Sandbox.Folder.Path());
    const std::string copy = Sandbox.Folder / module, file = copy + "\\a.c";
    Sandbox.Write(file, "b\r\n");
    Touch(file);
    Host.Say(true);
    {
        TProject project(Host, Settings, copy);
        project.Cvs().Set_ServerOnline(true);
        TQueries queries(project, Settings);
        const auto versions = std::pair{TVersion::Base(), TVersion::WorkingCopy()};
        const std::string log = TextOf(queries.Log({file}));
        const std::string rlog = TextOf(queries.FolderLog({}));
        const std::string changes =
            TextOf(queries.Comparison({file}, versions.first, versions.second, false));
        EXPECT_NE(changes.find("+b"), std::string::npos) << changes << Host.Told;
        EXPECT_EQ(queries.PathOf(rlog.substr(rlog.find('/'), rlog.find(",v") + 2 - rlog.find('/'))),
                  file);
        EXPECT_EQ(TextOf(queries.File(file, TVersion::Of("1.1"))), "a\r\n");
        project.SetOnline(false);
        ASSERT_FALSE(project.Online()) << Host.Told;
        Host.Told.clear();
        for (const auto& [now, before] :
             {std::pair{queries.Log({file}), log},
              {queries.FolderLog({}), rlog},
              {queries.Comparison({file}, versions.first, versions.second, false), changes}}) {
            EXPECT_EQ(TextOf(now), before);
            EXPECT_TRUE(now && now->IsKept && now->Remark().starts_with("fetched on 2"));
        }
        // What a number stands for never changes.
        const auto text = queries.File(file, TVersion::Of("1.1"));
        EXPECT_TRUE(text && !text->IsKept);
        EXPECT_EQ(Host.Told, "");
        EXPECT_FALSE(queries.Annotation(file, ""));
        ExpectTold("not fetched before");
        // Another text was never compared.
        Sandbox.Write(file, "c\r\n");
        EXPECT_FALSE(queries.Comparison({file}, versions.first, versions.second, false));
    }
    object.Logout(false);
}

TEST_F(Queries, ComeBackAsTheyWereKept) {
    const TKeptTexts texts(Folder / "texts", 4000);
    EXPECT_FALSE(texts.Find("nothing"));
    texts.Keep("one\ntwo", std::string("\r\nfirst\0x", 9));
    texts.Keep("one", "");
    EXPECT_EQ(texts.Find("one\ntwo")->Text, std::string("\r\nfirst\0x", 9));
    EXPECT_EQ(texts.Find("one")->Text, "");
    texts.Keep("one", "second");
    EXPECT_EQ(texts.Find("one")->Text, "second");
    // A text that is too large drives out nothing; many drive out the oldest.
    texts.Keep("huge", std::string(2000, 'x'));
    EXPECT_FALSE(texts.Find("huge"));
    for (int i = 0; i < 20; ++i)
        texts.Keep("key" + std::to_string(i), std::string(500, 'x'));
    std::int64_t bytes = 0;
    TFileSearch search(Folder / "texts\\*.*", faAnyFile & ~faDirectory);
    for (TSearchRec entry; search.Next(entry);)
        bytes += entry.Size;
    EXPECT_LE(bytes, 4000);
    EXPECT_GT(bytes, 2000);
    EXPECT_EQ(texts.Find("key19")->Text.size(), 500u);
}

}  // namespace
