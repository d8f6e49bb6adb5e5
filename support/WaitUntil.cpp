#include "support/WaitUntil.h"

#include <windows.h>

#include "framework/ui/application.h"

namespace support {

bool WaitUntil(const std::function<bool()>& condition, unsigned milliseconds) {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    while (!condition()) {
        if (::GetTickCount64() > end)
            return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        framework::Application().ProcessMessages();
    }
    return true;
}

}  // namespace support
