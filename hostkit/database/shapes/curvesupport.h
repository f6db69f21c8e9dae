// Common parts of drawing curves: angles within a turn, checks of projections and curves made of geometry;
// leaves out the geometry of any one curve.
#pragma once

#include "dbcurve.h"
#include "geplane.h"
#include "gepnt3d.h"

class AcGeEllipArc3d;

namespace hostkit {

/// The angle plus whole turns, in [0, 2 pi).
double angleWithinTurn(double angle);

/// A plane can take a projection along the direction: it has a normal, and the direction is not zero and does
/// not run in the plane.
bool canProject(const AcGePlane& plane, const AcGeVector3d& direction);

/// The allowance of the global point test for points as far out as this one.
inline double pointAllowance(const AcGePoint3d& point) {
    return AcGe::pointAllowance(AcGeContext::gTol, point.largestCoordinate());
}

/// A new circle or arc for one that is round, a line for one that is seen from its edge, else an ellipse; it
/// belongs to the caller. Null for one that is a point.
AcDbCurve* drawingCurveOf(const AcGeEllipArc3d& ellipse);

/// What getProjectedCurve gives for an arc of a circle or ellipse: its image as drawingCurveOf makes it, with
/// the source's properties.
Acad::ErrorStatus projectEllipse(const AcDbCurve& source, const AcGeEllipArc3d& ellipse,
                                 const AcGePlane& plane, const AcGeVector3d& direction,
                                 AcDbCurve*& projected);

/// Gives a curve that was made out of another one its layer, colour, linetype, weight and visibility.
template <class Curve>
Curve* withPropertiesOf(const AcDbCurve& source, Curve* made) {
    (void)made->setPropertiesFrom(&source);
    return made;
}

} // namespace hostkit
