#include "gelent3d.h"

#include "geline3d.h"
#include "geplane.h"

void AcGeLinearEnt3d::getPerpPlane(const AcGePoint3d& point, AcGePlane& plane) const {
    const AcGeVector3d unit = direction();
    plane.set(m_origin + unit * unit.dotProduct(point - m_origin), unit);
}

Adesk::Boolean AcGeLinearEnt3d::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return plane.normal().isPerpendicularTo(direction(), tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPerpendicularTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return plane.normal().isParallelTo(direction(), tol);
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

Adesk::Boolean AcGeLinearEnt3d::isOn(const AcGePlane& plane, const AcGeTol& tol) const {
    if (!plane.isOn(m_origin, tol)) return Adesk::kFalse;
    return m_interval.isBounded() ? plane.isOn(m_end, tol)
                                  : m_step.isZeroLength(tol) || plane.normal().isPerpendicularTo(m_step, tol);
}

Adesk::Boolean AcGeLinearEnt3d::isPlanar(AcGePlane& plane, const AcGeTol&) const {
    const AcGeVector3d unit = direction();
    AcGeVector3d across = AcGeVector3d::kZAxis.crossProduct(unit);
    if (across.isZeroLength()) across = AcGeVector3d::kYAxis;
    plane.set(m_origin, unit.isZeroLength() ? AcGeVector3d::kZAxis : unit.crossProduct(across));
    return Adesk::kTrue;
}
