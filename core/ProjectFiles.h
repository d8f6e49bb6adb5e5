#pragma once

#include <functional>
#include <string>

namespace framework {
class TStringList;
}

namespace tandrel {

/// What became of a file that was to be brought back.
using TFileFailure = std::function<void(const std::string& path, const std::string& reason)>;

/// Brings files of one folder to their places below another, where each takes the place of what is
/// there. A file that is there already, byte for byte, is left alone, and dropped from the source.
/// Nothing is deleted in the source before it is complete at its destination.
/// @param SrcDir, DstDir the folders. @param SrcList full names of files below SrcDir.
/// @param DstList full names of files below DstDir. @param DeleteSource move, otherwise copy.
/// @param Failed called for each file that could not be brought; it is complete in SrcDir then.
/// @return true when there was no such file.
bool MoveFileExt2(const std::string& SrcDir, const std::string& DstDir,
                  const framework::TStringList& SrcList, const framework::TStringList& DstList,
                  bool DeleteSource, const TFileFailure& Failed);

/// Deletes the folder and the folders below it as far as no file is left in them; true when all are
/// gone. Links are neither followed nor deleted.
bool RemoveEmptyDirs(const std::string& Dir);

}  // namespace tandrel
