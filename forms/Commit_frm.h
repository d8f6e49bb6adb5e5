#pragma once

#include "forms/FileListStep.h"

namespace tandrel {

/// What a commit is to do.
class TCommit_Form : public TFileListStep {
public:
    TCommit_Form();
};

}  // namespace tandrel
