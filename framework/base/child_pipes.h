#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "framework/api.h"
#include "framework/base/handle.h"

namespace framework {

/// The two ends of an anonymous pipe.
struct TPipe {
    KernelHandle Read, Write;
};

/// A pipe of the system's default size whose ends children inherit; without handles when the
/// system has none to give.
FRAMEWORK_API TPipe MakePipe();

/// What the writing end of a pipe tells of it, in bytes.
struct TPipeRoom {
    DWORD Size = 0;
    /// Without what is unread, and without what a waiting reader has asked for.
    DWORD Free = 0;
};

/// What is asked for the room in a pipe; its answer is none when the system does not say. Tests
/// put another one in its place.
FRAMEWORK_API std::function<std::optional<TPipeRoom>(HANDLE write)>& PipeRoom();

/// The way to a child that asks. An answer is a block of 1023 bytes and a carriage return.
///
/// Writing never blocks: a child that does not read would stop the writer for ever, and with it the
/// reading of the child's output. What finds no room is dropped, enough answers are waiting then.
/// For the same reason nothing is called on the child's end: while the child reads from it, such a
/// call waits as long as the child does.
class FRAMEWORK_API TAnswerPipe {
public:
    static constexpr std::size_t BlockSize = 1023;
    /// For how long an answer is left to be taken where the pipe does not tell, in ms.
    static constexpr DWORD TimeToTake = 500;

    /// Without a way.
    TAnswerPipe() = default;
    /// @param write the end that answers are written to, of a pipe that no child has yet.
    explicit TAnswerPipe(KernelHandle write);

    /// Writes the block: the text, cut when it is longer, and zeros or what is left of a longer
    /// answer before it.
    void Answer(const std::string& text);

    /// After an answer, waits for output to be read or the end of the child, or until `stop`
    /// answers true. Meanwhile it writes the carriage return of the answer as soon as the child has
    /// taken the block or had the time to. When it comes to neither, the carriage return comes
    /// with a later call, or before the next block.
    ///
    /// A child that reads lines looks behind a carriage return at the end of what it got for the
    /// line feed, and would wait for it for ever.
    void EndWhenTaken(HANDLE output, HANDLE child, const std::function<bool()>& stop);

private:
    void Write(const char* bytes, std::size_t count);
    bool IsTaken();
    void End();

    KernelHandle Write_;
    bool TellsRoom_ = false;
    std::size_t Unread_ = 0;  // at most so much is
    std::array<char, BlockSize + 1> Block_{};
    bool EndPending_ = false;
    ULONGLONG Written_ = 0;  // when the block was
};

}  // namespace framework
