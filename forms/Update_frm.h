#pragma once

#include "forms/FileListStep.h"

namespace tandrel {

/// What an update is to do.
class TUpdate_Form : public TFileListStep {
public:
    TUpdate_Form();
};

}  // namespace tandrel
