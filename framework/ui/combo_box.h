#pragma once

#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/control.h"

namespace framework {

/// A drop-down list: one of its items can be chosen, none can be typed.
class FRAMEWORK_API TComboBox : public TControl {
public:
    explicit TComboBox(TControl& parent, const std::vector<std::string>& items = {});

    void SetItems(const std::vector<std::string>& items);
    int ItemCount() const;
    std::string Item(int index) const;
    /// The chosen item from 0; -1 for none.
    int ItemIndex() const;
    /// Chooses an item without calling OnChange; anything outside the list chooses none.
    void SetItemIndex(int index);
    /// Chooses an item as the user does.
    void Select(int index);

    /// The height is that of the closed list, which the system sets itself.
    void SetBounds(int left, int top, int width, int height) override;

    /// The user has chosen an item.
    TNotifyEvent OnChange;

protected:
    void Notification(WORD code) override;
};

}  // namespace framework
