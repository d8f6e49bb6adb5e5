#pragma once

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "framework/api.h"

namespace framework {

/// One argument of Format: a text or a whole number. Refers to the text, does not keep it.
class FormatArg {
public:
    FormatArg(std::string_view text) : Value(text) {}
    FormatArg(const std::string& text) : Value(std::string_view(text)) {}
    FormatArg(const char* text) : Value(std::string_view(text)) {}
    FormatArg(std::integral auto number) : Value(static_cast<long long>(number)) {}

    std::variant<std::string_view, long long> Value;
};

using FormatArgs = std::initializer_list<FormatArg>;

/// Replaces each place holder of `format` by the next argument: %s and %S (alike) take a text, %d a
/// whole number in decimal, %% writes one percent sign. Texts are inserted as they are and never
/// looked at again. Raises EConvertError for an unknown place holder, a missing argument or one of
/// the wrong kind; arguments left over are ignored.
FRAMEWORK_API std::string Format(std::string_view format, FormatArgs args);

}  // namespace framework
