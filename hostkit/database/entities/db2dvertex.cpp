#include "db2dvertex.h"

#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDb2dVertex, AcDbEntity, L"VERTEX")

namespace {

constexpr Adesk::Int16 kTangentFlag = 2;
constexpr Adesk::Int16 kTypeFlags =
    AcDb::k2dCurveFitVertex | AcDb::k2dSplineFitVertex | AcDb::k2dSplineCtlVertex;

} // namespace

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth, double endWidth,
                           double tangent, AcDb::Vertex2dType type)
    : m_dxfFlags(static_cast<Adesk::Int16>(type))
    , m_position(position)
    , m_bulge(bulge)
    , m_startWidth(startWidth)
    , m_endWidth(endWidth)
    , m_tangent(tangent) {}

AcDb::Vertex2dType AcDb2dVertex::vertexType() const {
    const int bits = m_dxfFlags & kTypeFlags;
    if ((bits & AcDb::k2dSplineCtlVertex) != 0) return AcDb::k2dSplineCtlVertex;
    if ((bits & AcDb::k2dSplineFitVertex) != 0) return AcDb::k2dSplineFitVertex;
    return bits != 0 ? AcDb::k2dCurveFitVertex : AcDb::k2dVertex;
}

Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& position) {
    return hostkit::setFiniteField(*this, m_position, position);
}

Acad::ErrorStatus AcDb2dVertex::setBulge(double bulge) {
    return hostkit::setFiniteField(*this, m_bulge, bulge);
}

Acad::ErrorStatus AcDb2dVertex::setStartWidth(double width) {
    return hostkit::setNonNegativeField(*this, m_startWidth, width);
}

Acad::ErrorStatus AcDb2dVertex::setEndWidth(double width) {
    return hostkit::setNonNegativeField(*this, m_endWidth, width);
}

Acad::ErrorStatus AcDb2dVertex::setTangent(double tangent) {
    const Acad::ErrorStatus status = hostkit::setFiniteField(*this, m_tangent, tangent);
    return status == Acad::eOk ? hostkit::setFlag(*this, m_dxfFlags, kTangentFlag, true) : status;
}

// A vertex by itself knows no normal: its own coordinates are all that it has.

Acad::ErrorStatus AcDb2dVertex::getGeomExtents(AcDbExtents& extents) const {
    return extents.set(m_position, m_position) == Acad::eOk ? Acad::eOk : Acad::eInvalidExtents;
}

Acad::ErrorStatus AcDb2dVertex::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const hostkit::FlatMotion motion(matrix, AcGeVector3d::kZAxis);
    m_position.transformBy(matrix);
    m_startWidth *= motion.scale();
    m_endWidth *= motion.scale();
    m_tangent = motion.angle(m_tangent);
    if (motion.isMirror()) m_bulge = -m_bulge;
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDb2dVertex::Filing {
    static constexpr GroupField<AcDb2dVertex> groups[] = {
        pointField<&AcDb2dVertex::m_position>(10),      realField<&AcDb2dVertex::m_startWidth>(40, 0.0),
        realField<&AcDb2dVertex::m_endWidth>(41, 0.0),  realField<&AcDb2dVertex::m_bulge>(42, 0.0),
        integerField<&AcDb2dVertex::m_dxfFlags>(70, 0), angleField<&AcDb2dVertex::m_tangent>(50, 0.0),
    };
};

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    (void)filer->atSubclassData(L"AcDbVertex");
    if (!filer->atSubclassData(L"AcDb2dVertex")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDb2dVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbVertex");
    filer->writeSubclassMark(L"AcDb2dVertex");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb2dVertex)
