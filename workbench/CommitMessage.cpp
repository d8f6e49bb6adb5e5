#include "workbench/CommitMessage.h"

#include <algorithm>

#include "framework/base/lead_bytes.h"
#include "framework/base/text.h"

namespace workbench {

using namespace framework;

namespace {

constexpr std::string_view Remark = "CVS:";

/// A line with its end.
struct TLine {
    std::string_view Text;
    std::string_view End;
};

std::vector<TLine> SplitLines(std::string_view text) {
    std::vector<TLine> lines;
    while (!text.empty()) {
        const std::size_t feed = std::min(text.find('\n'), text.size());
        const std::size_t end =
            feed > 0 && feed < text.size() && text[feed - 1] == '\r' ? feed - 1 : feed;
        const std::size_t next = std::min(feed + 1, text.size());
        lines.push_back({text.substr(0, end), text.substr(end, next - end)});
        text.remove_prefix(next);
    }
    return lines;
}

int LettersIn(std::string_view text) {
    int letters = 0;
    for (std::size_t at = 0; at < text.size(); at += LetterSize(text, at))
        ++letters;
    return letters;
}

/// The lines that count, without blanks at their ends, and without empty ones.
std::vector<std::string> Said(std::string_view text) {
    std::vector<std::string> lines;
    for (const TLine& line : SplitLines(text))
        if (std::string said = Trim(line.Text); !said.empty() && !line.Text.starts_with(Remark))
            lines.push_back(std::move(said));
    return lines;
}

}  // namespace

std::string MessageToSend(std::string_view text) {
    std::string message;
    message.reserve(text.size());
    for (const TLine& line : SplitLines(text))
        if (!line.Text.starts_with(Remark))
            message.append(line.Text).append(line.End);
    return message;
}

bool IsUnfilled(std::string_view text, std::string_view templateText) {
    const std::vector<std::string> said = Said(text);
    return said.empty() || said == Said(templateText);
}

std::vector<int> LongLines(std::string_view text) {
    std::vector<int> numbers;
    int number = 0;
    for (const TLine& line : SplitLines(text)) {
        ++number;
        if (!line.Text.starts_with(Remark) && LettersIn(line.Text) > LongestMessageLine)
            numbers.push_back(number);
    }
    return numbers;
}

TTextPlace PlaceOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t feed = before.rfind('\n');
    const std::string_view line = feed == std::string_view::npos ? before : before.substr(feed + 1);
    return {static_cast<int>(std::ranges::count(before, '\n')) + 1, LettersIn(line) + 1};
}

std::string DescribePlace(std::string_view text, std::size_t caret) {
    const TTextPlace place = PlaceOf(text, caret);
    std::string said =
        "Line " + std::to_string(place.Line) + ", column " + std::to_string(place.Column);
    const std::vector<int> numbers = LongLines(text);
    if (numbers.empty())
        return said;
    said += ": line " + std::to_string(numbers.front()) + " is longer than " +
            std::to_string(LongestMessageLine);
    if (numbers.size() > 1)
        said += ", and " + std::to_string(numbers.size() - 1) + " more";
    return said;
}

std::string SummaryOf(std::string_view text) {
    constexpr std::size_t Most = 60;  // bytes
    const std::vector<std::string> said = Said(text);
    if (said.empty())
        return {};
    const std::string_view line = WholeLetters(said.front(), Most);
    const bool isCut = line.size() < said.front().size() || said.size() > 1;
    return std::string(line) + (isCut ? "..." : "");
}

}  // namespace workbench
