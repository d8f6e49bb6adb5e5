#include "workbench/LogLines.h"

#include <algorithm>
#include <string>
#include <utility>

namespace workbench {

namespace {

constexpr std::string_view EntryLine = "----------------------------";
constexpr std::string_view EndLine =
    "=============================================================================";
constexpr std::string_view RepositoryFile = "RCS file: ";

std::string_view WithoutBlank(std::string_view text) {
    Take(text, " ");
    return text;
}

void Keep(TFileLog* log, std::string TFileLog::*field, std::string_view value) {
    if (log)
        log->*field = value;
}

}  // namespace

TLines LinesOfLog(std::string_view text) {
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

bool Take(std::string_view& text, std::string_view beginning) {
    if (!text.starts_with(beginning))
        return false;
    text.remove_prefix(beginning.size());
    return true;
}

bool THeadReader::Next(std::string_view beginning, std::string_view& rest) {
    if (Line_ >= Lines_.size())
        return false;
    rest = Lines_[Line_];
    if (!Take(rest, beginning))
        return false;
    ++Line_;
    return true;
}

void THeadReader::SkipList() {
    while (InList())
        ++Line_;
}

void THeadReader::ReadLabels(TFileLog* log) {
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

bool THeadReader::ReadCounts(std::string_view rest) {
    const std::size_t end = std::min(rest.find(';'), rest.size());
    const auto total = NumberIn<std::size_t>(rest.substr(0, end));
    rest.remove_prefix(end);
    // Where only heads were wanted nothing is said of revisions, and none follow.
    const auto selected = Take(rest, ";\tselected revisions: ") ? NumberIn<std::size_t>(rest)
                                                                : std::optional<std::size_t>(0);
    if (!total || !selected)
        return false;
    Counts_.Total = *total;
    Counts_.Selected = *selected;
    return true;
}

bool THeadReader::Read(TFileLog* log) {
    std::string_view rest;
    if (!Next(RepositoryFile, rest))
        return false;
    Keep(log, &TFileLog::Repository, rest);
    if (Next("Working file: ", rest))
        Keep(log, &TFileLog::Name, rest);
    if (!Next("head:", rest))
        return false;
    if (const auto number = ParseNumber(WithoutBlank(rest)))
        Counts_.Head = *number;
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

bool IsHeadLine(std::string_view line) {
    return line.starts_with(RepositoryFile);
}

bool IsEndLine(std::string_view line) {
    return line == EndLine;
}

bool IsRemark(std::string_view line) {
    if (!line.starts_with("cvs"))
        return false;
    const std::size_t blank = line.find(' ');
    const std::size_t colon = line.find(": ");
    return blank < colon && colon != std::string_view::npos;
}

std::optional<TRevisionNumber> EntryNumber(std::string_view line) {
    if (!Take(line, "revision "))
        return std::nullopt;
    const std::size_t end = line.find('\t');
    if (end != std::string_view::npos && !line.substr(end).starts_with("\tlocked by: "))
        return std::nullopt;
    auto number = ParseNumber(line.substr(0, end));
    return number && number->size() % 2 == 0 ? number : std::nullopt;
}

bool IsEntry(const TLines& lines, std::size_t line) {
    if (line + 2 >= lines.size() || lines[line] != EntryLine)
        return false;
    return lines[line + 2].starts_with("date: ") &&
           lines[line + 2].find(";  author: ") != std::string_view::npos &&
           EntryNumber(lines[line + 1]);
}

std::vector<TRevisionNumber> BranchesIn(const TRevisionNumber& revision, std::string_view line) {
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

}  // namespace workbench
