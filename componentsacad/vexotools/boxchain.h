#pragma once

#include <cstddef>
#include <vector>

/// Boxes of consecutive pieces of a contour, gathered four by four into larger ones, level on level. Pairs of
/// pieces that come near each other are found without a look at most of the others: neighbours along a
/// contour lie near each other in the plane too.
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

    /// Does `isWanted(i, j)` hold for a pair i < j of boxes that meet. Each pair is asked at most once, in no
    /// order that a caller may rely on.
    template <typename Predicate>
    bool anyPair(const Predicate& isWanted) const {
        return !m_levels.front().empty() && anyWithin(m_levels.size() - 1, 0, isWanted);
    }

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
    /// Pairs of pieces that both stand under one node.
    template <typename Predicate>
    bool anyWithin(std::size_t level, std::size_t node, const Predicate& isWanted) const {
        if (level == 0) return false;
        const std::size_t end = endOfChildren(level, node);
        for (std::size_t a = node * kFanOut; a < end; ++a) {
            if (anyWithin(level - 1, a, isWanted)) return true;
            for (std::size_t b = a + 1; b < end; ++b)
                if (anyBetween(level - 1, a, b, isWanted)) return true;
        }
        return false;
    }
    /// Pairs of a piece under one node and a piece under a later one.
    template <typename Predicate>
    bool anyBetween(std::size_t level, std::size_t first, std::size_t second,
                    const Predicate& isWanted) const {
        if (!m_levels[level][first].meets(m_levels[level][second])) return false;
        if (level == 0) return isWanted(first, second);
        const std::size_t firstEnd = endOfChildren(level, first);
        const std::size_t secondEnd = endOfChildren(level, second);
        for (std::size_t a = first * kFanOut; a < firstEnd; ++a) {
            if (!m_levels[level - 1][a].meets(m_levels[level][second])) continue;
            for (std::size_t b = second * kFanOut; b < secondEnd; ++b)
                if (anyBetween(level - 1, a, b, isWanted)) return true;
        }
        return false;
    }

    std::vector<std::vector<Box>> m_levels; ///< the given boxes first
};
