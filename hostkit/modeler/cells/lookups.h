// Flat tables of the booleans: pairs of numbers, points near a place, and sets that are joined.
#pragma once

#include "gepnt3d.h"
#include "polyhedron.h"

#include <numeric>
#include <vector>

namespace hostkit::modeler {

using Index = Polyhedron::Index;
inline constexpr Index none = Polyhedron::none;

/// A number for each pair of numbers, in one flat table with open addressing.
class PairTable {
public:
    explicit PairTable(std::size_t expected = 0) { grow(expected); }
    /// The number kept for the pair: `none` for a pair that is new, to be set. Good until the next call.
    Index& at(Index first, Index second);

private:
    struct Slot {
        std::uint64_t key = ~std::uint64_t{0};
        Index value = none;
    };
    void grow(std::size_t expected);
    std::size_t place(std::uint64_t key) const;

    std::vector<Slot> m_slots;
    std::size_t m_used = 0;
};

/// Points that can be found by place. The points stand with the caller.
class PointGrid {
public:
    /// `distance`: how near a point has to be to be found.
    PointGrid(double distance, std::size_t expected);
    /// The number of the nearest point within the distance; none where there is none.
    Index find(const std::vector<AcGePoint3d>& points, const AcGePoint3d& place) const;
    void add(const std::vector<AcGePoint3d>& points, Index number);

private:
    std::int64_t cell(double coordinate) const;
    std::size_t bucket(std::int64_t x, std::int64_t y, std::int64_t z) const;
    void grow(const std::vector<AcGePoint3d>& points);
    void link(const AcGePoint3d& point, Index entry);

    struct Entry {
        Index number;
        Index next;
    };
    double m_distance;
    std::vector<Index> m_heads;
    std::vector<Entry> m_entries;
};

/// Sets of numbers that are joined, with path halving.
class Joined {
public:
    explicit Joined(std::size_t count)
        : m_parents(count) {
        std::iota(m_parents.begin(), m_parents.end(), Index{0});
    }
    Index find(Index number) {
        while (m_parents[number] != number) number = m_parents[number] = m_parents[m_parents[number]];
        return number;
    }
    void join(Index first, Index second) {
        first = find(first);
        second = find(second);
        // The smaller number stands for the set: numbering then follows the input.
        if (first < second)
            m_parents[second] = first;
        else
            m_parents[first] = second;
    }

private:
    std::vector<Index> m_parents;
};

} // namespace hostkit::modeler
