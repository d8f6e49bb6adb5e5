#include "host/OutputPane.h"

#include <windows.h>

#include <algorithm>

namespace host {

namespace {

constexpr const char* Cut =
    "[What came before is not shown. File > Show whole output has all of it.]\r\n";
constexpr std::uint64_t Pause = 100;  // ms

/// The end of a text, from the beginning of a line on.
std::string LastPart(const std::string& text, std::size_t size) {
    if (text.size() <= size)
        return text;
    const std::size_t line = text.find('\n', text.size() - size);
    return text.substr(line == std::string::npos ? text.size() - size : line + 1);
}

}  // namespace

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
        View_.SetText(text);
        View_.Append("");
        Shown_ = text.size();
    } else {
        View_.Append(Waiting_);
        Shown_ += Waiting_.size();
    }
    Waiting_.clear();
    ShownAt_ = ::GetTickCount64();
    ShowingTook_ = ShownAt_ - start;
}

}  // namespace host
