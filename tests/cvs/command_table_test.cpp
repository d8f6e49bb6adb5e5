// Every command the client is given, as an exact text, and whether the client understands it.

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "cvs/CommandBuilder.h"
#include "framework/base/datetime.h"
#include "framework/base/exceptions.h"
#include "tests/cvs/Sandbox.h"
#include "tests/support/Japanese.h"

namespace {

using namespace tandrel;

struct TRow {
    std::string Command;  ///< What is expected.
    TOperationType Operation;
    std::function<void(TCvsObject&)> Set;
};

framework::TDateTime At(int hour, int minute, int second) {
    return framework::EncodeDate(2004, 3, 5) + framework::EncodeTime(hour, minute, second, 0);
}

void SelectFiles(TCvsObject& o) {
    o.FileItems.AddFile(o.WorkingDirectory() + "\\a.c", Km_none);
    o.FileItems.AddDir(o.WorkingDirectory() + "\\sub");
    o.FileItems.AddExt("*.x", false, Km_none);
    o.FileItems.AddIgnore(o.WorkingDirectory() + "\\b.o");
    o.FileItems.AddFile(o.WorkingDirectory() + "\\sub\\c.c", Km_none);
}

void AllDates(auto& spec, const char* first, const char* second) {
    spec.Rev1 = first;
    spec.Rev2 = second;
    spec.UseDate1 = spec.UseDate2 = true;
    spec.Date1 = At(14, 7, 9);
    spec.Date2 = At(0, 30, 0);
}

/// The options that are given to the client as they are set, one row for each and one for all.
std::vector<TRow> WorkingCopyRows() {
    return {
        {" checkout -P mod", otCheckOut, [](TCvsObject&) {}},
        {" checkout -A -P -l -p -d other -r HEAD -kb mod", otCheckOut,
         [](TCvsObject& o) {
             o.ResetSticky = o.LocalOnly = o.ToStandardOutput = o.UseTargetDir = true;
             o.TargetDir = "other";
             o.StikyType = stHead;
             o.KeywordMode = Km_kb;
         }},
        {" checkout -P mod", otCheckOut, [](TCvsObject& o) { o.UseTargetDir = true; }},
        {" checkout -r BRANCH mod", otCheckOut,
         [](TCvsObject& o) {
             o.PruneEmptyDirs = false;
             o.StikyType = stBranch;
             o.StikyBranch = "BRANCH";
             o.StikyTag = "TAG";
         }},
        {" checkout -P mod", otCheckOut,
         [](TCvsObject& o) {
             o.StikyType = stTag;
             o.StikyBranch = "BRANCH";
         }},
        {" update -A -P -l -p -d -r START -kkvl a.c sub\\c.c", otUpdate,
         [](TCvsObject& o) {
             o.ResetSticky = o.LocalOnly = o.ToStandardOutput = o.CreateDirs = true;
             o.StikyType = stTag;
             o.StikyTag = "START";
             o.KeywordMode = Km_kkvl;
             SelectFiles(o);
         }},
        {" update -P -D \"2004-3-5 14:07:09\"", otUpdate,
         [](TCvsObject& o) {
             o.StikyType = stDate;
             o.StikyDate = At(14, 7, 9);
             o.FileItems.AddDir(o.WorkingDirectory() + "\\sub");  // not passed: the whole folder
         }},
        {" update -P -D \"2004-3-5\"", otUpdate,
         [](TCvsObject& o) {
             o.StikyType = stDate;
             o.StikyDate = At(0, 30, 0);
         }},
        {" update -P", otUpdate,
         [](TCvsObject& o) {
             o.StikyType = stDate;
             o.StikyDate = 0;
         }},
        {" update -P -f", otUpdate, [](TCvsObject& o) { o.StikyType = stMostRecent; }},
        {" update -P \"-jSTART\"", otUpdate,
         [](TCvsObject& o) {
             o.MergeSpec.Kind = mtThisRev;
             o.MergeSpec.Rev1 = "START";
             o.MergeSpec.Date1 = At(14, 7, 9);  // without its flag it does not count
         }},
        {" update -P \"-jSTART:2004-3-5 14:07:09\" \"-jVENDOR:2004-3-5\"", otUpdate,
         [](TCvsObject& o) {
             o.MergeSpec.Kind = mtPlusRevTag;
             AllDates(o.MergeSpec, "START", "VENDOR");
         }},
        {" update -P", otUpdate,
         [](TCvsObject& o) {
             o.MergeSpec.Kind = mtPlusRevTag;
             o.MergeSpec.Rev1 = "START";
         }},
        {" export -r START -l -d other -kv mod", otExport,
         [](TCvsObject& o) {
             o.StikyType = stTag;
             o.StikyTag = "START";
             o.LocalOnly = o.UseTargetDir = true;
             o.TargetDir = "other";
             o.KeywordMode = Km_kv;
         }},
        {" release mod", otRelease, [](TCvsObject& o) { o.ReleaseForce = true; }},
        {" release -d mod", otRelease, [](TCvsObject& o) { o.ReleaseDelete = true; }},
        {" release -e mod", otRelease, [](TCvsObject& o) { o.ReleaseExport = true; }},
        {" release -d -f mod", otRelease,
         [](TCvsObject& o) { o.ReleaseDelete = o.ReleaseForce = true; }},
    };
}

std::vector<TRow> ChangeRows() {
    return {
        {" import -m \"no messages\" mod V R", otImport,
         [](TCvsObject& o) {
             o.VendorTag = "V";
             o.ReleaseTag = "R";
         }},
        {" import -I! -I! -I third.o -m \"why\" -W \" *.x -kb \" -d mod V R", otImport,
         [](TCvsObject& o) {
             o.FileItems.AddFile(o.WorkingDirectory() + "\\a.c", Km_none);
             o.FileItems.AddExt("*.x", false, Km_kb);
             o.FileItems.AddIgnore(o.WorkingDirectory() + "\\third.o");
             o.CommitMessage = "why";
             o.ForceFlag = true;
             o.VendorTag = "V";
             o.ReleaseTag = "R";
         }},
        {" import -I a.o -m \"no messages\" mod V R", otImport,
         [](TCvsObject& o) {
             o.FileItems.AddIgnore(o.WorkingDirectory() + "\\a.o");
             o.FileItems.AddFile(o.WorkingDirectory() + "\\a.c", Km_none);
             o.VendorTag = "V";
             o.ReleaseTag = "R";
         }},
        {" import -m \"no messages\" -W \" *.o  \" mod V R", otImport,
         [](TCvsObject& o) {
             o.UseDefaultIgnore = true;
             o.FileItems.AddExt("*.o", true, Km_none);
             o.VendorTag = "V";
             o.ReleaseTag = "R";
         }},
        {" commit -m \" no messages\"", otCommit, [](TCvsObject&) {}},
        {" commit -m \"why not\" -l -f a.c sub\\c.c", otCommit,
         [](TCvsObject& o) {
             o.CommitMessage = "why not";
             o.LocalOnly = o.ForceFlag = true;
             SelectFiles(o);
         }},
        {" add -m \" no messages\" new new\\inner new\\inner\\d.c sub\\e.c sub", otAdd,
         [](TCvsObject& o) {
             o.FileItems.AddFile(o.WorkingDirectory() + "\\new\\inner\\d.c", Km_none);
             o.FileItems.AddFile(o.WorkingDirectory() + "\\sub\\e.c", Km_none);
             o.FileItems.AddDir(o.WorkingDirectory() + "\\sub");
         }},
        {" remove -l -f a.c sub\\c.c", otRemove,
         [](TCvsObject& o) {
             o.LocalOnly = o.ForceFlag = true;
             SelectFiles(o);
         }},
        {" tag \"T\"", otTag, [](TCvsObject& o) { o.TagName = "T"; }},
        {" tag -l -b -c -F -r HEAD \"T\" a.c sub\\c.c", otTag,
         [](TCvsObject& o) {
             o.TagName = "T";
             o.LocalOnly = o.TagBranch = o.TagCheckUncommitted = o.TagForceMove = true;
             o.TagClearRemoved = true;  // rtag's alone
             o.StikyType = stHead;
             SelectFiles(o);
         }},
        {" tag -d -B \"T\"", otTag,
         [](TCvsObject& o) {
             o.TagName = "T";
             o.TagDelete = o.TagBranch = o.TagForceMove = true;
             o.StikyType = stHead;
         }},
        {" tag -d \"T\"", otTag,
         [](TCvsObject& o) {
             o.TagName = "T";
             o.TagDelete = true;
             o.TagDeleteBranch = false;
         }},
        {" rtag -l -b -F -a -r HEAD \"T\" mod", otRtag,
         [](TCvsObject& o) {
             o.TagName = "T";
             o.LocalOnly = o.TagBranch = o.TagForceMove = o.TagClearRemoved = true;
             o.StikyType = stHead;
         }},
        {" rtag -c \"T\" mod", otRtag,
         [](TCvsObject& o) {
             o.TagName = "T";
             o.TagCheckUncommitted = true;
         }},
        {" rtag -d -B \"T\" mod", otRtag,
         [](TCvsObject& o) {
             o.TagName = "T";
             o.TagDelete = true;
         }},
        {"", otTag, [](TCvsObject&) {}},
        {"", otRtag, [](TCvsObject&) {}},
    };
}

std::vector<TRow> LookRows() {
    const auto local = [](TCvsObject& o) {
        o.LocalOnly = true;
        SelectFiles(o);
    };
    const auto files = [](TCvsObject& o) { SelectFiles(o); };
    return {
        {" status -l -v a.c sub\\c.c", otStatus,
         [](TCvsObject& o) {
             o.LocalOnly = o.StatusVerbose = true;
             SelectFiles(o);
         }},
        {" admin a.c sub\\c.c", otAdmin, files},
        {" annotate -l -r HEAD a.c sub\\c.c", otAnnotate,
         [](TCvsObject& o) {
             o.LocalOnly = true;
             o.StikyType = stHead;
             SelectFiles(o);
         }},
        {" diff -l -r HEAD -kk a.c sub\\c.c", otDiff,
         [](TCvsObject& o) {
             o.LocalOnly = true;
             o.KeywordMode = Km_kk;
             SelectFiles(o);
         }},
        {" diff -D \"2004/3/5 14:07:09\"", otDiff,
         [](TCvsObject& o) {
             AllDates(o.DiffSpec, "START", "VENDOR");
             o.DiffSpec.Kind = dctRevision;
         }},
        {" diff -r START -r VENDOR", otDiff,
         [](TCvsObject& o) {
             AllDates(o.DiffSpec, "START", "VENDOR");
             o.DiffSpec.UseDate1 = false;
             o.DiffSpec.Date2 = 0;  // no date, so the revision counts
             o.DiffSpec.Kind = dctTwoRevision;
         }},
        {" diff -D \"2004/3/5 14:07:09\" -D \"2004/3/5\"", otDiff,
         [](TCvsObject& o) {
             AllDates(o.DiffSpec, "START", "VENDOR");
             o.DiffSpec.Kind = dctTwoRevision;
         }},
        {" diff", otDiff, [](TCvsObject& o) { o.DiffSpec.Kind = dctMostRecent; }},
        {" rdiff -l -r START mod", otRdiff,
         [](TCvsObject& o) {
             o.LocalOnly = true;
             o.DiffSpec.Kind = dctRevision;
             o.DiffSpec.Rev1 = "START";
         }},
        {" rdiff -f mod", otRdiff, [](TCvsObject& o) { o.DiffSpec.Kind = dctMostRecent; }},
        {" edit -l -a unedit a.c sub\\c.c", otEdit,
         [local](TCvsObject& o) {
             local(o);
             o.EditAction = aeUnedit;
         }},
        {" edit", otEdit, [](TCvsObject&) {}},
        {" editors -l a.c sub\\c.c", otEditors, local},
        {" unedit -l a.c sub\\c.c", otUnedit, local},
        {" watchers -l a.c sub\\c.c", otWatchers, local},
        {" watch off a.c sub\\c.c", otWatch,
         [files](TCvsObject& o) {
             files(o);
             o.WatchCommand = wsOff;
         }},
        {" watch -l -a all add", otWatch,
         [](TCvsObject& o) {
             o.LocalOnly = true;
             o.EditAction = aeAll;
             o.WatchCommand = wsAdd;
         }},
        {" history a.c sub\\c.c", otHistory, files},
        {" log -l -h -S a.c sub\\c.c", otLog,
         [](TCvsObject& o) {
             o.LocalOnly = o.LogHeaderOnly = o.LogSuppressEmpty = true;
             SelectFiles(o);
         }},
        {" log -f", otLog,
         [](TCvsObject& o) {
             o.ForceFlag = o.LogNoFiles = true;
             SelectFiles(o);
         }},
        {" rlog -l -h mod", otRlog, [](TCvsObject& o) { o.LocalOnly = o.LogHeaderOnly = true; }},
        {" rlog -f mod", otRlog, [](TCvsObject& o) { o.ForceFlag = true; }},
        {" logout", otLogout, [](TCvsObject&) {}},
    };
}

std::vector<TRow> AllRows() {
    std::vector<TRow> rows = WorkingCopyRows();
    for (const auto& more : {ChangeRows(), LookRows()})
        rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

class CommandTable : public testing::Test {
protected:
    tests::TSandbox Sandbox;
    const std::string Copy = Sandbox.CheckOut("work");
};

TEST_F(CommandTable, BuildsExactlyTheseTexts) {
    std::set<TOperationType> covered{otCreateLRep, otLogin};  // below, with their root
    for (const TRow& row : AllRows()) {
        tests::TSandboxObject obj(Sandbox, Copy);
        row.Set(obj);
        obj.Operation = row.Operation;
        EXPECT_EQ(obj.ParseCommand(), !row.Command.empty()) << row.Command;
        EXPECT_EQ(obj.CommandLine, row.Command);
        covered.insert(row.Operation);
    }
    EXPECT_EQ(covered.size(), TOperationNames.size()) << "every operation has a row";
}

/// What the client does not know although it is told so.
bool ClientCannotParse(const std::string& command) {
    static const std::set<std::string> exceptions = {
        " release -e mod", " release -d -f mod", " log -f",
        " rlog -f mod",    " rtag -c \"T\" mod", " watch -l -a all add",
    };
    return exceptions.contains(command);
}

TEST_F(CommandTable, IsUnderstoodByTheClient) {
    const std::string root = "cvs -d \":local:" + Sandbox.Repository + "\"";
    for (const TRow& row : AllRows()) {
        if (row.Command.empty())
            continue;
        const auto result = support::RunProcess(
            root + row.Command, row.Operation == otRelease ? Sandbox.Folder / "work" : Copy,
            "no\n");
        const bool complained = result.Output.find("Usage: cvs") != std::string::npos ||
                                result.Output.find("invalid option") != std::string::npos;
        EXPECT_EQ(complained, ClientCannotParse(row.Command)) << row.Command << "\n"
                                                              << result.Output;
    }
}

TEST_F(CommandTable, NamesTheRepositoryWhereItIsNotYetInTheEnvironment) {
    tests::TSandboxObject obj(Sandbox);
    for (const TOperationType operation : {otCreateLRep, otLogin}) {
        const std::string word = operation == otLogin ? "login" : "init";
        obj.Operation = operation;
        obj.ConnectionType = cnLocal;
        obj.Path = "C:\\repo";
        obj.CommandLine = "what stood there before";
        EXPECT_TRUE(obj.ParseCommand());
        EXPECT_EQ(obj.CommandLine, " -d :local:C:\\repo " + word);
        obj.ConnectionType = cnPServer;
        obj.SetCVSROOT(":pserver:me@host:/repo  ");
        EXPECT_TRUE(obj.ParseCommand());
        EXPECT_EQ(obj.CommandLine, " -d :pserver:me@host:/repo " + word);
    }
}

TEST_F(CommandTable, AppendsAndReports) {
    tests::TSandboxObject obj(Sandbox, Copy);
    obj.Operation = otTag;
    EXPECT_FALSE(obj.ParseCommand());
    EXPECT_EQ(obj.Messages.All(), " label name is not assigned  \r\n");
    obj.CommandLine = " -n";
    EXPECT_TRUE(obj.ParseCommand()) << "there was text already";
    EXPECT_EQ(obj.CommandLine, " -n");
    obj.Operation = otUpdate;
    EXPECT_TRUE(obj.ParseCommand());
    EXPECT_EQ(obj.CommandLine, " -n update -P");
    obj.CommandLine.clear();
    obj.Operation = static_cast<TOperationType>(otRlog + 1);
    EXPECT_FALSE(obj.ParseCommand());

    // Values that are empty leave their blank.
    obj.Operation = otImport;
    EXPECT_TRUE(obj.ParseCommand());
    EXPECT_EQ(obj.CommandLine, " import -m \"no messages\" mod  ");

    obj.CommandLine = "kept";
    obj.Operation = otStatus;
    obj.FileItems.AddFile("C:\\elsewhere\\a.c", Km_none);
    EXPECT_THROW(obj.ParseCommand(), framework::Exception);
    EXPECT_EQ(obj.CommandLine, "kept");
}

TEST_F(CommandTable, AddsFoldersOnceAndBeforeTheirFiles) {
    tests::TSandboxObject obj(Sandbox, Copy);
    for (const char* file :
         {"x\\y\\1.c", "X\\Y\\0.c", "z\\2.c", "x\\3.c", "sub\\w\\4.c", "5.c", "x\\y\\6.c"})
        obj.FileItems.AddFile(Copy + "\\" + file, Km_none);
    obj.AddFilesToCommad();
    EXPECT_EQ(obj.CommandLine,
              "x x\\y z sub\\w x\\y\\1.c X\\Y\\0.c z\\2.c x\\3.c sub\\w\\4.c 5.c x\\y\\6.c");
}

TEST_F(CommandTable, NamesTheSelectedFiles) {
    tests::TSandboxObject obj(Sandbox, Copy);
    EXPECT_EQ(obj.Get_FileListString(), "mod");
    SelectFiles(obj);
    EXPECT_EQ(obj.Get_FileListString(), "a.c,c.c");
}

// --- strict quoting ---------------------------------------------------------------------------

/// Everything the child got, one argument in each pair of brackets.
std::string ArgumentsOf(tests::TSandboxObject& obj, TOperationType operation) {
    obj.CvsExecutable = support::FakeClient() + " arguments";
    obj.Operation = operation;
    obj.CommandLine.clear();
    obj.ParseCommand();
    obj.Messages.Clear();
    obj.Execute("C:\\");
    const std::string all = obj.Messages.All();
    return all.substr(0, all.rfind(']') + 1);
}

TEST_F(CommandTable, StrictQuotingKeepsEveryValueOneArgument) {
    tests::TSandboxObject obj(Sandbox, Copy);
    obj.FileItems.AddFile(Copy + "\\with blank.c", Km_none);
    obj.CommitMessage = "he said \"no\" \\";
    EXPECT_EQ(ArgumentsOf(obj, otCommit), "[commit]\r\n[-m]\r\n[he said no \" with blank.c]")
        << "the plain rules lose quotes and join values";
    obj.StrictQuoting = true;
    EXPECT_EQ(ArgumentsOf(obj, otCommit),
              "[commit]\r\n[-m]\r\n[he said \"no\" \\]\r\n[with blank.c]");
    obj.CommitMessage = "two\r\nlines\\\\\" % & ' \xE4";
    EXPECT_EQ(ArgumentsOf(obj, otCommit),
              "[commit]\r\n[-m]\r\n[two\nlines\\\\\" % & ' \xE4]\r\n[with blank.c]");

    obj.Set_Modulename("my module");
    obj.UseTargetDir = true;
    obj.TargetDir = "C:\\some where\\";
    obj.StikyType = stBranch;
    obj.StikyBranch = "a b";
    EXPECT_EQ(ArgumentsOf(obj, otCheckOut),
              "[checkout]\r\n[-P]\r\n[-d]\r\n[C:\\some where\\]\r\n[-r]\r\n[a b]\r\n[my module]");
    obj.Path = "C:\\my repository";
    EXPECT_EQ(ArgumentsOf(obj, otCreateLRep), "[-d]\r\n[:local:C:\\my repository]\r\n[init]");
}

TEST_F(CommandTable, StrictQuotingChangesNothingThatIsRightAlready) {
    for (const TRow& row : AllRows()) {
        tests::TSandboxObject obj(Sandbox, Copy);
        row.Set(obj);
        obj.StrictQuoting = true;
        obj.Operation = row.Operation;
        obj.ParseCommand();
        // In a wrapper the client passes over a mode that is not in its own quotes.
        std::string expected = row.Command;
        if (const auto at = expected.find(" *.x -kb "); at != std::string::npos)
            expected.replace(at, 9, " *.x -k 'b' ");
        EXPECT_EQ(obj.CommandLine, expected);
    }
}

TEST_F(CommandTable, StrictQuotingGivesTheClientNoPatternAndNoOptionForAFile) {
    tests::TSandboxObject obj(Sandbox, Copy);
    obj.FileItems.AddFile(Copy + "\\sub\\?.c", Km_none);
    for (const bool strict : {false, true}) {
        obj.StrictQuoting = strict;
        obj.CommandLine.clear();
        obj.Operation = otRemove;
        if (strict)
            EXPECT_THROW(obj.ParseCommand(), framework::Exception);
        else
            EXPECT_TRUE(obj.ParseCommand());
        EXPECT_EQ(obj.CommandLine, strict ? "" : " remove sub\\?.c");
    }
    obj.FileItems.Clear();
    obj.FileItems.AddFile(Copy + "\\-l", Km_none);
    obj.FileItems.AddIgnore(Copy + "\\my [1].x");
    EXPECT_TRUE(obj.ParseCommand());
    EXPECT_EQ(obj.CommandLine, " remove -- -l");
    obj.Operation = otImport;
    obj.CommandLine.clear();
    EXPECT_TRUE(obj.ParseCommand());
    EXPECT_EQ(obj.CommandLine, " import -I! -I my??1].x -m \"no messages\" mod  ");
}

TEST_F(CommandTable, StrictQuotingLetsNoValueBeAnOption) {
    const struct {
        TOperationType Operation;
        std::function<void(TCvsObject& obj, const std::string& value)> Set;
        const char* Plain;
    } cases[] = {
        {otRlog, [](TCvsObject& obj, const std::string& value) { obj.Set_Modulename(value); },
         " rlog -x"},
        {otRdiff, [](TCvsObject& obj, const std::string& value) { obj.Set_Modulename(value); },
         " rdiff -r HEAD -x"},
        {otCheckOut, [](TCvsObject& obj, const std::string& value) { obj.Set_Modulename(value); },
         " checkout -P -x"},
        {otExport, [](TCvsObject& obj, const std::string& value) { obj.Set_Modulename(value); },
         " export -x"},
        {otRelease, [](TCvsObject& obj, const std::string& value) { obj.Set_Modulename(value); },
         " release -x"},
        {otImport, [](TCvsObject& obj, const std::string& value) { obj.Set_Modulename(value); },
         " import -m \"no messages\" -x  "},
        {otImport, [](TCvsObject& obj, const std::string& value) { obj.VendorTag = value; },
         " import -m \"no messages\" mod -x "},
        {otImport, [](TCvsObject& obj, const std::string& value) { obj.ReleaseTag = value; },
         " import -m \"no messages\" mod  -x"},
        {otTag, [](TCvsObject& obj, const std::string& value) { obj.TagName = value; },
         " tag \"-x\""},
        {otRtag, [](TCvsObject& obj, const std::string& value) { obj.TagName = value; },
         " rtag \"-x\" mod"},
        {otUpdate,
         [](TCvsObject& obj, const std::string& value) {
             obj.StikyType = stTag;
             obj.StikyTag = value;
         },
         " update -P -r -x"},
        {otAnnotate,
         [](TCvsObject& obj, const std::string& value) {
             obj.StikyType = stBranch;
             obj.StikyBranch = value;
         },
         " annotate -r -x"},
        {otUpdate,
         [](TCvsObject& obj, const std::string& value) {
             obj.MergeSpec.Kind = mtPlusRevTag;
             obj.MergeSpec.Rev1 = "1.1";
             obj.MergeSpec.Rev2 = value;
         },
         " update -P \"-j1.1\" \"-j-x\""},
        {otDiff,
         [](TCvsObject& obj, const std::string& value) {
             obj.DiffSpec.Kind = dctTwoRevision;
             obj.DiffSpec.Rev1 = "1.1";
             obj.DiffSpec.Rev2 = value;
         },
         " diff -r 1.1 -r -x"},
    };
    for (const auto& [operation, set, plain] : cases) {
        SCOPED_TRACE(plain);
        tests::TSandboxObject obj(Sandbox, Copy);
        obj.Operation = operation;
        set(obj, "-x");
        obj.ParseCommand();
        EXPECT_EQ(obj.CommandLine, plain);
        obj.StrictQuoting = true;
        for (const std::string& value :
             {std::string("-x"), std::string("a\nb"), std::string("a\tb"), std::string("a\rb")}) {
            obj.CommandLine.clear();
            set(obj, value);
            EXPECT_THROW(obj.ParseCommand(), framework::Exception) << value;
            EXPECT_EQ(obj.CommandLine, "");
        }
        set(obj, "x-1");
        EXPECT_TRUE(obj.ParseCommand());
    }
}

TEST_F(CommandTable, StrictQuotingKeepsAValueWhole) {
    tests::TSandboxObject obj(Sandbox, Copy);
    obj.StrictQuoting = true;
    // A zero would end the command, and what stands behind it, such as the files, would be all.
    obj.FileItems.AddFile(Copy + "\\a.c", Km_none);
    obj.CommitMessage = std::string("half\0whole", 10);
    obj.Operation = otCommit;
    EXPECT_THROW(obj.ParseCommand(), framework::Exception);
    obj.CommitMessage = "lines\r\n\tand tabs";
    EXPECT_EQ(ArgumentsOf(obj, otCommit), "[commit]\r\n[-m]\r\n[lines\n\tand tabs]\r\n[a.c]");
    obj.CommitMessage.clear();
    obj.FileItems.Clear();
    obj.FileItems.AddExt("*.x\" -d \"", false, Km_kb);
    EXPECT_EQ(ArgumentsOf(obj, otImport),
              "[import]\r\n[-I!]\r\n[-m]\r\n[no messages]\r\n[-W]\r\n[ *.x\" -d \" -k 'b' ]\r\n"
              "[mod]");
    // An option without its revision would swallow the end of the options before the file.
    obj.FileItems.Clear();
    obj.FileItems.AddFile(Copy + "\\-x", Km_none);
    obj.DiffSpec.Kind = dctRevision;
    obj.Operation = otDiff;
    EXPECT_THROW(obj.ParseCommand(), framework::Exception);
}

TEST_F(CommandTable, KnowsLettersOfTwoBytes) {
    const tests::Japanese letters;
    const std::string source = tests::Source, so = source.substr(0, 2);
    tests::TSandboxObject obj(Sandbox, Copy);
    for (const std::string& file : {so + "\\" + source + "\\1.c", source + ".c"})
        obj.FileItems.AddFile(Copy + "\\" + file, Km_none);
    obj.AddFilesToCommad();
    EXPECT_EQ(obj.CommandLine,
              so + " " + so + "\\" + source + " " + so + "\\" + source + "\\1.c " + source + ".c");
    // A backslash before a quote is doubled, or marks the quote; the half of a letter is none.
    EXPECT_EQ(QuoteArgument("a " + so, false), "\"a " + so + "\"");
    EXPECT_EQ(QuoteArgument(so + "\\", true), "\"" + so + "\\\\\"");
    EXPECT_EQ(QuoteArgument(so + "\"", false), "\"" + so + "\\\"\"");

    obj.StrictQuoting = true;
    obj.FileItems.Clear();
    obj.FileItems.AddIgnore(Copy + "\\" + source + ".o");
    obj.Operation = otImport;
    obj.CommandLine.clear();
    obj.ParseCommand();
    EXPECT_EQ(obj.CommandLine, " import -I ????\x83X.o -m \"no messages\" mod  ")
        << "to the client half a letter is a part of a pattern";
    // The half that stands before the mark of a quote would take that for its other half.
    for (const std::string name : {"x\x83\" -d C:\\evil \"", "x\x83", "x\x83 y"}) {
        obj.Set_Modulename(name);
        EXPECT_THROW(obj.ParseCommand(), framework::Exception) << name;
    }
}

TEST_F(CommandTable, OptionsStayUntilTheyAreReset) {
    tests::TSandboxObject obj(Sandbox, Copy);
    EXPECT_GT(obj.StikyDate, 38000.0) << "the moment of construction";
    obj.LocalOnly = obj.TagDelete = true;
    obj.PruneEmptyDirs = obj.TagDeleteBranch = false;
    obj.MergeSpec.Kind = mtThisRev;
    obj.MergeSpec.Rev1 = std::string(100, 'x');
    EXPECT_EQ(std::string_view(obj.MergeSpec.Rev1).size(), 64u);
    obj.MergeSpec.Rev1 = std::string_view(obj.MergeSpec.Rev1).substr(0, 3);
    EXPECT_EQ(std::string_view(obj.MergeSpec.Rev1), "xxx") << "from itself";
    obj.Status();
    EXPECT_TRUE(obj.LocalOnly);
    obj.StrictQuoting = true;
    obj.ResetOptions();
    EXPECT_FALSE(obj.LocalOnly || obj.TagDelete);
    EXPECT_TRUE(obj.PruneEmptyDirs && obj.TagDeleteBranch);
    EXPECT_EQ(obj.MergeSpec.Kind, mtNone);
    EXPECT_TRUE(obj.MergeSpec.Rev1.empty());
    EXPECT_TRUE(obj.StrictQuoting) << "no option of an operation";
}

}  // namespace
