// Memory of an undo: what it found where it put something back; leaves out when it is used.
#pragma once

#include "changememory.h"

#include <string>
#include <vector>

namespace hostkit {

struct ChangeLog::RedoStep {
    Group group{};
    std::vector<Entry> entries{}; ///< of the group, which an undo after the redo needs again
    std::vector<Entry>
        opposites{}; ///< the latest change first; of a creation the index is its first in `taken`
    std::vector<TakenBack> taken{};
    std::size_t restored = 0;
    Adesk::UInt64 stateAfter = 0;
};

} // namespace hostkit
