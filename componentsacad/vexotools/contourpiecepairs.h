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
    /// Ways that all pieces of a run go: a set of these. Straight pieces that follow on each other, one way
    /// in x and one way in y, each of some length, move on with every piece and cannot come back.
    enum Heading : std::uint8_t { kNone = 0, kRight = 1, kLeft = 2, kUp = 4, kDown = 8 };
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
        if (pieces.count() < 2) return false;
        PiecePairs pairs;
        pairs.gather(pieces);
        // More than this many pairs for each piece, and upright boxes are not good enough.
        constexpr std::size_t manyPairs = 4;
        std::size_t budget = manyPairs * (pieces.count() + 1);
        bool found = false;
        const auto ask = [&](std::size_t i, std::size_t j) {
            if (budget-- == 0) return true;
            return found = isWanted(i, j);
        };
        const std::size_t top = pairs.m_levels.size();
        if (!pairs.anyWithin(pieces, top, 0, ask) || found) return found;
        for (std::size_t i = 0; i < pieces.count(); ++i) pairs.m_slantedPieces.emplace_back(pieces.hullOf(i));
        pairs.addSlantedBoxes();
        return pairs.anyWithin(pieces, top, 0, isWanted);
    }

private:
    static constexpr std::size_t kFanOut = 4;

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
    void addSlantedBoxes();

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
};

} // namespace vexo
