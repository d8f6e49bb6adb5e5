#include "workbench/LogText.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "workbench/LogEntries.h"
#include "workbench/LogLines.h"
#include "workbench/LogMarks.h"
#include "workbench/RevisionNumbers.h"

namespace workbench {

using framework::TDateTime;

namespace {

constexpr std::string_view NoMessage = "*** empty log message ***";

/// Takes figures off a text; none when there are not so many.
std::optional<int> TakeFigures(std::string_view& text, std::size_t count) {
    const std::string_view figures = text.substr(0, count);
    if (figures.size() < count ||
        !std::ranges::all_of(figures, [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    text.remove_prefix(count);
    return NumberIn<int>(figures);
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
    // Outside these years there is no history, and a moment's neighbours may be no dates.
    constexpr std::int64_t FirstYear = 1900, LastYear = 9998;
    TDateTime day = 0;
    if (!text.empty() || figures[0] < FirstYear || figures[0] > LastYear || figures[3] > 23 ||
        figures[4] > 59 || figures[5] > 60 ||
        !framework::TryEncodeDate(static_cast<int>(figures[0]), static_cast<int>(figures[1]),
                                  static_cast<int>(figures[2]), day))
        return 0;
    // Through whole numbers: the same moment is the same value whatever zone it was written in.
    const std::int64_t seconds = static_cast<std::int64_t>(day) * 86400 + minutes * 60 + figures[5];
    return static_cast<double>(seconds) / 86400;
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
            revision.Added = NumberIn<int>(field.substr(0, blank));
            field.remove_prefix(blank);
            revision.Removed = Take(field, " -") ? NumberIn<int>(field) : std::nullopt;
        }
    }
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

TLogEntry EntryAt(const TLines& lines, std::size_t dashes) {
    TLogEntry entry;
    entry.Number = *EntryNumber(lines[dashes + 1]);
    TRevision fields;
    ReadFields(lines[dashes + 2], fields);
    entry.Date = fields.Date;
    if (dashes + 3 < lines.size())
        entry.Branches = BranchesIn(entry.Number, lines[dashes + 3]);
    return entry;
}

/// One file's log, from the mark of its head to that of its end.
class TFileReader {
public:
    TFileReader(const TLines& lines, const std::vector<TLogMark>& marks, std::size_t head,
                std::size_t end)
        : Lines_(lines), EndLine_(end < marks.size() ? marks[end].Line : lines.size()) {
        TLogQuotes quotes;
        for (std::size_t i = head + 1; i < end && i < marks.size(); ++i) {
            if (marks[i].Kind == TLogMark::Entry) {
                Dashes_.push_back(marks[i].Line);
                Entries_.push_back(EntryAt(lines, marks[i].Line));
                Entries_.back().IsQuoted = quotes.Entry();
                // The head of the file itself has one, too.
                Entries_.back().IsSuspect =
                    Entries_.size() > 1 && lines[marks[i].Line - 1] == "description:";
            } else if (marks[i].Kind == TLogMark::Head) {
                quotes.Head(marks[i].Selected);
            } else {
                quotes.End();
                if (!Entries_.empty())
                    Entries_.back().IsSuspect = true;
            }
        }
        THeadReader reader(lines, marks[head].Line);
        reader.Read(&Log_);
        Counts_ = reader.Counts();
        Line_ = reader.Line();
    }

    TFileLog Read() {
        const std::vector<std::size_t> chosen = ChooseEntries(Entries_, Counts_);
        const std::size_t first = chosen.empty() ? EndLine_ : Dashes_[chosen.front()];
        if (Line_ < first && Lines_[Line_] == "description:")
            Log_.Description = Joined(Lines_, Line_ + 1, first);
        for (const std::size_t at : chosen)
            Branches_.insert(BranchOf(Entries_[at].Number));
        Log_.IsPart = Counts_.Total > Counts_.Selected;
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

bool TFileLabel::IsBranch() const {
    const auto number = ParseNumber(Revision);
    return number && IsBranchNumber(*number);
}

std::vector<TFileLog> ParseLog(std::string_view text) {
    const TLines lines = LinesOfLog(text);
    const std::vector<TLogMark> marks = MarksOf(lines);
    TFileEnds ends(lines, marks);
    std::vector<TFileLog> logs;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i].Kind != TLogMark::Head)
            continue;
        const std::size_t end = ends.Find(i);
        logs.push_back(TFileReader(lines, marks, i, end).Read());
        i = end;
    }
    return logs;
}

}  // namespace workbench
