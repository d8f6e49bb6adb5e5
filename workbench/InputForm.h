#pragma once

#include <string>
#include <vector>

#include "framework/ui/form.h"

namespace workbench {

/// One thing that an input form asks for.
struct TInput {
    enum TKind { Text, Flag, Choice, Note };
    TKind Kind = Text;
    std::string Label;
    std::string Value;               ///< The text, which a note only shows; "1" for a set flag.
    std::vector<std::string> Items;  ///< Of a choice, whose value is one of them.
};

/// Lets the user edit some values. @return false, with nothing changed, when the user gave up.
bool AskFor(const std::string& caption, std::vector<TInput>& inputs);

}  // namespace workbench
