#include "framework/base/child_pipes.h"

#include <algorithm>
#include <utility>

namespace framework {

namespace {

/// How much the pipe holds, as seen from its reading end; false when it cannot be said.
bool PeekPipe(HANDLE pipe, DWORD& available) {
    return ::PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) != FALSE;
}

}  // namespace

TPipe MakePipe() {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    TPipe pipe;
    ::CreatePipe(pipe.Read.Receive(), pipe.Write.Receive(), &inheritable, 0);
    return pipe;
}

TAnswerPipe::TAnswerPipe(KernelHandle write, KernelHandle read)
    : Write_(std::move(write)), Read_(std::move(read)) {
    DWORD mode = PIPE_READMODE_BYTE | PIPE_NOWAIT;
    ::SetNamedPipeHandleState(Write_.Get(), &mode, nullptr, nullptr);
}

void TAnswerPipe::Answer(const std::string& text) {
    if (EndPending_)
        End();
    const std::size_t length = std::min(text.size(), BlockSize);
    *std::copy_n(text.data(), length, Block_.data()) = '\0';
    DWORD written = 0;
    ::WriteFile(Write_.Get(), Block_.data(), static_cast<DWORD>(BlockSize), &written, nullptr);
    EndPending_ = true;
}

void TAnswerPipe::End() {
    DWORD written = 0;
    ::WriteFile(Write_.Get(), "\r", 1, &written, nullptr);
    EndPending_ = false;
}

void TAnswerPipe::EndWhenTaken(HANDLE output, HANDLE child, const std::function<bool()>& stop) {
    constexpr DWORD Interval = 5;  // ms
    while (EndPending_ && !stop()) {
        DWORD unread = 0, available = 0;
        if (!PeekPipe(Read_.Get(), unread) || unread == 0)
            End();
        if (!PeekPipe(output, available) || available > 0 ||
            ::WaitForSingleObject(child, EndPending_ ? Interval : 0) == WAIT_OBJECT_0)
            return;
    }
}

}  // namespace framework
