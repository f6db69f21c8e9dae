// Letters where they stand in the world, by the lines and forms that a text gives them.
#pragma once

#include "gepnt3d.h"

#include <cstdint>
#include <string>
#include <vector>

namespace hostkit {

/// A piece of text in one form.
struct TextRun {
    std::wstring text{};
    double heightFactor = 1.0; ///< of the text's height
    double rise = 0.0;         ///< above the line, in text heights
    std::uint32_t rgb = 0;
    bool hasOwnColor = false; ///< else that of the text, and `rgb` says nothing
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isOverlined = false;
    bool isStruckOut = false;
    std::wstring family{}; ///< of the font; empty is the default
};

/// One line of text where it stands in the drawing.
struct PlacedText {
    enum class Anchor { start, middle, end };
    std::vector<TextRun> runs;
    AcGePoint3d origin; ///< on the base line
    AcGeVector3d along; ///< direction of writing; its length is the height of capitals times the width factor
    AcGeVector3d up;    ///< its length is the height of capitals
    Anchor anchor = Anchor::start;
    double fitLength = 0.0; ///< drawing units that the line must fill; 0 leaves it as it comes

    void transformBy(const AcGeMatrix3d& matrix);
};

/// Where the line of text begins and ends, in heights of capitals along it from its origin on, by the widths
/// of the common sans-serif face. Good to a tenth or so: whoever shows the picture chooses the face.
struct TextReach {
    double start;
    double end;
};
TextReach reachOf(const PlacedText& text);

} // namespace hostkit
