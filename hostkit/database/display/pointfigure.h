// How points are shown, by the header variables PDMODE and PDSIZE of their drawing.
#pragma once

#include "picturepath.h"

class AcDbPoint;

namespace hostkit {

/// The figure in the plane of the point's normal: a plus, a cross or a stroke upwards, and a circle or a
/// square around it. Circle and square are as wide as PDSIZE says, and so is the cross; the plus is twice as
/// wide, the stroke half as long. A PDSIZE that is not above 0 is a share of the height
/// of the drawing's view in per cent, 5 for 0; without a view it is a unit. Empty for a plain dot, for one of
/// nothing, and for a point of no drawing.
PicturePath pointFigure(const AcDbPoint& point);
/// False where PDMODE shows nothing at all.
bool isPointShown(const AcDbPoint& point);

} // namespace hostkit
