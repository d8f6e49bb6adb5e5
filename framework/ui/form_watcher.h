#pragma once

#include <windows.h>

#include "framework/api.h"

namespace framework {

class TControl;
class TForm;

/// What has to rest while nobody can use its form: it hears when the form's window is disabled, as
/// all windows are during a command or under a dialog, and when it is enabled again. Main thread
/// only.
class FRAMEWORK_API TFormWatcher {
public:
    TFormWatcher(const TFormWatcher&) = delete;
    TFormWatcher& operator=(const TFormWatcher&) = delete;

protected:
    /// @param control of the form; it must outlive the watcher.
    explicit TFormWatcher(const TControl& control);
    virtual ~TFormWatcher();

    /// Whether the window that all of the form stands on is enabled. Of a window that is no form
    /// nothing would be heard: such a one counts as enabled.
    bool FormEnabled() const;
    /// FormEnabled answers something else than before.
    virtual void FormEnabledChanged() = 0;

private:
    friend class TForm;
    static void Tell(const TForm& form);
    HWND FormWindow() const;

    const TControl& Control_;
};

}  // namespace framework
