#pragma once

namespace tests {

/// What the process holds at a moment.
struct TResources {
    int Handles = 0;  ///< Kernel handles.
    int Threads = 0;
    int Windows = 0;     ///< Windows of the calling thread, hidden ones and children too.
    int GdiObjects = 0;  ///< 0 on 64-bit systems, where they cannot be counted this way.
};

TResources CountResources();

}  // namespace tests
