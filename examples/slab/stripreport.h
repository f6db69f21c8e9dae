#pragma once

#include "striprun.h"

/// A table of the strips and one of the check sums for people, numbers with the drawing's decimals, and a
/// line for each finding.
std::wstring stripsAsText(const StripRun& run);
/// One line a slab, opening, strip, check and finding, told by the first column; numbers in full.
std::wstring stripsAsCsv(const StripRun& run);
/// An object with the unit, the slabs with their openings and strips, and the findings; numbers in full.
std::wstring stripsAsJson(const StripRun& run);

/// The check sums and findings alone, as they stand in the text.
std::wstring checksAsText(const StripRun& run);
std::size_t stripCount(const StripRun& run);
