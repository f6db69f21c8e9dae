#pragma once

#include <cstddef>
#include <vector>

namespace vexo {

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
        /// Boxes that only touch do not.
        bool overlaps(const Box& other) const {
            return lowX < other.highX && other.lowX < highX && lowY < other.highY && other.lowY < highY;
        }
        void extend(const Box& other) {
            lowX = other.lowX < lowX ? other.lowX : lowX;
            highX = highX < other.highX ? other.highX : highX;
            lowY = other.lowY < lowY ? other.lowY : lowY;
            highY = highY < other.highY ? other.highY : highY;
        }
        Box widened(double margin) const {
            return {lowX - margin, highX + margin, lowY - margin, highY + margin};
        }
        double largerSide() const {
            const double width = highX - lowX;
            const double height = highY - lowY;
            return width < height ? height : width;
        }
        double halfPerimeter() const { return highX - lowX + highY - lowY; }
    };

    /// The box of a piece that meets nothing.
    static Box emptyBox();

    explicit BoxChain(std::vector<Box> boxes);
    /// The boxes gathered in an order of their numbers, in which they are then visited, too.
    BoxChain(const std::vector<Box>& boxes, std::vector<std::size_t> order);

    /// Calls visit(i) for every box that meets the query, in ascending order.
    template <typename Visit>
    void forEachMeeting(const Box& query, const Visit& visit) const {
        forEach([&](const Box& box) { return box.meets(query); }, visit);
    }

    /// Calls visit(i) for every box for which isWanted(box) holds; it must hold for any box around such a
    /// one.
    template <typename Wanted, typename Visit>
    void forEach(const Wanted& isWanted, const Visit& visit) const {
        visitWanted(m_levels.size() - 1, 0, m_levels.back().size(), isWanted, visit);
    }

private:
    static constexpr std::size_t kFanOut = 4;

    template <typename Wanted, typename Visit>
    void visitWanted(std::size_t level, std::size_t from, std::size_t to, const Wanted& isWanted,
                     const Visit& visit) const {
        for (std::size_t i = from; i < to; ++i) {
            if (!isWanted(m_levels[level][i])) continue;
            if (level == 0)
                visit(m_order.empty() ? i : m_order[i]);
            else
                visitWanted(level - 1, i * kFanOut, endOfChildren(level, i), isWanted, visit);
        }
    }

    std::size_t endOfChildren(std::size_t level, std::size_t node) const {
        const std::size_t end = (node + 1) * kFanOut;
        return end < m_levels[level - 1].size() ? end : m_levels[level - 1].size();
    }
    void gather();

    std::vector<std::vector<Box>> m_levels; ///< the given boxes first
    std::vector<std::size_t> m_order;       ///< of the given boxes; empty when they stand as given
};

} // namespace vexo
