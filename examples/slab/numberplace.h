#pragma once

#include "dbpolyline.h"
#include "gepnt2d.h"

#include <vector>

/// A circle without any boundary or text in it.
struct FreeCircle {
    AcGePoint2d center;
    double radius = 0.0;
};

/// A box along the axes that is taken: a text of the drawing.
struct TakenBox {
    AcGePoint2d low;
    AcGePoint2d high;
};

/// The largest free circle in a strip, seen in the plane: its centre is the strip's pole of inaccessibility,
/// as far as the texts let it be. Its radius is within a hundredth of the largest. Radius 0 when texts cover
/// the whole strip.
FreeCircle largestFreeCircle(const AcDbPolyline& strip, const std::vector<TakenBox>& taken);
