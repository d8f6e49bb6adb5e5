#include "workbench/OutputPane.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "framework/base/lead_bytes.h"
#include "hosting/CommandSummary.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

constexpr const char* Cut =
    "[What came before is not shown. File > Show whole output has all of it.]\r\n";
constexpr std::uint64_t Pause = 100;  // ms

/// The colour of a line in which the client names a file.
std::optional<COLORREF> ColourOf(char letter) {
    switch (letter) {
        case 'C':
            return RGB(160, 0, 160);
        case 'M':
        case 'A':
        case 'R':
            return RGB(192, 0, 0);
        case 'U':
        case 'P':
        case 'N':
            return RGB(0, 0, 192);
        case '?':
            return RGB(0, 128, 0);
        default:
            return std::nullopt;
    }
}

/// The end of a text, from the beginning of a line on.
std::string LastPart(const std::string& text, std::size_t size) {
    if (text.size() <= size)
        return text;
    const std::size_t line = text.find('\n', text.size() - size);
    if (line != std::string::npos)
        return text.substr(line + 1);
    const std::size_t start = text.size() - size;
    return text.substr(framework::IsTrailByte(text, start) ? start + 1 : start);
}

}  // namespace

TOutputPane::TOutputPane(TRichEdit& view) : View_(view) {
    View_.SetFixedPitch();
    View_.OnClick = [this](TObject*) {
        const TFileMention mention = ParseMention(View_.CaretLine());
        if (mention.Letter && OnFile)
            OnFile(mention.Name);
    };
}

void TOutputPane::Clear() {
    Waiting_.clear();
    View_.Clear();
    Shown_ = 0;
}

void TOutputPane::Add(const std::string& text) {
    Waiting_ += text;
    if (Waiting_.size() > 2 * MostShown)
        Waiting_ = LastPart(Waiting_, MostShown);
    // The screen gets a quarter of the time at most.
    if (::GetTickCount64() >= ShownAt_ + std::max(Pause, 3 * ShowingTook_))
        Flush();
}

void TOutputPane::Show(const std::string& text) {
    // A flood is read by nobody; its colours would take longer than itself.
    constexpr std::size_t MostColoured = 1 << 15;
    if (text.size() > MostColoured)
        return View_.Append(text);
    const auto colourAt = [&](std::size_t line) {
        return ColourOf(ParseMention(std::string_view(text).substr(line, 3)).Letter);
    };
    // Lines of one colour together.
    for (std::size_t start = 0; start < text.size();) {
        const auto colour = colourAt(start);
        std::size_t end = start;
        do {
            const std::size_t lineEnd = text.find('\n', end);
            end = lineEnd == std::string::npos ? text.size() : lineEnd + 1;
        } while (end < text.size() && colourAt(end) == colour);
        const std::string lines = text.substr(start, end - start);
        if (colour)
            View_.AppendColored(lines, *colour);
        else
            View_.Append(lines);
        start = end;
    }
}

void TOutputPane::Flush() {
    if (Waiting_.empty())
        return;
    const std::uint64_t start = ::GetTickCount64();
    if (Shown_ + Waiting_.size() > MostShown) {
        const std::string text =
            Cut + LastPart((Waiting_.size() < Remaining ? View_.Text() : "") + Waiting_, Remaining);
        // The rest of its last letter may come later.
        const std::size_t whole = framework::WholeLetters(text).size();
        View_.SetText(text.substr(0, whole));
        View_.Append(text.substr(whole));
        Shown_ = text.size();
    } else {
        Show(Waiting_);
        Shown_ += Waiting_.size();
    }
    Waiting_.clear();
    ShownAt_ = ::GetTickCount64();
    ShowingTook_ = ShownAt_ - start;
}

}  // namespace workbench
