// Filling the model of the working copy from the disk.

#include <string>
#include <unordered_map>
#include <vector>

#include "core/ComForCall.h"
#include "core/Customvcs.h"
#include "core/Cvs_files.h"
#include "core/Cvs_time.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/names.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

/// The shell's icons, asked for once for each kind of file; kinds that carry pictures of their own
/// are asked for one by one.
class TIconCache {
public:
    int IconOf(const std::string& dir, const std::string& name, bool isDirectory) {
        const std::string kind = isDirectory ? "\\" : ExtensionOf(name);
        for (const std::string_view own : {".EXE", ".ICO", ".CUR", ".LNK"})
            if (kind == own)
                return GetShellImage(SlashSep(dir, name), false, false);
        const auto icon = Icons_.try_emplace(kind, NoIcon).first;
        // A name that the code page cannot write finds nothing; that says nothing of its kind.
        if (icon->second == NoIcon)
            icon->second = GetShellImage(SlashSep(dir, name), false, false);
        return icon->second;
    }

private:
    static constexpr int NoIcon = -1;

    static std::string ExtensionOf(const std::string& name) {
        const std::size_t dot = name.rfind('.');
        return dot == std::string::npos ? std::string() : framework::UpperCase(name.substr(dot));
    }

    std::unordered_map<std::string, int> Icons_;
};

/// Marks a tree for as long as the hooks complete it.
class TJustListed {
public:
    TJustListed(TWorkDirTree& tree, bool listed) : Tree_(tree) { Tree_.JustListed = listed; }
    ~TJustListed() { Tree_.JustListed = false; }
    TJustListed(const TJustListed&) = delete;
    TJustListed& operator=(const TJustListed&) = delete;

private:
    TWorkDirTree& Tree_;
};

bool IsMissingFile(const framework::EInOutError& error) {
    return error.ErrorCode == ERROR_FILE_NOT_FOUND || error.ErrorCode == ERROR_PATH_NOT_FOUND;
}

}  // namespace

/// One load of a tree: what its folders share.
class TWorkDirLoader {
public:
    explicit TWorkDirLoader(TCustomCvsObj& obj) : Obj_(obj) {}

    void Load(TWorkDirTree& tree, const std::string& dir) {
        bool listed = false;
        Contained([&] {
            ListFolder(tree, dir);
            listed = true;
        });
        const TJustListed complete(tree, listed);
        Contained([&] { Obj_.ReadCVSInfo(tree, dir); });
        Contained([&] { Obj_.ReadCVS_SystemFile(tree, dir); });
    }

    /// What could not be read. It is told when the load is over: who hears of it may load the model
    /// anew.
    void TellErrors() const {
        for (const std::string& error : Errors_)
            Obj_.MessageProc(error);
    }

private:
    void ListFolder(TWorkDirTree& tree, const std::string& dir) {
        framework::TFileSearch search(SlashSep(dir, "*.*"), framework::faAnyFile);
        for (framework::TSearchRec entry; search.Next(entry);) {
            if (entry.Name == "." || entry.Name == "..")
                continue;
            if (entry.IsDirectory() && Obj_.CVS_SystemDirectory(entry.Name))
                continue;
            TWorkDirItem& item = AddItem(tree, dir, entry);
            // What lies behind a link is not part of this working copy, and may lead back to it.
            if (item.IsDirectory && !entry.IsLink())
                LoadBelow(item);
        }
    }

    void LoadBelow(TWorkDirItem& item) {
        const std::string dir = SlashSep(item.Directory, item.Name);
        if (framework::IsUnusable(item.Name))
            // Its name is not in the code page: it is shown, and nothing leads into it.
            Errors_.emplace_back(framework::EInOutError(ERROR_INVALID_NAME, dir).what());
        else
            Load(*item.Children, dir);
    }

    TWorkDirItem& AddItem(TWorkDirTree& tree, const std::string& dir,
                          const framework::TSearchRec& entry) {
        TWorkDirItem& item = tree.Add();
        item.Directory = dir;
        item.Name = entry.Name;
        item.IsDirectory = entry.IsDirectory();
        item.ImageIndex = Icons_.IconOf(dir, entry.Name, item.IsDirectory);
        item.Included = true;
        item.FileDate = UTCToLocalTime(entry.LastWriteTime, Zone_);
        return item;
    }

    /// A folder that cannot be read is noted; the others are read all the same.
    template <class Action>
    void Contained(Action action) {
        try {
            action();
        } catch (const framework::EInOutError& error) {
            // An ordinary folder, without records or an ignore list.
            if (!IsMissingFile(error))
                Errors_.emplace_back(error.what());
        } catch (const framework::Exception& error) {
            Errors_.emplace_back(error.what());
        }
    }

    TCustomCvsObj& Obj_;
    const TComForCall Com_;
    TIconCache Icons_;
    std::vector<std::string> Errors_;
    const TIME_ZONE_INFORMATION Zone_ = PresentTimeZone();
};

void TCustomCvsObj::LoadFiles(TWorkDirTree& Tree, const std::string& Dir) {
    TWorkDirLoader loader(*this);
    loader.Load(Tree, Dir);
    loader.TellErrors();
}

void TCustomCvsObj::Load_WorkDirTree() {
    WorkDirTree.Clear();
    // Before the messages, whose listener may run a command.
    ModelCurrent = true;
    if (framework::DirectoryExists(WorkingDirectory_))
        LoadFiles(WorkDirTree, WorkingDirectory_);
    else
        MessageProc("working  directory is not set");
}

}  // namespace tandrel
