#pragma once

#include <cstddef>
#include <string>

/// What this process holds of the system, all told.
struct Resources {
    std::size_t handles;
    std::size_t threads;
    std::size_t gdiObjects;
    std::size_t windows;
    std::size_t menus;
    std::size_t icons;      // and cursors
    std::size_t heapBytes;  // in use on the heap that all allocations come from

    [[nodiscard]] static Resources OfThisProcess();
    /// As in "35 handles, 3 threads, ...".
    [[nodiscard]] std::string Text() const;
};
