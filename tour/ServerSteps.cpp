// A password server: logging in, pulling, working while it cannot be reached.

#include <cstdlib>

#include "framework/base/files.h"
#include "support/Drive.h"
#include "tour/Tour.h"

namespace tour {

using namespace framework;
using support::Press;
using support::StepOf;
using support::Type;

namespace {

std::string Surroundings(const char* name) {
    const char* const value = std::getenv(name);
    if (!value)
        throw std::runtime_error(std::string(name) + " is not set: ./run starts a server");
    return value;
}

}  // namespace

void TTour::LogIn() {
    const std::string folder = Folder_ / "remote";
    ForceDirectories(folder);
    support::WriteBytes(folder + "\\first.txt", "first\r\n");
    Form_->OpenProject(folder);
    Play_.ExpectForm("CVS preferences", [](TForm& form) {
        support::Choose(form, "ComboBox1", tandrel::cnPServer);
        Type(form, "Edit1", "127.0.0.1");
        Type(form, "Edit2", Surroundings("TANDREL_PSERVER_USER"));
        // The client wants the path right behind the port.
        Type(form, "Edit3",
             Surroundings("TANDREL_PSERVER_PORT") + Surroundings("TANDREL_PSERVER_PATH"));
        Press(form, "BitBtn1");
    });
    Choose("Repository/Preferences...");
    for (const std::string& password :
         {std::string("a wrong one"), Surroundings("TANDREL_PSERVER_PASSWORD")}) {
        Play_.ExpectForm("CVS login -step 1", [&](TForm& form) {
            Type(StepOf(form), "Edit3", password);
            Next(form);
            Play_.Picture(form.Handle(), "login");
            Press(form, "BitBtn1");
        });
        if (password == "a wrong one")
            Play_.ExpectForm("CVS login", [this](TForm& form) {
                const std::string text = support::Part<TControl>(form, "Label1").Text();
                Press(form, "BitBtn1");
                Expect(text.ends_with(" execute with Exitcode 1"), "refused: " + text);
            });
        else
            ExpectSuccess("CVS login");
        Choose("Repository/Log in...");
    }
    Expect(Told().find(Surroundings("TANDREL_PSERVER_PASSWORD")) == std::string::npos,
           "no password is told");
    Place();
    Expect(FileExists(folder + "\\CVS\\Entries"), "a working copy of the server's");
}

void TTour::WorkOffLine() {
    constexpr int Files = 19;
    const std::string folder = Folder_ / "remote";
    const auto name = [](int i) { return "file " + std::to_string(i) + ".txt"; };
    for (int i = 0; i < Files; ++i)
        support::WriteBytes(folder + "\\" + name(i), "text\r\n");
    Choose("File/Refresh");
    Choose("Repository/Server is on-line");
    Expect(!MenuItem("Repository/Server is on-line").Checked(), "off-line");
    for (int i = 0; i < Files; ++i) {
        Select(name(i));
        Choose("Selection/Add");
    }
    Select("first.txt");
    Choose("Selection/Remove and delete");
    // A move, into a folder that the server does not know yet.
    ForceDirectories(folder + "\\new folder");
    Select(name(0));
    Play_.ExpectForm("Move " + name(0), [](TForm& form) {
        Type(form, "Input1", "new folder\\moved.txt");
        Press(form, "BitBtn1");
    });
    Choose("Selection/Move...");
    Expect(support::ReadBytes(folder + "\\CVS\\Entries").find("file") == std::string::npos,
           "nothing has run yet");
    Choose("Repository/Server is on-line");
    Expect(!FileExists(folder + "\\vcsCommand.log") && Form_->Project()->Waiting().empty(),
           "nothing waits any more");
    Commit();
    // What the server has now, pulled by another.
    const std::string copy = Folder_ / "remote copy";
    Pull(copy, "remote");
    for (int i = 1; i < Files; ++i)
        Expect(FileExists(copy + "\\remote\\" + name(i)), name(i) + " is on the server");
    Expect(FileExists(copy + "\\remote\\new folder\\moved.txt"), "so is what was moved");
    Expect(!FileExists(copy + "\\remote\\" + name(0)), "it is not where it was");
    Expect(!FileExists(copy + "\\remote\\first.txt"), "first.txt is not");
}

void TTour::LogOut() {
    Play_.ExpectForm("CVS logout", [](TForm& form) { Press(form, "BitBtn1"); });
    ExpectSuccess("CVS logout");
    Choose("Repository/Log out...");
    Choose("File/Close project");
}

}  // namespace tour
