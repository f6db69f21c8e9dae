#include "handletable.h"

namespace hostkit {

void HandleTable::place(AcDbStub* stub) {
    std::size_t i = slotOf(stub->handle);
    while (m_slots[i]) i = (i + 1) & m_mask;
    m_slots[i] = stub;
}

void HandleTable::grow() {
    constexpr std::size_t smallest = 64;
    std::vector<AcDbStub*> slots(m_slots.empty() ? smallest : 2 * m_slots.size(), nullptr);
    slots.swap(m_slots);
    m_mask = m_slots.size() - 1;
    for (AcDbStub* stub : slots)
        if (stub) place(stub);
}

void HandleTable::insert(AcDbStub* stub) {
    if (4 * (m_count + 1) > 3 * m_slots.size()) grow();
    place(stub);
    ++m_count;
}

} // namespace hostkit
