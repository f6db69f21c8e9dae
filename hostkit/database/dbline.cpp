#include "dbline.h"

#include "curvesupport.h"
#include "entitycoordinates.h"
#include "gelnsg3d.h"

#include <algorithm>
#include <cmath>

HOSTKIT_KIT_CLASS(AcDbLine, AcDbCurve, L"LINE")

namespace {

/// Worked from the nearer end, so that both ends come back to the bit.
AcGePoint3d pointAtFraction(const AcGePoint3d& start, const AcGePoint3d& end, double fraction) {
    const AcGeVector3d step = end - start;
    return fraction <= 0.5 ? start + step * fraction : end - step * (1.0 - fraction);
}

double lengthAllowance(const AcGePoint3d& start, const AcGePoint3d& end) {
    return std::max(hostkit::pointAllowance(start), hostkit::pointAllowance(end));
}

} // namespace

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    if (!hostkit::isFinite(point)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_start = point;
    return status;
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    if (!hostkit::isFinite(point)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_end = point;
    return status;
}

Acad::ErrorStatus AcDbLine::setThickness(double thickness) {
    if (!std::isfinite(thickness)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_thickness = thickness;
    return status;
}

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isFinite(normal) || normal.isZeroLength()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_normal = normal.normal();
    return status;
}

Adesk::Boolean AcDbLine::isClosed() const { return Adesk::kFalse; }

Adesk::Boolean AcDbLine::isPeriodic() const { return Adesk::kFalse; }

Acad::ErrorStatus AcDbLine::getStartParam(double& parameter) const {
    parameter = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getEndParam(double& parameter) const {
    parameter = m_start.distanceTo(m_end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getStartPoint(AcGePoint3d& point) const {
    point = m_start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getEndPoint(AcGePoint3d& point) const {
    point = m_end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getPointAtParam(double parameter, AcGePoint3d& point) const {
    const double length = m_start.distanceTo(m_end);
    if (!hostkit::bringIntoRange(parameter, 0.0, length, lengthAllowance(m_start, m_end)))
        return Acad::eInvalidInput;
    point = length > 0.0 ? pointAtFraction(m_start, m_end, parameter / length) : m_start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getParamAtPoint(const AcGePoint3d& point, double& parameter) const {
    AcGePoint3d closest;
    getClosestPointTo(point, closest);
    if (!closest.isEqualTo(point)) return Acad::eInvalidInput;
    parameter = closest.distanceTo(m_start);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getDistAtParam(double parameter, double& distance) const {
    if (!hostkit::bringIntoRange(parameter, 0.0, m_start.distanceTo(m_end), lengthAllowance(m_start, m_end)))
        return Acad::eInvalidInput;
    distance = parameter;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getParamAtDist(double distance, double& parameter) const {
    return getDistAtParam(distance, parameter); // the parameter is the length
}

Acad::ErrorStatus AcDbLine::getFirstDeriv(double parameter, AcGeVector3d& derivative) const {
    const double length = m_start.distanceTo(m_end);
    if (!hostkit::bringIntoRange(parameter, 0.0, length, lengthAllowance(m_start, m_end)))
        return Acad::eInvalidInput;
    if (!(length > 0.0)) return Acad::eDegenerateGeometry;
    derivative = (m_end - m_start) / length;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getSecondDeriv(double parameter, AcGeVector3d& derivative) const {
    AcGeVector3d first;
    const Acad::ErrorStatus status = getFirstDeriv(parameter, first);
    if (status == Acad::eOk) derivative = AcGeVector3d::kIdentity;
    return status;
}

Acad::ErrorStatus AcDbLine::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                              Adesk::Boolean extend) const {
    const AcGeVector3d step = m_end - m_start;
    const double lengthSquared = step.lengthSqrd();
    if (!(lengthSquared > 0.0)) {
        closest = m_start;
        return Acad::eOk;
    }
    double fraction = (given - m_start).dotProduct(step) / lengthSquared;
    if (!extend) fraction = fraction < 0.0 ? 0.0 : fraction > 1.0 ? 1.0 : fraction;
    closest = pointAtFraction(m_start, m_end, fraction);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getArea(double&) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbLine::getSplitCurves(const AcGeDoubleArray& parameters,
                                           AcDbVoidPtrArray& curves) const {
    const double length = m_start.distanceTo(m_end);
    const std::vector<hostkit::ParameterSpan> spans =
        hostkit::spansBetween(parameters, 0.0, length, false, lengthAllowance(m_start, m_end));
    if (spans.empty()) return Acad::eInvalidInput;
    for (const hostkit::ParameterSpan& span : spans) {
        AcDbLine* piece = new AcDbLine(*this);
        piece->m_start = pointAtFraction(m_start, m_end, span.from / length);
        piece->m_end = pointAtFraction(m_start, m_end, span.to / length);
        curves.append(piece);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                              AcDbCurve*& projected) const {
    if (!hostkit::canProject(plane, direction)) return Acad::eInvalidInput;
    const AcGePoint3d start = m_start.project(plane, direction);
    const AcGePoint3d end = m_end.project(plane, direction);
    if (start.isEqualTo(end)) return Acad::eDegenerateGeometry;
    projected = hostkit::withPropertiesOf(*this, new AcDbLine(start, end));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) std::swap(m_start, m_end);
    return status;
}

Acad::ErrorStatus AcDbLine::getAcGeCurve(AcGeCurve3d*& curve) const {
    curve = new AcGeLineSeg3d(m_start, m_end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    box.addPoint(m_start);
    box.addPoint(m_end);
    if (box.isEmpty()) return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::transformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_start.transformBy(matrix);
    m_end.transformBy(matrix);
    const AcGeVector3d moved = matrix * m_normal;
    const double scale = moved.length();
    if (scale > 0.0) {
        m_normal = moved / scale;
        m_thickness *= scale;
    }
    return Acad::eOk;
}
