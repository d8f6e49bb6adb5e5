#include "framework/base/exceptions.h"

#if defined(_WIN32)
#include <windows.h>
#endif

#include "framework/base/text.h"

namespace framework {

// The destructors stand here so that each class has its type information in this library alone;
// otherwise a handler of another library might not know the exception again.
Exception::~Exception() = default;
EAbort::~EAbort() = default;
EAbstractError::~EAbstractError() = default;
EConvertError::~EConvertError() = default;
EListError::~EListError() = default;
EReadError::~EReadError() = default;
ERegistryError::~ERegistryError() = default;
EOSError::~EOSError() = default;
EInOutError::~EInOutError() = default;

EAbort::EAbort() : Exception("Operation aborted") {}

EOSError::EOSError(unsigned long code)
    : Exception(code == 0 ? "A call to an OS function failed"
                          : "System error " + std::to_string(code) + ": " + SysErrorMessage(code)),
      ErrorCode(code) {}

EInOutError::EInOutError(unsigned long code, const std::string& path)
    : Exception(path + ": " + SysErrorMessage(code)), ErrorCode(code) {}

void RaiseLastOSError() {
#if defined(_WIN32)
    throw EOSError(::GetLastError());
#else
    throw EOSError(0);
#endif
}

void Abort() {
    throw EAbort();
}

void AbstractError(const std::string& operation) {
    throw EAbstractError("Abstract error: " + operation);
}

std::string SysErrorMessage(unsigned long code) {
    std::string message;
#if defined(_WIN32)
    wchar_t buffer[1024];
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, code, 0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    message = Trim(FromWide({buffer, length}));
#endif
    if (message.empty())
        message = "Error " + std::to_string(code);
    return message;
}

}  // namespace framework
