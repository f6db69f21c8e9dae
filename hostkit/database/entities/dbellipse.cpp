#include "dbellipse.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "ellipseangle.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbEllipse, AcDbCurve, L"ELLIPSE")

namespace {

/// Cosine of the angle between the axes up to which they count as perpendicular.
constexpr double kPerpendicular = 1e-6;

} // namespace

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startAngle, double endAngle)
    : m_center(center)
    , m_majorAxis(majorAxis)
    , m_normal(normal.isZeroLength() ? AcGeVector3d::kZAxis : AcGe::unitOf(normal))
    , m_radiusRatio(radiusRatio)
    , m_startParam(hostkit::parameterThatReads(startAngle, radiusRatio))
    , m_endParam(hostkit::parameterThatReads(endAngle, radiusRatio)) {}

AcGeVector3d AcDbEllipse::minorAxis() const { return m_normal.crossProduct(m_majorAxis) * m_radiusRatio; }
double AcDbEllipse::majorRadius() const { return m_majorAxis.length(); }
double AcDbEllipse::minorRadius() const { return m_majorAxis.length() * m_radiusRatio; }
double AcDbEllipse::startAngle() const { return hostkit::ellipseAngle(m_startParam, m_radiusRatio); }
double AcDbEllipse::endAngle() const { return hostkit::ellipseAngle(m_endParam, m_radiusRatio); }

Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& center) {
    return hostkit::setFiniteField(*this, m_center, center);
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                   const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                                   double endAngle) {
    const bool axesHold = hostkit::isFinite(center) && hostkit::isFinite(normal) &&
                          hostkit::isFinite(majorAxis) && !normal.isZeroLength() &&
                          !majorAxis.isZeroLength() &&
                          std::abs(normal.normal().dotProduct(majorAxis.normal())) <= kPerpendicular;
    const bool numbersHold =
        radiusRatio > 0.0 && radiusRatio <= 1.0 && std::isfinite(startAngle) && std::isfinite(endAngle);
    if (!axesHold || !numbersHold) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_center = center;
    m_normal = AcGe::unitOf(normal);
    m_majorAxis = majorAxis;
    m_radiusRatio = radiusRatio;
    m_startParam = hostkit::parameterThatReads(startAngle, radiusRatio);
    m_endParam = hostkit::parameterThatReads(endAngle, radiusRatio);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
    return hostkit::assignIf(ratio > 0.0 && ratio <= 1.0, *this, m_radiusRatio, ratio);
}

Acad::ErrorStatus AcDbEllipse::setStartAngle(double angle) {
    return setStartParam(hostkit::parameterThatReads(angle, m_radiusRatio));
}

Acad::ErrorStatus AcDbEllipse::setEndAngle(double angle) {
    return setEndParam(hostkit::parameterThatReads(angle, m_radiusRatio));
}

Acad::ErrorStatus AcDbEllipse::setStartParam(double parameter) {
    return hostkit::setFiniteField(*this, m_startParam, parameter);
}

Acad::ErrorStatus AcDbEllipse::setEndParam(double parameter) {
    return hostkit::setFiniteField(*this, m_endParam, parameter);
}

bool AcDbEllipse::geometry(hostkit::CurveGeometry& geometry) const {
    const double major = majorRadius();
    if (!(major > 0.0) || !(m_radiusRatio > 0.0)) return false;
    if (!std::isfinite(m_startParam) || !std::isfinite(m_endParam)) return false;
    geometry.set(AcGeEllipArc3d(m_center, m_majorAxis, m_normal.crossProduct(m_majorAxis), major,
                                major * m_radiusRatio, m_startParam, m_endParam));
    return true;
}

AcDbCurve* AcDbEllipse::piece(double from, double to) const {
    AcDbEllipse* part = new AcDbEllipse(*this);
    part->m_startParam = from;
    part->m_endParam = to;
    return part;
}

Acad::ErrorStatus AcDbEllipse::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                 AcDbCurve*& projected) const {
    hostkit::CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    return hostkit::projectEllipse(*this, static_cast<const AcGeEllipArc3d&>(own.curve()), plane, direction,
                                   projected);
}

Acad::ErrorStatus AcDbEllipse::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    // About the opposite normal the point of parameter t has -t.
    m_normal = -m_normal;
    const double start = m_startParam;
    m_startParam = AcGe::kTwoPi - m_endParam;
    m_endParam = AcGe::kTwoPi - start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (hostkit::isShift(matrix)) {
        m_center.transformBy(matrix);
        return Acad::eOk;
    }
    double scale = 1.0;
    hostkit::CurveGeometry own;
    if (hostkit::isUniform(matrix, scale) || !geometry(own)) {
        const AcGeVector3d minor = matrix * m_normal.crossProduct(m_majorAxis);
        m_center.transformBy(matrix);
        m_majorAxis.transformBy(matrix);
        m_normal = m_majorAxis.crossProduct(minor).normal();
        return Acad::eOk;
    }
    AcGeEllipArc3d moved(static_cast<const AcGeEllipArc3d&>(own.curve()));
    moved.transformBy(matrix);
    m_center = moved.center();
    m_majorAxis = moved.majorAxis() * moved.majorRadius();
    m_normal = moved.normal();
    m_radiusRatio = moved.minorRadius() / moved.majorRadius();
    m_startParam = moved.startAng();
    m_endParam = moved.endAng();
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbEllipse::Filing {
    static constexpr GroupField<AcDbEllipse> groups[] = {
        pointField<&AcDbEllipse::m_center>(10),    pointField<&AcDbEllipse::m_majorAxis>(11),
        normalField<&AcDbEllipse::m_normal>(),     realField<&AcDbEllipse::m_radiusRatio>(40),
        realField<&AcDbEllipse::m_startParam>(41), realField<&AcDbEllipse::m_endParam>(42),
    };
};

Acad::ErrorStatus AcDbEllipse::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbCurve>(filer, *this, L"AcDbEllipse", Filing::groups);
}

Acad::ErrorStatus AcDbEllipse::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<AcDbCurve>(filer, *this, L"AcDbEllipse", Filing::groups);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbEllipse)
