#pragma once

#include "stripcleancut.h"

#include <vector>

namespace vexo {

/// Up to this area what a piece and an opening have in common is what rounding and nudged cuts leave: the
/// opening does not count for the piece. It depends on the opening's size alone.
double sliverArea(const PlaneBox& hole);

/// Cuts a piece of a slab around one opening, both in the frame of the strips. False, and no parts, when they
/// have no common area. The parts come in the order left, right, upper, lower. None when the opening covers
/// the piece.
///
/// The cuts run along y through the opening's leftmost and rightmost points. Where all crossings are clear,
/// cutCleanly has the parts. Else the plain steps come first: the piece is cut where each line first crosses
/// it, and one strip is taken above and one below the opening. They are kept when the parts meet no opening
/// and no other part and leave nothing of the piece out, looked at as areas laid over each other. Where they
/// do not (a line crosses the piece more than twice, the opening has several points as far to the left,
/// touches the piece's edge between them, reaches beyond it), the part of the piece between both lines that
/// holds the opening is taken out, what is left on either side is the left and right parts, and what the
/// opening leaves of it the upper and lower strips; there may be several of each, from left to right. Either
/// way nothing is lost and nothing covered twice.
bool cutAroundHole(const ContourLoop& piece, const Opening& hole, std::vector<ContourLoop>& parts);

} // namespace vexo
