#include "core/IgnoreList.h"

#include "framework/base/files.h"
#include "framework/base/text.h"
#include "framework/base/text_file.h"

namespace tandrel {
namespace {

/// What the last line of every list says, whatever the file's name.
constexpr const char* OwnLine = ".cvsignore";

}  // namespace

std::vector<std::string> OtherIgnoreLines(
    const std::string& path, const std::function<bool(const std::string& name)>& isEntry) {
    std::vector<std::string> others;
    if (!framework::FileExists(path))
        return others;
    auto list = framework::TTextFile::Reset(path);
    for (std::string line; list.ReadLine(line);) {
        // The list is read in the same way.
        const std::string name = framework::Trim(line);
        if (!name.empty() && !framework::SameText(name, OwnLine) && !isEntry(name))
            others.push_back(line);
    }
    return others;
}

void WriteIgnoreList(const std::string& path, std::vector<std::string> kept,
                     const std::vector<std::string>& names) {
    kept.insert(kept.end(), names.begin(), names.end());
    kept.emplace_back(OwnLine);
    framework::ReplaceTextFile(path, kept);
}

}  // namespace tandrel
