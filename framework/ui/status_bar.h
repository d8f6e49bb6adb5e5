#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/api.h"
#include "framework/ui/control.h"

namespace framework {

/// The line at the lower edge of a program's window, in parts that each show a text.
class FRAMEWORK_API TStatusBar : public TControl {
public:
    /// @param widths of the parts in design units; the last one is as wide as there is room.
    TStatusBar(TControl& parent, const std::vector<int>& widths);

    /// The text of a part, which begins at 0. What does not fit shows while the mouse rests on it.
    void SetPartText(int part, const std::string& text);
    const std::string& PartText(int part) const {
        return Texts_.at(static_cast<std::size_t>(part));
    }
    /// A part was clicked.
    std::function<void(int part)> OnPartClick;

protected:
    LRESULT Notify(NMHDR& header) override;

private:
    std::vector<std::string> Texts_;
};

}  // namespace framework
