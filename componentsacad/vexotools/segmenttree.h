#pragma once

#include "planesegment.h"

#include <cstddef>
#include <vector>

namespace VEXOGeometryTools {

/// Boxes around four boxes of the level below each. Nothing is sorted: the segments of a contour come one
/// behind the other, which keeps the boxes around them small.
class SegmentTree {
public:
    explicit SegmentTree(std::vector<PlaneBox> boxes);

    /// Calls visit(i, j), i < j, for every two boxes that meet.
    template <typename Visit>
    void forEachPair(const Visit& visit) const {
        if (!m_levels.front().empty()) pairsWithin(m_levels.size() - 1, 0, m_levels.back().size(), visit);
    }

    /// Calls visit(i) for every box for which isWanted(box) holds, and holds for the boxes around it.
    template <typename Wanted, typename Visit>
    void forEach(const Wanted& isWanted, const Visit& visit) const {
        if (!m_levels.front().empty())
            descend(m_levels.size() - 1, 0, m_levels.back().size(), isWanted, visit);
    }

private:
    static constexpr std::size_t kFanOut = 4;

    std::size_t endBelow(std::size_t level, std::size_t index) const {
        const std::size_t end = (index + 1) * kFanOut;
        return end < m_levels[level - 1].size() ? end : m_levels[level - 1].size();
    }

    template <typename Wanted, typename Visit>
    void descend(std::size_t level, std::size_t from, std::size_t to, const Wanted& isWanted,
                 const Visit& visit) const {
        for (std::size_t i = from; i < to; ++i) {
            if (!isWanted(m_levels[level][i])) continue;
            if (level == 0)
                visit(i);
            else
                descend(level - 1, i * kFanOut, endBelow(level, i), isWanted, visit);
        }
    }

    /// Of the boxes from..to of a level.
    template <typename Visit>
    void pairsWithin(std::size_t level, std::size_t from, std::size_t to, const Visit& visit) const {
        for (std::size_t i = from; i < to; ++i) {
            if (level > 0) pairsWithin(level - 1, i * kFanOut, endBelow(level, i), visit);
            for (std::size_t j = i + 1; j < to; ++j) pairsBetween(level, i, j, visit);
        }
    }

    template <typename Visit>
    void pairsBetween(std::size_t level, std::size_t first, std::size_t second, const Visit& visit) const {
        const PlaneBox& box = m_levels[level][second];
        if (!m_levels[level][first].meets(box)) return;
        if (level == 0) {
            visit(first, second);
            return;
        }
        for (std::size_t i = first * kFanOut; i < endBelow(level, first); ++i) {
            if (!m_levels[level - 1][i].meets(box)) continue;
            for (std::size_t j = second * kFanOut; j < endBelow(level, second); ++j)
                pairsBetween(level - 1, i, j, visit);
        }
    }

    std::vector<std::vector<PlaneBox>> m_levels; ///< the given boxes first
};

} // namespace VEXOGeometryTools
