#include "tests/cvs/Sandbox.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "core/Cvsroot.h"
#include "framework/base/files.h"
#include "framework/base/handle.h"

namespace tests {
namespace {

void CopyFolder(const std::string& from, const std::string& to) {
    framework::ForceDirectories(to);
    framework::TFileSearch search(from + "\\*.*", framework::faAnyFile);
    for (framework::TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        const std::string source = from + "\\" + entry.Name, target = to + "\\" + entry.Name;
        if (entry.IsDirectory())
            CopyFolder(source, target);
        else
            ::CopyFileA(source.c_str(), target.c_str(), TRUE);
    }
}

std::string Checked(const std::string& commandLine, const std::string& folder) {
    const auto result = support::RunProcess(commandLine, folder);
    EXPECT_EQ(result.ExitCode, 0u) << commandLine << "\n" << result.Output;
    return result.Output;
}

/// The repository that all sandboxes are copies of. It stays for the programs that run after this
/// one: each run of the tests begins with an empty drive.
const std::string& Template() {
    static const std::string repository = "C:\\cvs-template\\repository";
    if (framework::DirectoryExists(repository))
        return repository;
    const support::TTempFolder folder("template");
    const std::string path = folder / "repository";
    const std::string client = "cvs -Q -d \":local:" + path + "\" ";
    Checked(client + "init", folder.Path());
    support::WriteBytes(folder / "mod\\a.c", "one\r\ntwo\r\n");
    support::WriteBytes(folder / "mod\\b.c", "b\r\n");
    support::WriteBytes(folder / "mod\\sub\\c.c", "c\r\n");
    Checked(client + "import -m first mod VENDOR START", folder / "mod");
    // All at once, so that nobody finds half of it.
    framework::ForceDirectories("C:\\cvs-template");
    EXPECT_TRUE(::MoveFileExA(path.c_str(), repository.c_str(), 0));
    return repository;
}

}  // namespace

std::string Surroundings(const char* name) {
    const char* const value = std::getenv(name);
    if (!value)
        ADD_FAILURE() << name << " is not set: ./test starts the password server";
    return value ? value : "";
}

void Touch(const std::string& path) {
    const framework::FileHandle file(
        ::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    FILETIME now;
    ::GetSystemTimeAsFileTime(&now);
    now.dwHighDateTime += 8;
    ASSERT_TRUE(::SetFileTime(file.Get(), nullptr, nullptr, &now));
}

void ConnectToServer(tandrel::TCvsObject& obj) {
    obj.ConnectionType = tandrel::cnPServer;
    obj.Server = "127.0.0.1";
    obj.UserName = Surroundings("TANDREL_PSERVER_USER");
    obj.Password = Surroundings("TANDREL_PSERVER_PASSWORD");
    // This client wants the path right behind the port, as a Root file that was read has it; it
    // refuses the colon that a special port is followed by.
    obj.Path = Surroundings("TANDREL_PSERVER_PORT") + Surroundings("TANDREL_PSERVER_PATH");
    obj.SetCVSROOT(
        tandrel::CompileCVSROOT(tandrel::cnPServer, obj.Server, obj.UserName, "", "", obj.Path));
    obj.Set_WorkingDirectory("");
    obj.Set_ServerOnline(true);
}

TSandbox::TSandbox() {
    CopyFolder(Template(), Repository);
}

std::string TSandbox::Ask(const std::string& arguments) const {
    return support::RunProcess("cvs -Q -d \":local:" + Repository + "\" " + arguments,
                               Folder.Path())
        .Output;
}

std::string TSandbox::Client(const std::string& arguments, const std::string& folder) const {
    // As the package writes a local root. The client takes two spellings of one root for two
    // repositories.
    return Checked("cvs -d \"" + Repository + "\" " + arguments, folder);
}

std::string TSandbox::CheckOut(const std::string& folder) const {
    framework::ForceDirectories(Folder / folder);
    Client("-Q checkout mod", Folder / folder);
    return Folder / (folder + "\\mod");
}

TSandboxObject::TSandboxObject(const TSandbox& sandbox) {
    ConnectionType = tandrel::cnLocal;
    Path = sandbox.Repository;
    SetCVSROOT(tandrel::CompileCVSROOT(ConnectionType, "", "", "", "", Path));
    Set_ProjectRoot(sandbox.Folder.Path());
    Set_Modulename("mod");
}

TSandboxObject::TSandboxObject(const TSandbox& sandbox, const std::string& workingCopy)
    : TSandboxObject(sandbox) {
    Set_WorkingDirectory(workingCopy);
}

}  // namespace tests
