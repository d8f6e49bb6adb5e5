#include "hosting/FolderWatch.h"

#include <cstddef>
#include <string_view>

#include "framework/base/text.h"

namespace hosting {

using namespace framework;

namespace {

// More than this is not to be had of a folder on a server.
constexpr DWORD BufferBytes = 64 << 10;

bool EndsInRoot(std::wstring_view path) {
    constexpr std::wstring_view Root = L"cvs\\root";
    if (path.size() < Root.size())
        return false;
    const std::wstring end(path.substr(path.size() - Root.size()));
    return ::lstrcmpiW(end.c_str(), Root.data()) == 0;
}

}  // namespace

TFolderWatch::TFolderWatch(const std::string& folder)
    : Folder_(::CreateFileW(ToWide(folder).c_str(), FILE_LIST_DIRECTORY,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED,
                            nullptr)),
      Event_(::CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      Buffer_(BufferBytes / sizeof(DWORD)) {
    Begin();
}

TFolderWatch::~TFolderWatch() {
    if (!IsPending_)
        return;
    // The system writes into the buffer until this is over.
    ::CancelIo(Folder_.Get());
    DWORD bytes = 0;
    ::GetOverlappedResult(Folder_.Get(), &Pending_, &bytes, TRUE);
}

void TFolderWatch::Begin() {
    Pending_ = {};
    Pending_.hEvent = Event_.Get();
    constexpr DWORD What = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                           FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
    IsPending_ = Folder_ && Event_ &&
                 ::ReadDirectoryChangesW(Folder_.Get(), Buffer_.data(), BufferBytes, TRUE, What,
                                         nullptr, &Pending_, nullptr) != FALSE;
}

TFolderChanges TFolderWatch::Read(DWORD bytes) const {
    // More has happened than the buffer holds.
    if (bytes == 0)
        return {true, true};
    TFolderChanges changes{true, false};
    const auto* at = reinterpret_cast<const std::byte*>(Buffer_.data());
    for (;;) {
        const auto& entry = *reinterpret_cast<const FILE_NOTIFY_INFORMATION*>(at);
        changes.Roots |= EndsInRoot({entry.FileName, entry.FileNameLength / sizeof(wchar_t)});
        if (entry.NextEntryOffset == 0)
            return changes;
        at += entry.NextEntryOffset;
    }
}

TFolderChanges TFolderWatch::Look() {
    TFolderChanges changes;
    DWORD bytes = 0;
    // Several may have come.
    while (IsPending_ && ::GetOverlappedResult(Folder_.Get(), &Pending_, &bytes, FALSE)) {
        const TFolderChanges more = Read(bytes);
        changes.Any = true;
        changes.Roots |= more.Roots;
        Begin();
    }
    if (IsPending_ && ::GetLastError() != ERROR_IO_INCOMPLETE)
        IsPending_ = false;
    return changes;
}

}  // namespace hosting
