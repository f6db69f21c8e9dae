#include "dbarc.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

#include <cmath>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbArc, AcDbCurve, L"ARC")

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : CircularCurve(center, normal, radius)
    , m_startAngle(hostkit::angleWithinTurn(startAngle))
    , m_endAngle(hostkit::angleWithinTurn(endAngle)) {}

double AcDbArc::totalAngle() const {
    const double sweep = m_endAngle - m_startAngle;
    return sweep > 0.0 ? sweep : sweep + AcGe::kTwoPi;
}

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
    return hostkit::assignIf(std::isfinite(angle), *this, m_startAngle, hostkit::angleWithinTurn(angle));
}

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
    return hostkit::assignIf(std::isfinite(angle), *this, m_endAngle, hostkit::angleWithinTurn(angle));
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

Acad::ErrorStatus AcDbArc::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    // An arc always runs counter-clockwise about its normal, so that it is the normal which turns; the x axis
    // of its system turns with it.
    turnTo(-m_normal);
    const double start = m_startAngle;
    m_startAngle = hostkit::angleWithinTurn(AcGe::kPi - m_endAngle);
    m_endAngle = hostkit::angleWithinTurn(AcGe::kPi - start);
    m_thickness = -m_thickness;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d oldNormal = m_normal;
    const Acad::ErrorStatus status = CircularCurve::subTransformBy(matrix);
    if (status != Acad::eOk || hostkit::isShift(matrix)) return status;
    const AcGeVector3d xAxis = matrix * hostkit::toWorld(oldNormal, AcGeVector3d::kXAxis);
    const AcGeVector3d local = hostkit::toEntity(m_normal, xAxis);
    const double turn = std::atan2(local.y, local.x);
    m_startAngle = hostkit::angleWithinTurn(m_startAngle + turn);
    m_endAngle = hostkit::angleWithinTurn(m_endAngle + turn);
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbArc::Filing {
    static constexpr GroupField<AcDbArc> groups[] = {
        angleField<&AcDbArc::m_startAngle>(50),
        angleField<&AcDbArc::m_endAngle>(51),
    };
};

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = CircularCurve::dxfInFields(filer);
    if (status == Acad::eOk && filer->atSubclassData(L"AcDbArc"))
        status = readFields(*filer, Filing::groups, *this);
    m_startAngle = hostkit::angleWithinTurn(m_startAngle);
    m_endAngle = hostkit::angleWithinTurn(m_endAngle);
    return status;
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<CircularCurve>(filer, *this, L"AcDbArc", Filing::groups);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbArc)
