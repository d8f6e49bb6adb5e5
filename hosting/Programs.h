#pragma once

#include <string>
#include <vector>

#include "hosting/Settings.h"

namespace hosting {

// A working copy comes from anywhere, and may hold files with the names of programs. Nothing is
// started by a bare name that the system would also look for in such a folder.

/// To be called once, before anything else: leaves the folder that the process was started in,
/// which the system would search first, also for libraries and for what children start. @return the
/// folder that was left, for names that are meant from there.
std::string LeaveCurrentDirectory();

/// The full path of a program in a folder of PATH; relative folders there do not count. Empty when
/// there is none. @param name without a folder; without an ending it is an .exe. @param looked
/// receives the folders that were searched.
std::string FindProgram(const std::string& name, std::vector<std::string>* looked = nullptr);

/// The client, with its folder: the one that the user has chosen, if it is there, or else the first
/// in PATH. Empty when there is none. @param looked as of FindProgram.
std::string FindClient(const TSettings& settings, std::vector<std::string>* looked = nullptr);

/// The program that reaches a server for the method "ext", with its folder: `chosen`, or when that
/// is empty ssh or rsh. A bare name is looked for in PATH. Empty when there is none.
std::string FindRemoteShell(const std::string& chosen);

/// A program as the beginning of a command line, in quotes.
std::string AsCommand(const std::string& path);

/// The editor that shows previews, as the beginning of a command line, with a blank at its end.
std::string PreviewViewer();

}  // namespace hosting
