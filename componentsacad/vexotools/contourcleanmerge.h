#pragma once

#include "contourareas.h"

namespace vexo {

enum class CleanMerge {
    kNone,    ///< the loops share no whole segment, or several
    kMerged,  ///< merged
    kUnclear, ///< they may run together elsewhere: ask MergeContoursIfTheyHaveOneComonSegment
};

/// The merge of two counter-clockwise loops that do not overlap, for the ordinary case, at a small part of
/// the cost of MergeContoursIfTheyHaveOneComonSegment and with its result: one shared segment, and no other
/// two segments that could run together.
CleanMerge mergeCleanly(const ContourLoop& first, const ContourLoop& second, ContourLoop& merged);

/// Two loops that share a segment, the first one's i and the second one's j, run in opposite senses, as one
/// without it: the first loop from behind its segment, then the second.
ContourLoop joinedAt(const ContourLoop& first, std::size_t i, const ContourLoop& second, std::size_t j);

/// Do two loops surely lie side by side with nothing in common but their segments i and j, run in opposite
/// senses: nothing else of the one comes near the other, and each has a vertex outside the other's box. False
/// where that is not clear.
///
/// Then the rest of each lies outside the other as a whole, and an area in common would have no boundary.
bool areClearNeighbours(const ContourLoop& first, std::size_t i, const ContourLoop& second, std::size_t j,
                        double tolerance);

} // namespace vexo
