#pragma once

#include <string>
#include <string_view>

namespace tandrel {

/// File operations of the shell. They belong to the application's main window, run on the main
/// thread, never ask for a confirmation, and answer whether everything was done. An operation that
/// the user or the shell broke off has failed. After a failure the system's last error tells why.
/// Names with "*" or "?", which are not those of one file, are refused, as is deleting a folder
/// with a folder of such a name below it.

/// Copies a file or folder; with `DeleteSource` deletes the source once the copy is complete, so
/// that it is a move. False when a name is empty. A source that could not be copied completely is
/// kept; a source with a link to a folder in it, or that is its own destination, is not touched at
/// all.
bool MoveFileExt(const std::string& Src, const std::string& Dst, bool DeleteSource);
/// Deletes a folder with everything in it. False when there is no such folder, and, with nothing
/// deleted, when there is a link to a folder in it: what lies behind the link is somewhere else.
bool RevoveDirExt(const std::string& Dir);
/// Deletes files. @param List their full names with a zero character between them.
bool RevoveFilesExt(std::string_view List);

/// True when both files can be read and are equal byte for byte.
bool HasSameContents(const std::string& A, const std::string& B);

/// The position of an item's icon in the system image list; -1 when there is no such item. The
/// calling thread must have initialised COM.
int GetShellImage(const std::string& Item, bool Large, bool Open);

/// True when a debugger is attached to the process or its command line has the switch -DEBUG.
bool IsDebuggerPresent();
/// True when one of a command line's arguments, the program's name aside, is -DEBUG, in upper or
/// lower case.
bool HasDebugSwitch(const std::wstring& CommandLine);

/// The folder for temporary files, with a trailing backslash.
std::string GetTempDir();
/// True for every existing folder, because it lists at least itself; false for one that does not
/// exist. Callers rely on this in spite of the name.
bool IsFolderEmpty(const std::string& Dir);

}  // namespace tandrel
