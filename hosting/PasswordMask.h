#pragma once

#include <string>

namespace hosting {

/// The text with the passwords of repositories' roots (":pserver:user:password@server") replaced by
/// asterisks. @param known a password that is replaced wherever it stands; too short a one stands
/// in too many words, and counts in roots alone.
std::string MaskPasswords(std::string text, const std::string& known = {});

/// Masks what comes in pieces, which may end in the middle of a root: such a one is held back until
/// its rest has come.
class TMaskedPieces {
public:
    /// What can be shown now.
    std::string Next(const std::string& piece, const std::string& known);
    /// What was held back; nothing more comes.
    std::string Rest(const std::string& known);

private:
    std::string Held_;
};

}  // namespace hosting
