#include "dbline.h"

#include "curvegeometry.h"
#include "curvesupport.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

#include <cmath>
#include <utility>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbLine, AcDbCurve, L"LINE")

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    return hostkit::setFiniteField(*this, m_start, point);
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    return hostkit::setFiniteField(*this, m_end, point);
}

Acad::ErrorStatus AcDbLine::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    return hostkit::setDirectionField(*this, m_normal, normal);
}

bool AcDbLine::geometry(hostkit::CurveGeometry& geometry) const {
    geometry.set(AcGeLineSeg3d(m_start, m_end), m_start.distanceTo(m_end));
    return true;
}

AcDbCurve* AcDbLine::piece(double from, double to) const {
    AcDbLine* result = new AcDbLine(*this);
    (void)getPointAtParam(from, result->m_start);
    (void)getPointAtParam(to, result->m_end);
    return result;
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

Acad::ErrorStatus AcDbLine::getOsnapPoints(AcDb::OsnapMode mode, Adesk::IntPtr, const AcGePoint3d& pickPoint,
                                           const AcGePoint3d& lastPoint, const AcGeMatrix3d& viewTransform,
                                           AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
    AcGePoint3d point;
    Acad::ErrorStatus status = Acad::eOk;
    switch (mode) {
    case AcDb::kOsModeEnd:
        snapPoints.append(m_start);
        point = m_end;
        break;
    case AcDb::kOsModeMid:
        point = m_start + (m_end - m_start) / 2;
        break;
    case AcDb::kOsModePerp:
        status = getClosestPointTo(lastPoint, point, Adesk::kTrue);
        break;
    case AcDb::kOsModeNear:
        status = viewTransform.isSingular()
                     ? getClosestPointTo(pickPoint, point)
                     : getClosestPointTo(pickPoint, viewTransform.inverse() * AcGeVector3d::kZAxis, point);
        break;
    default:
        return Acad::eOk;
    }
    if (status == Acad::eOk) snapPoints.append(point);
    return status;
}

Acad::ErrorStatus AcDbLine::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) std::swap(m_start, m_end);
    return status;
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_start.transformBy(matrix);
    m_end.transformBy(matrix);
    if (hostkit::isShift(matrix)) return Acad::eOk;
    const AcGeVector3d moved = matrix * m_normal;
    const double scale = moved.length();
    m_normal = moved / scale;
    m_thickness *= scale;
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbLine::Filing {
    static constexpr GroupField<AcDbLine> groups[] = {
        realField<&AcDbLine::m_thickness>(39, 0.0),
        pointField<&AcDbLine::m_start>(10),
        pointField<&AcDbLine::m_end>(11),
        normalField<&AcDbLine::m_normal>(),
    };
};

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbCurve>(filer, *this, L"AcDbLine", Filing::groups);
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<AcDbCurve>(filer, *this, L"AcDbLine", Filing::groups);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbLine)
