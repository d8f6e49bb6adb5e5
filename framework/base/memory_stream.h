#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "framework/api.h"
#include "framework/base/object.h"

namespace framework {

/// Bytes in memory that are written and read at a position.
class FRAMEWORK_API TMemoryStream : public TObject {
public:
    TMemoryStream() = default;
    /// Holds the bytes; the position is at their beginning.
    explicit TMemoryStream(std::string bytes) : Bytes_(std::move(bytes)) {}
    ~TMemoryStream() override;

    /// All bytes, wherever the position is; valid until the next write.
    std::string_view Bytes() const { return Bytes_; }
    std::size_t Size() const { return Bytes_.size(); }
    std::size_t Position() const { return Position_; }
    /// A position beyond the end means the end.
    void SetPosition(std::size_t position);

    /// Writes at the position: over what is there, and on behind the end.
    void Write(std::string_view bytes);
    /// Reads at most `size` bytes from the position on; returns how many.
    std::size_t Read(char* buffer, std::size_t size);

private:
    std::string Bytes_;
    std::size_t Position_ = 0;
};

}  // namespace framework
