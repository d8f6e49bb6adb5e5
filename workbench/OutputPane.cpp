#include "workbench/OutputPane.h"

#include <windows.h>

#include <algorithm>

#include "framework/base/lead_bytes.h"
#include "hosting/CommandSummary.h"

namespace workbench {

using namespace framework;
using namespace hosting;

namespace {

constexpr const char* Cut =
    "[What came before is not shown. File > Show whole output has all of it.]\r\n";
constexpr std::uint64_t Pause = 100;  // ms

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
        View_.Append(Waiting_);
        Shown_ += Waiting_.size();
    }
    Waiting_.clear();
    ShownAt_ = ::GetTickCount64();
    ShowingTook_ = ShownAt_ - start;
}

}  // namespace workbench
