#pragma once

#include <string>

#include "framework/api.h"
#include "framework/ui/control.h"

namespace framework {

/// One or more lines of text, shown as they are: an ampersand is an ampersand.
class FRAMEWORK_API TLabel : public TControl {
public:
    /// @param maxWidth pixels beyond which a line is broken; 0 for never.
    TLabel(TControl& parent, const std::string& caption, int maxWidth = 0);
    /// Sets the text and makes the label as large as the text is.
    void SetText(const std::string& text) override;

protected:
    void Resized() override;

private:
    void AdjustSize();

    int MaxWidth_;
};

/// An area that holds other controls, or room.
class FRAMEWORK_API TPanel : public TControl {
public:
    explicit TPanel(TControl& parent);
};

}  // namespace framework
