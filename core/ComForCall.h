#pragma once

#include <windows.h>

#include <objbase.h>

namespace tandrel {

/// The shell's names are objects of COM, which the calling thread may not have at hand yet.
class TComForCall {
public:
    TComForCall() : Initialized_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~TComForCall() {
        if (Initialized_)
            ::CoUninitialize();
    }
    TComForCall(const TComForCall&) = delete;
    TComForCall& operator=(const TComForCall&) = delete;

private:
    bool Initialized_;
};

}  // namespace tandrel
