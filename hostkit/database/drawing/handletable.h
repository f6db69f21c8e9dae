// Look-up of stubs by handle: a flat table that grows; leaves out removal, since ids stay as long as their
// drawing.
#pragma once

#include "dbid.h"

#include <cstddef>
#include <vector>

namespace hostkit {

/// Open addressing over stub pointers, at most three quarters full. Eight handles that follow one another
/// share a cache line, as drawings number their objects.
class HandleTable {
public:
    AcDbStub* find(Adesk::UInt64 handle) const {
        if (m_slots.empty()) return nullptr;
        for (std::size_t i = slotOf(handle);; i = (i + 1) & m_mask) {
            AcDbStub* stub = m_slots[i];
            if (!stub || stub->handle == handle) return stub;
        }
    }
    /// The stub's handle is not in the table yet.
    void insert(AcDbStub* stub);
    std::size_t count() const { return m_count; }

private:
    std::size_t slotOf(Adesk::UInt64 handle) const {
        constexpr Adesk::UInt64 golden = 0x9E3779B97F4A7C15ull;
        const Adesk::UInt64 group = (handle >> 3) * golden;
        return ((group >> 20 ^ group >> 40) << 3 | (handle & 7)) & m_mask;
    }
    void grow();
    void place(AcDbStub* stub);

    std::vector<AcDbStub*> m_slots;
    std::size_t m_mask = 0;
    std::size_t m_count = 0;
};

} // namespace hostkit
