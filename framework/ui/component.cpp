#include "framework/ui/component.h"

#include <algorithm>

#include "framework/base/text.h"

namespace framework {

TComponent::~TComponent() {
    FreeComponents();
}

TComponent* TComponent::FindComponent(std::string_view name) const {
    const auto found = std::ranges::find_if(
        Components_, [&](const auto& component) { return SameText(component->Name_, name); });
    return found == Components_.end() ? nullptr : found->get();
}

void TComponent::Own(std::unique_ptr<TComponent> component, std::string name) {
    component->Owner_ = this;
    component->Name_ = std::move(name);
    Components_.push_back(std::move(component));
}

void TComponent::Free() {
    auto& siblings = Owner_->Components_;
    const auto self = std::ranges::find_if(
        siblings, [this](const auto& component) { return component.get() == this; });
    // Out of the list first: destruction may look for components or free others.
    const std::unique_ptr<TComponent> last = std::move(*self);
    siblings.erase(self);
}

void TComponent::FreeComponents() {
    while (!Components_.empty()) {
        const std::unique_ptr<TComponent> last = std::move(Components_.back());
        Components_.pop_back();
    }
}

}  // namespace framework
