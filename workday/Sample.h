#pragma once

#include <string>

namespace workday {

inline constexpr const char* Module = "sample";
inline constexpr const char* MainFile = "int main() { return 0; }\r\n";
inline constexpr const char* ChangedMainFile = "int main() { return 42; }\r\n";

/// Writes to standard output at once, and to transcript.txt in the folder that TANDREL_OUT names.
void Write(const std::string& text);

inline bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace workday
