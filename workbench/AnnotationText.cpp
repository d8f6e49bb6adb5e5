#include "workbench/AnnotationText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

namespace workbench {

using framework::TDateTime;

namespace {

// "1.12         (somebody 04-May-26): text": the number has at least twelve places, the author
// eight, the day nine.
constexpr std::size_t NumberPlaces = 12, AuthorPlaces = 8, DatePlaces = 9;

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t end = text.find_last_not_of(' ');
    return end == std::string_view::npos ? std::string_view() : text.substr(0, end + 1);
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789.") == std::string_view::npos &&
           text.find('.') != std::string_view::npos;
}

bool ReadNumber(std::string_view text, int& number) {
    return std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc();
}

/// "04-May-26"; years from 69 on are those of the century before.
TDateTime ParseDay(std::string_view text) {
    constexpr std::array<std::string_view, 12> Months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    int day = 0, year = 0;
    if (text.size() != DatePlaces || text[2] != '-' || text[6] != '-' ||
        !ReadNumber(text.substr(0, 2), day) || !ReadNumber(text.substr(7), year))
        return 0;
    const auto month = std::ranges::find(Months, text.substr(3, 3));
    TDateTime date = 0;
    framework::TryEncodeDate(year + (year < 69 ? 2000 : 1900),
                             static_cast<int>(month - Months.begin()) + 1, day, date);
    return date;
}

bool ParseLine(std::string_view line, TAnnotatedLine& result) {
    const std::size_t open = line.find(" (");
    if (open == std::string_view::npos || open < NumberPlaces)
        return false;
    const std::string_view number = WithoutBlanks(line.substr(0, open));
    if (!IsNumber(number))
        return false;
    line.remove_prefix(open + 2);
    constexpr std::string_view End = "): ";
    constexpr std::size_t Head = AuthorPlaces + 1 + DatePlaces;
    // Of an empty line the client may have left out the last blank.
    if (line.size() < Head + 2 || line.substr(Head, 2) != End.substr(0, 2))
        return false;
    result.Revision = number;
    result.Author = WithoutBlanks(line.substr(0, AuthorPlaces));
    result.Date = ParseDay(line.substr(AuthorPlaces + 1, DatePlaces));
    result.Text = line.substr(std::min(line.size(), Head + End.size()));
    return true;
}

}  // namespace

std::vector<TAnnotatedLine> ParseAnnotation(std::string_view text) {
    std::vector<TAnnotatedLine> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (TAnnotatedLine read; ParseLine(line, read))
            lines.push_back(std::move(read));
    }
    return lines;
}

}  // namespace workbench
