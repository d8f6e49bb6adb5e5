#pragma once

#include <optional>
#include <string>

#include "framework/base/exceptions.h"

namespace tandrel {

/// Does what only touches the disk. The text of the error that it raised, or none; telling is left
/// to the caller, so that no error of the one who listens is taken for one of the disk.
template <class Action>
std::optional<std::string> ErrorOf(Action action) {
    try {
        action();
        return std::nullopt;
    } catch (const framework::Exception& error) {
        return error.what();
    }
}

}  // namespace tandrel
