#include "framework/base/format.h"

#include <cstddef>

#include "framework/base/exceptions.h"

namespace framework {

namespace {

[[noreturn]] void Fail(std::string_view format, const char* why) {
    throw EConvertError(std::string(why) + " in the format \"" + std::string(format) + "\"");
}

}  // namespace

std::string Format(std::string_view format, FormatArgs args) {
    std::string result;
    const FormatArg* next = args.begin();
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] != '%') {
            result += format[at];
            continue;
        }
        const char kind = ++at < format.size() ? format[at] : '\0';
        if (kind == '%') {
            result += '%';
            continue;
        }
        if (kind != 's' && kind != 'S' && kind != 'd')
            Fail(format, "Unknown place holder");
        if (next == args.end())
            Fail(format, "Missing argument");
        const auto* text = std::get_if<std::string_view>(&next->Value);
        const auto* number = std::get_if<long long>(&next->Value);
        if ((kind == 'd') != (number != nullptr))
            Fail(format, "Argument of the wrong kind");
        if (number != nullptr)
            result += std::to_string(*number);
        else
            result += *text;
        ++next;
    }
    return result;
}

}  // namespace framework
