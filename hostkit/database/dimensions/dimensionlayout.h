// Layout of dimensions: from points, variables and the text's size to lines, arrows, text and points; leaves
// out drawings, blocks and entities.
#pragma once

#include "arrowblocks.h"
#include "dimensiontext.h"
#include "dimensionvariables.h"
#include "paragraphlayout.h"

#include "gepnt2d.h"
#include "gevec2d.h"

#include <string>
#include <vector>

namespace hostkit {

enum class DimensionKind : unsigned char {
    rotated,
    aligned,
    twoLineAngular,
    diametric,
    radial,
    threePointAngular,
    ordinate,
    arcLength,
    none
};

/// What a dimension measures, in the coordinates of its plane. Angles in radians.
struct DimensionShape {
    static constexpr int firstPointCode = 10;

    DimensionKind kind = DimensionKind::rotated;
    AcGePoint2d points[7]; ///< by their group codes from 10 on
    double rotation = 0.0;
    double oblique = 0.0;      ///< of the extension lines, from the dimension line; 0: at right angles
    double horizontal = 0.0;   ///< direction in which horizontal text is read
    double textRotation = 0.0; ///< from there; 0: by the style
    bool isTextPlaced = false; ///< point 11 is the user's
    bool isOrdinateOfX = false;
    bool isFlipped[2] = {false, false}; ///< the arrow stands against the choice by room

    const AcGePoint2d& point(int code) const { return points[code - firstPointCode]; }
};

/// The text as it is to be placed.
struct DimensionWording {
    std::wstring contents; ///< empty: no text
    double height = 0.0;
    InkSize ink;
    bool isParted = false; ///< \\X: the dimension line runs between two parts, or beside the only one
    double offset = 0.0;   ///< of a parted one: how far its middle is above the dimension line
    double lineSpacing = 1.0;
};

/// Takes \\X out of the contents: what stands before the first one comes above the dimension line, what
/// stands behind it below, each `gap` away from the line; further ones end lines. The parts are one
/// paragraph, whose lines are as far apart as that asks for (from 0.25 to 4 of the usual distance). A part of
/// which nothing is seen leaves the other one alone on its side. Reckons the ink.
void measureWording(DimensionWording& wording, AcDbObjectId textStyle, double gap);

/// How a piece looks: which variables give its colour, lineweight and linetype.
enum class PieceLook : unsigned char {
    firstExtension,
    secondExtension,
    dimensionLine,
    filledArrow,
    arrow,
    text,
    centreMark,
    definition, ///< a point on the layer that is not plotted
    arcSymbol
};

struct DimensionPiece {
    enum class Form : unsigned char { line, arc, triangle, insert, paragraph, point };

    Form form = Form::line;
    PieceLook look = PieceLook::dimensionLine;
    int code = 0; ///< of a point: which of the dimension's
    /// Line: from, to. Arc: centre. Triangle: left and right corner of the base, tip. Insert and paragraph:
    /// place.
    AcGePoint2d at[3];
    double size = 0.0;       ///< radius of an arc, scale of an insert, height of letters
    double startAngle = 0.0; ///< of an arc, anticlockwise to the end; rotation of insert and paragraph
    double endAngle = 0.0;
    AcDbObjectId block; ///< of an insert
};

struct DimensionLayout {
    std::vector<DimensionPiece> pieces; ///< in the order of a block
    AcGePoint2d textCentre;             ///< what point 11 holds
    double textRotation = 0.0;
    AcGePoint2d linePoint; ///< what point 10 holds
};

/// The two arrows as they are drawn.
struct DimensionArrows {
    AcDbObjectId blocks[2];
    ArrowTraits traits[2];
};

/// Of the variables; null blocks are filled arrows.
DimensionArrows dimensionArrows(const DimensionVariables& variables);

/// What is measured, before dimlfac; radians for angles. No number where points are none.
double dimensionMeasure(const DimensionShape& shape);
MeasureKind measureKindOf(DimensionKind kind);

/// False, and an empty layout, for points, sizes or directions that are no numbers or give no figure. At most
/// some thirty pieces, whatever the values.
bool layOutDimension(const DimensionShape& shape, const DimensionVariables& variables,
                     const DimensionArrows& arrows, const DimensionWording& wording, DimensionLayout& layout);

} // namespace hostkit
