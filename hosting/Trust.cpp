#include "hosting/Trust.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>

#include "core/Cvs_utils.h"
#include "cvs/AdminFiles.h"
#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"
#include "hosting/KeptCommand.h"

namespace hosting {

using namespace framework;
using tandrel::AdminDirectoryName;
using tandrel::SlashSep;

namespace {

constexpr std::size_t LongestRoot = 1024;

/// The first line of a file, cut where it grows too long; empty when it cannot be read.
std::string FirstLine(const std::string& path) {
    const FileHandle file(::CreateFileA(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    std::string line(LongestRoot, '\0');
    DWORD read = 0;
    if (!file || !::ReadFile(file.Get(), line.data(), LongestRoot, &read, nullptr))
        return {};
    line.resize(read);
    line.resize(std::min(line.find_first_of("\r\n"), line.size()));
    return Trim(line);
}

/// Where a password stands in a root, with the colon before it; none when there is no password.
std::string_view PasswordIn(std::string_view root) {
    if (!root.starts_with(':'))
        return {};
    const std::size_t user = root.find(':', 1);
    const std::size_t server = FindLastOf(root, "@");
    if (user == std::string_view::npos || server == std::string_view::npos || server < user)
        return {};
    const std::size_t password = root.find(':', user + 1);
    if (password == std::string_view::npos || password > server)
        return {};
    return root.substr(password, server - password);
}

void ReadBelow(const std::string& folder, TRoots& roots, std::set<std::string>& found) {
    const std::string records = SlashSep(folder, AdminDirectoryName);
    const std::string file = SlashSep(records, "Root");
    if (const std::string root = FirstLine(file); !root.empty()) {
        found.insert(CutPassword(root));
        if (!PasswordIn(root).empty())
            roots.FilesWithPassword.push_back(file);
    }
    try {
        TFileSearch search(SlashSep(folder, "*.*"), faAnyFile);
        for (TSearchRec entry; search.Next(entry);)
            if (entry.IsDirectory() && !entry.IsLink() && entry.Name != "." && entry.Name != ".." &&
                !SameText(entry.Name, AdminDirectoryName))
                ReadBelow(SlashSep(folder, entry.Name), roots, found);
    } catch (const EInOutError&) {
        // What cannot be listed, the client cannot walk into either.
    }
}

bool IsOneOf(std::string_view text, std::string_view letters) {
    return std::ranges::all_of(text, [&](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || letters.find(c) != letters.npos;
    });
}

bool IsPlainPath(std::string_view path) {
    return path.size() > 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
           (path[2] == '\\' || path[2] == '/') && path.find("..") == std::string_view::npos;
}

bool IsPlainServer(std::string_view rest) {
    if (const std::size_t at = FindLastOf(rest, "@"); at != std::string_view::npos) {
        const std::string_view user = rest.substr(0, std::min(rest.find(':'), at));
        if (user.empty() || user.starts_with('-') || !IsOneOf(user, "._-"))
            return false;
        rest.remove_prefix(at + 1);
    }
    const std::size_t end = rest.find_first_of(":/");
    if (end == std::string_view::npos)
        return false;
    const std::string_view server = rest.substr(0, end);
    if (server.empty() || server.starts_with('-') || !IsOneOf(server, ".-_"))
        return false;
    std::string_view path = rest.substr(rest[end] == ':' ? end + 1 : end);
    // A port, with a colon behind it or none.
    while (!path.empty() && std::isdigit(static_cast<unsigned char>(path.front())))
        path.remove_prefix(1);
    if (path.starts_with(':'))
        path.remove_prefix(1);
    return (path.starts_with('/') && !path.starts_with("//")) || IsPlainPath(path);
}

/// A repository's file of what is to be run when; its comments say nothing.
bool HasLines(const std::string& path) {
    if (!FileExists(path))
        return false;
    auto file = TTextFile::Reset(path);
    for (std::string line; file.ReadLine(line);)
        if (const std::string text = Trim(line); !text.empty() && text[0] != '#')
            return true;
    return false;
}

/// Whether all files below are archives or what stands beside them, and one at least is.
bool HoldsArchives(const std::string& folder, bool& found) {
    TFileSearch search(SlashSep(folder, "*.*"), faAnyFile);
    for (TSearchRec entry; search.Next(entry);) {
        if (entry.Name == "." || entry.Name == "..")
            continue;
        const std::string path = SlashSep(folder, entry.Name);
        if (entry.IsLink())
            return false;
        if (entry.IsDirectory()) {
            if (!SameText(entry.Name, AdminDirectoryName) && !HoldsArchives(path, found))
                return false;
        } else if (entry.Name.ends_with(",v")) {
            found = true;
        } else if (!entry.Name.starts_with("#cvs.") && !entry.Name.starts_with(".#")) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string TRoots::Print() const {
    std::string print = Root;
    for (const std::string& other : Others)
        print += "\n" + other;
    return print;
}

std::string CutPassword(const std::string& root) {
    std::string cut = root;
    if (const std::string_view password = PasswordIn(root); !password.empty())
        cut.erase(static_cast<std::size_t>(password.data() - root.data()), password.size());
    return cut;
}

void CutPasswords(const TRoots& roots) {
    for (const std::string& file : roots.FilesWithPassword)
        ReplaceTextFile(file, {CutPassword(FirstLine(file))});
}

TRoots ReadRoots(const std::string& folder) {
    TRoots roots;
    std::set<std::string> found;
    ReadBelow(folder, roots, found);
    roots.Root = CutPassword(FirstLine(SlashSep(SlashSep(folder, AdminDirectoryName), "Root")));
    for (const std::string& root : found)
        if (root != roots.Root)
            roots.Others.push_back(root);
    return roots;
}

bool IsPlainRoot(const std::string& root) {
    if (root.size() >= LongestRoot ||
        std::ranges::any_of(root, [](char c) { return static_cast<unsigned char>(c) < ' '; }))
        return false;
    if (!root.starts_with(':'))
        return IsPlainPath(root);
    const std::size_t end = root.find(':', 1);
    if (end == std::string::npos)
        return false;
    const std::string method = root.substr(1, end - 1), rest = root.substr(end + 1);
    if (SameText(method, "local"))
        return IsPlainPath(rest);
    return (SameText(method, "pserver") || SameText(method, "ext")) && IsPlainServer(rest);
}

bool RunsPrograms(const std::string& repository) {
    const std::string folder = SlashSep(repository, "CVSROOT");
    for (const char* file :
         {"commitinfo", "loginfo", "taginfo", "verifymsg", "editinfo", "notify", "modules",
          "postadmin", "postproxy", "posttag", "postwatch", "preproxy"}) {
        try {
            if (HasLines(SlashSep(folder, file)))
                return true;
        } catch (const EInOutError&) {
            return true;
        }
    }
    return false;
}

std::string QuestionAbout(const std::string& folder, const TRoots& roots) {
    const std::string belongs =
        "The files in\r\n" + folder + "\r\nbelong to the repository\r\n" + roots.Root + "\r\n";
    const std::string ask = "Run commands there?";
    if (!IsPlainRoot(roots.Root))
        return belongs + "which is named in an unusual way: it may start programs. " + ask;
    if (!roots.Others.empty()) {
        std::string others;
        for (std::size_t i = 0; i < std::min<std::size_t>(roots.Others.size(), 5); ++i)
            others += roots.Others[i] + "\r\n";
        return belongs + "and, in folders below, to\r\n" + others + ask;
    }
    const bool isLocal = !roots.Root.starts_with(':') || roots.Root.starts_with(":local:");
    const std::string repository =
        roots.Root.starts_with(":local:") ? roots.Root.substr(7) : roots.Root;
    if (isLocal && RunsPrograms(repository))
        return belongs + "on this machine, which runs programs of its own. " + ask;
    return {};
}

std::string ModuleFolder(const std::string& repository, const std::string& module) {
    std::string folder = SlashSep(repository, module);
    std::ranges::replace(folder, '/', '\\');
    bool found = false;
    try {
        if (IsNameBelow(module) && !SameText(module, "CVSROOT") &&
            DirectoryExists(SlashSep(repository, "CVSROOT")) && DirectoryExists(folder) &&
            HoldsArchives(folder, found) && found)
            return folder;
    } catch (const EInOutError&) {
        // What cannot be looked at is not deleted.
    }
    return {};
}

}  // namespace hosting
