#pragma once

#include <string>

#include "framework/ui/form.h"

namespace tandrel {

/// The client's question, to be answered "Yes" or "No".
class TConfirm_Form final : public framework::TForm {
public:
    explicit TConfirm_Form(const std::string& question);
};

}  // namespace tandrel
