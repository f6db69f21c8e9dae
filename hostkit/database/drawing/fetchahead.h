// Walks over many entities without waiting for memory; leaves out what is done with them.
#pragma once

#include "dbid.h"

#include <vector>

namespace hostkit {

/// For a walk in order that looks at the object at `index` next: has the processor fetch the beginning of one
/// that comes some steps later, where class, owner and layer stand. Changes nothing, and any index is good.
inline void fetchAhead(const std::vector<AcDbObjectId>& ids, std::size_t index) {
    constexpr std::size_t steps = 16, line = 64;
    if (index + steps >= ids.size()) return;
    const AcDbStub* const stub = ids[index + steps].stub();
    if (!stub || !stub->object) return;
    const auto object = reinterpret_cast<const char*>(stub->object);
    __builtin_prefetch(object);
    __builtin_prefetch(object + line);
}

} // namespace hostkit
