#pragma once

#include <stdexcept>
#include <string>

#include "framework/api.h"

namespace framework {

/// Base of every error the framework raises. The message is for the user, in the process's code
/// page.
class FRAMEWORK_API Exception : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    ~Exception() override;
};

/// The silent exception: ends an action without a word to the user.
class FRAMEWORK_API EAbort : public Exception {
public:
    EAbort();
    ~EAbort() override;
};

/// An operation without a body was called.
class FRAMEWORK_API EAbstractError : public Exception {
public:
    using Exception::Exception;
    ~EAbstractError() override;
};

/// A text, date or format could not be converted.
class FRAMEWORK_API EConvertError : public Exception {
public:
    using Exception::Exception;
    ~EConvertError() override;
};

/// An index outside a list.
class FRAMEWORK_API EListError : public Exception {
public:
    using Exception::Exception;
    ~EListError() override;
};

/// A stored value that is damaged or ends too early.
class FRAMEWORK_API EReadError : public Exception {
public:
    using Exception::Exception;
    ~EReadError() override;
};

/// A registry value that is missing or of the wrong type, or a registry call that failed.
class FRAMEWORK_API ERegistryError : public Exception {
public:
    using Exception::Exception;
    ~ERegistryError() override;
};

/// An error that the operating system reported.
class FRAMEWORK_API EOSError : public Exception {
public:
    /// @param code the system's error number; 0 stands for "a call to an OS function failed".
    explicit EOSError(unsigned long code);
    ~EOSError() override;
    unsigned long ErrorCode;
};

/// A file could not be opened, read or written.
class FRAMEWORK_API EInOutError : public Exception {
public:
    /// @param code the system's error number. @param path the file, named in the message.
    EInOutError(unsigned long code, const std::string& path);
    ~EInOutError() override;
    unsigned long ErrorCode;
};

/// Raises the EOSError of the calling thread's last system error.
[[noreturn]] FRAMEWORK_API void RaiseLastOSError();

/// Raises EAbort.
[[noreturn]] FRAMEWORK_API void Abort();

/// Raises the EAbstractError of an operation that a class only declares.
[[noreturn]] FRAMEWORK_API void AbstractError(const std::string& operation);

/// The system's text for an error number, without a line break; never empty.
FRAMEWORK_API std::string SysErrorMessage(unsigned long code);

}  // namespace framework
