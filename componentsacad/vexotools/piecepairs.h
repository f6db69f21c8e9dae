#pragma once

#include "boxchain.h"

#include "gepnt2d.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Pairs of pieces of one contour that come near each other. Boxes of consecutive pieces are gathered four by
/// four into larger ones, level on level; neighbours along a contour lie near each other in the plane too, so
/// that most pairs are never looked at. Where upright boxes tell too little (long slanting pieces side by
/// side) boxes along the pieces take over.
class PiecePairs {
public:
    using Box = BoxChain::Box;
    /// The parallelogram with corners start, end, start + rise, end + rise, widened by `reach`, holds the
    /// piece.
    struct Hull {
        AcGePoint2d start;
        AcGePoint2d end;
        AcGeVector2d rise;
        double reach = 0.0;
    };

    /// Ways that a piece may go, or all pieces of a run: a set of these. A run of pieces that all go one way
    /// in x and one way in y moves on with each of them and cannot come back.
    enum Heading : std::uint8_t { kNone = 0, kRight = 1, kLeft = 2, kUp = 4, kDown = 8 };
    static std::uint8_t headingOf(const AcGeVector2d& direction) {
        return static_cast<std::uint8_t>(
            (direction.x >= 0.0 ? kRight : kNone) | (direction.x <= 0.0 ? kLeft : kNone) |
            (direction.y >= 0.0 ? kUp : kNone) | (direction.y <= 0.0 ? kDown : kNone));
    }

    /// Both are per piece. The box of a piece that meets nothing is BoxChain::emptyBox(). The heading of a
    /// straight piece, from whose end the next one starts, is headingOf its direction when it is so long that
    /// a run of such pieces needs no look, that of any other is kNone.
    PiecePairs(std::vector<Box> boxes, std::vector<std::uint8_t> headings);

    /// Does `isWanted(i, j)` hold for a pair i < j of pieces whose boxes meet, but for pairs that a run of
    /// one heading holds both of. `hullOf(i)` is called for pieces with a box that is not empty. Pairs are
    /// asked in no order that a caller may rely on, and may be asked twice.
    template <typename Predicate, typename HullOf>
    bool anyPair(const Predicate& isWanted, const HullOf& hullOf) {
        if (m_levels.front().boxes.empty()) return false;
        // More than this many pairs for each piece, and upright boxes are not good enough.
        constexpr std::size_t manyPairs = 4;
        std::size_t budget = manyPairs * m_levels.front().boxes.size() + manyPairs;
        bool found = false;
        const auto ask = [&](std::size_t i, std::size_t j) {
            if (budget-- == 0) return true;
            return found = isWanted(i, j);
        };
        const std::size_t top = m_levels.size() - 1;
        if (!anyWithin(top, 0, ask) || found) return found;
        std::vector<SlantedBox> pieces(m_levels.front().boxes.size());
        for (std::size_t i = 0; i < pieces.size(); ++i)
            if (!isEmpty(m_levels.front().boxes[i])) pieces[i] = SlantedBox(hullOf(i));
        addSlantedBoxes(std::move(pieces));
        return anyWithin(top, 0, isWanted);
    }

private:
    static constexpr std::size_t kFanOut = 4;

    /// A rectangle along an axis of its own. Only asked where the upright boxes meet, so that the axis and
    /// what lies across it are what matters.
    struct SlantedBox {
        AcGePoint2d center;
        AcGeVector2d axis{1.0, 0.0};
        double halfAlong = -1.0; ///< negative: nothing in it
        double halfAcross = 0.0;

        SlantedBox() = default;
        explicit SlantedBox(const Hull& hull);
        SlantedBox(const SlantedBox* children, std::size_t count);
        /// Does the other box lie beyond one of this one's four sides.
        bool hasBeyond(const SlantedBox& other) const;
    };
    struct Level {
        std::vector<Box> boxes;
        std::vector<std::uint8_t> headings; ///< that all pieces under a node share
        std::vector<SlantedBox> slanted;    ///< empty as long as upright boxes do
    };

    static bool isEmpty(const Box& box) { return !(box.lowX <= box.highX); }
    static bool isOneWay(unsigned int headings) {
        return (headings & (kRight | kLeft)) != 0 && (headings & (kUp | kDown)) != 0;
    }
    void addSlantedBoxes(std::vector<SlantedBox> pieces);
    std::size_t endOfChildren(std::size_t level, std::size_t node) const {
        const std::size_t end = (node + 1) * kFanOut;
        const std::size_t count = m_levels[level - 1].boxes.size();
        return end < count ? end : count;
    }
    bool areApart(const Level& level, std::size_t a, std::size_t b) const {
        if (!level.boxes[a].meets(level.boxes[b])) return true;
        return !level.slanted.empty() &&
               (level.slanted[a].hasBeyond(level.slanted[b]) || level.slanted[b].hasBeyond(level.slanted[a]));
    }

    /// Pairs of pieces that both stand under one node.
    template <typename Predicate>
    bool anyWithin(std::size_t level, std::size_t node, const Predicate& isWanted) const {
        if (level == 0 || isOneWay(m_levels[level].headings[node])) return false;
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
        const Level& own = m_levels[level];
        if (areApart(own, first, second)) return false;
        if (second == first + 1 && isOneWay(own.headings[first] & own.headings[second])) return false;
        if (level == 0) return isWanted(first, second);
        const std::size_t firstEnd = endOfChildren(level, first);
        const std::size_t secondEnd = endOfChildren(level, second);
        for (std::size_t a = first * kFanOut; a < firstEnd; ++a) {
            if (!m_levels[level - 1].boxes[a].meets(own.boxes[second])) continue;
            for (std::size_t b = second * kFanOut; b < secondEnd; ++b)
                if (anyBetween(level - 1, a, b, isWanted)) return true;
        }
        return false;
    }

    std::vector<Level> m_levels; ///< the pieces first
};
