#include "gelent3d.h"

#include "geline3d.h"
#include "gelnsg3d.h"
#include "geplane.h"
#include "geray3d.h"
#include "linearkernel.hpp"

using AcGeKernel::LinearMeeting;
using AcGeKernel::Space;

AcGeLinearEnt3d& AcGeLinearEnt3d::transformBy(const AcGeMatrix3d& matrix) {
    m_origin.transformBy(matrix);
    if (m_interval.isBounded()) {
        m_end.transformBy(matrix);
        m_step = m_end - m_origin;
        return *this;
    }
    m_step.transformBy(matrix).normalize();
    m_end = m_origin + m_step;
    return *this;
}

Adesk::Boolean AcGeLinearEnt3d::isEqualTo(const AcGeEntity3d& entity, const AcGeTol& tol) const {
    if (entity.type() != type()) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeLinearEnt3d&>(entity);
    if (m_interval.isBounded())
        return m_origin.isEqualTo(other.m_origin, tol) && m_end.isEqualTo(other.m_end, tol);
    if (!m_step.isEqualTo(other.m_step, tol)) return Adesk::kFalse;
    if (m_interval.isBoundedBelow()) return m_origin.isEqualTo(other.m_origin, tol);
    return AcGeCurve3d::isOn(other.m_origin, tol);
}

AcGeVector3d AcGeLinearEnt3d::direction() const {
    if (!m_interval.isBounded()) return m_step;
    const double size = m_step.length();
    return size > 0.0 ? m_step / size : AcGeVector3d::kIdentity;
}

void AcGeLinearEnt3d::getLine(AcGeLine3d& line) const { line.set(m_origin, direction()); }

void AcGeLinearEnt3d::getPerpPlane(const AcGePoint3d& point, AcGePlane& plane) const {
    const AcGeVector3d unit = direction();
    plane.set(m_origin + unit * unit.dotProduct(point - m_origin), unit);
}

Adesk::Boolean AcGeLinearEnt3d::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return AcGeKernel::areParallel<Space>(*this, line, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return plane.normal().isPerpendicularTo(direction(), tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPerpendicularTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return direction().isPerpendicularTo(line.direction(), tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPerpendicularTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return plane.normal().isParallelTo(direction(), tol);
}

Adesk::Boolean AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return AcGeKernel::areColinear<Space>(*this, line, tol);
}

Adesk::Boolean AcGeLinearEnt3d::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                                              const AcGeTol& tol) const {
    AcGeInterval run;
    return AcGeKernel::meetLinear<Space>(*this, line, point, run, tol) == LinearMeeting::kPoint;
}

Adesk::Boolean AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                              const AcGeTol& tol) const {
    const AcGeVector3d normal = plane.normal();
    if (normal.isZeroLength(tol)) return Adesk::kFalse;
    if (m_step.length() <= tol.equalPoint()) {
        if (!plane.isOn(m_origin, tol)) return Adesk::kFalse;
        point = m_origin;
        return Adesk::kTrue;
    }
    if (normal.isPerpendicularTo(direction(), tol)) return Adesk::kFalse;
    const double param = -plane.signedDistanceTo(m_origin) / normal.dotProduct(m_step);
    const AcGePoint3d nearest = evalPoint(m_interval.clamp(param));
    if (!m_interval.contains(param) && !plane.isOn(nearest, tol)) return Adesk::kFalse;
    point = nearest;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeLinearEnt3d::projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction,
                                                  AcGePoint3d& pointOnThis, AcGePoint3d& pointOnOther,
                                                  const AcGeTol& tol) const {
    const AcGeVector3d view = direction.normal(tol);
    if (direction.isZeroLength(tol)) return Adesk::kFalse;
    const AcGeVector3d u = m_step.orthoProject(view), v = line.m_step.orthoProject(view);
    if (u.isZeroLength(tol) || v.isZeroLength(tol) || u.isParallelTo(v, tol)) return Adesk::kFalse;
    const AcGeVector3d between = (line.m_origin - m_origin).orthoProject(view);
    const double across = u.crossProduct(v).dotProduct(view);
    const double s = m_interval.clamp(between.crossProduct(v).dotProduct(view) / across);
    const double t = line.m_interval.clamp(between.crossProduct(u).dotProduct(view) / across);
    const AcGePoint3d onThis = evalPoint(s), onOther = line.evalPoint(t);
    // When neither had to be brought back to an end the two are in line; else the seen distance decides.
    const double magnitude = std::max(onThis.largestCoordinate(), onOther.largestCoordinate());
    if (!AcGe::isWithinAllowance((onOther - onThis).orthoProject(view).lengthSqrd(), magnitude, tol))
        return Adesk::kFalse;
    pointOnThis = onThis;
    pointOnOther = onOther;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeLinearEnt3d::overlap(const AcGeLinearEnt3d& line, AcGeLinearEnt3d*& common,
                                        const AcGeTol& tol) const {
    common = nullptr;
    AcGePoint3d point;
    AcGeInterval run;
    if (AcGeKernel::meetLinear<Space>(*this, line, point, run, tol) != LinearMeeting::kRun)
        return Adesk::kFalse;
    common = AcGeKernel::partOf<AcGeLine3d, AcGeRay3d, AcGeLineSeg3d>(*this, run);
    return Adesk::kTrue;
}

Adesk::Boolean AcGeLinearEnt3d::isOn(const AcGePlane& plane, const AcGeTol& tol) const {
    if (!plane.isOn(m_origin, tol)) return Adesk::kFalse;
    return m_interval.isBounded() ? plane.isOn(m_end, tol)
                                  : m_step.isZeroLength(tol) || plane.normal().isPerpendicularTo(m_step, tol);
}

AcGePoint3d AcGeLinearEnt3d::evalPoint(double param) const {
    // Counted from the nearer end, so that both ends of a segment come out as they were given.
    if (param > 0.5 && m_interval.isBounded()) return m_end - m_step * (1.0 - param);
    return m_origin + m_step * param;
}

AcGePoint3d AcGeLinearEnt3d::evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const {
    derivatives.setLogicalLength(std::max(numDeriv, 0)).setAll(AcGeVector3d::kIdentity);
    if (numDeriv > 0) derivatives[0] = m_step;
    return evalPoint(param);
}

double AcGeLinearEnt3d::paramOfClosestPoint(const AcGePoint3d& point) const {
    return m_interval.clamp(paramOf(point, AcGeContext::gTol));
}

double AcGeLinearEnt3d::paramOf(const AcGePoint3d& point, const AcGeTol&) const {
    const double stepSquared = m_step.lengthSqrd();
    return stepSquared > 0.0 ? m_step.dotProduct(point - m_origin) / stepSquared : 0.0;
}

Adesk::Boolean AcGeLinearEnt3d::isLinear(AcGeLine3d& line, const AcGeTol& tol) const {
    if (m_step.isZeroLength(tol)) return Adesk::kFalse;
    getLine(line);
    return Adesk::kTrue;
}

Adesk::Boolean AcGeLinearEnt3d::isPlanar(AcGePlane& plane, const AcGeTol&) const {
    const AcGeVector3d unit = direction();
    AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(unit);
    if (across.isZeroLength()) across = AcGeVector3d::kYAxis;
    plane.set(m_origin, unit.isZeroLength() ? AcGeVector3d::kZAxis : unit.crossProduct(across));
    return Adesk::kTrue;
}

double AcGeLinearEnt3d::length(double fromParam, double toParam, const AcGeTol&) const {
    return std::abs(toParam - fromParam) * m_step.length();
}

double AcGeLinearEnt3d::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                      const AcGeTol&) const {
    const double size = m_step.length();
    if (!(size > 0.0)) return datumParam;
    return forward ? datumParam + length / size : datumParam - length / size;
}

Adesk::Boolean AcGeLinearEnt3d::area(double, double, double& value, const AcGeTol&) const {
    value = 0.0;
    return Adesk::kTrue;
}

AcGeBoundBlock3d AcGeLinearEnt3d::orthoBoundBlock() const { return AcGeKernel::blockOf<Space>(*this); }

void AcGeLinearEnt3d::getSamplePoints(double fromParam, double toParam, double, AcGePoint3dArray& points,
                                      AcGeDoubleArray& params) const {
    points.removeAll();
    params.removeAll();
    for (double param : {fromParam, toParam}) {
        points.append(evalPoint(param));
        params.append(param);
    }
}
