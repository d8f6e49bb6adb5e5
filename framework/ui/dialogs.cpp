#include "framework/ui/dialogs.h"

// clang-format off
#include <windows.h>
#include <commdlg.h>
#include <ole2.h>
#include <shlobj.h>
// clang-format on

#include <algorithm>
#include <utility>

#include "framework/base/exceptions.h"
#include "framework/base/import.h"
#include "framework/base/text.h"
#include "framework/ui/task_windows.h"

namespace framework {
namespace {

// The libraries of these dialogs are large and seldom needed: they are loaded with the first one.

/// The window to stand above, which only lies behind while it cannot be used.
HWND Owner() {
    return ::GetActiveWindow();
}

/// What the dialog is told when it is there.
struct TFolderStart {
    std::wstring Title, Directory;
    bool Settled;
};

int CALLBACK FolderEvent(HWND window, UINT message, LPARAM, LPARAM data) {
    auto& start = *reinterpret_cast<TFolderStart*>(data);
    const auto directory = reinterpret_cast<LPARAM>(start.Directory.c_str());
    if (message == BFFM_INITIALIZED) {
        ::SetWindowTextW(window, start.Title.c_str());
        if (!start.Settled)
            ::SendMessageW(window, BFFM_SETSELECTIONW, TRUE, directory);
    } else if (message == BFFM_SELCHANGED && !std::exchange(start.Settled, true)) {
        // The tree may not have been filled before; then its first item was selected now.
        ::PostMessageW(window, BFFM_SETSELECTIONW, TRUE, directory);
    }
    return 0;
}

/// The new style of the folder dialog is made of components.
class TComponents {
public:
    TComponents()
        : End_(ImportFunction<decltype(::OleUninitialize)>(L"ole32.dll", "OleUninitialize")) {
        const auto begin = ImportFunction<decltype(::OleInitialize)>(L"ole32.dll", "OleInitialize");
        Begun_ = begin && SUCCEEDED(begin(nullptr));
    }
    ~TComponents() {
        if (Begun_ && End_)
            End_();
    }
    TComponents(const TComponents&) = delete;
    TComponents& operator=(const TComponents&) = delete;

private:
    decltype(::OleUninitialize)* End_;
    bool Begun_;
};

bool SelectDirectory(const std::string& title, std::string& directory) {
    const auto browse =
        ImportFunction<decltype(::SHBrowseForFolderW)>(L"shell32.dll", "SHBrowseForFolderW");
    const auto pathOf =
        ImportFunction<decltype(::SHGetPathFromIDListW)>(L"shell32.dll", "SHGetPathFromIDListW");
    const auto release = ImportFunction<decltype(::CoTaskMemFree)>(L"ole32.dll", "CoTaskMemFree");
    if (!browse || !pathOf || !release)
        RaiseLastOSError();
    const TComponents components;
    TFolderStart start{ToWide(title), ToWide(directory), directory.empty()};
    BROWSEINFOW info{};
    info.hwndOwner = Owner();
    info.lpszTitle = start.Title.c_str();
    info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_USENEWUI;
    info.lpfn = FolderEvent;
    info.lParam = reinterpret_cast<LPARAM>(&start);
    // The owner is the dialog's to disable: it is enabled again before the dialog goes, and so
    // comes to the front.
    const TTaskWindowsDisabled others(info.hwndOwner);
    const PIDLIST_ABSOLUTE chosen = browse(&info);
    if (!chosen)
        return false;
    wchar_t path[MAX_PATH]{};
    const bool named = pathOf(chosen, path) != FALSE;
    release(chosen);
    if (named)
        directory = FromWide(path);
    return named;
}

/// The ending of a filter's first pattern; empty when that takes any.
std::wstring EndingOf(const std::string& filter) {
    const std::size_t pattern = filter.find("|*.");
    if (pattern == std::string::npos)
        return {};
    const std::size_t start = pattern + 3;
    const std::string ending = filter.substr(start, filter.find_first_of(";|", start) - start);
    return ending == "*" ? std::wstring() : ToWide(ending);
}

bool ChooseFile(const char* function, DWORD flags, const std::string& filter, std::string& file) {
    // Opening and saving take the same.
    const auto choose = ImportFunction<decltype(::GetOpenFileNameW)>(L"comdlg32.dll", function);
    if (!choose)
        RaiseLastOSError();
    std::wstring patterns = ToWide(filter) + L'|';
    std::ranges::replace(patterns, L'|', L'\0');
    constexpr std::size_t LongestPath = 32768;
    std::wstring name = ToWide(file).substr(0, LongestPath - 1);
    std::wstring folder;
    if (name.ends_with(L'\\'))
        folder.swap(name);
    const std::wstring ending = EndingOf(filter);
    name.resize(LongestPath, L'\0');
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = Owner();
    dialog.lpstrFilter = patterns.c_str();
    dialog.lpstrFile = name.data();
    dialog.nMaxFile = LongestPath;
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrDefExt = ending.empty() ? nullptr : ending.c_str();
    dialog.Flags = flags | OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    const TTaskWindowsDisabled others(dialog.hwndOwner);
    if (!choose(&dialog))
        return false;
    file = FromWide(name.c_str());
    return true;
}

bool OpenFile(const std::string& filter, std::string& file) {
    return ChooseFile("GetOpenFileNameW", OFN_FILEMUSTEXIST, filter, file);
}

bool SaveFile(const std::string& filter, std::string& file) {
    return ChooseFile("GetSaveFileNameW", OFN_OVERWRITEPROMPT, filter, file);
}

int Ask(const std::string& caption, const std::string& text, UINT looks) {
    const HWND owner = Owner();
    const TTaskWindowsDisabled others(owner);
    return ::MessageBoxW(owner, ToWide(text).c_str(), ToWide(caption).c_str(), looks);
}

bool AskYesNo(const std::string& caption, const std::string& text) {
    return Ask(caption, text, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

TAnswer AskYesNoCancel(const std::string& caption, const std::string& text) {
    const int answer = Ask(caption, text, MB_YESNOCANCEL | MB_ICONQUESTION);
    return answer == IDYES ? TAnswer::Yes : answer == IDNO ? TAnswer::No : TAnswer::Cancel;
}

bool AskRisk(const std::string& caption, const std::string& text) {
    return Ask(caption, text, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) == IDYES;
}

}  // namespace

TDialogFunctions& DialogFunctions() {
    static TDialogFunctions functions{SelectDirectory, OpenFile,       SaveFile,
                                      AskYesNo,        AskYesNoCancel, AskRisk};
    return functions;
}

}  // namespace framework
