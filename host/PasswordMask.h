#pragma once

#include <string>

namespace host {

/// The text with the passwords of repositories' roots (":pserver:user:password@server") replaced by
/// asterisks.
std::string MaskPasswords(std::string text);

}  // namespace host
