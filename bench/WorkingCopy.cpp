// What the model of a working copy costs, and what is done with the files of one.

#include <windows.h>

#include <string>
#include <vector>

#include "bench/HandMadeCopy.h"
#include "bench/Table.h"
#include "core/ProjectFiles.h"
#include "cvs/AdminFiles.h"
#include "cvs/Cvstempl.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "support/Files.h"
#include "support/Process.h"

namespace bench {
namespace {

constexpr int FilesPerFolder = 20;
constexpr int LoadTurns = 15;
constexpr int WorkTurns = 7;

constexpr DWORD ClientDeadline = 600000;

constexpr const char* LoadOfMany = "Load_WorkDirTree, 20,000 files, 1,000 folders";

/// Lists the folder and all below, reads each Entries file, and does nothing with either. Returns
/// the number of files.
int BareWalk(const std::string& folder) {
    int files = 0;
    WIN32_FIND_DATAA found;
    const framework::FindHandle search(::FindFirstFileA((folder + "\\*.*").c_str(), &found));
    if (!search)
        return 0;
    do {
        const std::string_view name = found.cFileName;
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            ++files;
        else if (name != "." && name != ".." && name != tandrel::AdminDirectoryName)
            files += BareWalk(folder + "\\" + found.cFileName);
    } while (::FindNextFileA(search.Get(), &found));
    support::ReadBytes(folder + "\\CVS\\Entries");
    return files;
}

int CountUnchanged(const tandrel::TWorkDirTree& tree) {
    int files = 0;
    for (const tandrel::TWorkDirItem& item : tree) {
        if (item.IsDirectory)
            files += CountUnchanged(*item.Children);
        else if (item.InRepository && !item.Changed)
            ++files;
    }
    return files;
}

/// The object and the model of one working copy.
class TModel {
public:
    explicit TModel(const TWorkingCopy& copy) : Copy_(copy) { Obj.Set_WorkingDirectory(copy.Path); }
    void Load() { Obj.Load_WorkDirTree(); }
    /// A load that is fast because it misses something does not count.
    void Check() const {
        Require(CountUnchanged(Obj.WorkDirTree) == Copy_.Files, "a model is not right");
    }

    tandrel::TCvsObject Obj;

private:
    const TWorkingCopy& Copy_;
};

/// Bytes in use on all heaps of the process, with what the heaps add.
std::size_t HeapInUse() {
    std::vector<HANDLE> heaps(::GetProcessHeaps(0, nullptr));
    heaps.resize(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    std::size_t total = 0;
    for (const HANDLE heap : heaps) {
        ::HeapLock(heap);
        PROCESS_HEAP_ENTRY entry{};
        while (::HeapWalk(heap, &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                total += entry.cbData + entry.cbOverhead;
        ::HeapUnlock(heap);
    }
    return total;
}

void MeasureLoad(TTable& table, const support::TTempFolder& folder) {
    const std::string repository = folder / "repository";
    const std::string archive = MakeRepository(repository, folder / "seed");
    const TWorkingCopy copy(folder / "work", repository, 1000, FilesPerFolder);
    TModel model(copy);
    const std::size_t before = HeapInUse();
    model.Load();
    const double used = static_cast<double>(HeapInUse() - before);
    model.Check();

    const auto load = [&] { model.Load(); };
    const auto walk = [&] { Require(BareWalk(copy.Path) == copy.Files, "a walk is not right"); };
    walk();
    const auto [whole, bare] = MedianTurn(LoadTurns, load, walk);
    table.Add(LoadOfMany, whole, "bare walk that reads each Entries", bare, 1.5);
    table.Add("heap that the model takes for each file", used / 1024 / copy.Files, "allowed", 1, 1,
              "KB");

    copy.WriteArchives(archive);
    const double client = Time([&] {
        const auto result = support::RunProcess("cvs -nq update", copy.Path, {}, ClientDeadline);
        Require(result.ExitCode == 0 && result.Output.empty(), "the client: " + result.Output);
    });
    table.Add(LoadOfMany, whole, "cvs -nq update", client, 1.0 / 40);

    const auto compare = [&](const TWorkingCopy& other, auto add) {
        TModel otherModel(other);
        otherModel.Load();
        otherModel.Check();
        const auto [time, timeOfOther] = MedianTurn(LoadTurns, load, [&] { otherModel.Load(); });
        add(time, timeOfOther);
    };
    compare({folder / "half", repository, 500, FilesPerFolder}, [&](double time, double ofHalf) {
        table.Add(LoadOfMany, time, "10,000 files, 500 folders", ofHalf, 2.3);
    });
    compare({folder / "flat", repository, 1, copy.Files}, [&](double time, double ofFlat) {
        table.Add("Load_WorkDirTree, 20,000 files, 1 folder", ofFlat, "20,000 files, 1,000 folders",
                  time, 1.5);
    });
}

void Ignore(tandrel::TWorkDirTree& tree) {
    for (tandrel::TWorkDirItem& item : tree) {
        if (item.IsDirectory)
            Ignore(*item.Children);
        else
            item.Included = false;
    }
}

/// A working copy with what is done to its files.
class TFileWork {
public:
    TFileWork(const support::TTempFolder& folder, const std::string& name, int folders)
        : Copy_(folder / name, folder / "repository", folders, FilesPerFolder),
          Model_(Copy_),
          Away_(folder / (name + "-away")),
          Same_(folder / (name + "-same"), folder / "repository", folders, FilesPerFolder) {
        Model_.Load();
        Ignore(Model_.Obj.WorkDirTree);
        framework::ForceDirectories(Away_);
    }
    double DeleteRecords() {
        Copy_.WriteRecords();
        return Time([&] { Require(Model_.Obj.DeleteCVSDirs(Copy_.Path), "records are left"); });
    }
    double List() {
        return Time(
            [&] { Require(ListOf(Copy_.Path)->Count() >= Copy_.Files, "files are missing"); });
    }
    /// There and back, so that the next turn finds what this one found.
    double BringBack() {
        const double time = Move(Copy_.Path, Away_);
        Move(Away_, Copy_.Path);
        return time;
    }
    double BringBackSame() {
        const auto source = ListOf(Copy_.Path), target = ListOf(Same_.Path);
        return Time([&] {
            Require(tandrel::MoveFileExt2(Copy_.Path, Same_.Path, *source, *target, false, Failed),
                    "files were not brought");
        });
    }
    double SaveIgnore() {
        return Time([&] { Model_.Obj.WorkDirTree.SaveIgnore(tandrel::IgnoreFileName); });
    }

private:
    static std::unique_ptr<framework::TStringList> ListOf(const std::string& folder) {
        auto files = std::make_unique<framework::TStringList>();
        tandrel::TCvsObject::CreateCopyList(folder, *files);
        return files;
    }
    static void Failed(const std::string&, const std::string&) {}
    static double Move(const std::string& from, const std::string& to) {
        const auto source = ListOf(from), target = ListOf(to);
        return Time([&] {
            Require(tandrel::MoveFileExt2(from, to, *source, *target, true, Failed),
                    "files were not brought");
        });
    }

    const TWorkingCopy Copy_;
    TModel Model_;
    const std::string Away_;
    const TWorkingCopy Same_;
};

void MeasureFileWork(TTable& table, const support::TTempFolder& folder) {
    TFileWork whole(folder, "4000", 200), half(folder, "2000", 100);
    for (const auto& [work, name] : {std::pair{&TFileWork::DeleteRecords, "DeleteCVSDirs"},
                                     {&TFileWork::List, "CreateCopyList"},
                                     {&TFileWork::BringBack, "MoveFileExt2, moved"},
                                     {&TFileWork::BringBackSame, "MoveFileExt2, there already"},
                                     {&TFileWork::SaveIgnore, "SaveIgnore"}}) {
        std::vector<TTurn> turns;
        for (int i = 0; i < WorkTurns; ++i) {
            const double time = (whole.*work)();
            turns.emplace_back(time, (half.*work)());
        }
        const auto [ofWhole, ofHalf] = MedianOf(std::move(turns));
        table.Add(std::string(name) + ", 4,000 files", ofWhole, "the same, 2,000 files", ofHalf,
                  2.5);
    }
}

}  // namespace

void MeasureWorkingCopy(TTable& table) {
    const support::TTempFolder folder("bench");
    MeasureLoad(table, folder);
    MeasureFileWork(table, folder);
}

}  // namespace bench
