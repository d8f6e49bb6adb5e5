#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tandrel {

/// How the client reaches the repository.
enum TConnectionType : std::uint8_t { cnLocal, cnPServer, cnSSH };

/// The operations of the client.
enum TOperationType : std::uint8_t {
    otCreateLRep,
    otImport,
    otCheckOut,
    otUpdate,
    otCommit,
    otRelease,
    otAdd,
    otRemove,
    otStatus,
    otAdmin,
    otAnnotate,
    otDiff,
    otEdit,
    otEditors,
    otExport,
    otHistory,
    otLog,
    otLogin,
    otLogout,
    otRdiff,
    otRtag,
    otTag,
    otUnedit,
    otWatch,
    otWatchers,
    otRlog
};

/// What an item of the working directory or of an operation's list stands for.
enum TFileType : std::uint8_t { fi_file, fi_dir, fi_igrnore, fi_ext };

/// How the client expands keywords in a file; Km_none leaves the file's mode as it is.
enum TKeywordMode : std::uint8_t { Km_none, Km_kkv, Km_kkvl, Km_kk, Km_ko, Km_kb, Km_ku, Km_kv };

/// The client's command word of each operation.
inline constexpr std::array<std::string_view, otRlog + 1> TOperationNames = {
    "init",   "import",  "checkout", "update",   "commit", "release", "add",
    "remove", "status",  "admin",    "annotate", "diff",   "edit",    "editors",
    "export", "history", "log",      "login",    "logout", "rdiff",   "rtag",
    "tag",    "unedit",  "watch",    "watchers", "rlog"};

/// The client's option of each keyword mode; empty when there is none to give.
inline constexpr std::array<std::string_view, Km_kv + 1> TKeywModeNames = {
    "", "-kkv", "-kkvl", "-kk", "-ko", "-kb", "-ku", "-kv"};

/// What the user reads for each keyword mode.
inline constexpr std::array<std::string_view, Km_kv + 1> TKeywModeDescr = {
    "current", "default", "default with lokers name", "only keyword names", "disable",
    "binary",  "unicode", "only keyword values"};

/// What the user reads for each type of item.
inline constexpr std::array<std::string_view, fi_ext + 1> TFileTypeNames = {"file", "directory", "",
                                                                            ""};

}  // namespace tandrel
