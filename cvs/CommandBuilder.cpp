#include "cvs/CommandBuilder.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/Cvs_datetext.h"
#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/names.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

/// A folder on the way to a file that is to be added.
struct TFolder {
    std::string Name;
    std::string Parent;
    std::string Path;
};

/// The folders between the working directory and the items, in the order they are met: parents
/// before children, none twice.
std::vector<TFolder> FoldersOf(const TFileItems& items, const std::string& workingDirectory) {
    std::vector<TFolder> folders;
    std::unordered_set<std::string> known;
    const std::string root = RemoveSlashSep(workingDirectory);
    const std::size_t behindRoot = root.size() + 1;
    const std::string* before = nullptr;
    for (const TFileItem& item : items) {
        // Items mostly come folder by folder.
        if (before && *before == item.Directory)
            continue;
        before = &item.Directory;
        // A folder elsewhere is an error of its file, which is told where the file is named.
        if (!framework::SameText(std::string_view(item.Directory).substr(0, behindRoot),
                                 SlashSep(root, "")))
            continue;
        std::string parent = root;
        for (std::size_t at = behindRoot; at < item.Directory.size();) {
            const std::size_t end =
                std::min(framework::FindFirstOf(item.Directory, "\\", at), item.Directory.size());
            const std::string name = item.Directory.substr(at, end - at);
            at = end + 1;
            if (name.empty())
                continue;
            std::string path = SlashSep(parent, name);
            if (known.insert(framework::UpperCase(path)).second)
                folders.push_back({name, parent, path});
            parent = std::move(path);
        }
    }
    return folders;
}

/// The pattern of a file's name. The client parts patterns at blanks, and brackets stand for one of
/// what is in them.
std::string PatternOf(std::string name) {
    for (std::size_t at = 0, size = 0; at < name.size(); at += size) {
        size = framework::LetterSize(name, at);
        // To the client a backslash takes its meaning from what follows, and it looks at bytes: the
        // second one of a letter may be one. Half a letter would not reach it.
        if (std::string_view(name).substr(at, size).find_first_of(" [\\") != std::string::npos)
            name.replace(at, size, size, '?');
    }
    return name;
}

bool IsControl(char ch) {
    return static_cast<unsigned char>(ch) < ' ';
}

/// The value as it can be shown in a line.
std::string Printable(std::string_view value) {
    std::string text(value);
    std::ranges::replace_if(text, IsControl, ' ');
    return text;
}

/// Half a letter would take the quote behind it, or the backslash before that, for its other half.
void RefuseHalfLetters(std::string_view value) {
    if (!framework::IsWhole(value))
        throw framework::Exception("The name or message " + Printable(value) +
                                   " has half a letter in it ");
}

/// Refuses what a command line does not carry to the client as it is: it ends at a zero, and the
/// client's records and protocol have one line for each value.
void RefuseControls(std::string_view value) {
    RefuseHalfLetters(value);
    if (std::ranges::any_of(value, IsControl))
        throw framework::Exception("The name " + Printable(value) + " has control characters ");
}

/// Messages have lines and tabs.
void RefuseControlsInMessage(std::string_view text) {
    RefuseHalfLetters(text);
    const auto refused = [](char ch) {
        return IsControl(ch) && ch != '\t' && ch != '\n' && ch != '\r';
    };
    if (std::ranges::any_of(text, refused))
        throw framework::Exception("The message has control characters ");
}

/// The text with line feeds alone at the ends of its lines. The repository keeps them so, and shows
/// whatever else stands there to everybody.
std::string WithLineFeeds(std::string_view text) {
    std::string lines;
    lines.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at)
        if (!text.substr(at).starts_with("\r\n"))
            lines += text[at];
    return lines;
}

}  // namespace

std::string QuoteArgument(std::string_view value, bool always) {
    const bool bare = value.find_first_of(" \t\r\n\v\"") == std::string_view::npos;
    if (bare && !always)
        return std::string(value);
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (std::size_t at = 0, size = 0; at < value.size(); at += size) {
        // The second byte of a letter counts as no backslash: the system hands the command line on
        // in wide characters, and run-time libraries that part it in bytes again, those of our
        // clients among them, step over the bytes behind lead bytes.
        size = framework::LetterSize(value, at);
        // Backslashes count as themselves unless a quote follows them.
        if (value[at] == '"')
            quoted.append(backslashes + 1, '\\');
        backslashes = value[at] == '\\' ? backslashes + 1 : 0;
        quoted += value.substr(at, size);
    }
    quoted.append(backslashes, '\\');
    return quoted + '"';
}

// --- pieces -----------------------------------------------------------------------------------

void TCommandBuilder::Append(std::string_view piece) {
    LAppend(Line_, piece);
}

void TCommandBuilder::AppendIf(bool condition, std::string_view option) {
    if (condition)
        Append(option);
}

std::string TCommandBuilder::Value(std::string_view value) const {
    if (!Context_.StrictQuoting || value.empty())
        return std::string(value);
    RefuseControls(value);
    return QuoteArgument(value, false);
}

std::string_view TCommandBuilder::Name(std::string_view name) const {
    if (Context_.StrictQuoting && name.starts_with('-'))
        throw framework::Exception("The name " + Printable(name) +
                                   " begins with a dash, the client would take it for an option ");
    return name;
}

std::string_view TCommandBuilder::Revision(std::string_view revision) const {
    // The option would take what stands behind it, were it the end of options, for its revision.
    if (Context_.StrictQuoting && revision.empty())
        throw framework::Exception("The revision is not given ");
    return Name(revision);
}

std::string TCommandBuilder::Quoted(std::string_view value) const {
    if (!Context_.StrictQuoting || value.empty())
        return SetApostrophe(value);
    RefuseControls(value);
    return QuoteArgument(value, true);
}

void TCommandBuilder::AppendValue(std::string_view value) {
    Append(Value(value));
}
void TCommandBuilder::AppendQuoted(std::string_view value) {
    Append(Quoted(value));
}

void TCommandBuilder::RepositoryOption() {
    if (Context_.ConnectionType == cnLocal)
        Line_ = " -d " + Value(":local:" + Context_.RepositoryPath);
    else
        Line_ = " -d " + Value(Context_.CVSROOT);
}

void TCommandBuilder::Subcommand() {
    // The blank also parts the command from the program's name when nothing stands before it.
    Line_ += ' ';
    Line_ += TOperationNames[Context_.Operation];
}

void TCommandBuilder::RevisionSelection() {
    switch (Options_.StikyType) {
        case stNone:
            break;
        case stHead:
            Append("-r HEAD");
            break;
        case stBranch:
            if (!Options_.StikyBranch.empty())
                Append("-r " + Value(Revision(Options_.StikyBranch)));
            break;
        case stTag:
            if (!Options_.StikyTag.empty())
                Append("-r " + Value(Revision(Options_.StikyTag)));
            break;
        case stDate:
            if (Options_.StikyDate > 0)
                Append("-D " + SetApostrophe(CustomDateTimetoStr(Options_.StikyDate)));
            break;
        case stMostRecent:
            Append("-f");
            break;
    }
}

void TCommandBuilder::Keyword() {
    if (Options_.KeywordMode != Km_none)
        Append(TKeywModeNames[Options_.KeywordMode]);
}

void TCommandBuilder::Merge() {
    const TMergeSpec& spec = Options_.MergeSpec;
    switch (spec.Kind) {
        case mtNone:
            break;
        case mtThisRev:
            if (!spec.Rev1.empty())
                MergeOption(spec.Rev1, spec.HasDate1(), spec.Date1);
            break;
        case mtPlusRevTag:
            if (spec.Rev1.empty() || spec.Rev2.empty())
                break;
            MergeOption(spec.Rev1, spec.HasDate1(), spec.Date1);
            MergeOption(spec.Rev2, spec.HasDate2(), spec.Date2);
            break;
    }
}

void TCommandBuilder::MergeOption(std::string_view revision, bool useDate,
                                  framework::TDateTime date) {
    std::string option = "-j" + std::string(Revision(revision));
    if (useDate)
        option += ":" + CustomDateTimetoStr(date);
    AppendQuoted(option);
}

void TCommandBuilder::DiffRevisions() {
    const TRevisionSpec& spec = Options_.DiffSpec;
    switch (spec.Kind) {
        case dctHead:
            Append("-r HEAD");
            break;
        case dctRevision:
            DiffRevision(spec.Rev1, spec.HasDate1(), spec.Date1);
            break;
        case dctTwoRevision:
            DiffRevision(spec.Rev1, spec.HasDate1(), spec.Date1);
            DiffRevision(spec.Rev2, spec.HasDate2(), spec.Date2);
            break;
        case dctMostRecent:
            AppendIf(Context_.Operation == otRdiff, "-f");
            break;
    }
}

void TCommandBuilder::DiffRevision(std::string_view revision, bool useDate,
                                   framework::TDateTime date) {
    if (useDate)
        Append("-D " + SetApostrophe(CustomDateTimetoStr2(date)));
    else
        Append("-r " + Value(Revision(revision)));
}

std::string TCommandBuilder::RelativeName(std::string_view folder, std::string_view name) const {
    std::string relative = GetRelativePath(Context_.WorkingDirectory, folder, name);
    // The client would look for files that fit. None is called so, but the system lists letters
    // that the code page does not have as question marks.
    if (Context_.StrictQuoting && framework::IsPattern(relative))
        throw framework::Exception("File " + SlashSep(folder, name) +
                                   " has a name that the client cannot be given ");
    return relative;
}

void TCommandBuilder::AppendNames(const std::vector<std::string>& names) {
    // Options end with the first name that is none.
    const bool looksLikeOption = !names.empty() && names.front().starts_with('-');
    AppendIf(Context_.StrictQuoting && looksLikeOption, "--");
    for (const std::string& name : names)
        AppendValue(name);
}

void TCommandBuilder::Files() {
    std::vector<std::string> names;
    for (const TFileItem& item : Context_.FileItems)
        if (item.FileType == fi_file)
            names.push_back(RelativeName(item.Directory, item.Name));
    AppendNames(names);
}

std::vector<std::string> TCommandBuilder::NamesToAdd() const {
    std::vector<TFolder> folders = FoldersOf(Context_.FileItems, Context_.WorkingDirectory);
    std::erase_if(folders, [this](const TFolder& folder) {
        return Context_.IsUnderVersionControl(folder.Path);
    });
    std::vector<std::string> names;
    names.reserve(folders.size());
    for (const TFolder& folder : folders)
        names.push_back(RelativeName(folder.Parent, folder.Name));
    if (Context_.NewFoldersOnly)
        return names;
    for (const TFileItem& item : Context_.FileItems)
        if ((item.FileType == fi_file || item.FileType == fi_dir) &&
            (!Context_.AddMode || *Context_.AddMode == item.KeywordMode))
            names.push_back(RelativeName(item.Directory, item.Name));
    return names;
}

void TCommandBuilder::AddFilesToCommad() {
    AppendNames(NamesToAdd());
}

void TCommandBuilder::Message(std::string_view whenEmpty) {
    Append("-m");
    if (Options_.CommitMessage.empty()) {
        Append(whenEmpty);
    } else if (Context_.StrictQuoting) {
        RefuseControlsInMessage(Options_.CommitMessage);
        Append(QuoteArgument(WithLineFeeds(Options_.CommitMessage), true));
    } else {
        AppendQuoted(Options_.CommitMessage);
    }
}

void TCommandBuilder::IgnoreOptions() {
    bool written = false;
    for (const TFileItem& item : Context_.FileItems) {
        if (item.Ignore) {
            Append("-I");
            const bool isName = Context_.StrictQuoting && item.FileType == fi_igrnore;
            AppendValue(isName ? PatternOf(item.Name) : item.Name);
            written = true;
        }
        if (!written)
            Append("-I!");
    }
}

std::string TCommandBuilder::Wrapper(const TFileItem& item) const {
    std::string option(TKeywModeNames[item.KeywordMode]);
    if (!Context_.StrictQuoting)
        return LConcat({"\"", item.Name, option, "\""});
    RefuseControls(item.Name);
    // In a wrapper the client passes over a mode that is not in its own quotes.
    if (item.KeywordMode != Km_none)
        option = "-k '" + option.substr(2) + "'";
    return QuoteArgument(" " + LConcat({item.Name, option, ""}), true);
}

void TCommandBuilder::EditActionOption() {
    if (Options_.EditAction == aeNone)
        return;
    Append("-a");
    Append(TActionEditName[Options_.EditAction]);
}

void TCommandBuilder::TargetDirOption() {
    if (!Options_.UseTargetDir || Options_.TargetDir.empty())
        return;
    Append("-d");
    AppendValue(Options_.TargetDir);
}

void TCommandBuilder::WorkingCopyOptions() {
    AppendIf(Options_.ResetSticky, "-A");
    AppendIf(Options_.PruneEmptyDirs, "-P");
    AppendIf(Options_.LocalOnly, "-l");
    AppendIf(Options_.ToStandardOutput, "-p");
}

void TCommandBuilder::TagOptions() {
    AppendIf(Options_.LocalOnly, "-l");
    if (Options_.TagDelete) {
        Append("-d");
        AppendIf(Options_.TagDeleteBranch, "-B");
    } else {
        AppendIf(Options_.TagBranch, "-b");
        AppendIf(Options_.TagCheckUncommitted, "-c");
        AppendIf(Options_.TagForceMove, "-F");
        AppendIf(Context_.Operation == otRtag && Options_.TagClearRemoved, "-a");
        RevisionSelection();
    }
    AppendQuoted(Name(Options_.TagName));
}

// --- commands ---------------------------------------------------------------------------------

void TCommandBuilder::Build() {
    switch (Context_.Operation) {
        case otCreateLRep:
        case otLogin:
            RepositoryOption();
            Subcommand();
            break;
        case otImport:
            Import();
            break;
        case otCheckOut:
            CheckOut();
            break;
        case otUpdate:
            Update();
            break;
        case otCommit:
            Subcommand();
            Message("\" no messages\"");
            AppendIf(Options_.LocalOnly, "-l");
            AppendIf(Options_.ForceFlag, "-f");
            Files();
            break;
        case otRelease:
            Release();
            break;
        case otAdd:
            Add();
            break;
        case otRemove:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            AppendIf(Options_.ForceFlag, "-f");
            Files();
            break;
        case otStatus:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            AppendIf(Options_.StatusVerbose, "-v");
            Files();
            break;
        case otAdmin:
        case otHistory:
            Subcommand();
            Files();
            break;
        case otAnnotate:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            RevisionSelection();
            Files();
            break;
        case otDiff:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            DiffRevisions();
            Keyword();
            Files();
            break;
        case otEdit:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            EditActionOption();
            Files();
            break;
        case otEditors:
        case otUnedit:
        case otWatchers:
            LocalFiles();
            break;
        case otExport:
            Export();
            break;
        case otLog:
            Log();
            break;
        case otLogout:
            Subcommand();
            break;
        case otRdiff:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            DiffRevisions();
            AppendValue(Name(Context_.Modulename));
            break;
        case otRtag:
            Rtag();
            break;
        case otTag:
            Tag();
            break;
        case otWatch:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            EditActionOption();
            Append(TWatchSubCommName[Options_.WatchCommand]);
            Files();
            break;
        case otRlog:
            Subcommand();
            AppendIf(Options_.LocalOnly, "-l");
            AppendIf(Options_.ForceFlag, "-f");
            AppendIf(Options_.LogHeaderOnly, "-h");
            AppendValue(Name(Context_.Modulename));
            break;
    }
}

void TCommandBuilder::LocalFiles() {
    Subcommand();
    AppendIf(Options_.LocalOnly, "-l");
    Files();
}

void TCommandBuilder::Add() {
    const std::vector<std::string> names = NamesToAdd();
    if (Context_.NewFoldersOnly && names.empty())
        return;
    Subcommand();
    Message("\" no messages\"");
    const TKeywordMode mode = Context_.AddMode.value_or(Km_none);
    AppendIf(!Context_.NewFoldersOnly && mode != Km_none, TKeywModeNames[mode]);
    AppendNames(names);
}

void TCommandBuilder::Import() {
    Subcommand();
    if (!Options_.UseDefaultIgnore)
        IgnoreOptions();
    Message("\"no messages\"");
    for (const TFileItem& item : Context_.FileItems) {
        if (item.FileType != fi_ext)
            continue;
        Append("-W");
        Append(Wrapper(item));
    }
    AppendIf(Options_.ForceFlag, "-d");
    AppendValue(Name(Context_.Modulename));
    AppendValue(Name(Options_.VendorTag));
    AppendValue(Name(Options_.ReleaseTag));
}

void TCommandBuilder::CheckOut() {
    Subcommand();
    WorkingCopyOptions();
    TargetDirOption();
    RevisionSelection();
    Keyword();
    Merge();
    AppendValue(Name(Context_.Modulename));
}

void TCommandBuilder::Update() {
    Subcommand();
    WorkingCopyOptions();
    AppendIf(Options_.CreateDirs, "-d");
    RevisionSelection();
    Keyword();
    Merge();
    Files();
}

void TCommandBuilder::Export() {
    Subcommand();
    RevisionSelection();
    AppendIf(Options_.LocalOnly, "-l");
    TargetDirOption();
    Keyword();
    AppendValue(Name(Context_.Modulename));
}

void TCommandBuilder::Release() {
    Subcommand();
    AppendIf(Options_.ReleaseExport, "-e");
    if (Options_.ReleaseDelete) {
        Append("-d");
        AppendIf(Options_.ReleaseForce, "-f");
    }
    AppendValue(Name(Context_.Modulename));
}

void TCommandBuilder::Log() {
    Subcommand();
    AppendIf(Options_.LocalOnly, "-l");
    AppendIf(Options_.ForceFlag, "-f");
    AppendIf(Options_.LogHeaderOnly, "-h");
    AppendIf(Options_.LogSuppressEmpty, "-S");
    if (!Options_.LogNoFiles)
        Files();
}

void TCommandBuilder::Rtag() {
    if (Options_.TagName.empty())
        return;
    Subcommand();
    TagOptions();
    AppendValue(Name(Context_.Modulename));
}

void TCommandBuilder::Tag() {
    if (Options_.TagName.empty())
        return;
    Subcommand();
    TagOptions();
    Files();
}

}  // namespace tandrel
