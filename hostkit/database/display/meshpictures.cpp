// Pictures of meshes, and of the spline of a helix.

#include "acgi.h"
#include "curvepaths.h"
#include "dbopaque.h"
#include "genurb3d.h"
#include "pathgeometry.h"
#include "recordcursor.h"
#include "recordpictures.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

enum MeshFlags { closedInRows = 1, smoothed = 4, net = 16, closedInColumns = 32, faces = 64 };
enum VertexFlags { smoothingVertex = 8, frameVertex = 16, netVertex = 64, faceVertex = 128 };

struct MeshRecord {
    unsigned flags = 0;
    Adesk::Int64 rows = 0;
    Adesk::Int64 columns = 0;
    Adesk::Int64 smoothRows = 0;
    Adesk::Int64 smoothColumns = 0;
};

struct VertexRecord {
    unsigned flags = 0;
    AcGePoint3d point;
    /// From 1 on; negative where the edge behind the corner is not seen, 0 for none.
    std::array<Adesk::Int64, 4> corners{};
};

MeshRecord readMesh(const AcDbOpaqueEntity& entity) {
    MeshRecord mesh;
    for (RecordCursor group(entity); group.next();) {
        if (group.code() == 70) mesh.flags = static_cast<unsigned>(group.integer());
        if (group.code() == 71) mesh.rows = group.integer();
        if (group.code() == 72) mesh.columns = group.integer();
        if (group.code() == 73) mesh.smoothRows = group.integer();
        if (group.code() == 74) mesh.smoothColumns = group.integer();
    }
    return mesh;
}

std::vector<VertexRecord> readVertices(const AcDbOpaqueEntity& entity) {
    std::vector<VertexRecord> vertices;
    for (std::size_t i = 0; i < entity.parts().count(); ++i) {
        const AcDbEntity* const part = entity.parts().isErasedAt(i) ? nullptr : entity.parts().at(i);
        if (!part) continue;
        VertexRecord& vertex = vertices.emplace_back();
        for (RecordCursor group(*part); group.next();) {
            const int code = group.code();
            if (code == 10) vertex.point = group.point();
            if (code == 70) vertex.flags = static_cast<unsigned>(group.integer());
            if (code >= 71 && code <= 74)
                vertex.corners[static_cast<std::size_t>(code - 71)] = group.integer();
        }
    }
    return vertices;
}

// With its first row or column again at the end where it is closed.
void drawNet(AcGiWorldDraw& draw, const MeshRecord& mesh, const std::vector<VertexRecord>& vertices) {
    const bool isSmooth = (mesh.flags & smoothed) != 0;
    const Adesk::Int64 rows = isSmooth ? mesh.smoothRows : mesh.rows;
    const Adesk::Int64 columns = isSmooth ? mesh.smoothColumns : mesh.columns;
    std::vector<AcGePoint3d> told;
    for (const VertexRecord& vertex : vertices)
        if (isSmooth ? (vertex.flags & smoothingVertex) != 0 : (vertex.flags & faceVertex) == 0)
            told.push_back(vertex.point);
    const auto count = static_cast<Adesk::Int64>(told.size());
    if (rows < 1 || columns < 1 || rows > count || columns > count || rows * columns > count) return;
    const Adesk::Int64 shownRows = rows + ((mesh.flags & closedInRows) != 0 ? 1 : 0);
    const Adesk::Int64 shownColumns = columns + ((mesh.flags & closedInColumns) != 0 ? 1 : 0);
    std::vector<AcGePoint3d> points;
    for (Adesk::Int64 row = 0; row < shownRows; ++row)
        for (Adesk::Int64 column = 0; column < shownColumns; ++column)
            points.push_back(told[static_cast<std::size_t>(row % rows * columns + column % columns)]);
    draw.geometry().mesh(static_cast<Adesk::UInt32>(shownRows), static_cast<Adesk::UInt32>(shownColumns),
                         points.data());
}

class EdgeCollector {
public:
    explicit EdgeCollector(const std::vector<AcGePoint3d>& points)
        : m_points(points) {}
    /// Indices that no point has make no edge.
    void add(Adesk::Int64 from, Adesk::Int64 to) {
        const auto count = static_cast<Adesk::Int64>(m_points.size());
        if (from >= 0 && to >= 0 && from < count && to < count && from != to)
            m_edges.push_back(std::minmax(static_cast<std::size_t>(from), static_cast<std::size_t>(to)));
    }
    /// Each edge once, however many faces have it.
    void drawAll(AcGiWorldDraw& draw) {
        std::sort(m_edges.begin(), m_edges.end());
        m_edges.erase(std::unique(m_edges.begin(), m_edges.end()), m_edges.end());
        PicturePath path;
        for (const std::pair<std::size_t, std::size_t>& edge : m_edges) {
            path.moveTo(m_points[edge.first]);
            path.lineTo(m_points[edge.second]);
        }
        drawPath(draw, path);
    }

private:
    const std::vector<AcGePoint3d>& m_points;
    std::vector<std::pair<std::size_t, std::size_t>> m_edges;
};

void drawFaces(AcGiWorldDraw& draw, const std::vector<VertexRecord>& vertices) {
    std::vector<AcGePoint3d> points;
    for (const VertexRecord& vertex : vertices)
        if ((vertex.flags & netVertex) != 0) points.push_back(vertex.point);
    EdgeCollector edges(points);
    for (const VertexRecord& vertex : vertices) {
        if ((vertex.flags & faceVertex) == 0 || (vertex.flags & netVertex) != 0) continue;
        const auto end = std::find(vertex.corners.begin(), vertex.corners.end(), 0);
        const auto count = static_cast<std::size_t>(end - vertex.corners.begin());
        for (std::size_t i = 0; i < count; ++i) {
            const Adesk::Int64 next = vertex.corners[(i + 1) % count];
            if (vertex.corners[i] > 0) edges.add(vertex.corners[i] - 1, (next < 0 ? -next : next) - 1);
        }
    }
    edges.drawAll(draw);
}

// The number of corners and their indices. False at what is no face, or at one that is cut short.
bool readFace(RecordCursor& group, EdgeCollector& edges) {
    constexpr int entry = 90;
    if (group.code() != entry) return false;
    const Adesk::Int64 count = group.integer();
    Adesk::Int64 first = -1, before = -1;
    for (Adesk::Int64 i = 0; i < count; ++i) {
        if (!group.next() || group.code() != entry) return false;
        const Adesk::Int64 corner = group.integer(-1);
        if (i == 0) first = corner;
        edges.add(before, corner);
        before = corner;
    }
    edges.add(before, first);
    return true;
}

} // namespace

void drawPolylineMesh(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    const MeshRecord mesh = readMesh(entity);
    const std::vector<VertexRecord> vertices = readVertices(entity);
    (mesh.flags & faces) != 0 ? drawFaces(draw, vertices) : drawNet(draw, mesh, vertices);
}

void drawSubdivisionMesh(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    constexpr int faceList = 93;
    std::vector<AcGePoint3d> points;
    RecordCursor group(entity);
    while (group.next() && group.code() != faceList)
        if (group.code() == 10) points.push_back(group.point());
    EdgeCollector edges(points);
    while (group.next() && readFace(group, edges)) continue;
    edges.drawAll(draw);
}

void drawHelix(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    int degree = 0;
    AcGeKnotVector knots;
    AcGePoint3dArray points;
    AcGeDoubleArray weights;
    // The groups behind the next mark are the helix' own.
    for (RecordCursor group(entity); group.next() && group.code() != 100;) {
        if (group.code() == 71) degree = static_cast<int>(group.integer());
        if (group.code() == 40) knots.append(group.real());
        if (group.code() == 41) weights.append(group.real());
        if (group.code() == 10) points.append(group.point());
    }
    PicturePath path;
    appendSpline(path, AcGeNurbCurve3d(degree, knots, points, weights));
    drawPath(draw, path);
}

} // namespace hostkit
