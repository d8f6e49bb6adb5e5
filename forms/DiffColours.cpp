#include "forms/DiffColours.h"

#include "core/Cvs_utils.h"

namespace tandrel {

void ForEachColouredLine(
    std::string_view text,
    const std::function<void(std::size_t start, std::size_t length, COLORREF colour)>& colour) {
    for (std::size_t start = 0; start < text.size(); ++start) {
        const bool removed = text[start] == '<';
        if (!removed && text[start] != '>')
            continue;
        if (!IsPerevodBeforePos(text, static_cast<int>(start)))
            continue;
        const int length = CountFromPosToPerevod(text, static_cast<int>(start) + 1);
        colour(start, static_cast<std::size_t>(length), removed ? RemovedColour : AddedColour);
    }
}

}  // namespace tandrel
