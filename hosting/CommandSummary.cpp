#include "hosting/CommandSummary.h"

#include <algorithm>
#include <utility>

namespace hosting {

namespace {

constexpr std::string_view Letters = "UPARMC?INL";

void Append(std::string& text, int count, const char* word) {
    if (count > 0)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + word;
}

bool Contains(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

}  // namespace

TFileMention ParseMention(std::string_view line) {
    if (line.size() < 3 || line[1] != ' ' || line[2] == ' ' ||
        Letters.find(line[0]) == std::string_view::npos)
        return {};
    return {line[0], std::string(line.substr(2))};
}

void TCommandSummary::Add(std::string_view text) {
    Rest_ += text;
    std::size_t start = 0;
    for (std::size_t end; (end = Rest_.find('\n', start)) != std::string::npos; start = end + 1) {
        std::string line = Rest_.substr(start, end - start);
        while (line.ends_with('\r'))
            line.pop_back();
        AddLine(line);
    }
    Rest_.erase(0, start);
    // A flood without lines says nothing here.
    constexpr std::size_t LongestLine = 32768;
    if (Rest_.size() > LongestLine)
        Rest_.clear();
}

void TCommandSummary::AddMention(const TFileMention& mention) {
    switch (mention.Letter) {
        case 'U':
        case 'P':
            ++Updated_;
            break;
        case 'A':
        case 'N':
            ++Added_;
            break;
        case 'R':
            ++Removed_;
            break;
        case '?':
            ++Unknown_;
            break;
        case 'M': {
            // The client names the file that it merges without its folder.
            const std::size_t folder = mention.Name.rfind('/');
            const bool merged =
                !MergingName_.empty() && mention.Name.substr(folder + 1) == MergingName_;
            ++(merged ? Merged_ : Changed_);
            break;
        }
        case 'C':
            if (std::ranges::find(Conflicts_, mention.Name) == Conflicts_.end())
                Conflicts_.push_back(mention.Name);
            break;
        default:
            break;
    }
    MergingName_.clear();
}

void TCommandSummary::AddLine(const std::string& line) {
    constexpr std::string_view Merging = "Merging differences between ", Into = " into ";
    if (const TFileMention mention = ParseMention(line); mention.Letter)
        AddMention(mention);
    else if (line.starts_with(Merging) && Contains(line, Into))
        MergingName_ = line.substr(line.rfind(Into) + Into.size());
    else if (line.starts_with("new revision: delete"))
        ++Removed_;
    else if (line.starts_with("new revision: ") || line.starts_with("initial revision: "))
        ++Committed_;
    else if (Contains(line, ": scheduling ") && Contains(line, " for addition"))
        ++Scheduled_;
    else if (Contains(line, ": scheduling ") && Contains(line, " for removal"))
        ++Unscheduled_;
    else if (Contains(line, " aborted]: ") && Failure_.empty())
        Failure_ = line.substr(line.find(" aborted]: ") + std::string_view(" aborted]: ").size());
}

std::string TCommandSummary::Text() const {
    std::string text;
    Append(text, Updated_, "updated");
    Append(text, Merged_, "merged");
    Append(text, Committed_, "committed");
    Append(text, Changed_, "changed here");
    Append(text, Added_, "added");
    Append(text, Scheduled_, "to be added");
    Append(text, Removed_, "removed");
    Append(text, Unscheduled_, "to be removed");
    Append(text, Unknown_, "not in the repository");
    if (!Conflicts_.empty()) {
        Append(text, static_cast<int>(Conflicts_.size()),
               Conflicts_.size() == 1 ? "conflict: " : "conflicts: ");
        text += Conflicts_.front() + (Conflicts_.size() > 1 ? ", ..." : "");
    }
    if (!Failure_.empty())
        text = "Failed: " + Failure_ + (text.empty() ? "" : " (" + text + ")");
    return text;
}

}  // namespace hosting
