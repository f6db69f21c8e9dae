#include "amentity.h"

#include "amerror.h"

#include <vector>

namespace AModeler {

void Surface::transform(const AcGeMatrix3d& matrix) {
    AcGePoint3d point = m_axis.point();
    AcGeVector3d direction = m_axis.direction();
    const double before = direction.length();
    point.transformBy(matrix);
    direction.transformBy(matrix);
    m_axis = Line3d(point, direction);
    if (before > 0.0) m_radius *= direction.length() / before;
}

struct Face::Parts {
    std::vector<Vertex> vertices;
    std::vector<Edge> edges;
};

Face::Face(const Point3d points[], int count, Surface* surface, bool makePlane, Body* body, Edge* edges[])
    : m_surface(surface) {
    if (body || edges) throw Error(eFaceMustNotBelongToABody);
    if (!points || count < 3) throw Error(eFaceMustHaveAtLeastThreeEdges);
    const auto size = static_cast<std::size_t>(count);
    m_parts = std::make_unique<Parts>();
    for (const Point3d* point = points; point != points + count; ++point)
        m_parts->vertices.emplace_back(*point);
    m_parts->edges.resize(size);
    for (std::size_t i = 0; i < size; ++i) {
        Edge& edge = m_parts->edges[i];
        edge.setVertex(&m_parts->vertices[i]);
        edge.setFace(this);
        edge.setNext(&m_parts->edges[(i + 1) % size]);
        edge.setPrev(&m_parts->edges[(i + size - 1) % size]);
    }
    m_edgeLoop = m_parts->edges.data();
    if (makePlane) static_cast<void>(plane());
}

Face::Face() = default;
Face::~Face() = default;

void Face::takeValuesOf(const Face& other) {
    Entity::operator=(other);
    m_plane = other.m_plane;
    m_hasPlane = other.m_hasPlane;
    m_edgeLoop = other.m_edgeLoop;
    m_next = other.m_next;
    m_surface = other.m_surface;
}

const Plane& Face::plane() const {
    if (m_hasPlane) return m_plane;
    m_plane = Plane();
    m_hasPlane = true;
    if (!m_edgeLoop) return m_plane;
    // Twice the loop's area as a vector; there and back along a bridge cancels.
    const Point3d origin = m_edgeLoop->point();
    AcGeVector3d area, middle;
    int corners = 0;
    const Edge* edge = m_edgeLoop;
    do {
        const AcGeVector3d here = edge->point() - origin;
        area += here.crossProduct(edge->next()->point() - origin);
        middle += here;
        ++corners;
        edge = edge->next();
    } while (edge != m_edgeLoop);
    if (area.length() > 0.0) m_plane = Plane(origin + middle / corners, area);
    return m_plane;
}

int Face::edgeCount() const {
    int count = 0;
    const Edge* edge = m_edgeLoop;
    if (!edge) return 0;
    do {
        ++count;
        edge = edge->next();
    } while (edge && edge != m_edgeLoop);
    return count;
}

bool Face::isPlanar(double epsilon) const {
    const Plane& own = plane();
    if (own.isNull()) return false;
    const Edge* edge = m_edgeLoop;
    do {
        if (!(std::abs(own.distanceTo(edge->point())) <= epsilon)) return false;
        edge = edge->next();
    } while (edge != m_edgeLoop);
    return true;
}

} // namespace AModeler
