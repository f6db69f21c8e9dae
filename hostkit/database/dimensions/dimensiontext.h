// What a dimension says: the text of its paragraph, from what it measures and its variables.
#pragma once

#include "dimensionvariables.h"

#include <string>
#include <string_view>

namespace hostkit {

/// What was measured.
enum class MeasureKind {
    length,   ///< rotated, aligned, ordinate and arc length
    radius,   ///< as a length, with "R" before it
    diameter, ///< as a length, with the diameter sign before it
    angle     ///< radians
};

/// The contents of a dimension's paragraph, codes and all: alignment of stacks, prefix, number, tolerance or
/// limits, suffix, alternate units; `userText` in place of that, where "<>" stands for the number with all
/// that belongs to it and "[]" for the alternate one. Empty for a user text of one blank: the dimension has
/// no text. `measure` in drawing units before dimlfac, or in radians; one that is no number gives an empty
/// text. A negative dimlfac acts in paper space alone; 0 is 1. Units and choices that are none are decimal
/// lengths and degrees, places are taken into 0 to 8. Alternate units stand in square brackets behind the
/// rest, or where a user text has "[]"; angles have none. Tolerances of angles are in the angle's unit. A
/// text is cut at a million characters.
std::wstring dimensionText(const DimensionVariables& variables, MeasureKind kind, double measure,
                           std::wstring_view userText, bool isInPaperSpace);

} // namespace hostkit
