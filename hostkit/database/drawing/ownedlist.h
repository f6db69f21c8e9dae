// Lists of what an owner holds: taking an id out and putting it back where it stood; leaves out who owns it.
#pragma once

#include "dbid.h"

#include <algorithm>
#include <vector>

namespace hostkit {

constexpr std::size_t notListed = static_cast<std::size_t>(-1);

/// The place of the id that was taken out, looked for from the end, where what came last stands;
/// notListed where it is not in the list.
inline std::size_t takeFromList(std::vector<AcDbObjectId>& list, AcDbObjectId id) {
    const auto found = std::find(list.rbegin(), list.rend(), id);
    if (found == list.rend()) return notListed;
    const auto place = std::next(found).base();
    const auto index = static_cast<std::size_t>(place - list.begin());
    list.erase(place);
    return index;
}

/// For one more, so that adding it cannot fail once the drawing has it.
template <class List>
void makeRoom(List& list) {
    if (list.size() == list.capacity()) list.reserve(list.empty() ? 4 : 2 * list.size());
}

inline void giveToList(std::vector<AcDbObjectId>& list, AcDbObjectId id, std::size_t place) {
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(place, list.size())), id);
}

} // namespace hostkit
