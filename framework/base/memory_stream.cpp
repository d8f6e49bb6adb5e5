#include "framework/base/memory_stream.h"

#include <algorithm>

namespace framework {

TMemoryStream::~TMemoryStream() = default;

void TMemoryStream::SetPosition(std::size_t position) {
    Position_ = std::min(position, Bytes_.size());
}

void TMemoryStream::Write(std::string_view bytes) {
    Bytes_.replace(Position_, std::min(bytes.size(), Bytes_.size() - Position_), bytes);
    Position_ += bytes.size();
}

std::size_t TMemoryStream::Read(char* buffer, std::size_t size) {
    const std::size_t count = Bytes_.copy(buffer, size, Position_);
    Position_ += count;
    return count;
}

}  // namespace framework
