#include "gecurv3d.h"

#include "closestpoints.hpp"
#include "curvebase.hpp"
#include "geline3d.h"
#include "geplane.h"

using AcGeKernel::Space;

void AcGeCurve3d::getInterval(AcGeInterval& interval, AcGePoint3d& start, AcGePoint3d& end) const {
    getInterval(interval);
    hasStartPoint(start);
    hasEndPoint(end);
}

double AcGeCurve3d::paramOf(const AcGePoint3d& point, const AcGeTol&) const {
    return paramOfClosestPoint(point);
}

AcGePoint3d AcGeCurve3d::closestPointTo(const AcGePoint3d& point, const AcGeTol&) const {
    return evalPoint(paramOfClosestPoint(point));
}

AcGePoint3d AcGeCurve3d::closestPointTo(const AcGeCurve3d& curve, AcGePoint3d& pointOnOther,
                                        const AcGeTol& tol) const {
    return AcGeKernel::closestPoints<Space>(*this, curve, pointOnOther, tol);
}

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

double AcGeCurve3d::distanceTo(const AcGePoint3d& point, const AcGeTol& tol) const {
    return point.distanceTo(closestPointTo(point, tol));
}

double AcGeCurve3d::distanceTo(const AcGeCurve3d& curve, const AcGeTol& tol) const {
    AcGePoint3d onOther;
    const AcGePoint3d onThis = closestPointTo(curve, onOther, tol);
    return onThis.distanceTo(onOther);
}

Adesk::Boolean AcGeCurve3d::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    double param;
    return AcGeKernel::isPointOn<Space>(*this, point, param, tol);
}

Adesk::Boolean AcGeCurve3d::isOn(const AcGePoint3d& point, double& param, const AcGeTol& tol) const {
    return AcGeKernel::isPointOn<Space>(*this, point, param, tol);
}

Adesk::Boolean AcGeCurve3d::isOn(double param, const AcGeTol& tol) const {
    return AcGeKernel::isParamOn<Space>(*this, param, tol);
}

Adesk::Boolean AcGeCurve3d::hasStartPoint(AcGePoint3d& point) const {
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBoundedBelow()) return Adesk::kFalse;
    point = evalPoint(interval.lowerBound());
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCurve3d::hasEndPoint(AcGePoint3d& point) const {
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBoundedAbove()) return Adesk::kFalse;
    point = evalPoint(interval.upperBound());
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCurve3d::isClosed(const AcGeTol& tol) const {
    AcGePoint3d start, end;
    return hasStartPoint(start) && hasEndPoint(end) && start.isEqualTo(end, tol);
}

Adesk::Boolean AcGeCurve3d::isPeriodic(double&) const { return Adesk::kFalse; }

Adesk::Boolean AcGeCurve3d::isLinear(AcGeLine3d&, const AcGeTol&) const { return Adesk::kFalse; }

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
    // A handful of points of each decides: two of a straight curve, the ends of the smooth pieces of any
    // other.
    for (const AcGeCurve3d* member : {this, &curve}) {
        AcGeLine3d own;
        AcGeDoubleArray params;
        member->getSmoothPieces(params);
        if (member->isLinear(own, tol) && params.isEmpty()) {
            if (!own.isOn(found, tol)) return Adesk::kFalse;
            continue;
        }
        for (double param : params)
            if (!found.isOn(member->evalPoint(param), tol)) return Adesk::kFalse;
    }
    plane = found;
    return Adesk::kTrue;
}

double AcGeCurve3d::length(double fromParam, double toParam, const AcGeTol&) const {
    return AcGeKernel::lengthAlong<Space>(*this, fromParam, toParam);
}

double AcGeCurve3d::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                  const AcGeTol&) const {
    AcGeInterval interval;
    getInterval(interval);
    const bool upwards = (length >= 0.0) == static_cast<bool>(forward);
    return AcGeKernel::paramAtLength<Space>(*this, datumParam, std::abs(length),
                                            upwards ? interval.upperBound() : interval.lowerBound());
}

Adesk::Boolean AcGeCurve3d::area(double startParam, double endParam, double& value,
                                 const AcGeTol& tol) const {
    AcGePlane plane;
    if (!isPlanar(plane, tol)) return Adesk::kFalse;
    value = AcGeKernel::areaAlong<Space>(*this, startParam, endParam).length();
    return Adesk::kTrue;
}

AcGeBoundBlock3d AcGeCurve3d::boundBlock() const { return orthoBoundBlock(); }

void AcGeCurve3d::getSamplePoints(int count, AcGePoint3dArray& points) const {
    AcGeDoubleArray params;
    AcGeKernel::sampleEvenly<Space>(*this, count, points, params);
}

void AcGeCurve3d::getSamplePoints(int count, AcGePoint3dArray& points, AcGeDoubleArray& params) const {
    AcGeKernel::sampleEvenly<Space>(*this, count, points, params);
}

void AcGeCurve3d::getSamplePoints(double fromParam, double toParam, double tolerance,
                                  AcGePoint3dArray& points, AcGeDoubleArray& params) const {
    AcGeKernel::sampleWithin<Space>(*this, fromParam, toParam, tolerance, points, params);
}

void AcGeCurve3d::getSplitCurves(double param, AcGeCurve3d*& before, AcGeCurve3d*& after) const {
    AcGeKernel::split<Space>(*this, param, before, after);
}

void AcGeCurve3d::getSmoothPieces(AcGeDoubleArray& params) const {
    params.removeAll();
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBounded()) return;
    params.append(interval.lowerBound());
    params.append(interval.upperBound());
}
