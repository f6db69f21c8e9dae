#include "db3dpolyline.h"

#include "dbline.h"
#include "dbopen.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "writablevertices.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDb3dPolyline, AcDbCurve, L"POLYLINE")

namespace {

constexpr Adesk::Int16 kClosedFlag = 1;
constexpr Adesk::Int16 kSplineFlag = 4;

const AcDb3dPolylineVertex* curveVertex(const hostkit::SubentityList& vertices, std::size_t index) {
    const AcDb3dPolylineVertex* vertex =
        vertices.isErasedAt(index) ? nullptr : AcDb3dPolylineVertex::cast(vertices.at(index));
    return vertex && vertex->vertexType() != AcDb::k3dControlVertex ? vertex : nullptr;
}

} // namespace

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& points, Adesk::Boolean closed) {
    if (closed) m_dxfFlags |= kClosedFlag;
    if (type != AcDb::k3dSimplePoly) {
        m_dxfFlags |= kSplineFlag;
        m_curveType = type == AcDb::k3dQuadSplinePoly ? 5 : 6;
    }
    for (const AcGePoint3d& point : points) (void)appendVertex(new AcDb3dPolylineVertex(point));
}

AcDb::Poly3dType AcDb3dPolyline::polyType() const {
    if ((m_dxfFlags & kSplineFlag) == 0) return AcDb::k3dSimplePoly;
    return m_curveType == 5 ? AcDb::k3dQuadSplinePoly : AcDb::k3dCubicSplinePoly;
}

Acad::ErrorStatus AcDb3dPolyline::makeClosed() {
    return hostkit::setFlag(*this, m_dxfFlags, kClosedFlag, true);
}

Acad::ErrorStatus AcDb3dPolyline::makeOpen() {
    return hostkit::setFlag(*this, m_dxfFlags, kClosedFlag, false);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex) {
    AcDbObjectId id;
    return appendVertex(id, vertex);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
    return m_vertices.append(*this, vertex, id);
}

Acad::ErrorStatus AcDb3dPolyline::insertVertexAt(AcDbObjectId& id, AcDbObjectId after,
                                                 AcDb3dPolylineVertex* vertex) {
    const std::size_t place = after.isNull() ? 0 : m_vertices.find(after) + 1;
    return m_vertices.insert(*this, place, vertex, id);
}

Acad::ErrorStatus AcDb3dPolyline::insertVertexAt(const AcDb3dPolylineVertex* after,
                                                 AcDb3dPolylineVertex* vertex) {
    std::size_t place = 0;
    if (after) {
        while (place < m_vertices.count() && m_vertices.at(place) != after) ++place;
        ++place;
    }
    AcDbObjectId id;
    return m_vertices.insert(*this, place, vertex, id);
}

Acad::ErrorStatus AcDb3dPolyline::openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id,
                                             AcDb::OpenMode mode, bool openErased) const {
    if (m_vertices.find(id) >= m_vertices.count()) return Acad::eInvalidInput;
    return acdbOpenObject(vertex, id, mode, openErased);
}

AcDbObjectIterator* AcDb3dPolyline::vertexIterator() const { return new AcDbObjectIterator(m_vertices); }

Adesk::Boolean AcDb3dPolyline::isClosed() const { return (m_dxfFlags & kClosedFlag) != 0; }

hostkit::PolylineShape AcDb3dPolyline::shape(hostkit::VertexBuffer& buffer) const {
    buffer.points3d.reserve(m_vertices.count());
    for (std::size_t i = 0; i < m_vertices.count(); ++i)
        if (const AcDb3dPolylineVertex* vertex = curveVertex(m_vertices, i))
            buffer.points3d.push_back(vertex->position());
    return {buffer.points3d.data(), buffer.points3d.size(), isClosed()};
}

AcDbCurve* AcDb3dPolyline::piece(double from, double to) const {
    hostkit::VertexBuffer buffer;
    auto* result = new AcDb3dPolyline;
    for (const hostkit::PartVertex& vertex : shape(buffer).part(from, to))
        (void)result->appendVertex(new AcDb3dPolylineVertex(vertex.point));
    return result;
}

Acad::ErrorStatus AcDb3dPolyline::explode(AcDbVoidPtrArray& parts) const {
    hostkit::VertexBuffer buffer;
    const hostkit::PolylineShape own = shape(buffer);
    for (std::size_t i = 0; i < own.segmentCount(); ++i) {
        auto* side = new AcDbLine(own.worldVertex(i), own.worldVertex(i + 1 < own.vertexCount() ? i + 1 : 0));
        (void)side->setPropertiesFrom(this);
        parts.append(side);
    }
    return own.segmentCount() > 0 ? Acad::eOk : Acad::eDegenerateGeometry;
}

Acad::ErrorStatus AcDb3dPolyline::reverseCurve() {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const hostkit::WritableVertices<AcDb3dPolylineVertex> vertices(m_vertices);
    if (vertices.status() != Acad::eOk) return vertices.status();
    // A closed polyline keeps its first vertex.
    std::size_t low = isClosed() ? 1 : 0;
    for (std::size_t high = vertices.all().size(); low + 1 < high--; ++low) {
        const AcGePoint3d place = vertices.all()[low]->position();
        (void)vertices.all()[low]->setPosition(vertices.all()[high]->position());
        (void)vertices.all()[high]->setPosition(place);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    const hostkit::WritableVertices<AcDb3dPolylineVertex> vertices(m_vertices);
    if (vertices.status() != Acad::eOk) return vertices.status();
    hostkit::ExtendedDataMotion data(matrix);
    Acad::ErrorStatus status = vertices.addTo(data);
    if (status == Acad::eOk) status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    for (AcDb3dPolylineVertex* vertex : vertices.all())
        (void)vertex->setPosition(matrix * vertex->position());
    data.apply();
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subErase(Adesk::Boolean erasing) {
    m_vertices.eraseAll(erasing);
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDb3dPolyline::Filing {
    static constexpr GroupField<AcDb3dPolyline> groups[] = {
        integerField<&AcDb3dPolyline::m_dxfFlags>(70),
        integerField<&AcDb3dPolyline::m_curveType>(75, 0),
    };
    static constexpr short verticesFollowCode = 66;
    static constexpr short placeCode = 10; ///< always zero
};

Acad::ErrorStatus AcDb3dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDb3dPolyline")) return status;
    return readFields(*filer, Filing::groups, *this, [](const AcDbDxfGroup& group) {
        if (group.code == Filing::placeCode)
            return group.point[0] == 0.0 && group.point[1] == 0.0 && group.point[2] == 0.0;
        return group.code == Filing::verticesFollowCode;
    });
}

Acad::ErrorStatus AcDb3dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDb3dPolyline");
    filer->markOptional();
    filer->writeInteger(Filing::verticesFollowCode, 1);
    filer->markOptional();
    filer->writeItem(Filing::placeCode, AcGePoint3d(0.0, 0.0, 0.0));
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb3dPolyline)
