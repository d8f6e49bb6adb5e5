#pragma once

#include <string>

#include "framework/ui/form.h"

namespace tandrel {

/// The box that tells how an operation ended.
class TCucces_Form final : public framework::TForm {
public:
    TCucces_Form(const std::string& caption, const std::string& text, int code);
};

}  // namespace tandrel
