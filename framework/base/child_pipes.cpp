#include "framework/base/child_pipes.h"

#include <winternl.h>

#include <algorithm>
#include <utility>

#include "framework/base/import.h"

namespace framework {

namespace {

/// FILE_PIPE_LOCAL_INFORMATION of the system, which only drivers have a header for.
struct TPipeInformation {
    ULONG NamedPipeType, NamedPipeConfiguration, MaximumInstances, CurrentInstances;
    ULONG InboundQuota, ReadDataAvailable, OutboundQuota, WriteQuotaAvailable;
    ULONG NamedPipeState, NamedPipeEnd;
};
constexpr auto PipeInformation = static_cast<FILE_INFORMATION_CLASS>(24);

std::optional<TPipeRoom> AskSystem(HANDLE write) {
    static auto* const query =
        ImportFunction<decltype(::NtQueryInformationFile)>(L"ntdll.dll", "NtQueryInformationFile");
    TPipeInformation information{};
    IO_STATUS_BLOCK status{};
    if (!query || query(write, &status, &information, sizeof information, PipeInformation) < 0)
        return std::nullopt;
    return TPipeRoom{information.InboundQuota, information.WriteQuotaAvailable};
}

/// Whether there is something to be read, or the end to be seen.
bool HasOutput(HANDLE output) {
    DWORD available = 0;
    return !::PeekNamedPipe(output, nullptr, 0, nullptr, &available, nullptr) || available > 0;
}

}  // namespace

std::function<std::optional<TPipeRoom>(HANDLE write)>& PipeRoom() {
    static std::function<std::optional<TPipeRoom>(HANDLE)> asked = AskSystem;
    return asked;
}

TPipe MakePipe() {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    TPipe pipe;
    ::CreatePipe(pipe.Read.Receive(), pipe.Write.Receive(), &inheritable, 0);
    return pipe;
}

TAnswerPipe::TAnswerPipe(KernelHandle write) : Write_(std::move(write)) {
    DWORD mode = PIPE_READMODE_BYTE | PIPE_NOWAIT;
    ::SetNamedPipeHandleState(Write_.Get(), &mode, nullptr, nullptr);
    // Some systems say that there is no room, always.
    const auto room = PipeRoom()(Write_.Get());
    TellsRoom_ = room && room->Size > 0 && room->Free == room->Size;
}

void TAnswerPipe::Write(const char* bytes, std::size_t count) {
    DWORD written = 0;
    ::WriteFile(Write_.Get(), bytes, static_cast<DWORD>(count), &written, nullptr);
    Unread_ += written;
}

void TAnswerPipe::Answer(const std::string& text) {
    if (EndPending_)
        End();
    const std::size_t length = std::min(text.size(), BlockSize);
    *std::copy_n(text.data(), length, Block_.data()) = '\0';
    Write(Block_.data(), BlockSize);
    EndPending_ = true;
    Written_ = ::GetTickCount64();
}

void TAnswerPipe::End() {
    EndPending_ = false;
    Write("\r", 1);
}

bool TAnswerPipe::IsTaken() {
    if (const auto room = TellsRoom_ ? PipeRoom()(Write_.Get()) : std::nullopt) {
        const std::size_t used = room->Size - std::min(room->Free, room->Size);
        // More than there can be unread: a reader waits, so nothing is unread.
        if (used == 0 || used > Unread_) {
            Unread_ = 0;
            return true;
        }
    }
    return ::GetTickCount64() - Written_ >= TimeToTake;
}

void TAnswerPipe::EndWhenTaken(HANDLE output, HANDLE child, const std::function<bool()>& stop) {
    constexpr DWORD Interval = 5;  // ms
    if (!EndPending_)
        return;
    while (!stop()) {
        if (EndPending_ && IsTaken())
            End();
        // Also behind the end: a child that does not take its answer may never write again, and
        // nobody can be stopped who waits for that in a read.
        if (HasOutput(output) || ::WaitForSingleObject(child, Interval) == WAIT_OBJECT_0)
            return;
    }
}

}  // namespace framework
