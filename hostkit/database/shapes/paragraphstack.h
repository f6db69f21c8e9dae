// A stacked fraction as pieces of a line.
#pragma once

#include "paragraphlayout.h"

namespace hostkit {

/// The pieces of the stack from x 0 on, its lowest base line at rise 0, and what it takes along and up.
struct StackPieces {
    std::vector<ParagraphPiece> pieces;
    double width = 0.0;
    double height = 0.0;
};

/// Both parts have the look's height. At a slash (#) the lower one begins right of the upper one and
/// ends where that begins, at a bar and without one (^) there is a gap between them. Without a divider there
/// is an upper part alone.
StackPieces stackPieces(std::wstring_view stack, const ParagraphLook& look);

/// The advances of letters in that look. Control characters count for nothing.
double advanceOf(std::wstring_view letters, const ParagraphLook& look);

} // namespace hostkit
