#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tandrel {

/// Replaces each macro $(Name) of a template by its value, which is not looked at again. A macro
/// without an end takes the rest of the template with it. A dollar sign opens a macro whatever
/// follows it; the name begins two characters behind it.
/// @param value answers the value of a name, empty when there is none.
std::string ReplaceMacros(std::string_view text,
                          const std::function<std::string(std::string_view name)>& value);

}  // namespace tandrel
