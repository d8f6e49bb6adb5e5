#include "forms/DiffColours.h"

#include "core/Cvs_utils.h"

namespace tandrel {

void ForEachColouredLine(
    std::string_view text,
    const std::function<void(std::size_t start, std::size_t length, COLORREF colour)>& colour) {
    const auto marked = [text](std::size_t at) {
        return at < text.size() && (text[at] == '<' || text[at] == '>') &&
               IsPerevodBeforePos(text, static_cast<int>(at));
    };
    for (std::size_t start = 0; start < text.size(); ++start) {
        if (!marked(start))
            continue;
        // The second character of a line counts, too, and more than the first: from there on the
        // line has its colour.
        const bool again = marked(start + 1);
        const int length = again ? 1 : CountFromPosToPerevod(text, static_cast<int>(start) + 1);
        colour(start, static_cast<std::size_t>(length),
               text[start] == '<' ? RemovedColour : AddedColour);
    }
}

}  // namespace tandrel
