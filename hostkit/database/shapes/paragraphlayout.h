// Paragraphs laid out: their lines with the pieces of each, by the widths of letters that stand in our
// tables.
#pragma once

#include "dbid.h"

#include <string_view>

namespace hostkit {

/// Width and height of what is seen, from the left edge of the first letter to the right edge of the last
/// one, from the lowest tail to the highest top. Drawing units.
struct InkSize {
    double width = 0.0;
    double height = 0.0;
};

/// Of a paragraph that is broken at its line ends alone. Stacks count at their height. `textStyle` gives
/// face, width factor and oblique angle; null is the standing one. Zero where nothing is seen.
InkSize paragraphInk(std::wstring_view contents, double height, AcDbObjectId textStyle);

} // namespace hostkit
