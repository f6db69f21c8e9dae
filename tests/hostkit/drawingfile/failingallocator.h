// The test program's memory, which can run out when it is told to.
#pragma once

#include <cstddef>

namespace drawingtest {

/// Counts the allocations of operator new, of all libraries too, and lets one fail, or all from one on.
class FailingAllocator {
public:
    /// Counts from here on; nothing fails.
    static void count();
    /// The allocation of that number from here on throws std::bad_alloc, and with `forGood` all later ones
    /// too.
    static void failAt(std::size_t number, bool forGood);
    /// All is well again; how many allocations there were.
    static std::size_t stop();
    /// One has failed since failAt.
    static bool hasFailed();
};

} // namespace drawingtest
