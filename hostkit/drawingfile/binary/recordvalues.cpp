#include "recordvalues.h"

#include <algorithm>

namespace hostkit {

namespace {

template <class Held>
Held* heldOf(const std::vector<std::unique_ptr<Held>>& all, std::size_t count, std::uint16_t slot) {
    for (std::size_t i = 0; i < count; ++i)
        if (all[i]->slot == slot) return all[i].get();
    return nullptr;
}

/// The next one that is not in use.
template <class Held>
Held& nextOf(std::vector<std::unique_ptr<Held>>& all, std::size_t& count) {
    if (count == all.size()) all.push_back(std::make_unique<Held>());
    return *all[count++];
}

} // namespace

void RecordScope::clear() {
    m_items.clear();
    m_slots.fill(0);
    m_arrayCount = m_loopCount = 0;
}

RecordValue& RecordScope::set(std::uint16_t slot) {
    if (mayHave(slot))
        for (Item& item : m_items)
            if (item.slot == slot) return item.value = RecordValue();
    return add(slot);
}

RecordValue& RecordScope::add(std::uint16_t slot) {
    Item& item = m_items.emplace_back();
    item.slot = slot;
    if (slot < 64 * m_slots.size()) m_slots[slot / 64] |= std::uint64_t{1} << (slot % 64);
    return item.value;
}

const RecordValue* RecordScope::find(std::uint16_t slot) const {
    if (!mayHave(slot)) return nullptr;
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const Item& item) { return item.slot == slot; });
    return found == m_items.end() ? nullptr : &found->value;
}

std::vector<RecordValue>& RecordScope::array(std::uint16_t slot) {
    if (Array* const found = heldOf(m_arrays, m_arrayCount, slot)) return found->values;
    Array& made = nextOf(m_arrays, m_arrayCount);
    made.slot = slot;
    made.values.clear();
    return made.values;
}

const std::vector<RecordValue>* RecordScope::findArray(std::uint16_t slot) const {
    const Array* const found = heldOf(m_arrays, m_arrayCount, slot);
    return found ? &found->values : nullptr;
}

RecordScope::Loop& RecordScope::loop(std::uint16_t slot) {
    if (Loop* const found = heldOf(m_loops, m_loopCount, slot)) return *found;
    Loop& made = nextOf(m_loops, m_loopCount);
    made.slot = slot;
    made.count = 0;
    return made;
}

const RecordScope::Loop* RecordScope::findLoop(std::uint16_t slot) const {
    return heldOf(m_loops, m_loopCount, slot);
}

RecordScope& RecordScope::addPass(Loop& loop) {
    std::size_t count = loop.count++;
    RecordScope& pass = nextOf(loop.passes, count);
    pass.clear();
    return pass;
}

} // namespace hostkit
