#pragma once

#include <cstddef>
#include <vector>

/// Boxes of consecutive pieces of a contour, gathered four by four into larger ones, level on level. The
/// pieces near a place are found without a look at most of the others: neighbours along a contour lie near
/// each other in the plane too.
class BoxChain {
public:
    struct Box {
        double lowX;
        double highX;
        double lowY;
        double highY;

        /// Boxes that touch meet. A box with a NaN, or with its sides crossed over, meets none.
        bool meets(const Box& other) const {
            return lowX <= other.highX && other.lowX <= highX && lowY <= other.highY && other.lowY <= highY;
        }
        void extend(const Box& other);
    };

    /// The box of a piece that meets nothing.
    static Box emptyBox();

    explicit BoxChain(std::vector<Box> boxes);

    /// Calls visit(i) for every box that meets the query, in ascending order.
    template <typename Visit>
    void forEachMeeting(const Box& query, const Visit& visit) const {
        visitWithin(m_levels.size() - 1, 0, m_levels.back().size(), query, visit);
    }

private:
    static constexpr std::size_t kFanOut = 4;

    template <typename Visit>
    void visitWithin(std::size_t level, std::size_t from, std::size_t to, const Box& query,
                     const Visit& visit) const {
        for (std::size_t i = from; i < to; ++i) {
            if (!m_levels[level][i].meets(query)) continue;
            if (level == 0)
                visit(i);
            else
                visitWithin(level - 1, i * kFanOut, endOfChildren(level, i), query, visit);
        }
    }

    std::size_t endOfChildren(std::size_t level, std::size_t node) const {
        const std::size_t end = (node + 1) * kFanOut;
        return end < m_levels[level - 1].size() ? end : m_levels[level - 1].size();
    }
    std::vector<std::vector<Box>> m_levels; ///< the given boxes first
};
