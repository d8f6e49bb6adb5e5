#pragma once

#include "forms/FrameDetForm.h"
#include "forms/Pictures.h"
#include "framework/ui/tree_view.h"

namespace tandrel {

class TWorkDirItem;
class TWorkDirTree;

/// Which files of the working copy the client is to know. The choice stands in the model.
class TFilter_Form : public TFrameDetForm {
public:
    TFilter_Form();
    bool StatusOk() override;
    void LoadFormData() override;

protected:
    void SetReadOnly();

private:
    void LoadRootNodes();
    bool Expand(framework::TTreeViewNode& node);
    void StateClick(framework::TTreeViewNode& node);

    bool ReadOnly_ = false;
    TStateImages States_;
    framework::TLabel* Heading_;
    framework::TTreeView* TreeView1_;
};

/// The same, to look at.
class TFilter_FormReadOnly : public TFilter_Form {
public:
    TFilter_FormReadOnly();
};

}  // namespace tandrel
