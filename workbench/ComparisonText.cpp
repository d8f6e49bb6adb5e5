#include "workbench/ComparisonText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <utility>

#include "framework/base/lead_bytes.h"

namespace workbench {

using framework::LetterSize;

namespace {

/// The lines of a text, one after the other.
class TLines {
public:
    explicit TLines(std::string_view text) : Rest_(text) {}
    /// The next line without its end; false when there is none left.
    bool Next(std::string_view& line) {
        if (Rest_.empty())
            return false;
        const std::size_t end = std::min(Rest_.find('\n'), Rest_.size());
        Whole_ = Rest_.substr(0, std::min(end + 1, Rest_.size()));
        line = Rest_.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        Rest_.remove_prefix(Whole_.size());
        return true;
    }
    /// The same line with its end.
    std::string_view Whole() const { return Whole_; }

private:
    std::string_view Rest_, Whole_;
};

/// Takes what a text begins with; false when it begins with something else.
bool Take(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool TakeNumber(std::string_view& text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0)
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

/// The lines of a text that a part is about.
struct TSpan {
    int Start = 0;
    int Count = 1;
    // Of nothing the line before is named.
    int First() const { return Count == 0 && Start < MostLines ? Start + 1 : Start; }
    static constexpr int MostLines = 0x3FFFFFFF;
};

bool TakeSpan(std::string_view& text, TSpan& span) {
    span = {};
    if (!TakeNumber(text, span.Start) || (Take(text, ",") && !TakeNumber(text, span.Count)))
        return false;
    return span.Start <= TSpan::MostLines && span.Count <= TSpan::MostLines;
}

bool ParseSpans(std::string_view line, TSpan& from, TSpan& to) {
    return Take(line, "@@ -") && TakeSpan(line, from) && Take(line, " +") && TakeSpan(line, to) &&
           line.starts_with(" @@");
}

/// Reads the client's lines one by one.
class TReader {
public:
    explicit TReader(TComparison& comparison) : Comparison_(comparison) {}

    enum class TLineOf { Comparison, Nothing, Remark };
    TLineOf Read(std::string_view line) {
        // The client for Windows looks for the file that is always empty, which has a name of its
        // own there, and it does not find it everywhere.
        if (!Comparison_.Files.empty() && line.ends_with(" nul: No such file or directory")) {
            File().IsWhole = true;
            return TLineOf::Nothing;
        }
        return IsPart(line) ? TLineOf::Comparison : TLineOf::Remark;
    }

private:
    bool IsPart(std::string_view line) {
        // No line of a part begins so: it was cut short.
        if (line.starts_with("Index: ")) {
            FromLeft_ = ToLeft_ = 0;
            Comparison_.Files.emplace_back().Name = line.substr(7);
            Retrieved_ = 0;
            return true;
        }
        if (InHunk())
            return ReadHunkLine(line);
        return !Comparison_.Files.empty() && ReadHeader(line);
    }

    TFileDifference& File() { return Comparison_.Files.back(); }
    bool InHunk() const { return FromLeft_ > 0 || ToLeft_ > 0; }

    bool ReadHunkLine(std::string_view line) {
        // Editors take the blank off an empty line that is in both.
        const char kind = line.empty() ? ' ' : line.front();
        if (kind == '\\') {
            MarkOpenEnd();
            return true;
        }
        const bool inFrom = kind == ' ' || kind == '-', inTo = kind == ' ' || kind == '+';
        if ((!inFrom && !inTo) || (inFrom && FromLeft_ == 0) || (inTo && ToLeft_ == 0)) {
            // Cut short, or a complaint between the lines.
            return false;
        }
        FromLeft_ -= inFrom;
        ToLeft_ -= inTo;
        File().Hunks.back().Lines.emplace_back(line.empty() ? std::string_view(" ") : line);
        return true;
    }

    void MarkOpenEnd() {
        if (File().Hunks.empty() || File().Hunks.back().Lines.empty())
            return;
        const char kind = File().Hunks.back().Lines.back().front();
        File().FromEndsOpen |= kind != '+';
        File().ToEndsOpen |= kind != '-';
    }

    bool ReadHeader(std::string_view line) {
        TSpan from, to;
        if (ParseSpans(line, from, to)) {
            FromLeft_ = from.Count;
            ToLeft_ = to.Count;
            File().Hunks.push_back({from.First(), to.First(), {}});
            return true;
        }
        if (line.starts_with('\\')) {
            MarkOpenEnd();
            return true;
        }
        if (Take(line, "retrieving revision ")) {
            (Retrieved_++ == 0 ? File().FromRevision : File().ToRevision) = line;
            return true;
        }
        if (line.starts_with("Binary files ") || line.starts_with("Files ")) {
            File().IsBinary = true;
            return true;
        }
        // The client names what is not there by a device of one system or the other.
        const bool isNone =
            line.find("/dev/null") == 4 || line.find("nul\t") == 4 || line.find("NUL\t") == 4;
        if (line.starts_with("--- ")) {
            File().IsNew = isNone;
            if (isNone)
                File().ToRevision = std::exchange(File().FromRevision, {});
            return true;
        }
        if (line.starts_with("+++ ")) {
            File().IsRemoved = isNone;
            return true;
        }
        return line.starts_with("====") || line.starts_with("RCS file: ") ||
               line.starts_with("diff ");
    }

    TComparison& Comparison_;
    int FromLeft_ = 0, ToLeft_ = 0;
    int Retrieved_ = 0;
};

std::string WithoutBlanks(std::string text) {
    std::erase_if(text, [](char letter) { return letter == ' ' || letter == '\t'; });
    return text;
}

/// Puts the lines of a comparison side by side.
class TPairing {
public:
    TPairing(const std::vector<std::string>* newer) : Newer_(newer) {}

    /// Brings the lines in front of a part; false when they do not belong together.
    bool Begin(const THunk& hunk) {
        const int skipped = hunk.To - To_;
        if (!Newer_) {
            if (skipped > 0)
                Leave(skipped);
        } else if (skipped < 0 || hunk.From - From_ != skipped ||
                   static_cast<std::size_t>(hunk.To - 1) > Newer_->size()) {
            return false;
        }
        for (int i = 0; Newer_ && i < skipped; ++i)
            Same((*Newer_)[static_cast<std::size_t>(To_ - 1)]);
        From_ = hunk.From;
        To_ = hunk.To;
        return true;
    }

    bool Add(const THunk& hunk) {
        for (const std::string& line : hunk.Lines) {
            const std::string text = line.substr(1);
            if (line.front() != '-' && Newer_ && !IsNewer(text, line.front() == '+'))
                return false;
            if (line.front() == '-') {
                if (!Added_.empty())
                    End();
                Deleted_.push_back(text);
            } else if (line.front() == '+') {
                Added_.push_back(text);
            } else {
                End();
                Same(text);
            }
        }
        End();
        return true;
    }

    void Finish() {
        while (Newer_ && static_cast<std::size_t>(To_ - 1) < Newer_->size())
            Same((*Newer_)[static_cast<std::size_t>(To_ - 1)]);
    }

    std::vector<TComparedLine> Lines;

private:
    bool IsNewer(const std::string& text, bool exactly) const {
        const auto at = static_cast<std::size_t>(To_ - 1) + Added_.size();
        if (at >= Newer_->size())
            return false;
        const std::string& newer = (*Newer_)[at];
        // What is compared without blanks is the same in both, but for them.
        return newer == text || (!exactly && WithoutBlanks(newer) == WithoutBlanks(text));
    }

    void Leave(int count) {
        Lines.push_back({TComparedLine::TKind::Gap, 0, 0, std::to_string(count), {}});
    }

    void Same(const std::string& text) {
        Lines.push_back({TComparedLine::TKind::Same, From_++, To_++, text, text});
    }

    void End() {
        using enum TComparedLine::TKind;
        const std::size_t both = std::min(Deleted_.size(), Added_.size());
        for (std::size_t i = 0; i < both; ++i)
            Lines.push_back(
                {Changed, From_++, To_++, std::move(Deleted_[i]), std::move(Added_[i])});
        for (std::size_t i = both; i < Deleted_.size(); ++i)
            Lines.push_back({Deleted, From_++, 0, std::move(Deleted_[i]), {}});
        for (std::size_t i = both; i < Added_.size(); ++i)
            Lines.push_back({Added, 0, To_++, {}, std::move(Added_[i])});
        Deleted_.clear();
        Added_.clear();
    }

    const std::vector<std::string>* Newer_;
    int From_ = 1, To_ = 1;
    std::vector<std::string> Deleted_, Added_;
};

bool IsWordByte(std::string_view text, std::size_t at) {
    const auto letter = static_cast<unsigned char>(text[at]);
    return letter == '_' || letter >= 0x80 || std::isalnum(letter) != 0;
}

/// The words of a line, its blanks, and whatever else is in it, letter by letter.
std::vector<TWordRange> WordsOf(std::string_view text) {
    const auto isBlank = [&](std::size_t at) { return text[at] == ' ' || text[at] == '\t'; };
    std::vector<TWordRange> words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        if (isBlank(at))
            while (at < text.size() && isBlank(at))
                ++at;
        else if (IsWordByte(text, at))
            while (at < text.size() && IsWordByte(text, at))
                at += LetterSize(text, at);
        else
            ++at;
        at = std::min(at, text.size());
        words.push_back({start, at - start});
    }
    return words;
}

void Mark(std::vector<TWordRange>& marks, const TWordRange& word) {
    if (!marks.empty() && marks.back().Start + marks.back().Length == word.Start)
        marks.back().Length += word.Length;
    else
        marks.push_back(word);
}

/// The words of two lines, but for what both begin and end with.
struct TWordPair {
    std::string_view FromText, ToText;
    std::vector<TWordRange> From, To;

    bool Equal(const TWordRange& a, const TWordRange& b) const {
        return FromText.substr(a.Start, a.Length) == ToText.substr(b.Start, b.Length);
    }

    void Trim() {
        std::size_t begin = 0, end = 0;
        const std::size_t most = std::min(From.size(), To.size());
        while (begin < most && Equal(From[begin], To[begin]))
            ++begin;
        while (end < most - begin && Equal(From[From.size() - 1 - end], To[To.size() - 1 - end]))
            ++end;
        const auto cut = [&](std::vector<TWordRange>& words) {
            words.resize(words.size() - end);
            words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(begin));
        };
        cut(From);
        cut(To);
    }

    /// The longest sequence of words that both have is left, the others are marked.
    TWordDifference Marks() const {
        const std::size_t width = To.size() + 1;
        std::vector<unsigned short> lengths((From.size() + 1) * width);
        for (std::size_t i = From.size(); i-- > 0;)
            for (std::size_t j = To.size(); j-- > 0;)
                lengths[i * width + j] =
                    Equal(From[i], To[j])
                        ? static_cast<unsigned short>(lengths[(i + 1) * width + j + 1] + 1)
                        : std::max(lengths[(i + 1) * width + j], lengths[i * width + j + 1]);
        TWordDifference marks;
        std::size_t i = 0, j = 0;
        while (i < From.size() && j < To.size()) {
            if (Equal(From[i], To[j])) {
                ++i;
                ++j;
            } else if (lengths[(i + 1) * width + j] >= lengths[i * width + j + 1]) {
                Mark(marks.From, From[i++]);
            } else {
                Mark(marks.To, To[j++]);
            }
        }
        while (i < From.size())
            Mark(marks.From, From[i++]);
        while (j < To.size())
            Mark(marks.To, To[j++]);
        return marks;
    }
};

}  // namespace

TComparison ParseComparison(std::string_view text) {
    TComparison comparison;
    TReader reader(comparison);
    TLines lines(text);
    for (std::string_view line; lines.Next(line);)
        if (reader.Read(line) == TReader::TLineOf::Remark && !line.empty())
            comparison.Remarks.emplace_back(line);
    return comparison;
}

std::string PatchOf(std::string_view text) {
    TComparison comparison;
    TReader reader(comparison);
    TLines lines(text);
    std::string patch;
    for (std::string_view line; lines.Next(line);)
        if (reader.Read(line) == TReader::TLineOf::Comparison)
            patch += lines.Whole();
    return patch;
}

void ShowWhole(TFileDifference& file, const std::vector<std::string>& lines, bool isNew) {
    file.IsNew = isNew;
    file.IsRemoved = !isNew;
    THunk hunk;
    hunk.Lines.reserve(lines.size());
    for (const std::string& line : lines)
        hunk.Lines.push_back((isNew ? "+" : "-") + line);
    file.Hunks = {std::move(hunk)};
}

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> result;
    TLines lines(text);
    for (std::string_view line; lines.Next(line);)
        result.emplace_back(line);
    return result;
}

std::vector<TComparedLine> SideBySide(const TFileDifference& file,
                                      const std::vector<std::string>* newer) {
    TPairing pairing(newer);
    for (const THunk& hunk : file.Hunks) {
        if (!pairing.Begin(hunk) || !pairing.Add(hunk))
            return SideBySide(file, nullptr);
    }
    pairing.Finish();
    return std::move(pairing.Lines);
}

std::vector<TComparedLine> ChangesOnly(std::vector<TComparedLine> lines, std::size_t context) {
    const auto isSame = [&](std::size_t at) {
        return lines[at].Kind == TComparedLine::TKind::Same;
    };
    std::vector<TComparedLine> result;
    for (std::size_t at = 0; at < lines.size();) {
        std::size_t end = at;
        while (end < lines.size() && isSame(end))
            ++end;
        // Of what is the same, what stands beside a change.
        const std::size_t front = at == 0 ? 0 : context, back = end == lines.size() ? 0 : context;
        if (const std::size_t count = end - at; count > front + back + 1) {
            for (std::size_t i = at; i < at + front; ++i)
                result.push_back(std::move(lines[i]));
            result.push_back(
                {TComparedLine::TKind::Gap, 0, 0, std::to_string(count - front - back), {}});
            at = end - back;
        }
        for (; at < end; ++at)
            result.push_back(std::move(lines[at]));
        for (; at < lines.size() && !isSame(at); ++at)
            result.push_back(std::move(lines[at]));
    }
    return result;
}

std::vector<int> ChangesIn(const std::vector<TComparedLine>& lines) {
    using enum TComparedLine::TKind;
    std::vector<int> changes;
    bool within = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool isChange = lines[i].Kind != Same && lines[i].Kind != Gap;
        if (isChange && !within)
            changes.push_back(static_cast<int>(i));
        within = isChange;
    }
    return changes;
}

TWordDifference CompareWords(std::string_view from, std::string_view to) {
    constexpr std::size_t MostPairs = 40000;
    TWordPair pair{from, to, WordsOf(from), WordsOf(to)};
    pair.Trim();
    if (pair.From.size() * pair.To.size() <= MostPairs)
        return pair.Marks();
    TWordDifference all;
    for (const TWordRange& word : pair.From)
        Mark(all.From, word);
    for (const TWordRange& word : pair.To)
        Mark(all.To, word);
    return all;
}

}  // namespace workbench
