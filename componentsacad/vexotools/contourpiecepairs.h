#pragma once

#include "contourboxchain.h"

#include "gepnt2d.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexo {

/// Pairs of pieces of one contour that come near each other. Boxes of consecutive pieces are gathered four by
/// four into larger ones, level on level; neighbours along a contour lie near each other in the plane too, so
/// that most pairs are never looked at. Where that tells too little (spirals, long slanting pieces side by
/// side) the pieces are gathered by their places in the plane, in boxes along them.
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
    /// Ways that all pieces of a run go: a set of these. Straight pieces that follow on each other, one way
    /// in x and one way in y, each of some length, move on with every piece and cannot come back.
    enum Heading : std::uint8_t { kNone = 0, kRight = 1, kLeft = 2, kUp = 4, kDown = 8 };
    /// The ways of steps whose components lie between these bounds.
    static unsigned int headingsOf(double leastX, double mostX, double leastY, double mostY) {
        unsigned int headings = kNone;
        if (leastX >= 0.0) headings |= kRight;
        if (mostX <= 0.0) headings |= kLeft;
        if (leastY >= 0.0) headings |= kUp;
        if (mostY <= 0.0) headings |= kDown;
        return headings;
    }
    struct Run {
        Box box;
        std::uint8_t headings; ///< kNone where a piece may not be passed over on the ground of where it goes
    };

    /// Does `isWanted(i, j)` hold for a pair i < j of pieces whose boxes meet, but for pairs that are both in
    /// a run that goes one way. Pairs are asked in no order that a caller may rely on, and may be asked
    /// twice.
    ///
    /// Of the pieces it wants count(), boxOf(i), runOf(first, end) for a few consecutive ones, and hullOf(i).
    /// A box with a NaN, or with its sides crossed over, meets none; in runs a NaN is passed over.
    template <typename Pieces, typename Predicate>
    static bool any(const Pieces& pieces, const Predicate& isWanted) {
        bool areNeighboursFar = false;
        return any(pieces, isWanted, areNeighboursFar);
    }
    /// The same, and whether neighbours along the contour turned out to say little about places in the plane.
    template <typename Pieces, typename Predicate>
    static bool any(const Pieces& pieces, const Predicate& isWanted, bool& areNeighboursFar) {
        areNeighboursFar = false;
        if (pieces.count() < 2) return false;
        PiecePairs pairs;
        pairs.gather(pieces);
        // More than this many pairs, or looks at two runs, for each piece, and upright boxes are not good
        // enough; nor are neighbours, when boxes along them take too many looks.
        constexpr std::size_t manyPairs = 4;
        constexpr std::size_t manyLooks = 4;
        constexpr std::size_t tooManyLooks = 4;
        const std::size_t top = pairs.m_levels.size();
        std::size_t budget = manyPairs * (pieces.count() + 1);
        bool found = false;
        const auto ask = [&](std::size_t i, std::size_t j) {
            if (budget-- == 0) return true;
            return found = isWanted(i, j);
        };
        pairs.m_looks = manyLooks * (pieces.count() + 1);
        if (!pairs.anyWithin(pieces, top, 0, ask) || found) return found;
        pairs.addSlantedBoxes(pieces);
        const auto askAnyhow = [&](std::size_t i, std::size_t j) { return found = isWanted(i, j); };
        pairs.m_looks = tooManyLooks * (pieces.count() + 1);
        if (!pairs.anyWithin(pieces, top, 0, askAnyhow) || found) return found;
        areNeighboursFar = true;
        // Neighbours in the plane instead of neighbours along the contour, and boxes along the pieces.
        const InPlaneOrder<Pieces> inOrder(pieces);
        PiecePairs planePairs;
        planePairs.gather(inOrder);
        planePairs.addSlantedBoxes(inOrder);
        return planePairs.anyWithin(
            inOrder, planePairs.m_levels.size(), 0, [&](std::size_t i, std::size_t j) {
                const std::size_t first = inOrder[i];
                const std::size_t second = inOrder[j];
                return first < second ? isWanted(first, second) : isWanted(second, first);
            });
    }

    /// The numbers of boxes in an order in which those whose middles lie near each other stand together, in
    /// groups of four and of four groups.
    static std::vector<std::size_t> planeOrder(const std::vector<Box>& boxes);

private:
    static constexpr std::size_t kFanOut = 4;

    /// The pieces in that order, as pieces of no contour.
    template <typename Pieces>
    class InPlaneOrder {
    public:
        explicit InPlaneOrder(const Pieces& pieces)
            : m_pieces(pieces) {
            std::vector<Box> boxes;
            boxes.reserve(pieces.count());
            for (std::size_t i = 0; i < pieces.count(); ++i) boxes.push_back(pieces.boxOf(i));
            m_order = planeOrder(boxes);
        }
        std::size_t operator[](std::size_t place) const { return m_order[place]; }
        std::size_t count() const { return m_order.size(); }
        Box boxOf(std::size_t place) const { return m_pieces.boxOf(m_order[place]); }
        Hull hullOf(std::size_t place) const { return m_pieces.hullOf(m_order[place]); }
        Run runOf(std::size_t first, std::size_t end) const {
            Run run{BoxChain::emptyBox(), kNone};
            for (std::size_t i = first; i < end; ++i) run.box.extend(boxOf(i));
            return run;
        }

    private:
        const Pieces& m_pieces;
        std::vector<std::size_t> m_order;
    };

    /// A rectangle along an axis of its own. Only asked where the upright boxes meet.
    struct SlantedBox {
        AcGePoint2d center;
        AcGeVector2d axis{1.0, 0.0};
        double halfAlong = 0.0;
        double halfAcross = 0.0;

        SlantedBox() = default;
        explicit SlantedBox(const Hull& hull);
        SlantedBox(const SlantedBox* children, std::size_t count);
        /// Does the other box lie beyond one of this one's four sides.
        bool hasBeyond(const SlantedBox& other) const;
    };
    struct Level {
        std::vector<Run> runs;
        std::vector<SlantedBox> slanted; ///< empty as long as upright boxes do
    };

    PiecePairs() = default;

    template <typename Pieces>
    void gather(const Pieces& pieces) {
        const std::size_t count = pieces.count();
        std::vector<Run> runs;
        runs.reserve((count + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < count; i += kFanOut)
            runs.push_back(pieces.runOf(i, std::min(i + kFanOut, count)));
        m_levels.push_back({std::move(runs), {}});
        addLevels();
    }
    void addLevels();
    template <typename Pieces>
    void addSlantedBoxes(const Pieces& pieces) {
        m_slantedPieces.reserve(pieces.count());
        for (std::size_t i = 0; i < pieces.count(); ++i) m_slantedPieces.emplace_back(pieces.hullOf(i));
        gatherSlantedBoxes();
    }
    void gatherSlantedBoxes();

    /// What stands on level 0 are the pieces themselves, on level k the runs of m_levels[k - 1].
    const std::vector<Run>& runsOf(std::size_t level) const { return m_levels[level - 1].runs; }
    std::size_t endOfChildren(std::size_t childCount, std::size_t node) const {
        return std::min((node + 1) * kFanOut, childCount);
    }
    static bool isOneWay(unsigned int headings) {
        return (headings & (kRight | kLeft)) != 0 && (headings & (kUp | kDown)) != 0;
    }
    static bool areApart(const std::vector<SlantedBox>& boxes, std::size_t a, std::size_t b) {
        return !boxes.empty() && (boxes[a].hasBeyond(boxes[b]) || boxes[b].hasBeyond(boxes[a]));
    }

    /// Pairs of pieces that both stand under one node.
    template <typename Pieces, typename Predicate>
    bool anyWithin(const Pieces& pieces, std::size_t level, std::size_t node,
                   const Predicate& isWanted) const {
        if (isOneWay(runsOf(level)[node].headings)) return false;
        if (level == 1) return anyPieces(pieces, node, node, isWanted);
        const std::size_t end = endOfChildren(runsOf(level - 1).size(), node);
        for (std::size_t a = node * kFanOut; a < end; ++a) {
            if (anyWithin(pieces, level - 1, a, isWanted)) return true;
            for (std::size_t b = a + 1; b < end; ++b)
                if (anyBetween(pieces, level - 1, a, b, isWanted)) return true;
        }
        return false;
    }
    /// Pairs of a piece under one node and a piece under a later one.
    template <typename Pieces, typename Predicate>
    bool anyBetween(const Pieces& pieces, std::size_t level, std::size_t first, std::size_t second,
                    const Predicate& isWanted) const {
        if (m_looks-- == 0) return true;
        const Run& run1 = runsOf(level)[first];
        const Run& run2 = runsOf(level)[second];
        if (!run1.box.meets(run2.box) || areApart(m_levels[level - 1].slanted, first, second)) return false;
        if (second == first + 1 && isOneWay(run1.headings & run2.headings)) return false;
        if (level == 1) return anyPieces(pieces, first, second, isWanted);
        const std::vector<Run>& below = runsOf(level - 1);
        const std::size_t firstEnd = endOfChildren(below.size(), first);
        const std::size_t secondEnd = endOfChildren(below.size(), second);
        for (std::size_t a = first * kFanOut; a < firstEnd; ++a) {
            if (!below[a].box.meets(run2.box)) continue;
            for (std::size_t b = second * kFanOut; b < secondEnd; ++b)
                if (anyBetween(pieces, level - 1, a, b, isWanted)) return true;
        }
        return false;
    }
    /// Pairs of a piece in one run and a later piece in the same or a later run.
    template <typename Pieces, typename Predicate>
    bool anyPieces(const Pieces& pieces, std::size_t first, std::size_t second,
                   const Predicate& isWanted) const {
        const std::size_t count = pieces.count();
        const std::size_t firstEnd = endOfChildren(count, first);
        const std::size_t secondEnd = endOfChildren(count, second);
        const Box& box2 = runsOf(1)[second].box;
        for (std::size_t i = first * kFanOut; i < firstEnd; ++i) {
            const Box box = pieces.boxOf(i);
            if (!box.meets(box2)) continue;
            for (std::size_t j = std::max(i + 1, second * kFanOut); j < secondEnd; ++j)
                if (box.meets(pieces.boxOf(j)) && !areApart(m_slantedPieces, i, j) && isWanted(i, j))
                    return true;
        }
        return false;
    }

    std::vector<Level> m_levels;
    std::vector<SlantedBox> m_slantedPieces;
    /// Looks at two runs that are left; the search ends when there are none.
    mutable std::size_t m_looks = static_cast<std::size_t>(-1);
};

} // namespace vexo
