#include "db2dpolyline.h"

#include "dbopen.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"
#include "writablevertices.h"

#include <algorithm>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDb2dPolyline, AcDbCurve, L"POLYLINE")

namespace {

constexpr Adesk::Int16 kClosedFlag = 1;
constexpr Adesk::Int16 kFitFlag = 2;
constexpr Adesk::Int16 kSplineFlag = 4;

const AcDb2dVertex* curveVertex(const hostkit::SubentityList& vertices, std::size_t index) {
    const AcDb2dVertex* vertex =
        vertices.isErasedAt(index) ? nullptr : AcDb2dVertex::cast(vertices.at(index));
    return vertex && vertex->vertexType() != AcDb::k2dSplineCtlVertex ? vertex : nullptr;
}

} // namespace

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& points, double elevation,
                               Adesk::Boolean closed, double startWidth, double endWidth,
                               const AcGeDoubleArray* bulges)
    : m_dxfFlags(closed ? kClosedFlag : 0)
    , m_elevation(elevation)
    , m_startWidth(startWidth)
    , m_endWidth(endWidth) {
    if (type == AcDb::k2dFitCurvePoly) m_dxfFlags |= kFitFlag;
    if (type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly) {
        m_dxfFlags |= kSplineFlag;
        m_curveType = type == AcDb::k2dQuadSplinePoly ? 5 : 6;
    }
    for (int i = 0; i < points.length(); ++i) {
        const double bulge = bulges && i < bulges->length() ? (*bulges)[i] : 0.0;
        const AcGePoint3d place(points[i].x, points[i].y, elevation);
        (void)appendVertex(new AcDb2dVertex(place, bulge, startWidth, endWidth));
    }
}

AcDb::Poly2dType AcDb2dPolyline::polyType() const {
    if ((m_dxfFlags & kSplineFlag) != 0)
        return m_curveType == 5 ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly;
    return (m_dxfFlags & kFitFlag) != 0 ? AcDb::k2dFitCurvePoly : AcDb::k2dSimplePoly;
}

Acad::ErrorStatus AcDb2dPolyline::makeClosed() {
    return hostkit::setFlag(*this, m_dxfFlags, kClosedFlag, true);
}

Acad::ErrorStatus AcDb2dPolyline::makeOpen() {
    return hostkit::setFlag(*this, m_dxfFlags, kClosedFlag, false);
}

Acad::ErrorStatus AcDb2dPolyline::setElevation(double elevation) {
    return hostkit::setFiniteField(*this, m_elevation, elevation);
}

Acad::ErrorStatus AcDb2dPolyline::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& normal) {
    return hostkit::setDirectionField(*this, m_normal, normal);
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    const AcGePoint3d place = vertex.position();
    return hostkit::toWorld(m_normal, AcGePoint3d(place.x, place.y, m_elevation));
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex) {
    AcDbObjectId id;
    return appendVertex(id, vertex);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
    return m_vertices.append(*this, vertex, id);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(AcDbObjectId& id, AcDbObjectId after, AcDb2dVertex* vertex) {
    const std::size_t place = after.isNull() ? 0 : m_vertices.find(after) + 1;
    return m_vertices.insert(*this, place, vertex, id);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(const AcDb2dVertex* after, AcDb2dVertex* vertex) {
    std::size_t place = 0;
    if (after) {
        while (place < m_vertices.count() && m_vertices.at(place) != after) ++place;
        ++place;
    }
    AcDbObjectId id;
    return m_vertices.insert(*this, place, vertex, id);
}

Acad::ErrorStatus AcDb2dPolyline::openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                             bool openErased) const {
    if (m_vertices.find(id) >= m_vertices.count()) return Acad::eInvalidInput;
    return acdbOpenObject(vertex, id, mode, openErased);
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const { return new AcDbObjectIterator(m_vertices); }

Adesk::Boolean AcDb2dPolyline::isClosed() const { return (m_dxfFlags & kClosedFlag) != 0; }

hostkit::PolylineShape AcDb2dPolyline::shape(hostkit::VertexBuffer& buffer) const {
    buffer.points2d.reserve(m_vertices.count());
    buffer.bulges.reserve(m_vertices.count());
    for (std::size_t i = 0; i < m_vertices.count(); ++i) {
        const AcDb2dVertex* vertex = curveVertex(m_vertices, i);
        if (!vertex) continue;
        buffer.points2d.emplace_back(vertex->position().x, vertex->position().y);
        buffer.bulges.push_back(vertex->bulge());
    }
    return {buffer.points2d.data(),
            buffer.bulges.data(),
            buffer.points2d.size(),
            isClosed(),
            m_normal,
            m_elevation};
}

AcDbCurve* AcDb2dPolyline::piece(double from, double to) const {
    hostkit::VertexBuffer buffer;
    auto* result = new AcDb2dPolyline;
    result->m_normal = m_normal;
    result->m_elevation = m_elevation;
    result->m_thickness = m_thickness;
    result->m_startWidth = m_startWidth;
    result->m_endWidth = m_endWidth;
    std::vector<const AcDb2dVertex*> sources;
    for (std::size_t i = 0; i < m_vertices.count(); ++i)
        if (const AcDb2dVertex* vertex = curveVertex(m_vertices, i)) sources.push_back(vertex);
    for (const hostkit::PartVertex& vertex : shape(buffer).part(from, to)) {
        const AcDb2dVertex& source = *sources[vertex.segment];
        const double growth = source.endWidth() - source.startWidth();
        (void)result->appendVertex(new AcDb2dVertex(vertex.point, vertex.bulge,
                                                    source.startWidth() + growth * vertex.fromFraction,
                                                    source.startWidth() + growth * vertex.toFraction));
    }
    return result;
}

Acad::ErrorStatus AcDb2dPolyline::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const hostkit::WritableVertices<AcDb2dVertex> vertices(m_vertices);
    if (vertices.status() != Acad::eOk) return vertices.status();
    struct Values {
        AcGePoint3d position;
        double bulge;
        double startWidth;
        double endWidth;
    };
    std::vector<Values> old;
    for (const AcDb2dVertex* vertex : vertices.all())
        old.push_back({vertex->position(), vertex->bulge(), vertex->startWidth(), vertex->endWidth()});
    const std::size_t count = old.size();
    for (std::size_t i = 0; i < count; ++i) {
        // A closed polyline keeps its first vertex, and its closing segment becomes the first one.
        const std::size_t place = !isClosed() ? count - 1 - i : i == 0 ? 0 : count - i;
        const Values& segment = old[isClosed() ? count - 1 - i : i + 1 < count ? count - 2 - i : count - 1];
        AcDb2dVertex& vertex = *vertices.all()[i];
        (void)vertex.setPosition(old[place].position);
        (void)vertex.setBulge(-segment.bulge);
        (void)vertex.setStartWidth(segment.endWidth);
        (void)vertex.setEndWidth(segment.startWidth);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    hostkit::VertexBuffer buffer;
    (void)shape(buffer);
    const bool hasArcs =
        std::any_of(buffer.bulges.begin(), buffer.bulges.end(), [](double bulge) { return bulge != 0.0; });
    hostkit::PlaneMove move;
    Acad::ErrorStatus status = hostkit::movePlane(m_normal, m_elevation, matrix, hasArcs, move);
    if (status == Acad::eOk && !isWriteEnabled()) status = Acad::eNotOpenForWrite;
    if (status != Acad::eOk) return status;
    const hostkit::WritableVertices<AcDb2dVertex> vertices(m_vertices);
    if (vertices.status() != Acad::eOk) return vertices.status();
    const hostkit::FlatMotion motion(matrix, m_normal);
    hostkit::ExtendedDataMotion data(matrix);
    status = vertices.addTo(data);
    if (status == Acad::eOk) status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    for (AcDb2dVertex* vertex : vertices.all()) {
        const AcGePoint3d place = vertex->position();
        const AcGePoint3d moved = move.map * AcGePoint3d(place.x, place.y, m_elevation);
        (void)vertex->setPosition(AcGePoint3d(moved.x, moved.y, move.elevation));
        if (move.isMirror) (void)vertex->setBulge(-vertex->bulge());
        (void)vertex->setStartWidth(vertex->startWidth() * move.scale);
        (void)vertex->setEndWidth(vertex->endWidth() * move.scale);
        if (vertex->isTangentUsed()) (void)vertex->setTangent(motion.angle(vertex->tangent()));
    }
    data.apply();
    m_startWidth *= move.scale;
    m_endWidth *= move.scale;
    m_thickness *= move.heightScale;
    m_normal = move.normal;
    m_elevation = move.elevation;
    return Acad::eOk;
}

void AcDb2dPolyline::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

Acad::ErrorStatus AcDb2dPolyline::subErase(Adesk::Boolean erasing) {
    m_vertices.eraseAll(erasing);
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDb2dPolyline::Filing {
    static constexpr GroupField<AcDb2dPolyline> groups[] = {
        realField<&AcDb2dPolyline::m_thickness>(39, 0.0),  integerField<&AcDb2dPolyline::m_dxfFlags>(70, 0),
        realField<&AcDb2dPolyline::m_startWidth>(40, 0.0), realField<&AcDb2dPolyline::m_endWidth>(41, 0.0),
        integerField<&AcDb2dPolyline::m_curveType>(75, 0), normalField<&AcDb2dPolyline::m_normal>(),
    };
    static constexpr short verticesFollowCode = 66;
    static constexpr short elevationCode = 10; ///< a point, of which only z means something
};

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDb2dPolyline")) return status;
    return readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (group.code == Filing::elevationCode) m_elevation = group.point[2];
        return group.code == Filing::elevationCode || group.code == Filing::verticesFollowCode;
    });
}

Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDb2dPolyline");
    filer->markOptional();
    filer->writeInteger(Filing::verticesFollowCode, 1);
    if (m_elevation == 0.0) filer->markOptional();
    filer->writeItem(Filing::elevationCode, AcGePoint3d(0.0, 0.0, m_elevation));
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb2dPolyline)
