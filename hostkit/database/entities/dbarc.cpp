#include "dbarc.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "flatmotion.h"

#include <cmath>
#include <numbers>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbArc, AcDbCurve, L"ARC")

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : m_ecsCenter(center)
    , m_radius(radius)
    , m_startAngle(hostkit::angleWithinTurn(startAngle))
    , m_endAngle(hostkit::angleWithinTurn(endAngle)) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : AcDbArc(center, radius, startAngle, endAngle) {
    if (normal.isZeroLength()) return;
    m_normal = normal.normal();
    m_ecsCenter = hostkit::toEntity(m_normal, center);
}

double AcDbArc::totalAngle() const {
    const double sweep = m_endAngle - m_startAngle;
    return sweep > 0.0 ? sweep : sweep + AcGe::kTwoPi;
}

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
    if (!hostkit::isFinite(center)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_ecsCenter = hostkit::toEntity(m_normal, center);
    return status;
}

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    if (!(radius >= 0.0) || std::isinf(radius)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_radius = radius;
    return status;
}

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_startAngle = hostkit::angleWithinTurn(angle);
    return status;
}

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_endAngle = hostkit::angleWithinTurn(angle);
    return status;
}

Acad::ErrorStatus AcDbArc::setThickness(double thickness) {
    if (!std::isfinite(thickness)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_thickness = thickness;
    return status;
}

Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isFinite(normal) || normal.isZeroLength()) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGePoint3d place = center();
    m_normal = normal.normal();
    m_ecsCenter = hostkit::toEntity(m_normal, place);
    return Acad::eOk;
}

bool AcDbArc::geometry(hostkit::CurveGeometry& geometry) const {
    if (!(m_radius > 0.0)) return false;
    AcGeCircArc3d arc(center(), m_normal, m_radius);
    arc.setAngles(m_startAngle, m_startAngle + totalAngle());
    geometry.set(arc);
    return true;
}

AcDbCurve* AcDbArc::piece(double from, double to) const {
    AcDbArc* result = new AcDbArc(*this);
    result->m_startAngle = hostkit::angleWithinTurn(from);
    result->m_endAngle = hostkit::angleWithinTurn(to);
    return result;
}

Acad::ErrorStatus AcDbArc::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                             AcDbCurve*& projected) const {
    hostkit::CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    return hostkit::projectEllipse(*this, AcGeEllipArc3d(*own.arc()), plane, direction, projected);
}

Acad::ErrorStatus AcDbArc::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    // An arc always runs counter-clockwise about its normal, so that it is the normal which turns; the x axis
    // of its system turns with it.
    const AcGePoint3d place = center();
    m_normal = -m_normal;
    m_ecsCenter = hostkit::toEntity(m_normal, place);
    const double start = m_startAngle;
    m_startAngle = hostkit::angleWithinTurn(AcGe::kPi - m_endAngle);
    m_endAngle = hostkit::angleWithinTurn(AcGe::kPi - start);
    m_thickness = -m_thickness;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    if (!hostkit::isUniform(matrix, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (hostkit::isShift(matrix)) {
        m_ecsCenter = hostkit::toEntity(m_normal, matrix * center());
        return Acad::eOk;
    }
    // The sense stays: a mirror turns the normal away from where the old one goes.
    const AcGePoint3d place = matrix * center();
    const AcGeVector3d xAxis = matrix * hostkit::toWorld(m_normal, AcGeVector3d::kXAxis);
    const AcGeVector3d yAxis = matrix * hostkit::toWorld(m_normal, AcGeVector3d::kYAxis);
    const AcGeVector3d moved = matrix * m_normal;
    m_normal = xAxis.crossProduct(yAxis);
    m_normal /= m_normal.length();
    m_ecsCenter = hostkit::toEntity(m_normal, place);
    m_radius *= scale;
    m_thickness *= moved.dotProduct(m_normal);
    const AcGeVector3d local = hostkit::toEntity(m_normal, xAxis);
    const double shift = std::atan2(local.y, local.x);
    m_startAngle = hostkit::angleWithinTurn(m_startAngle + shift);
    m_endAngle = hostkit::angleWithinTurn(m_endAngle + shift);
    return Acad::eOk;
}

void AcDbArc::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbArc::Filing {
    // The arc's circle has a subclass of its own in a file.
    static constexpr GroupField<AcDbArc> circle[] = {
        realField<&AcDbArc::m_thickness>(39, 0.0),
        pointField<&AcDbArc::m_ecsCenter>(10),
        realField<&AcDbArc::m_radius>(40),
        normalField<&AcDbArc::m_normal>(),
    };
    static constexpr GroupField<AcDbArc> arc[] = {
        angleField<&AcDbArc::m_startAngle>(50),
        angleField<&AcDbArc::m_endAngle>(51),
    };

    static double withinTurn(double angle) {
        constexpr double turn = 2.0 * std::numbers::pi;
        if (angle >= 0.0 && angle < turn) return angle;
        const double rest = std::fmod(angle, turn);
        const double positive = rest < 0.0 ? rest + turn : rest;
        return positive < turn ? positive : 0.0;
    }
};

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status == Acad::eOk && filer->atSubclassData(L"AcDbCircle"))
        status = readFields(*filer, Filing::circle, *this);
    if (status == Acad::eOk && filer->atSubclassData(L"AcDbArc"))
        status = readFields(*filer, Filing::arc, *this);
    m_startAngle = Filing::withinTurn(m_startAngle);
    m_endAngle = Filing::withinTurn(m_endAngle);
    return status;
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbCircle");
    writeFields(*filer, Filing::circle, *this);
    filer->writeSubclassMark(L"AcDbArc");
    writeFields(*filer, Filing::arc, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbArc)
