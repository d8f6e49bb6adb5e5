#include "workbench/LogText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>
#include <utility>

#include "workbench/LogEntries.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

using framework::TDateTime;

namespace {

constexpr std::string_view EntryLine = "----------------------------";
constexpr std::string_view EndLine =
    "=============================================================================";
constexpr std::string_view RepositoryFile = "RCS file: ";
constexpr std::string_view NoMessage = "*** empty log message ***";
constexpr std::size_t None = static_cast<std::size_t>(-1);

using TLines = std::vector<std::string_view>;

TLines LinesOf(std::string_view text) {
    TLines lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
    }
    return lines;
}

/// Takes a beginning off a text; false when it begins otherwise.
bool Take(std::string_view& text, std::string_view beginning) {
    if (!text.starts_with(beginning))
        return false;
    text.remove_prefix(beginning.size());
    return true;
}

std::string_view WithoutBlank(std::string_view text) {
    Take(text, " ");
    return text;
}

template <class T>
std::optional<T> NumberOf(std::string_view text) {
    T number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// Takes figures off a text; none when there are not so many.
std::optional<int> TakeFigures(std::string_view& text, std::size_t count) {
    const std::string_view figures = text.substr(0, count);
    if (figures.size() < count ||
        !std::ranges::all_of(figures, [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    text.remove_prefix(count);
    return NumberOf<int>(figures);
}

/// "2004/01/02 12:00:00", which is UTC, or "2004-01-02 12:00:00 +0100"; 0 for any other text.
TDateTime DateOf(std::string_view text) {
    std::int64_t figures[6] = {};
    const char dash = text.size() > 4 && text[4] == '/' ? '/' : '-';
    const char separators[] = {dash, dash, ' ', ':', ':', '\0'};
    for (std::size_t i = 0; i < 6; ++i) {
        const std::optional<int> number = TakeFigures(text, i == 0 ? 4 : 2);
        if (!number || (i < 5 && !Take(text, std::string_view(&separators[i], 1))))
            return 0;
        figures[i] = *number;
    }
    std::int64_t minutes = figures[3] * 60 + figures[4];
    if (Take(text, " ")) {
        const bool isEast = text.starts_with('+');
        const std::optional<int> offset =
            Take(text, "+") || Take(text, "-") ? TakeFigures(text, 4) : std::nullopt;
        if (!offset)
            return 0;
        const int shift = *offset / 100 * 60 + *offset % 100;
        minutes += isEast ? -shift : shift;
    }
    TDateTime day = 0;
    if (!text.empty() || figures[3] > 23 || figures[4] > 59 || figures[5] > 60 ||
        !framework::TryEncodeDate(static_cast<int>(figures[0]), static_cast<int>(figures[1]),
                                  static_cast<int>(figures[2]), day))
        return 0;
    // Through whole numbers: the same moment is the same value whatever zone it was written in.
    const std::int64_t seconds = static_cast<std::int64_t>(day) * 86400 + minutes * 60 + figures[5];
    return static_cast<double>(seconds) / 86400;
}

// --- heads of files ---------------------------------------------------------------------------

/// Lines of a file's head. It fits when all that the client writes is there, in its order.
class THeadReader {
public:
    THeadReader(const TLines& lines, std::size_t line) : Lines_(lines), Line_(line) {}

    /// @param log receives what the lines say; null when that does not matter.
    bool Read(TFileLog* log) {
        std::string_view rest;
        if (!Next(RepositoryFile, rest))
            return false;
        Keep(log, &TFileLog::Repository, rest);
        if (Next("Working file: ", rest))
            Keep(log, &TFileLog::Name, rest);
        if (!Next("head:", rest))
            return false;
        if (const auto number = ParseNumber(WithoutBlank(rest)))
            Counts.Head = *number;
        Keep(log, &TFileLog::Head, WithoutBlank(rest));
        if (!Next("branch:", rest))
            return false;
        Keep(log, &TFileLog::Branch, WithoutBlank(rest));
        if (!Next("locks:", rest))
            return false;
        SkipList();
        if (!Next("access list:", rest))
            return false;
        SkipList();
        if (Next("symbolic names:", rest))
            ReadLabels(log);
        if (!Next("keyword substitution:", rest))
            return false;
        Keep(log, &TFileLog::KeywordMode, WithoutBlank(rest));
        return Next("total revisions: ", rest) && ReadCounts(rest);
    }

    /// The first line behind the head.
    std::size_t Line() const { return Line_; }
    TLogHead Counts;

private:
    bool Next(std::string_view beginning, std::string_view& rest) {
        if (Line_ >= Lines_.size())
            return false;
        rest = Lines_[Line_];
        if (!Take(rest, beginning))
            return false;
        ++Line_;
        return true;
    }

    bool InList() const { return Line_ < Lines_.size() && Lines_[Line_].starts_with('\t'); }

    void SkipList() {
        while (InList())
            ++Line_;
    }

    void ReadLabels(TFileLog* log) {
        const std::size_t first = Line_;
        SkipList();
        if (!log)
            return;
        log->Labels.reserve(Line_ - first);
        for (std::size_t i = first; i < Line_; ++i) {
            const std::string_view line = Lines_[i].substr(1);
            const std::size_t colon = line.find(": ");
            if (colon != std::string_view::npos)
                log->Labels.push_back(
                    {std::string(line.substr(0, colon)), std::string(line.substr(colon + 2))});
        }
    }

    bool ReadCounts(std::string_view rest) {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        const auto total = NumberOf<std::size_t>(rest.substr(0, end));
        rest.remove_prefix(end);
        // Where only heads were wanted nothing is said of revisions, and none follow.
        const auto selected = Take(rest, ";\tselected revisions: ") ? NumberOf<std::size_t>(rest)
                                                                    : std::optional<std::size_t>(0);
        if (!total || !selected)
            return false;
        Counts.Total = *total;
        Counts.Selected = *selected;
        return true;
    }

    static void Keep(TFileLog* log, std::string TFileLog::*field, std::string_view value) {
        if (log)
            log->*field = value;
    }

    const TLines& Lines_;
    std::size_t Line_;
};

// --- beginnings of revisions ------------------------------------------------------------------

/// The number in a line "revision 1.2", with who has locked it or not.
std::optional<TRevisionNumber> EntryNumber(std::string_view line) {
    if (!Take(line, "revision "))
        return std::nullopt;
    const std::size_t end = line.find('\t');
    if (end != std::string_view::npos && !line.substr(end).starts_with("\tlocked by: "))
        return std::nullopt;
    auto number = ParseNumber(line.substr(0, end));
    return number && number->size() % 2 == 0 ? number : std::nullopt;
}

/// Whether the lines behind one of dashes begin a revision.
bool IsEntry(const TLines& lines, std::size_t dashes) {
    if (dashes + 2 >= lines.size() || lines[dashes] != EntryLine)
        return false;
    return lines[dashes + 2].starts_with("date: ") &&
           lines[dashes + 2].find(";  author: ") != std::string_view::npos &&
           EntryNumber(lines[dashes + 1]);
}

/// The fields of a line "date: ...;  author: ...;  state: ...;  lines: +1 -2;  commitid: ...;".
void ReadFields(std::string_view line, TRevision& revision) {
    while (!line.empty()) {
        const std::size_t end = line.find(';');
        std::string_view field = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
        while (Take(field, " "))
            continue;
        if (Take(field, "date: "))
            revision.Date = DateOf(field);
        else if (Take(field, "author: "))
            revision.Author = field;
        else if (Take(field, "state: "))
            revision.State = field;
        else if (Take(field, "commitid: "))
            revision.CommitId = field;
        else if (Take(field, "lines: +")) {
            const std::size_t blank = std::min(field.find(" -"), field.size());
            revision.Added = NumberOf<int>(field.substr(0, blank));
            field.remove_prefix(blank);
            revision.Removed = Take(field, " -") ? NumberOf<int>(field) : std::nullopt;
        }
    }
}

/// The branches in a line "branches:  1.2.2;  1.2.4;" of that revision; none of any other line.
std::vector<TRevisionNumber> BranchesOf(const TRevisionNumber& revision, std::string_view line) {
    std::vector<TRevisionNumber> branches;
    if (!Take(line, "branches:"))
        return {};
    while (Take(line, "  ")) {
        const std::size_t end = line.find(';');
        auto branch = ParseNumber(line.substr(0, end));
        if (end == std::string_view::npos || !branch || RootOf(*branch) != revision)
            return {};
        branches.push_back(std::move(*branch));
        line.remove_prefix(end + 1);
    }
    return line.empty() ? branches : std::vector<TRevisionNumber>();
}

// --- what is where ----------------------------------------------------------------------------

struct TMark {
    enum TKind { Head, Entry, End };
    TKind Kind;
    std::size_t Line;
    std::size_t Selected = 0;  ///< Of a head.
    bool CanEnd = false;       ///< Of an end: nothing or another head comes behind it.
};

/// "cvs log: ...", "cvs.exe [rlog aborted]: ..." and the like.
bool IsRemark(std::string_view line) {
    if (!line.starts_with("cvs"))
        return false;
    const std::size_t blank = line.find(' ');
    const std::size_t colon = line.find(": ");
    return blank < colon && colon != std::string_view::npos;
}

/// Whether nothing but the client's remarks stands between a line and the next head or the end.
bool LeadsToHead(const TLines& lines, std::size_t line) {
    while (line < lines.size() && (lines[line].empty() || IsRemark(lines[line])))
        ++line;
    return line >= lines.size() || THeadReader(lines, line).Read(nullptr);
}

std::vector<TMark> MarksOf(const TLines& lines) {
    std::vector<TMark> marks;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].starts_with(RepositoryFile)) {
            THeadReader head(lines, i);
            if (head.Read(nullptr))
                marks.push_back({TMark::Head, i, head.Counts.Selected});
        } else if (IsEntry(lines, i)) {
            marks.push_back({TMark::Entry, i});
        } else if (lines[i] == EndLine) {
            marks.push_back({TMark::End, i, 0, LeadsToHead(lines, i + 1)});
        }
    }
    return marks;
}

/// Finds the mark that ends the file's log which begins with mark `head`; marks.size() when there
/// is none.
std::size_t FindEnd(const std::vector<TMark>& marks, std::size_t head) {
    // How far it looks for a better end than the first one that there is, so that a text in which
    // nothing fits is not read to its end for each file.
    constexpr std::size_t Patience = 1000;
    std::size_t first = None, full = None, entries = 0, quotedHeads = 0;
    for (std::size_t i = head + 1; i < marks.size(); ++i) {
        if (first != None && i - first > Patience + 4 * (first - head))
            break;
        if (marks[i].Kind == TMark::Entry) {
            ++entries;
        } else if (marks[i].Kind == TMark::Head) {
            ++quotedHeads;
        } else {
            const bool isFull = marks[i].CanEnd && entries >= marks[head].Selected;
            if (isFull && quotedHeads == 0)
                return i;
            if (isFull && full == None)
                full = i;
            if (marks[i].CanEnd && first == None)
                first = i;
            quotedHeads -= quotedHeads > 0;
        }
    }
    return full != None ? full : first != None ? first : marks.size();
}

// --- a file -----------------------------------------------------------------------------------

std::string Joined(const TLines& lines, std::size_t first, std::size_t end) {
    std::string text;
    std::size_t size = 0;
    for (std::size_t i = first; i < end; ++i)
        size += lines[i].size() + 1;
    text.reserve(size);
    for (std::size_t i = first; i < end; ++i) {
        if (i > first)
            text += '\n';
        text += lines[i];
    }
    return text;
}

std::string TextOf(const TRevisionNumber& number) {
    std::string text;
    for (const int part : number)
        text += (text.empty() ? "" : ".") + std::to_string(part);
    return text;
}

TLogEntry EntryAt(const TLines& lines, std::size_t dashes) {
    TLogEntry entry;
    entry.Number = *EntryNumber(lines[dashes + 1]);
    TRevision fields;
    ReadFields(lines[dashes + 2], fields);
    entry.Date = fields.Date;
    if (dashes + 3 < lines.size())
        entry.Branches = BranchesOf(entry.Number, lines[dashes + 3]);
    return entry;
}

/// One file's log, from the mark of its head to that of its end.
class TFileReader {
public:
    TFileReader(const TLines& lines, const std::vector<TMark>& marks, std::size_t head,
                std::size_t end)
        : Lines_(lines), EndLine_(end < marks.size() ? marks[end].Line : lines.size()) {
        std::size_t quotedHeads = 0;
        for (std::size_t i = head + 1; i < end && i < marks.size(); ++i) {
            if (marks[i].Kind == TMark::Entry) {
                Dashes_.push_back(marks[i].Line);
                Entries_.push_back(EntryAt(lines, marks[i].Line));
                Entries_.back().IsQuoted = quotedHeads > 0;
                // The head of the file itself has one, too.
                Entries_.back().IsSuspect =
                    Entries_.size() > 1 && lines[marks[i].Line - 1] == "description:";
            } else if (marks[i].Kind == TMark::Head) {
                ++quotedHeads;
            } else {
                quotedHeads -= quotedHeads > 0;
                if (!Entries_.empty())
                    Entries_.back().IsSuspect = true;
            }
        }
        THeadReader reader(lines, marks[head].Line);
        reader.Read(&Log_);
        Counts_ = std::move(reader.Counts);
        Line_ = reader.Line();
    }

    TFileLog Read() {
        const std::vector<std::size_t> chosen = ChooseEntries(Entries_, Counts_);
        const std::size_t first = chosen.empty() ? EndLine_ : Dashes_[chosen.front()];
        if (Line_ < first && Lines_[Line_] == "description:")
            Log_.Description = Joined(Lines_, Line_ + 1, first);
        for (const std::size_t at : chosen)
            Branches_.insert(BranchOf(Entries_[at].Number));
        Log_.Revisions.reserve(chosen.size());
        for (std::size_t i = 0; i < chosen.size(); ++i)
            Add(chosen[i], i + 1 < chosen.size() ? Dashes_[chosen[i + 1]] : EndLine_);
        return std::move(Log_);
    }

private:
    void Add(std::size_t at, std::size_t end) {
        const std::size_t dashes = Dashes_[at];
        const TLogEntry& entry = Entries_[at];
        TRevision revision;
        revision.Number = TextOf(entry.Number);
        ReadFields(Lines_[dashes + 2], revision);
        std::size_t line = dashes + 3;
        // Where all revisions are there, a branch without any is no branch.
        const bool isComplete = Counts_.Total == Counts_.Selected;
        if (!entry.Branches.empty() &&
            std::ranges::all_of(entry.Branches, [&](const TRevisionNumber& branch) {
                return !isComplete || Branches_.contains(branch);
            })) {
            ++line;
            for (const TRevisionNumber& branch : entry.Branches)
                revision.Branches.push_back(TextOf(branch));
        }
        revision.Message = Joined(Lines_, std::min(line, end), end);
        if (revision.Message == NoMessage)
            revision.Message.clear();
        Log_.Revisions.push_back(std::move(revision));
    }

    const TLines& Lines_;
    const std::size_t EndLine_;
    std::vector<std::size_t> Dashes_;
    std::vector<TLogEntry> Entries_;
    TLogHead Counts_;
    std::size_t Line_ = 0;
    std::set<TRevisionNumber> Branches_;
    TFileLog Log_;
};

}  // namespace

bool TLabel::IsBranch() const {
    const auto number = ParseNumber(Revision);
    return number && IsBranchNumber(*number);
}

std::vector<TFileLog> ParseLog(std::string_view text) {
    const TLines lines = LinesOf(text);
    const std::vector<TMark> marks = MarksOf(lines);
    std::vector<TFileLog> logs;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i].Kind != TMark::Head)
            continue;
        const std::size_t end = FindEnd(marks, i);
        logs.push_back(TFileReader(lines, marks, i, end).Read());
        i = end;
    }
    return logs;
}

}  // namespace workbench
