#include "framework/base/string_list.h"

#include "framework/base/exceptions.h"

namespace framework {

const std::string& TStringList::operator[](int index) const {
    if (index < 0 || index >= Count())
        throw EListError("List index out of bounds (" + std::to_string(index) + ")");
    return Lines_[static_cast<std::size_t>(index)];
}

void TStringList::RemoveEmpty() {
    std::erase_if(Lines_, [](const std::string& line) { return line.empty(); });
}

std::string TStringList::Text() const {
    std::size_t size = 0;
    for (const std::string& line : Lines_)
        size += line.size() + 2;
    std::string text;
    text.reserve(size);
    for (const std::string& line : Lines_)
        text.append(line).append("\r\n");
    return text;
}

void TStringList::SetText(std::string_view text) {
    // The text may be one of the list's own lines: the list changes only at the end.
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
        lines.emplace_back(line);
        text.remove_prefix(line.size());
        if (text.starts_with("\r\n"))
            text.remove_prefix(2);
        else if (!text.empty())
            text.remove_prefix(1);
    }
    Lines_ = std::move(lines);
}

}  // namespace framework
