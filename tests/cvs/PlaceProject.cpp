#include "tests/cvs/PlaceProject.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "framework/base/text.h"
#include "tests/support/FormDriver.h"

namespace tests {

using framework::FileHandle;

TSnapshot Snapshot(const std::string& folder) {
    namespace fs = std::filesystem;
    TSnapshot snapshot;
    const fs::path top(framework::ToWide(folder));
    if (!fs::exists(top))
        return snapshot;
    for (fs::recursive_directory_iterator entry(top), end; entry != end; ++entry) {
        if (entry->path().filename() == "CVS") {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file()) {
            std::ifstream file(entry->path(), std::ios::binary);
            EXPECT_TRUE(file) << entry->path();
            snapshot[framework::FromWide(entry->path().lexically_relative(top).wstring())] =
                std::string(std::istreambuf_iterator(file), {});
        }
    }
    return snapshot;
}

FileHandle OpenForOneself(const std::string& path) {
    FileHandle file(
        ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(file) << path;
    return file;
}

BOOL WINAPI RefuseToMove(const char* from, const char* to, DWORD flags) {
    if (!std::string(from).ends_with(Victim))
        return ::MoveFileExA(from, to, flags);
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI CopyHalf(const char* from, const char* to, BOOL failIfExists) {
    if (!std::string(from).ends_with(Victim))
        return ::CopyFileA(from, to, failIfExists);
    const std::string bytes = support::ReadBytes(from);
    support::WriteBytes(to, std::string_view(bytes).substr(0, bytes.size() / 2));
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI WriteNothing(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*) {
    ::SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

void WholeProject::ExpectResult(bool success) const {
    const std::string text = "project \"" + Obj.Modulename() + "\" place into repository " +
                             Sandbox.Repository +
                             (success ? " successfuly completed" : " execute with Exitcode 1");
    tests::ExpectForm("CVS PlaceProject", [text](framework::TForm& form) {
        EXPECT_EQ(tests::TextOf(form, "Label1"), text);
        tests::Click(form, "BitBtn1");
    });
}

PlaceProject::PlaceProject() {
    Obj.Set_Modulename("pr\xF6 j");
    Obj.StrictQuoting = true;
    Obj.VendorTag = "VENDOR";
    Obj.ReleaseTag = "START";
    Obj.CommitMessage = "as it was";
    Obj.UseDefaultIgnore = true;
    // The client wants the mode of a pattern in its own quotes.
    Obj.FileItems.AddExt("*.bin -k 'b'", false, tandrel::Km_none);
    for (const auto& [name, bytes] : Files)
        Sandbox.Write(Project + "\\" + name, bytes);
    framework::ForceDirectories(Project + "\\empty\\inner");
    ::SetFileAttributesA((Project + "\\read only.c").c_str(), FILE_ATTRIBUTE_READONLY);
    ::SetFileAttributesA((Project + "\\hidden.c").c_str(), FILE_ATTRIBUTE_HIDDEN);
    Before = Snapshot(Project);
}

void PlaceProject::ExpectNothingLost() const {
    const TSnapshot project = Snapshot(Project), backup = Snapshot(Backup);
    for (const auto& [name, bytes] : Before) {
        const auto here = project.find(name), aside = backup.find(name);
        EXPECT_TRUE((here != project.end() && here->second == bytes) ||
                    (aside != backup.end() && aside->second == bytes))
            << name;
    }
}

}  // namespace tests
