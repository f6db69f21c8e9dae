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
/// text. A negative dimlfac acts in paper space alone.
std::wstring dimensionText(const DimensionVariables& variables, MeasureKind kind, double measure,
                           std::wstring_view userText, bool isInPaperSpace);

} // namespace hostkit
