// Stand-in for the host's modeller: Entity, Surface, Vertex, Edge and Face. Covers half-edges with bridges, their links and the surgery on them; leaves out colours and user data.
#pragma once

#include "amgeometry.h"

#include <cstdint>
#include <memory>

namespace AModeler {

class Body;
class Edge;
class Face;

/// What all parts of a body have: flags of one bit each.
class Entity {
public:
    void setFlagOn(std::uint32_t flag) { m_flags |= flag; }
    void setFlagOff(std::uint32_t flag) { m_flags &= ~flag; }
    [[nodiscard]] bool isFlagOn(std::uint32_t flag) const { return (m_flags & flag) != 0; }

    /// Where the part stands in a list that is being made; means nothing between two operations.
    [[nodiscard]] std::uint32_t mark() const { return m_mark; }
    void setMark(std::uint32_t mark) const { m_mark = mark; }

private:
    std::uint32_t m_flags = 0;
    mutable std::uint32_t m_mark = 0;
};

/// The round surface that the facets of one arc stand for: a cylinder.
class Surface {
public:
    Surface(const Line3d& axis, double radius)
        : m_axis(axis)
        , m_radius(radius) {}
    [[nodiscard]] const Line3d& axis() const { return m_axis; }
    [[nodiscard]] double radius() const { return m_radius; }
    void transform(const AcGeMatrix3d& matrix);

private:
    Line3d m_axis;
    double m_radius;
};

/// A corner of a body; one of them for all edges that begin there.
class Vertex : public Entity {
public:
    explicit Vertex(const AcGePoint3d& point = {})
        : m_point(point) {}
    [[nodiscard]] const Point3d& point() const { return m_point; }
    void setPoint(const AcGePoint3d& point) { m_point = point; }
    [[nodiscard]] Vertex* next() const { return m_next; }
    void setNext(Vertex* vertex) { m_next = vertex; }

private:
    Point3d m_point;
    Vertex* m_next = nullptr;
};

/// A half-edge: one face's side of an edge. The loop of a face runs counter-clockwise seen from outside the
/// body; holes are joined to it by bridges, pairs of edges there and back within one loop, partners of each
/// other.
class Edge : public Entity {
public:
    static constexpr std::uint32_t bridgeFlag = 1;

    [[nodiscard]] Edge* next() const { return m_next; }
    [[nodiscard]] Edge* prev() const { return m_prev; }
    [[nodiscard]] Edge* partner() const { return m_partner; }
    [[nodiscard]] Vertex* vertex() const { return m_vertex; } ///< where it begins
    [[nodiscard]] Face* face() const { return m_face; }
    /// The round surface of its face; null on a flat one.
    [[nodiscard]] Surface* surface() const;
    [[nodiscard]] const Point3d& point() const { return m_vertex->point(); }
    [[nodiscard]] bool isBridge() const { return isFlagOn(bridgeFlag); }

    void setNext(Edge* edge) { m_next = edge; }
    void setPrev(Edge* edge) { m_prev = edge; }
    void setPartner(Edge* edge) { m_partner = edge; }
    void setVertex(Vertex* vertex) { m_vertex = vertex; }
    void setFace(Face* face) { m_face = face; }

private:
    Edge* m_next = nullptr;
    Edge* m_prev = nullptr;
    Edge* m_partner = nullptr;
    Vertex* m_vertex = nullptr;
    Face* m_face = nullptr;
};

/// A flat part of a body's boundary: one circular list of edges. Its body frees it; one made without a body
/// frees its own edges.
class Face : public Entity {
public:
    Face();
    /// A face for itself on the points; it owns its edges and vertices. With `makePlane` the plane is
    /// computed at once. Fewer than three points: Error eFaceMustHaveAtLeastThreeEdges. A body or edges to
    /// make it in: eFaceMustNotBelongToABody.
    Face(const Point3d points[], int count, Surface* surface, bool makePlane, Body* body = nullptr,
         Edge* edges[] = nullptr);
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    /// Computed at the first call by the loop's signed areas, pointing out of the material; kept until
    /// deletePlane. A loop without an area has a null plane.
    [[nodiscard]] const Plane& plane() const;
    void deletePlane() { m_hasPlane = false; }
    void setPlane(const Plane& plane) const {
        m_plane = plane;
        m_hasPlane = true;
    }
    [[nodiscard]] Edge* edgeLoop() const { return m_edgeLoop; }
    void setEdgeLoop(Edge* edge) { m_edgeLoop = edge; }
    [[nodiscard]] int edgeCount() const; ///< bridges are counted, each twice
    /// Each point lies within the tolerance of the plane.
    [[nodiscard]] bool isPlanar(double epsilon = gEpsAbs) const;
    /// Flags, plane, links and surface of another face, which stay those of its body.
    void takeValuesOf(const Face& other);
    [[nodiscard]] Face* next() const { return m_next; }
    void setNext(Face* face) { m_next = face; }
    [[nodiscard]] Surface* surface() const { return m_surface; }
    void setSurface(Surface* surface) { m_surface = surface; }

private:
    struct Parts;

    mutable Plane m_plane;
    mutable bool m_hasPlane = false;
    Edge* m_edgeLoop = nullptr;
    Face* m_next = nullptr;
    Surface* m_surface = nullptr;
    std::unique_ptr<Parts> m_parts; ///< of a face without a body
};

inline Surface* Edge::surface() const { return m_face ? m_face->surface() : nullptr; }

} // namespace AModeler
