// Working copies from other hands: names that the system takes for those of other files.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "framework/base/files.h"
#include "framework/base/handle.h"
#include "framework/base/text.h"
#include "tests/cvs/PlaceProject.h"
#include "tests/support/FormDriver.h"

namespace {

using namespace tandrel;
using framework::FileExists;

/// A folder with names in it whose look-alikes are those of other files, outside of it, too.
class HostileNames : public tests::WholeProject {
protected:
    void Plant(const std::string& folder) {
        Sandbox.Write(Neighbour, "victim\r\n");
        Sandbox.Write(NeighboursRecords, "victim\r\n");
        Sandbox.Write(folder + "\\A.c", "other\r\n");
        const std::wstring wide = framework::ToWide(folder + "\\");
        // The look-alikes of the letters that the code page lacks are a backslash and an A.
        for (const wchar_t* name : {L"..\uFF3Cvictim.c", L"\u0100.c"}) {
            const framework::FileHandle file(::CreateFileW((wide + name).c_str(), GENERIC_WRITE, 0,
                                                           nullptr, CREATE_NEW, 0, nullptr));
            ASSERT_TRUE(file);
        }
        ASSERT_TRUE(::CreateDirectoryW((wide + L"..\uFF3Cneighbour").c_str(), nullptr));
        Obj.StrictQuoting = true;
        Obj.Set_WorkingDirectory(folder);
    }
    void ExpectNothingTouched(const std::string& folder) const {
        EXPECT_TRUE(FileExists(Neighbour) && FileExists(NeighboursRecords));
        EXPECT_EQ(Sandbox.Read(folder + "\\A.c"), "other\r\n");
    }
    bool IsRefused() const { return WasSaid("not in the code page, nothing was done"); }

    const std::string Neighbour = Sandbox.Folder / "work\\victim.c";
    const std::string NeighboursRecords = Sandbox.Folder / "work\\neighbour\\CVS\\Entries";
};

TEST_F(HostileNames, LeadNowhereInAWorkingCopy) {
    const std::string copy = Sandbox.CheckOut("work");
    Plant(copy);
    Obj.Load_WorkDirTree();
    int unusable = 0;
    for (const TWorkDirItem& item : Obj.WorkDirTree) {
        if (item.Name.find('?') == std::string::npos)
            continue;
        ++unusable;
        Obj.FileItems.Clear();
        Obj.FileItems.AddFile(item.Directory + "\\" + item.Name, Km_none);
        Obj.Messages.Clear();
        EXPECT_FALSE(Obj.Add());
        EXPECT_TRUE(WasSaid(item.Name + " has a name that the client cannot be given"))
            << Obj.Messages.All();
        EXPECT_TRUE(item.Children->Empty());
    }
    EXPECT_EQ(unusable, 3);
    Obj.FileItems.Clear();

    Obj.Messages.Clear();
    Obj.ReleaseDelete = true;
    EXPECT_FALSE(Obj.ReleaseAccepted());
    EXPECT_TRUE(IsRefused()) << Obj.Messages.All();
    EXPECT_TRUE(FileExists(copy + "\\a.c"));

    Obj.Messages.Clear();
    EXPECT_FALSE(Obj.RemoveProjectFrom()) << "there may be records left";
    EXPECT_TRUE(WasSaid("I/O Error = " + copy + "\\..?neighbour")) << Obj.Messages.All();
    EXPECT_FALSE(FileExists(copy + "\\CVS\\Entries"));
    ExpectNothingTouched(copy);
}

TEST_F(HostileNames, AreNotPutIntoARepository) {
    const std::string folder = Sandbox.Folder / "work\\new";
    Obj.Set_ProjectRoot(Sandbox.Folder / "work");
    Plant(folder);
    Obj.Set_Modulename("new");
    Obj.VendorTag = "V";
    Obj.ReleaseTag = "R";
    EXPECT_FALSE(Obj.Import(false));
    EXPECT_TRUE(IsRefused()) << Obj.Messages.All();
    Obj.Messages.Clear();
    ExpectResult(false);
    EXPECT_FALSE(Obj.PlaceProjectAccepted());
    EXPECT_TRUE(IsRefused()) << Obj.Messages.All();
    EXPECT_FALSE(framework::DirectoryExists(Sandbox.Repository + "\\new"));
    ExpectNothingTouched(folder);
}

}  // namespace
