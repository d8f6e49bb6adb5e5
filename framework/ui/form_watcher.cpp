#include "framework/ui/form_watcher.h"

#include <algorithm>
#include <vector>

#include "framework/ui/form.h"

namespace framework {
namespace {

std::vector<TFormWatcher*>& Watchers() {
    static std::vector<TFormWatcher*> watchers;
    return watchers;
}

}  // namespace

TFormWatcher::TFormWatcher(const TControl& control) : Control_(control) {
    Watchers().push_back(this);
}

TFormWatcher::~TFormWatcher() {
    std::erase(Watchers(), this);
}

HWND TFormWatcher::FormWindow() const {
    return Control_.Handle() ? ::GetAncestor(Control_.Handle(), GA_ROOT) : nullptr;
}

bool TFormWatcher::FormEnabled() const {
    const HWND window = FormWindow();
    return !dynamic_cast<TForm*>(TControl::FromHandle(window)) || ::IsWindowEnabled(window);
}

void TFormWatcher::Tell(const TForm& form) {
    std::vector<TFormWatcher*> told;
    std::ranges::copy_if(Watchers(), std::back_inserter(told), [&](const TFormWatcher* watcher) {
        return watcher->FormWindow() == form.Handle();
    });
    for (TFormWatcher* watcher : told)
        watcher->FormEnabledChanged();
}

}  // namespace framework
