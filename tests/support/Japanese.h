#pragma once

#include "framework/base/lead_bytes.h"

namespace tests {

/// While it lives, letters have two bytes as they do in the Japanese code page. What the system
/// converts stays in its own one.
class Japanese {
public:
    Japanese() {
        framework::LeadBytes() = framework::TLeadBytes(
            [](unsigned char c) { return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC); });
    }
    ~Japanese() { framework::LeadBytes() = Before_; }
    Japanese(const Japanese&) = delete;
    Japanese& operator=(const Japanese&) = delete;

private:
    const framework::TLeadBytes Before_ = framework::LeadBytes();
};

/// "Source", as a Japanese user calls a folder: three letters, whose second bytes are a backslash,
/// a bracket and an "X".
inline constexpr const char* Source = "\x83\\\x81[\x83X";
/// One letter with a vertical bar, one with an "@".
inline constexpr const char* Bar = "\x83|";
inline constexpr const char* At = "\x83@";
/// Two letters whose second bytes are lead bytes by themselves.
inline constexpr const char* Leads = "\x83\x83\x83\x83";

}  // namespace tests
