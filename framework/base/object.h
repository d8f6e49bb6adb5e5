#pragma once

#include <functional>

#include "framework/api.h"

namespace framework {

/// Root of the class tree. Objects have identity: they are neither copied nor moved.
class FRAMEWORK_API TObject {
public:
    TObject() = default;
    TObject(const TObject&) = delete;
    TObject& operator=(const TObject&) = delete;
    virtual ~TObject();
};

/// An event without further arguments. Test it for assignment before every call.
using TNotifyEvent = std::function<void(TObject* Sender)>;

}  // namespace framework
