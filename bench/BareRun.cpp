#include "bench/BareRun.h"

#include <cstring>
#include <thread>

#include "framework/base/exceptions.h"
#include "framework/base/handle.h"

namespace bench {
namespace {

constexpr UINT WM_CHUNK = WM_USER + 1;

LRESULT CALLBACK ChunkProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_CHUNK)
        return ::DefWindowProcW(window, message, wParam, lParam);
    const auto& onChunk = *reinterpret_cast<const std::function<void(const char*)>*>(lParam);
    onChunk(reinterpret_cast<const char*>(wParam));
    return 0;
}

}  // namespace

void BareRun(const std::string& commandLine, const std::function<void(const char*)>& onChunk,
             const std::string& directory) {
    framework::KernelHandle outRead, outWrite, inRead, inWrite;
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    ::CreatePipe(outRead.Receive(), outWrite.Receive(), &inheritable, 0);
    ::CreatePipe(inRead.Receive(), inWrite.Receive(), &inheritable, 0);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.hStdInput = inRead.Get();
    startup.hStdOutput = startup.hStdError = outWrite.Get();
    PROCESS_INFORMATION information{};
    std::string line = commandLine;
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_CONSOLE, nullptr,
                          directory.c_str(), &startup, &information))
        framework::RaiseLastOSError();
    const framework::KernelHandle process(information.hProcess), thread(information.hThread);
    outWrite.Reset();
    inRead.Reset();
    char buffer[1024];
    for (DWORD read = 0; ::ReadFile(outRead.Get(), buffer, 1023, &read, nullptr);) {
        buffer[read] = '\0';
        onChunk(buffer);
    }
    ::WaitForSingleObject(process.Get(), INFINITE);
}

void BareRelay(const std::string& commandLine, const std::function<void(const char*)>& onChunk) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = ChunkProc;
    windowClass.lpszClassName = L"BenchChunks";
    ::RegisterClassW(&windowClass);
    const HWND window = ::CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0,
                                          nullptr, nullptr, nullptr, nullptr);
    const DWORD reader = ::GetCurrentThreadId();
    std::thread worker([&] {
        BareRun(commandLine, [&](const char* chunk) {
            ::SendMessageW(window, WM_CHUNK, reinterpret_cast<WPARAM>(chunk),
                           reinterpret_cast<LPARAM>(&onChunk));
        });
        ::PostThreadMessageW(reader, WM_QUIT, 0, 0);
    });
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0))
        ::DispatchMessageW(&message);
    worker.join();
    ::DestroyWindow(window);
}

}  // namespace bench
