#include "nameindex.h"

#include <algorithm>

namespace hostkit {

void NameIndex::put(Slot slot) {
    std::size_t i = slot.hash & m_mask;
    while (m_slots[i].next != 0) i = (i + 1) & m_mask;
    m_slots[i] = slot;
}

void NameIndex::grow() {
    constexpr std::size_t smallest = 8;
    std::vector<Slot> slots(std::max(smallest, m_slots.size() * 2));
    slots.swap(m_slots);
    m_mask = m_slots.size() - 1;
    for (const Slot& slot : slots)
        if (slot.next != 0) put(slot);
}

void NameIndex::insert(std::wstring_view name, std::size_t place) {
    if (m_count * 2 >= m_slots.size()) grow();
    put({hashOf(name), static_cast<Adesk::UInt32>(place + 1)});
    ++m_count;
}

// The slots behind the free one close up, so that every chain stays without a gap.
void NameIndex::erase(std::wstring_view name, std::size_t place) {
    if (m_slots.empty()) return;
    std::size_t gap = hashOf(name) & m_mask;
    while (m_slots[gap].next != 0 && m_slots[gap].next != place + 1) gap = (gap + 1) & m_mask;
    if (m_slots[gap].next == 0) return;
    --m_count;
    for (std::size_t i = (gap + 1) & m_mask; m_slots[i].next != 0; i = (i + 1) & m_mask) {
        const std::size_t home = m_slots[i].hash & m_mask;
        if (((i - home) & m_mask) < ((i - gap) & m_mask)) continue;
        m_slots[gap] = m_slots[i];
        gap = i;
    }
    m_slots[gap] = Slot();
}

} // namespace hostkit
