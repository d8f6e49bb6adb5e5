#include "core/FileItems.h"

#include "core/Cvs_utils.h"
#include "framework/base/paths.h"
#include "framework/base/text.h"

namespace tandrel {

TFileItem& TFileItems::AddPath(std::string_view Path, TFileType Type) {
    TFileItem& item = Emplace();
    item.Name = framework::ExtractFileName(Path);
    item.Directory = framework::Trim(RemoveSlashSep(framework::ExtractFilePath(Path)));
    item.FileType = Type;
    return item;
}

TFileItem& TFileItems::AddFile(std::string_view Path, TKeywordMode Mode) {
    TFileItem& item = AddPath(Path, fi_file);
    item.KeywordMode = Mode;
    return item;
}

TFileItem& TFileItems::AddDir(std::string_view Path) {
    return AddPath(Path, fi_dir);
}

TFileItem& TFileItems::AddIgnore(std::string_view Path) {
    TFileItem& item = AddPath(Path, fi_igrnore);
    item.Ignore = true;
    return item;
}

TFileItem& TFileItems::AddExt(std::string_view Pattern, bool Flag, TKeywordMode Mode) {
    TFileItem& item = Emplace();
    item.Name = Pattern;
    item.Ignore = Flag;
    item.KeywordMode = Mode;
    item.FileType = fi_ext;
    return item;
}

}  // namespace tandrel
