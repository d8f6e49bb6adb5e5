// Files that are no texts come out of the repository as they went in.

#include <gtest/gtest.h>

#include <map>

#include "core/Cvsroot.h"
#include "framework/base/files.h"
#include "framework/base/text.h"
#include "tests/cvs/Sandbox.h"
#include "tests/hosting/Projects.h"
#include "tests/support/Unique.h"

namespace {

using namespace hosting;
using framework::TAnswer;
using tandrel::TCvsObject;
using TFiles = std::map<std::string, std::string>;  // bytes by name

constexpr const char* Keyword = "$Id$\r\n";

/// 5,000 bytes with all that harms: line ends, a keyword, zeros, Ctrl+Z.
std::string Picture(char seed) {
    std::string bytes = "\x89PNG\r\n\r\r\n$Id$\n";
    while (bytes.size() < 5000)
        bytes += static_cast<char>(bytes.size() * 7 + static_cast<unsigned char>(seed));
    bytes[176] = '\x1A';
    return bytes;
}

// --- which they are ---------------------------------------------------------------------------

TEST(BinaryContent, IsWhatTheClientWouldDamage) {
    const std::string text = "caf\xE9 \xD0\x9F\xD1\x80 \t\f\x1B[1m\r\nunix\nmac\r";
    std::string rare(1000, 'x');
    rare[500] = '\x01';
    for (const std::string& content : {text, std::string(), rare, std::string(70000, '\n')})
        EXPECT_FALSE(IsBinary(content)) << content.substr(0, 20);
    for (const std::string& content :
         {std::string("a\0b", 3), text + '\x1A', std::string(70000, 'x') + '\x1A',
          std::string("\xFF\xFE\x2D\x4E"), std::string("\x01\x02 few bytes"), Picture('a')})
        EXPECT_TRUE(IsBinary(content)) << content.substr(0, 20);
    for (const auto& [name, has] : {std::pair{"a.PNG", true},
                                    {"b.tar.gz", true},
                                    {"png", false},
                                    {"x.pn", false},
                                    {"x.", false},
                                    {"a.x1", true}})
        EXPECT_EQ(HasEnding(name, "*.png, .gz\tx1 . "), has) << name;
}

TEST(Wrappers, MeanAllBinaryFilesAndAsFewTextsAsCanBe) {
    const TWrappers few = WrappersFor({"C:\\a.png", "C:\\B.PNG", "C:\\s\\x [1].dat", "C:\\core"},
                                      {"C:\\t.dat", "C:\\a.c", "C:\\x\\CORE"});
    EXPECT_EQ(few.Patterns, (std::vector<std::string>{"*.PNG", "*.png", "core", "x??1].dat"}));
    EXPECT_EQ(few.AlsoKept, std::vector<std::string>{"C:\\x\\CORE"});
    std::vector<std::string> many, names;
    for (int i = 0; i < 2000; ++i) {
        many.push_back("C:\\data" + std::to_string(i) + ".dat");
        names.push_back("C:\\name" + std::to_string(i));
    }
    const TWrappers all = WrappersFor(many, {"C:\\t.dat", "C:\\a.c"});
    EXPECT_EQ(all.Patterns, std::vector<std::string>{"*.dat"});
    EXPECT_EQ(all.AlsoKept, std::vector<std::string>{"C:\\t.dat"});
    EXPECT_EQ(WrappersFor(names, {"C:\\a.c"}).Patterns, std::vector<std::string>{"*"});
}

// --- with the client --------------------------------------------------------------------------

/// A repository, by a path or behind a password server, and projects in it.
class Binary : public tests::Projects, public testing::WithParamInterface<bool> {
protected:
    Binary() {
        if (GetParam()) {
            tests::ConnectToServer(Object_);
            EXPECT_TRUE(Object_.Login(false)) << Object_.Messages.All();
            Module += tests::UniqueWord();
        }
    }
    ~Binary() override {
        if (GetParam())
            Object_.Logout(false);
    }

    std::string Work() const { return Sandbox.Folder / ("work\\" + Module); }
    void Write(const TFiles& files) const {
        for (const auto& [name, bytes] : files)
            support::WriteBytes(Work() + "\\" + name, bytes);
    }
    std::string Client(const std::string& arguments, const std::string& folder) const {
        const auto result =
            support::RunProcess("cvs -Q -d \"" + Root() + "\" " + arguments, folder);
        EXPECT_EQ(result.ExitCode, 0u) << arguments << "\n" << result.Output;
        return result.Output;
    }
    /// A working copy of a new module with one text in it.
    void MakeCopy() const {
        support::WriteBytes(Sandbox.Folder / "start\\a.c", "a\r\n");
        Client("import -m x " + Module + " V R", Sandbox.Folder / "start");
        framework::ForceDirectories(Sandbox.Folder / "work");
        Client("checkout " + Module, Sandbox.Folder / "work");
    }
    /// Connects a project that is not in the repository yet.
    void Connect(TCvsObject& cvs) const {
        cvs.ConnectionType = Object_.ConnectionType;
        cvs.Server = Object_.Server;
        cvs.UserName = Object_.UserName;
        cvs.Path = Object_.Path;
        cvs.SetCVSROOT(Root());
    }
    /// What a fresh check-out of the module has of these; missing ones are empty.
    TFiles Fresh(const TFiles& files) {
        const std::string folder = Sandbox.Folder / ("fresh" + std::to_string(++Copies_));
        framework::ForceDirectories(folder);
        Client("checkout " + Module, folder);
        TFiles found;
        for (const auto& [name, bytes] : files) {
            const std::string path = folder + "\\" + Module + "\\" + name;
            found[name] = framework::FileExists(path) ? support::ReadBytes(path) : "";
        }
        return found;
    }
    void ExpectFresh(const TFiles& binary, const TFiles& text) {
        const TFiles found = Fresh(binary);
        for (const auto& [name, bytes] : binary)
            EXPECT_TRUE(found.at(name) == bytes)
                << name << " has " << found.at(name).size() << " bytes\n"
                << Host.Told;
        for (const auto& [name, bytes] : Fresh(text))
            EXPECT_TRUE(bytes.starts_with("$Id: ")) << name << ": " << bytes.substr(0, 20);
    }
    void ExpectOnDisk(const TFiles& files) const {
        for (const auto& [name, bytes] : files)
            EXPECT_TRUE(support::ReadBytes(Work() + "\\" + name) == bytes) << name;
    }
    bool Commit(TProject& project) {
        return project.Operate([](TCvsObject& cvs) {
            cvs.CommitMessage = "why";
            return cvs.Commit(false);
        });
    }
    static void ExpectResult(const std::string& caption) {
        tests::ExpectForm(caption, [](framework::TForm& form) { tests::Click(form, "BitBtn1"); });
    }
    std::string Root() const { return framework::Trim(Object_.CVSROOT()); }

    const tests::TSandbox Sandbox;
    std::string Module = "binary";

private:
    tests::TSandboxObject Object_{Sandbox};
    int Copies_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Here, Binary, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Served, Binary, testing::Values(true));

TEST_P(Binary, FilesStayWhatTheyAreWhenAProjectIsPlaced) {
    const TFiles binary{{"picture.png", Picture('a')}, {"sub\\of us [1] \xE4.dat", Picture('b')},
                        {"blob", Picture('c')},        {"core", Picture('d')},
                        {"a.o", "ended \x1A early"},   {"empty.zip", ""}};
    const TFiles text{{"sub\\text.dat", Keyword}, {"a.c", Keyword}, {"text.png", Keyword}};
    const TFiles not_in{{"own.mine", "x"}, {"unticked.c", "x"}};
    for (const TFiles& files : {binary, text, not_in})
        Write(files);
    TProject project(Host, Settings, Work());
    Connect(project.Cvs());
    project.Cvs().Set_CVSIGNORE("*.mine");
    Host.Text = "text.png";
    ExpectResult("CVS PlaceProject");
    EXPECT_TRUE(project.Operate([](TCvsObject& cvs) {
        cvs.WizardDataAccepted = true;
        cvs.WorkDirTree.ItemExist(cvs.WorkingDirectory(), "unticked.c")->Included = false;
        return cvs.PlaceProjectAccepted();
    })) << Host.Told;
    EXPECT_EQ(Host.Shown.find("a.c"), std::string::npos) << Host.Shown;
    ExpectTold("6 files are kept as binary: ");
    ExpectFresh(binary, text);
    EXPECT_EQ(Fresh(not_in), (TFiles{{"own.mine", ""}, {"unticked.c", ""}}));
    for (const TFiles& files : {binary, not_in})
        ExpectOnDisk(files);
    char ignored[64] = "";
    ::GetEnvironmentVariableA("CVSIGNORE", ignored, sizeof ignored);
    EXPECT_STREQ(ignored, "*.mine");
}

TEST_P(Binary, FilesStayWhatTheyAreWhenAFolderIsImported) {
    const TFiles binary{{"picture.png", Picture('a')}, {"deep\\er\\data.txt", Picture('b')}};
    const TFiles text{{"a.c", Keyword}, {"notes.txt", Keyword}};
    for (const TFiles& files : {binary, text, TFiles{{"a.obj", "x"}, {"own.mine", "x"}}})
        Write(files);
    TProject project(Host, Settings, Work());
    Connect(project.Cvs());
    project.Cvs().Set_CVSIGNORE("*.mine");
    Host.Goes = false;
    EXPECT_FALSE(project.Import("V", "R"));
    Host.Goes = true;
    ExpectResult("CVS import");
    EXPECT_TRUE(project.Import("V", "R")) << Host.Told;
    ExpectFresh(binary, text);
    // Nothing was ticked: what is usually ignored is.
    EXPECT_EQ(Fresh({{"a.obj", ""}, {"own.mine", ""}}), (TFiles{{"a.obj", ""}, {"own.mine", ""}}));
}

TEST_P(Binary, FilesStayWhatTheyAreWhenTheyAreAddedAndMoved) {
    MakeCopy();
    TFiles binary{{"new\\picture.png", Picture('a')}, {"new\\deep\\my data.dat", Picture('b')}};
    const TFiles text{{"new\\b.c", Keyword}, {"new\\notes.dat", Keyword}, {"text.png", Keyword}};
    Write(binary);
    Write(text);
    TProject project(Host, Settings, Work());
    std::vector<std::string> paths;
    for (const TFiles& files : {binary, text})
        for (const auto& [name, bytes] : files)
            paths.push_back(Work() + "\\" + name);
    Host.Text = "text.png";
    EXPECT_TRUE(project.Add(paths)) << Host.Told;
    EXPECT_EQ(Host.Shown, "my data.dat picture.png text.png ");
    EXPECT_TRUE(Commit(project)) << Host.Told;
    EXPECT_EQ(Host.Asked, "");
    ExpectFresh(binary, text);

    EXPECT_TRUE(project.Move(Work() + "\\new\\picture.png", Work() + "\\moved.png")) << Host.Told;
    auto moved = binary.extract("new\\picture.png");
    moved.key() = "moved.png";
    binary.insert(std::move(moved));
    if (GetParam()) {
        // What waits for the server is added as it was to be.
        Write({{"later.png", Picture('l')}});
        project.SetOnline(false);
        project.Add({Work() + "\\later.png"});
        project.SetOnline(true);
        binary["later.png"] = Picture('l');
    }
    EXPECT_TRUE(Commit(project)) << Host.Told;
    EXPECT_EQ(Host.Asked, "");
    ExpectFresh(binary, text);
}

TEST_P(Binary, FilesThatACommitWouldDamageAreNamedBefore) {
    MakeCopy();
    const TFiles binary{
        {"added.png", Picture('a')}, {"a.c", Picture('b')}, {"on.dat", Picture('c')}};
    Write({{"added.png", Picture('a')}, {"on.dat", Keyword}, {"text.c", Keyword}});
    Client("add added.png on.dat text.c", Work());
    Client("commit -m x on.dat", Work());
    Write(binary);
    tests::Touch(Work() + "\\a.c");
    tests::Touch(Work() + "\\on.dat");
    TProject project(Host, Settings, Work());
    framework::ForceDirectories(Sandbox.Folder / "other");
    Client("checkout " + Module, Sandbox.Folder / "other");
    for (const TAnswer answer : {TAnswer::Cancel, TAnswer::Yes}) {
        Host.Asked.clear();
        Host.Answer = answer;
        EXPECT_EQ(Commit(project), answer == TAnswer::Yes) << Host.Told;
        ExpectIn(Host.Asked, "3 files that are no texts");
        ExpectOnDisk(binary);
        if (answer == TAnswer::Cancel) {
            EXPECT_EQ(Fresh({{"a.c", ""}}), (TFiles{{"a.c", "a\r\n"}}));
        }
    }
    ExpectFresh(binary, {{"text.c", ""}});
    const std::string other = Sandbox.Folder / ("other\\" + Module);
    Client("update", other);
    for (const auto& [name, bytes] : binary)
        EXPECT_TRUE(support::ReadBytes(other + "\\" + name) == bytes) << name << " elsewhere";
    // They are known now, and their next revisions are sent whole, too.
    Host.Asked.clear();
    const TFiles next{{"added.png", Picture('x')}, {"a.c", Picture('y')}};
    Write(next);
    tests::Touch(Work() + "\\added.png");
    tests::Touch(Work() + "\\a.c");
    EXPECT_TRUE(Commit(project)) << Host.Told;
    EXPECT_EQ(Host.Asked, "");
    ExpectFresh(next, {});
}

TEST_P(Binary, FilesThatOthersHaveChangedAreNotWrittenOver) {
    MakeCopy();
    framework::ForceDirectories(Sandbox.Folder / "other");
    Client("checkout " + Module, Sandbox.Folder / "other");
    const std::string other = Sandbox.Folder / ("other\\" + Module);
    support::WriteBytes(other + "\\a.c", "theirs\r\n");
    Client("commit -f -m x a.c", other);
    const TFiles mine{{"a.c", Picture('m')}};
    Write(mine);
    tests::Touch(Work() + "\\a.c");
    TProject project(Host, Settings, Work());
    Host.Answer = TAnswer::Yes;
    EXPECT_FALSE(Commit(project)) << Host.Told;
    ExpectIn(Host.Asked, "1 file that is no text in");
    ExpectTold("Up-to-date check failed");
    ExpectOnDisk(mine);
    EXPECT_EQ(Fresh({{"a.c", ""}}).at("a.c").substr(0, 6), "theirs");

    // One that the user takes for a text goes as the client sends it: that is what the question is
    // about.
    Write({{"added.png", Picture('a')}});
    Client("add added.png", Work());
    Host.Answer = TAnswer::No;
    EXPECT_TRUE(project.Operate(
        [](TCvsObject& cvs) {
            cvs.CommitMessage = "why";
            return cvs.Commit(false);
        },
        {Work() + "\\added.png"}))
        << Host.Told;
    EXPECT_LT(Fresh({{"added.png", ""}}).at("added.png").size(), 5000u);
}

}  // namespace
