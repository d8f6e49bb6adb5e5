#include "framework/base/value_stream.h"

#include <algorithm>
#include <cstdint>

#include "framework/base/exceptions.h"

namespace framework {

namespace {

enum TKind : char {
    ListEnd = 0x00,
    ListBegin = 0x01,
    ShortText = 0x06,  // a length of one byte
    False = 0x08,
    True = 0x09,
    LongText = 0x0C  // a length of four bytes, the lowest first
};

constexpr std::size_t LongestShortText = 255;

[[noreturn]] void FailDamaged() {
    throw EReadError("Invalid stored value");
}

}  // namespace

TWriter::TWriter(TMemoryStream& stream, std::size_t bufferSize)
    : Stream_(stream), BufferSize_(bufferSize) {
    Buffer_.reserve(bufferSize);
}

void TWriter::WriteListBegin() {
    Write(std::string(1, ListBegin));
}

void TWriter::WriteListEnd() {
    Write(std::string(1, ListEnd));
}

void TWriter::WriteString(std::string_view text) {
    std::string head;
    auto length = static_cast<std::uint32_t>(text.size());
    head.push_back(length <= LongestShortText ? ShortText : LongText);
    const std::size_t lengthSize = length <= LongestShortText ? 1 : sizeof length;
    for (; head.size() <= lengthSize; length >>= 8)
        head += static_cast<char>(length & 0xFF);
    Write(head);
    Write(text);
}

void TWriter::WriteBoolean(bool value) {
    Write(std::string(1, value ? True : False));
}

void TWriter::Write(std::string_view bytes) {
    if (Buffer_.size() + bytes.size() > BufferSize_)
        FlushBuffer();
    if (bytes.size() > BufferSize_)
        Stream_.Write(bytes);
    else
        Buffer_ += bytes;
}

void TWriter::FlushBuffer() {
    Stream_.Write(Buffer_);
    Buffer_.clear();
}

TReader::TReader(TMemoryStream& stream, std::size_t bufferSize)
    : Stream_(stream), Buffer_(std::max<std::size_t>(bufferSize, 1), '\0') {}

bool TReader::Fill() {
    At_ = 0;
    Filled_ = Stream_.Read(Buffer_.data(), Buffer_.size());
    return Filled_ > 0;
}

char TReader::Peek() {
    if (At_ == Filled_ && !Fill())
        FailDamaged();
    return Buffer_[At_];
}

char TReader::ReadByte() {
    const char byte = Peek();
    ++At_;
    return byte;
}

std::string TReader::ReadBytes(std::size_t count) {
    // A damaged length must not cost the memory it asks for.
    if (count > Filled_ - At_ + Stream_.Size() - Stream_.Position())
        FailDamaged();
    std::string bytes;
    bytes.reserve(count);
    while (bytes.size() < count) {
        if (At_ == Filled_ && !Fill())
            FailDamaged();
        const std::size_t part = std::min(count - bytes.size(), Filled_ - At_);
        bytes.append(Buffer_, At_, part);
        At_ += part;
    }
    return bytes;
}

void TReader::Expect(char kind) {
    if (ReadByte() != kind)
        FailDamaged();
}

void TReader::ReadListBegin() {
    Expect(ListBegin);
}

void TReader::ReadListEnd() {
    Expect(ListEnd);
}

bool TReader::EndOfList() {
    return Peek() == ListEnd;
}

std::string TReader::ReadString() {
    const char kind = ReadByte();
    if (kind != ShortText && kind != LongText)
        FailDamaged();
    std::uint32_t length = 0;
    const int bits = kind == ShortText ? 8 : 32;
    for (int shift = 0; shift < bits; shift += 8)
        length |= std::uint32_t{static_cast<unsigned char>(ReadByte())} << shift;
    return ReadBytes(length);
}

bool TReader::ReadBoolean() {
    const char kind = ReadByte();
    if (kind != True && kind != False)
        FailDamaged();
    return kind == True;
}

}  // namespace framework
