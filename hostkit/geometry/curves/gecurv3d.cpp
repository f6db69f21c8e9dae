#include "gecurv3d.h"

#include "curvekernel.hpp"
#include "geline3d.h"
#include "geplane.h"

using AcGeKernel::Space;

namespace {

// A handful of points decides: two of a straight curve, the ends of the smooth pieces of any other.
bool liesIn(const AcGeCurve3d& curve, const AcGePlane& plane, const AcGeTol& tol) {
    AcGeLine3d line;
    AcGeDoubleArray params;
    curve.getSmoothPieces(params);
    if (curve.isLinear(line, tol) && params.isEmpty()) return line.isOn(plane, tol);
    for (double param : params)
        if (!plane.isOn(curve.evalPoint(param), tol)) return false;
    return true;
}

} // namespace

AcGePoint3d AcGeCurve3d::projClosestPointTo(const AcGePoint3d& point, const AcGeVector3d& direction,
                                            const AcGeTol& tol) const {
    const AcGeVector3d unit = direction.normal(tol);
    if (direction.isZeroLength(tol)) return closestPointTo(point, tol);
    AcGeInterval interval;
    getInterval(interval);
    AcGeLine3d line;
    if (isLinear(line, tol)) {
        const AcGeVector3d seen = line.direction().orthoProject(unit);
        const double sizeSquared = seen.lengthSqrd();
        if (!(sizeSquared > 0.0)) return closestPointTo(point, tol);
        const double distance = (point - line.pointOnLine()).dotProduct(seen) / sizeSquared;
        return closestPointTo(line.evalPoint(distance), tol);
    }
    // The point's place along the view follows the curve, so that only the seen distance counts.
    const auto target = [&](const AcGePoint3d& onCurve) {
        return point + unit * (onCurve - point).dotProduct(unit);
    };
    return evalPoint(AcGeKernel::nearestParam<Space>(*this, target));
}

Adesk::Boolean AcGeCurve3d::isCoplanarWith(const AcGeCurve3d& curve, AcGePlane& plane,
                                           const AcGeTol& tol) const {
    AcGeLine3d line, otherLine;
    const bool straight = isLinear(line, tol), otherStraight = curve.isLinear(otherLine, tol);
    AcGePlane found;
    if (straight && otherStraight) {
        const AcGeVector3d between = otherLine.pointOnLine() - line.pointOnLine();
        const bool parallel = line.isParallelTo(otherLine, tol);
        const AcGeVector3d across = line.direction().crossProduct(parallel ? between : otherLine.direction());
        if (across.isZeroLength(tol)) {
            if (!isPlanar(found, tol)) return Adesk::kFalse;
        } else {
            found.set(line.pointOnLine(), across);
        }
    } else if (!(straight ? curve : *this).isPlanar(found, tol)) {
        return Adesk::kFalse;
    }
    if (!liesIn(*this, found, tol) || !liesIn(curve, found, tol)) return Adesk::kFalse;
    plane = found;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCurve3d::area(double startParam, double endParam, double& value,
                                 const AcGeTol& tol) const {
    AcGePlane plane;
    if (!isPlanar(plane, tol)) return Adesk::kFalse;
    value = AcGeKernel::areaAlong<Space>(*this, startParam, endParam).length();
    return Adesk::kTrue;
}
