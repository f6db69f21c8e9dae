// Kit: what the drawing curves share. Covers cuts of a parameter range, checks of parameters and of
// projections; leaves out the geometry of any one curve.
#pragma once

#include "acadstrc.h"
#include "geplane.h"
#include "gepnt3d.h"

#include <vector>

class AcDbCurve;

namespace hostkit {

/// A part of a curve. On a closed curve `to` may lie beyond the curve's end by less than a period: the part
/// runs across the start.
struct ParameterSpan {
    double from;
    double to;
};

/// The parts that cuts make of the range from `start` to `end`, in the curve's order. Cuts may come in any
/// order; cuts at most `tolerance` apart count once, and cuts within it of an open curve's end cut nothing.
/// Empty for what AcDbCurve::getSplitCurves refuses.
std::vector<ParameterSpan> spansBetween(const AcGeDoubleArray& cuts, double start, double end, bool closed,
                                        double tolerance);

/// The parameter brought into the range, when it is outside by no more than the tolerance; false for others
/// and for NaN.
bool bringIntoRange(double& parameter, double start, double end, double tolerance);

/// A plane can take a projection along the direction: it has a normal, and the direction is not zero and does
/// not run in the plane.
bool canProject(const AcGePlane& plane, const AcGeVector3d& direction);

/// The allowance of the global point test for points as far out as this one.
inline double pointAllowance(const AcGePoint3d& point) {
    return AcGe::pointAllowance(AcGeContext::gTol, point.largestCoordinate());
}

/// The parameters of points on the curve, for splitting there; eInvalidInput when one is off the curve.
Acad::ErrorStatus parametersOf(const AcDbCurve& curve, const AcGePoint3dArray& points,
                               AcGeDoubleArray& parameters);

/// Gives a curve that was made out of another one its layer, colour, linetype, weight and visibility.
template <class Curve>
Curve* withPropertiesOf(const AcDbCurve& source, Curve* made) {
    made->setPropertiesFrom(&source);
    return made;
}

} // namespace hostkit
