// Look-up of names: finding the place of a name in a list without regard to case; leaves out the list, which
// its owner holds.
#pragma once

#include "adesk.h"
#include "casefold.h"

#include <string_view>
#include <vector>

namespace hostkit {

/// Where names stand in a list. It holds hashes and places alone, so that a look-up among many costs two or
/// three reads of memory; the names are asked for through `nameAt(place)`.
class NameIndex {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    template <typename NameAt>
    std::size_t find(std::wstring_view name, NameAt&& nameAt) const {
        if (m_slots.empty()) return none;
        const Adesk::UInt32 hash = hashOf(name);
        for (std::size_t i = hash & m_mask; m_slots[i].next != 0; i = (i + 1) & m_mask)
            if (m_slots[i].hash == hash && equalFolded(nameAt(m_slots[i].next - 1), name))
                return m_slots[i].next - 1;
        return none;
    }
    /// The name is not in the index yet.
    void insert(std::wstring_view name, std::size_t place);
    /// Takes out the place that was inserted under that name; nothing when there is none.
    void erase(std::wstring_view name, std::size_t place);

private:
    struct Slot {
        Adesk::UInt32 hash = 0;
        Adesk::UInt32 next = 0; ///< the place and one; 0: the slot is free
    };
    static Adesk::UInt32 hashOf(std::wstring_view name) {
        const Adesk::UInt64 hash = FoldedHash()(name);
        return static_cast<Adesk::UInt32>(hash ^ hash >> 32);
    }
    void put(Slot slot);
    void grow();

    std::vector<Slot> m_slots; ///< a power of two, at most half of them taken
    std::size_t m_mask = 0;
    std::size_t m_count = 0;
};

} // namespace hostkit
