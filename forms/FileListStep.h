#pragma once

#include <string>
#include <vector>

#include "forms/FrameDetForm.h"

namespace tandrel {

struct TCvsOptions;

/// A step that shows the files of a command ("Memo1") over its options ("CheckBox1" and so on).
class TFileListStep : public TFrameDetForm {
public:
    void LoadFormData() override;
    void SaveFormData() override;

protected:
    struct TOption {
        const char* Caption;
        bool TCvsOptions::*Flag;
    };
    TFileListStep(const std::string& caption, const std::string& heading,
                  const std::vector<TOption>& options);

private:
    struct TBox {
        framework::TCheckBox* Box;
        bool TCvsOptions::*Flag;
    };

    framework::TControl* Memo1_;
    std::vector<TBox> Boxes_;
};

}  // namespace tandrel
