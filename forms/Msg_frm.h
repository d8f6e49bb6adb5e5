#pragma once

#include "forms/FrameDetForm.h"
#include "framework/ui/rich_edit.h"

namespace tandrel {

/// The message that a command writes into the repository's log.
class TMessage_Frm : public TFrameDetForm {
public:
    TMessage_Frm();
    void LoadFormData() override;
    void SaveFormData() override;

protected:
    void Shown() override;

private:
    framework::TMemo* Memo1_;
};

}  // namespace tandrel
