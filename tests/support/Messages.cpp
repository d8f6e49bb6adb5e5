#include "tests/support/Messages.h"

#include "framework/ui/application.h"

namespace tests {

bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds) {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    while (!condition()) {
        if (::GetTickCount64() > end) return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        framework::Application().ProcessMessages();
    }
    return true;
}

TMessageLog::TMessageLog(tandrel::TCustomCvsObj& obj) {
    obj.OnMessage = [this](framework::TObject*, const std::string& text) { Texts.push_back(text); };
}

std::string TMessageLog::All() const {
    std::string all;
    for (const std::string& text : Texts) all += text;
    return all;
}

}  // namespace tests
