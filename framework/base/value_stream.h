#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "framework/api.h"
#include "framework/base/memory_stream.h"

namespace framework {

// Values in the form in which components are stored: each begins with a byte that tells its kind.
// Lists are values between two marks; texts carry their length and may hold any byte.

/// Writes values to a stream, at its position.
class FRAMEWORK_API TWriter {
public:
    /// @param bufferSize how many bytes are collected before the stream is written to.
    TWriter(TMemoryStream& stream, std::size_t bufferSize);

    void WriteListBegin();
    void WriteListEnd();
    void WriteString(std::string_view text);
    void WriteBoolean(bool value);
    /// Passes on what is collected. Call it after the last value.
    void FlushBuffer();

private:
    void Write(std::string_view bytes);

    TMemoryStream& Stream_;
    std::size_t BufferSize_;
    std::string Buffer_;
};

/// Reads values from a stream, from its position on. A value of another kind than the one asked
/// for, or one that does not fit into what is left, raises EReadError; nothing is allocated for it.
class FRAMEWORK_API TReader {
public:
    /// @param bufferSize how many bytes are taken from the stream at a time.
    TReader(TMemoryStream& stream, std::size_t bufferSize);

    void ReadListBegin();
    void ReadListEnd();
    /// Whether the next value is the end of the list.
    bool EndOfList();
    std::string ReadString();
    bool ReadBoolean();

private:
    char Peek();
    char ReadByte();
    std::string ReadBytes(std::size_t count);
    void Expect(char kind);
    bool Fill();

    TMemoryStream& Stream_;
    std::string Buffer_;
    std::size_t Filled_ = 0;  // bytes in the buffer
    std::size_t At_ = 0;      // of the next byte in it
};

}  // namespace framework
