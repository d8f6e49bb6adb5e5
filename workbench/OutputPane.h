#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "framework/ui/rich_edit.h"

namespace workbench {

/// Shows what commands say in a text view: the last part of it, because a text view takes many
/// times the memory of its text. A flood is shown in few large pieces, so that it does not wait for
/// the screen.
class TOutputPane {
public:
    /// What is shown at most, in bytes, and what remains when more comes.
    static constexpr std::size_t MostShown = 1 << 20, Remaining = MostShown / 2;

    explicit TOutputPane(framework::TRichEdit& view);
    TOutputPane(const TOutputPane&) = delete;
    TOutputPane& operator=(const TOutputPane&) = delete;

    void Add(const std::string& text);
    /// Shows what has not been shown yet.
    void Flush();
    void Clear();

    /// The user has clicked a line in which the client names a file, as the client wrote it.
    std::function<void(const std::string& name)> OnFile;

private:
    void Show(const std::string& text);

    framework::TRichEdit& View_;
    std::string Waiting_;
    std::size_t Shown_ = 0;
    std::uint64_t ShownAt_ = 0, ShowingTook_ = 0;  // ms
};

}  // namespace workbench
