#include "framework/ui/accessible_name.h"

#include <objbase.h>
#include <oleacc.h>

#include "framework/base/import.h"

namespace framework {
namespace {

// The name's own identifier is in no library of all compilers.
constexpr GUID NameProperty{
    0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

/// COM for one call: the thread may not have it at hand yet.
class TComponents {
public:
    TComponents()
        : End_(ImportFunction<decltype(::CoUninitialize)>(L"ole32.dll", "CoUninitialize")) {
        const auto begin =
            ImportFunction<decltype(::CoInitializeEx)>(L"ole32.dll", "CoInitializeEx");
        Begun_ = begin && SUCCEEDED(begin(nullptr, COINIT_APARTMENTTHREADED));
    }
    ~TComponents() {
        if (Begun_ && End_)
            End_();
    }
    TComponents(const TComponents&) = delete;
    TComponents& operator=(const TComponents&) = delete;

private:
    decltype(::CoUninitialize)* End_;
    bool Begun_;
};

}  // namespace

void TellAccessibleName(HWND window, const std::wstring& name) {
    const auto create =
        ImportFunction<decltype(::CoCreateInstance)>(L"ole32.dll", "CoCreateInstance");
    if (!create)
        return;
    const TComponents components;
    IAccPropServices* services = nullptr;
    if (FAILED(create(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                      reinterpret_cast<void**>(&services))))
        return;
    constexpr auto Client = static_cast<DWORD>(OBJID_CLIENT);
    if (name.empty())
        services->ClearHwndProps(window, Client, CHILDID_SELF, &NameProperty, 1);
    else
        services->SetHwndPropStr(window, Client, CHILDID_SELF, NameProperty, name.c_str());
    services->Release();
}

}  // namespace framework
