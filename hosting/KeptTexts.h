#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "framework/base/datetime.h"

namespace hosting {

/// A text that was kept.
struct TKeptText {
    std::string Text;
    framework::TDateTime Since = 0;  ///< Local time.
};

/// What was fetched from repositories, kept in a folder for times without a server. The folder
/// stays within a size: the oldest texts go.
class TKeptTexts {
public:
    /// @param folder made when the first text is kept. @param most bytes.
    explicit TKeptTexts(std::string folder, std::uint64_t most = 64 << 20)
        : Folder_(std::move(folder)), Most_(most) {}

    /// The text of a key, or nothing.
    std::optional<TKeptText> Find(const std::string& key) const;
    /// Keeps a text in the place of the one before. What is too large, or cannot be written, is
    /// not kept, and that is no error.
    void Keep(const std::string& key, const std::string& text) const;

private:
    std::string PathOf(const std::string& key) const;
    void MakeRoom(std::uint64_t bytes) const;

    std::string Folder_;
    std::uint64_t Most_;
};

}  // namespace hosting
