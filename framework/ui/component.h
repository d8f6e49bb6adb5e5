#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/api.h"
#include "framework/base/object.h"

namespace framework {

/// A named part of a form or of the application. An owner frees its components with itself, the
/// last one first.
class FRAMEWORK_API TComponent : public TObject {
public:
    TComponent() = default;
    ~TComponent() override;

    /// The name it is found by; empty for none.
    const std::string& Name() const { return Name_; }
    TComponent* Owner() const { return Owner_; }

    /// The owned component of that name (any case), or none. Does not look into components of
    /// components.
    TComponent* FindComponent(std::string_view name) const;
    /// As above; none also when it is of another class.
    template <class T>
    T* Find(std::string_view name) const {
        return dynamic_cast<T*>(FindComponent(name));
    }

    /// Makes a component that this one owns. It is constructed before it is owned.
    template <class T, class... Args>
    T& Make(std::string name, Args&&... args) {
        auto component = std::make_unique<T>(std::forward<Args>(args)...);
        T& result = *component;
        Own(std::move(component), std::move(name));
        return result;
    }

    /// Takes the component from its owner and destroys it; nothing of it may be used afterwards.
    void Free();

protected:
    /// Destroys all owned components now. For destructors of classes whose components refer to
    /// more of them than this base.
    void FreeComponents();

private:
    void Own(std::unique_ptr<TComponent> component, std::string name);

    TComponent* Owner_ = nullptr;
    std::string Name_;
    std::vector<std::unique_ptr<TComponent>> Components_;
};

}  // namespace framework
