#pragma once

#include <functional>

namespace tests {

/// What the process holds at a moment.
struct TResources {
    int Handles = 0;  ///< Kernel handles.
    int Threads = 0;
    int Windows = 0;     ///< Windows of the calling thread, hidden ones and children too.
    int GdiObjects = 0;  ///< 0 on 64-bit systems, where they cannot be counted this way.
};

TResources CountResources();

/// Does something once, to warm up, and then so many times; fails the test when the process holds
/// more afterwards than it did before.
void ExpectNothingLeft(int times, const std::function<void()>& action);

}  // namespace tests
