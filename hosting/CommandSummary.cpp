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
            const std::size_t folder = mention.Name.rfind('/');
            const bool merged =
                !MergingName_.empty() && mention.Name.substr(folder + 1) == MergingName_;
            ++(merged ? Merged_ : Changed_);
            if (merged)
                MergingName_.clear();
            break;
        }
        case 'C': {
            const std::size_t folder = mention.Name.rfind('/');
            const std::string name = mention.Name.substr(folder + 1);
            // The same one, with the name as the client writes it.
            if (!Guessed_.empty() && Guessed_.substr(Guessed_.rfind('/') + 1) == name)
                Conflicts_.pop_back();
            Guessed_.clear();
            AddConflict(mention.Name);
            break;
        }
        default:
            break;
    }
    EndMerging();
}

void TCommandSummary::AddConflict(const std::string& name) {
    MergingName_.clear();
    if (std::ranges::find(Conflicts_, name) == Conflicts_.end())
        Conflicts_.push_back(name);
}

void TCommandSummary::EndMerging() {
    Merged_ += !std::exchange(MergingName_, {}).empty();
}

void TCommandSummary::AddLine(const std::string& line) {
    constexpr std::string_view Merging = "Merging differences between ", Into = " into ",
                               Updating = " update: Updating ";
    if (const TFileMention mention = ParseMention(line); mention.Letter)
        AddMention(mention);
    else if (line.starts_with(Merging) && Contains(line, Into)) {
        EndMerging();
        MergingName_ = line.substr(line.rfind(Into) + Into.size());
    } else if (Contains(line, "conflicts during merge") && !MergingName_.empty())
        // Of what it merges from a branch the client says no more than this.
        AddConflict(Guessed_ = Folder_ + MergingName_);
    else if (const std::size_t at = line.find(Updating); at != std::string::npos) {
        const std::string folder = line.substr(at + Updating.size());
        Folder_ = folder == "." ? "" : folder + "/";
    } else if (line.starts_with("new revision: delete"))
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
    Append(text, Merged_ + !MergingName_.empty(), "merged");
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
