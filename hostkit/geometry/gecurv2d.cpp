#include "gecurv2d.h"

#include "closestpoints.hpp"
#include "curvebase.hpp"
#include "geline2d.h"

using AcGeKernel::Plane;

void AcGeCurve2d::getInterval(AcGeInterval& interval, AcGePoint2d& start, AcGePoint2d& end) const {
    getInterval(interval);
    hasStartPoint(start);
    hasEndPoint(end);
}

double AcGeCurve2d::paramOf(const AcGePoint2d& point, const AcGeTol&) const {
    return paramOfClosestPoint(point);
}

AcGePoint2d AcGeCurve2d::closestPointTo(const AcGePoint2d& point, const AcGeTol&) const {
    return evalPoint(paramOfClosestPoint(point));
}

AcGePoint2d AcGeCurve2d::closestPointTo(const AcGeCurve2d& curve, AcGePoint2d& pointOnOther,
                                        const AcGeTol& tol) const {
    return AcGeKernel::closestPoints<Plane>(*this, curve, pointOnOther, tol);
}

double AcGeCurve2d::distanceTo(const AcGePoint2d& point, const AcGeTol& tol) const {
    return point.distanceTo(closestPointTo(point, tol));
}

double AcGeCurve2d::distanceTo(const AcGeCurve2d& curve, const AcGeTol& tol) const {
    AcGePoint2d onOther;
    const AcGePoint2d onThis = closestPointTo(curve, onOther, tol);
    return onThis.distanceTo(onOther);
}

Adesk::Boolean AcGeCurve2d::isOn(const AcGePoint2d& point, const AcGeTol& tol) const {
    double param;
    return AcGeKernel::isPointOn<Plane>(*this, point, param, tol);
}

Adesk::Boolean AcGeCurve2d::isOn(const AcGePoint2d& point, double& param, const AcGeTol& tol) const {
    return AcGeKernel::isPointOn<Plane>(*this, point, param, tol);
}

Adesk::Boolean AcGeCurve2d::isOn(double param, const AcGeTol& tol) const {
    return AcGeKernel::isParamOn<Plane>(*this, param, tol);
}

Adesk::Boolean AcGeCurve2d::hasStartPoint(AcGePoint2d& point) const {
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBoundedBelow()) return Adesk::kFalse;
    point = evalPoint(interval.lowerBound());
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCurve2d::hasEndPoint(AcGePoint2d& point) const {
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBoundedAbove()) return Adesk::kFalse;
    point = evalPoint(interval.upperBound());
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCurve2d::isClosed(const AcGeTol& tol) const {
    AcGePoint2d start, end;
    return hasStartPoint(start) && hasEndPoint(end) && start.isEqualTo(end, tol);
}

Adesk::Boolean AcGeCurve2d::isPeriodic(double&) const { return Adesk::kFalse; }

Adesk::Boolean AcGeCurve2d::isLinear(AcGeLine2d&, const AcGeTol&) const { return Adesk::kFalse; }

double AcGeCurve2d::length(double fromParam, double toParam, const AcGeTol&) const {
    return AcGeKernel::lengthAlong<Plane>(*this, fromParam, toParam);
}

double AcGeCurve2d::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                  const AcGeTol&) const {
    AcGeInterval interval;
    getInterval(interval);
    const bool upwards = (length >= 0.0) == static_cast<bool>(forward);
    return AcGeKernel::paramAtLength<Plane>(*this, datumParam, std::abs(length),
                                            upwards ? interval.upperBound() : interval.lowerBound());
}

Adesk::Boolean AcGeCurve2d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    value = AcGeKernel::areaAlong<Plane>(*this, startParam, endParam);
    return Adesk::kTrue;
}

AcGeBoundBlock2d AcGeCurve2d::boundBlock() const { return orthoBoundBlock(); }

void AcGeCurve2d::getSamplePoints(int count, AcGePoint2dArray& points) const {
    AcGeDoubleArray params;
    AcGeKernel::sampleEvenly<Plane>(*this, count, points, params);
}

void AcGeCurve2d::getSamplePoints(int count, AcGePoint2dArray& points, AcGeDoubleArray& params) const {
    AcGeKernel::sampleEvenly<Plane>(*this, count, points, params);
}

void AcGeCurve2d::getSamplePoints(double fromParam, double toParam, double tolerance,
                                  AcGePoint2dArray& points, AcGeDoubleArray& params) const {
    AcGeKernel::sampleWithin<Plane>(*this, fromParam, toParam, tolerance, points, params);
}

void AcGeCurve2d::getSplitCurves(double param, AcGeCurve2d*& before, AcGeCurve2d*& after) const {
    AcGeKernel::split<Plane>(*this, param, before, after);
}

void AcGeCurve2d::getSmoothPieces(AcGeDoubleArray& params) const {
    params.removeAll();
    AcGeInterval interval;
    getInterval(interval);
    if (!interval.isBounded()) return;
    params.append(interval.lowerBound());
    params.append(interval.upperBound());
}
