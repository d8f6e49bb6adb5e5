#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <functional>
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

/// The way to a child that asks. An answer is a block of 1023 bytes and a carriage return.
///
/// Writing never blocks: a child that does not read would stop the writer for ever, and with it the
/// reading of the child's output. What finds no room is dropped, enough answers are waiting then.
class FRAMEWORK_API TAnswerPipe {
public:
    static constexpr std::size_t BlockSize = 1023;

    /// Without a way.
    TAnswerPipe() = default;
    /// @param write the end that answers are written to. @param read the other end, to see what is
    /// left in it; without it no answer waits for being taken.
    TAnswerPipe(KernelHandle write, KernelHandle read);

    /// Writes the block: the text, cut when it is longer, and zeros or what is left of a longer
    /// answer before it.
    void Answer(const std::string& text);

    /// Writes the carriage return of the last answer once the child has taken the block.
    ///
    /// A child that reads lines looks behind a carriage return at the end of what it got for the
    /// line feed, and would wait for it for ever. Returns also when there is output to be read, the
    /// child has ended or `stop` answers true; the carriage return then comes with a later call, or
    /// before the next block.
    void EndWhenTaken(HANDLE output, HANDLE child, const std::function<bool()>& stop);

private:
    void End();

    KernelHandle Write_, Read_;
    std::array<char, BlockSize + 1> Block_{};
    bool EndPending_ = false;
};

}  // namespace framework
