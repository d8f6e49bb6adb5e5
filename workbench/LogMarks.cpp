#include "workbench/LogMarks.h"

namespace workbench {

namespace {

constexpr std::size_t None = static_cast<std::size_t>(-1);

/// Whether nothing but the client's remarks stands between a line and the next head or the end.
bool LeadsToHead(const TLines& lines, std::size_t line) {
    while (line < lines.size() && (lines[line].empty() || IsRemark(lines[line])))
        ++line;
    return line >= lines.size() || THeadReader(lines, line).Read(nullptr);
}

void KeepFirst(std::size_t& kept, std::size_t mark) {
    if (kept == None)
        kept = mark;
}

}  // namespace

std::vector<TLogMark> MarksOf(const TLines& lines) {
    std::vector<TLogMark> marks;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (IsHeadLine(lines[i])) {
            THeadReader head(lines, i);
            if (head.Read(nullptr))
                marks.push_back({TLogMark::Head, i, head.Counts().Selected});
        } else if (IsEntry(lines, i)) {
            marks.push_back({TLogMark::Entry, i});
        } else if (IsEndLine(lines[i])) {
            marks.push_back({TLogMark::End, i, 0, LeadsToHead(lines, i + 1)});
        }
    }
    return marks;
}

bool TLogQuotes::Entry() {
    while (!Open_.empty() && Open_.back() == 0)
        Open_.pop_back();
    if (Open_.empty())
        return false;
    --Open_.back();
    return true;
}

bool TLogQuotes::End() {
    if (Open_.empty() || Open_.back() > 0)
        return false;
    Open_.pop_back();
    return true;
}

TFileEnds::TFileEnds(const TLines& lines, const std::vector<TLogMark>& marks)
    : Lines_(lines), Marks_(marks) {
    for (std::size_t i = 0; i < marks.size(); ++i)
        if (marks[i].Kind == TLogMark::Head && i > 0 && marks[i - 1].CanEnd)
            Last_[lines[marks[i].Line]] = i;
}

/// Whether there is a head that names a file which has come already: no log has one twice.
bool TFileEnds::HasBegun(std::size_t head) const {
    return head < Marks_.size() && Before_.contains(Lines_[Marks_[head].Line]);
}

/// Whether the log that begins there can be that of the next file, and not one that a message
/// quotes: the file has not come yet, and there is no other log of it behind.
bool TFileEnds::IsNextFile(std::size_t head) const {
    return head >= Marks_.size() ||
           (!HasBegun(head) && Last_.at(Lines_[Marks_[head].Line]) == head);
}

/// Whether logs without anything odd follow one another from there on, and then one that has an end
/// in front of further revisions: these are of the file whose message quotes them all.
bool TFileEnds::LeadsToMessage(std::size_t head) const {
    constexpr int Farthest = 50;
    std::size_t entries = 0;
    bool hasEnded = false;
    int logs = 0;
    for (std::size_t i = head + 1; i < Marks_.size() && logs < Farthest; ++i) {
        switch (Marks_[i].Kind) {
            case TLogMark::Head:
                return false;
            case TLogMark::Entry:
                if (hasEnded || ++entries > Marks_[head].Selected)
                    return hasEnded;
                break;
            case TLogMark::End:
                if (entries < Marks_[head].Selected)
                    break;
                hasEnded = !Marks_[i].CanEnd;
                if (hasEnded)
                    break;
                head = ++i;
                entries = 0;
                ++logs;
                break;
        }
    }
    return false;
}

std::size_t TFileEnds::Find(std::size_t head) {
    // How far it looks for a better end than the first one that there is, so that a text in
    // which nothing fits is not read to its end for each file.
    constexpr std::size_t Patience = 1000;
    Before_.insert(Lines_[Marks_[head].Line]);
    std::size_t first = None, full = None, likely = None, entries = 0;
    bool hasHeads = false;
    TLogQuotes quotes;
    for (std::size_t i = head + 1; i < Marks_.size(); ++i) {
        if (first != None && i - first > Patience + 4 * (first - head))
            break;
        if (Marks_[i].Kind == TLogMark::Entry) {
            ++entries;
            quotes.Entry();
            continue;
        }
        if (Marks_[i].Kind == TLogMark::Head) {
            quotes.Head(Marks_[i].Selected);
            hasHeads = true;
            continue;
        }
        const bool isQuoted = quotes.End();
        if (!Marks_[i].CanEnd)
            continue;
        KeepFirst(first, i);
        if (entries < Marks_[head].Selected)
            continue;
        const bool isPlain = entries == Marks_[head].Selected && !hasHeads;
        if (isPlain || (IsNextFile(i + 1) && !(hasHeads && LeadsToMessage(i + 1))))
            return i;
        if (!isQuoted && !HasBegun(i + 1))
            KeepFirst(likely, i);
        KeepFirst(full, i);
    }
    for (const std::size_t end : {likely, full, first})
        if (end != None)
            return end;
    return Marks_.size();
}

}  // namespace workbench
