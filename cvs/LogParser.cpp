#include "cvs/LogParser.h"

#include <algorithm>
#include <string>

#include "core/Cvs_utils.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/text.h"

namespace tandrel {
namespace {

constexpr int MaxPairs = 100000;
constexpr int MaxDates = 100001;

constexpr std::string_view Names = "SYMBOLIC NAMES:";
constexpr std::string_view Keyword = "KEYWORD";
constexpr std::string_view Total = "total revisions";
constexpr std::string_view Date = "DATE:";
constexpr std::string_view Revision = "REVISION";

constexpr std::size_t None = std::string_view::npos;

/// Looks for one word again and again in a text, from places that only move on. A place that was
/// found is remembered until it is passed, so the whole search reads the text once.
class TSearch {
public:
    TSearch(std::string_view text, std::string_view word) : Text_(text), Word_(word) {}
    std::size_t From(std::size_t start) {
        if (!Searched_ || (Found_ != None && Found_ < start)) {
            Found_ = framework::FindText(Text_, Word_, start);
            Searched_ = true;
        }
        return Found_;
    }

private:
    std::string_view Text_, Word_;
    std::size_t Found_ = None;
    bool Searched_ = false;
};

/// Adds the pairs of one file, "NAME: 1.2;OTHER: 1.2.0.2;". False when there are too many.
bool ReadPairs(std::string_view section, TLogList& list, int& count) {
    while (!section.empty()) {
        const std::size_t colon = section.find(':');
        if (colon == None || colon == 0)
            return true;
        if (++count > MaxPairs)
            return false;
        const std::string_view name = section.substr(0, colon);
        section.remove_prefix(std::min(colon + 2, section.size()));  // and the blank
        const std::size_t end = std::min(section.find(';'), section.size());
        const std::string_view value = section.substr(0, end);
        section.remove_prefix(std::min(end + 1, section.size()));
        list.Add(name, value, !section.empty() && value.find(".0.") == None);
    }
    return true;
}

/// The section's pairs, each followed by ";".
std::string JoinLines(std::string_view section) {
    std::string joined;
    for (std::size_t end; (end = section.find("\r\n\t")) != None; section.remove_prefix(end + 3))
        joined.append(section.substr(0, end)).append(1, ';');
    joined.append(section);
    return SlashSemicolon(joined);
}

/// The text "revision" and the number of the entry whose "date:" stands at `at`; empty when it is
/// not close enough in front of it.
std::string RevisionBefore(std::string_view text, std::string_view upper, std::size_t start,
                           std::size_t at) {
    constexpr std::size_t Reach = 20;
    const std::size_t from = std::max(start, at < Reach ? 0 : at - Reach);
    const std::size_t reach = at + Date.size() - from;
    const std::size_t end = text.substr(from, reach).find('d');
    if (end == None)
        return {};
    const std::size_t word = upper.substr(from, end).find(Revision);
    return word == None ? std::string() : framework::Trim(text.substr(from + word, end - word));
}

}  // namespace

bool ParseSymbolicNames(std::string_view text, TLogList& list) {
    const std::string upper = framework::UpperCase(text);
    TSearch names(upper, Names), keyword(upper, Keyword), total(text, Total);
    int count = 0;
    for (std::size_t start = 0;;) {
        const std::size_t first = names.From(start);
        std::size_t last = keyword.From(start);
        if (last == None)
            last = total.From(start);
        if (first == None || last == None)
            return true;
        const std::size_t begin = first + Names.size() + 1;
        if (begin < last) {
            const std::string section = framework::Trim(text.substr(begin, last - begin));
            if (!ReadPairs(JoinLines(section), list, count))
                return false;
        }
        start = last + Keyword.size();
    }
}

bool ParseRevisionDates(std::string_view text, TLogList& list) {
    const std::string upper = framework::UpperCase(text);
    TSearch dates(upper, Date), semicolons(text, ";");
    std::size_t start = 0;
    for (int count = 0; count < MaxDates; ++count) {
        const std::size_t at = dates.From(start);
        if (at == None)
            return true;
        const std::string revision = RevisionBefore(text, upper, start, at);
        const std::size_t begin = std::min(at + Date.size() + 1, text.size());
        const std::size_t end = semicolons.From(begin);
        const std::size_t length = end == None ? 0 : end - begin;
        if (length > 0)
            list.Add(text.substr(begin, length), revision, false);
        start = std::min(begin + length + 2, text.size());
    }
    return dates.From(start) == None;
}

}  // namespace tandrel
