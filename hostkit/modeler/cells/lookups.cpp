#include "lookups.h"

#include <array>
#include <bit>
#include <cmath>

namespace hostkit::modeler {

namespace {

std::uint64_t mixed(std::uint64_t value) {
    value ^= value >> 32;
    value *= 0x9E3779B97F4A7C15u;
    return value ^ (value >> 29);
}

} // namespace

void PairTable::grow(std::size_t expected) {
    std::vector<Slot> old(std::bit_ceil(2 * expected + 16));
    old.swap(m_slots);
    for (const Slot& slot : old)
        if (slot.value != none) m_slots[place(slot.key)] = slot;
}

std::size_t PairTable::place(std::uint64_t key) const {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = mixed(key) & mask;
    while (m_slots[at].value != none && m_slots[at].key != key) at = (at + 1) & mask;
    return at;
}

Index& PairTable::at(Index first, Index second) {
    // A slot that the caller left at none counts as used once more: the table is then larger than it needs to
    // be.
    const std::uint64_t key = (std::uint64_t{first} << 32) | second;
    std::size_t at = place(key);
    if (m_slots[at].value != none) return m_slots[at].value;
    if (2 * ++m_used > m_slots.size()) {
        grow(m_slots.size());
        at = place(key);
    }
    m_slots[at].key = key;
    return m_slots[at].value;
}

PointGrid::PointGrid(double distance, std::size_t expected)
    : m_distance(distance)
    , m_heads(std::bit_ceil(2 * expected + 16), none) {
    m_entries.reserve(expected);
}

std::int64_t PointGrid::cell(double coordinate) const {
    // Cells are wide against the distance, so that a place is seldom near a second one.
    return static_cast<std::int64_t>(std::floor(std::clamp(coordinate / (16 * m_distance), -9e18, 9e18)));
}

std::size_t PointGrid::bucket(std::int64_t x, std::int64_t y, std::int64_t z) const {
    const auto part = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
    return mixed(mixed(mixed(part(x)) + part(y)) + part(z)) & (m_heads.size() - 1);
}

Index PointGrid::find(const std::vector<AcGePoint3d>& points, const AcGePoint3d& place) const {
    std::array<std::int64_t, 3> low;
    std::array<std::int64_t, 3> high;
    for (unsigned axis = 0; axis < 3; ++axis) {
        low[axis] = cell(place[axis] - m_distance);
        high[axis] = cell(place[axis] + m_distance);
    }
    double nearest = m_distance * m_distance;
    Index found = none;
    for (std::int64_t x = low[0]; x <= high[0]; ++x)
        for (std::int64_t y = low[1]; y <= high[1]; ++y)
            for (std::int64_t z = low[2]; z <= high[2]; ++z)
                for (Index i = m_heads[bucket(x, y, z)]; i != none; i = m_entries[i].next) {
                    const double distance = points[m_entries[i].number].distanceSqrdTo(place);
                    if (distance > nearest || (distance == nearest && found != none)) continue;
                    nearest = distance;
                    found = m_entries[i].number;
                }
    return found;
}

void PointGrid::link(const AcGePoint3d& point, Index entry) {
    Index& head = m_heads[bucket(cell(point.x), cell(point.y), cell(point.z))];
    m_entries[entry].next = head;
    head = entry;
}

void PointGrid::grow(const std::vector<AcGePoint3d>& points) {
    m_heads.assign(2 * m_heads.size(), none);
    for (Index i = 0; i < m_entries.size(); ++i) link(points[m_entries[i].number], i);
}

void PointGrid::add(const std::vector<AcGePoint3d>& points, Index number) {
    m_entries.push_back({number, none});
    if (m_entries.size() > m_heads.size())
        grow(points);
    else
        link(points[number], static_cast<Index>(m_entries.size() - 1));
}

} // namespace hostkit::modeler
