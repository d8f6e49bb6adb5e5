#include "tools/Macros.h"

namespace tandrel {

std::string ReplaceMacros(std::string_view text,
                          const std::function<std::string(std::string_view name)>& value) {
    constexpr std::size_t Opening = 2;  // characters before the name
    std::string result;
    for (std::size_t at = 0;;) {
        const std::size_t macro = text.find('$', at);
        result += text.substr(at, macro - at);
        if (macro == std::string_view::npos)
            return result;
        const std::size_t end = text.find(')', macro);
        if (end == std::string_view::npos)
            return result;
        const std::size_t name = macro + Opening;
        result += value(name < end ? text.substr(name, end - name) : std::string_view());
        at = end + 1;
    }
}

}  // namespace tandrel
