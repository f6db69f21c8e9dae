// Bodies with curved faces, made edge by edge, whose volumes are known.
#pragma once

#include "shape.h"

#include <cmath>
#include <numbers>

namespace testshapes {

using namespace hostkit::modeler;
using Index = Shape::Index;

class Maker {
public:
    Maker() { shape.shellLumps.push_back(0); }
    Shape shape;

    Index vertex(double x, double y, double z) {
        shape.vertices.emplace_back(x, y, z);
        return static_cast<Index>(shape.vertices.size() - 1);
    }
    /// A full circle or ellipse about a normal, with the vertex at its parameter 0.
    Index round(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& major,
                double ratio = 1.0) {
        const AcGePoint3d start = center + major;
        const Index at = vertex(start.x, start.y, start.z);
        shape.edges.push_back(
            {at, at, 0.0, 2.0 * std::numbers::pi, {ShapeCurve::Kind::ellipse, center, normal, major, ratio}});
        return last();
    }
    Index arc(Index from, Index to, const AcGePoint3d& center, const AcGeVector3d& normal, double sweep) {
        shape.edges.push_back(
            {from,
             to,
             0.0,
             sweep,
             {ShapeCurve::Kind::ellipse, center, normal, shape.vertices[from] - center, 1.0}});
        return last();
    }
    Index line(Index from, Index to) {
        const AcGeVector3d way = shape.vertices[to] - shape.vertices[from];
        shape.edges.push_back({from,
                               to,
                               0.0,
                               way.length(),
                               {ShapeCurve::Kind::line, shape.vertices[from], way.normal(), {}, 1.0}});
        return last();
    }
    /// An edge that is a point: the apex of a cone.
    Index apex(double z) {
        const Index at = vertex(0, 0, z);
        shape.edges.push_back({at, at, 0.0, 0.0, {}});
        return last();
    }
    void loop(std::initializer_list<std::pair<Index, bool>> edges) {
        for (const auto& [edge, isReversed] : edges) shape.coedges.push_back({edge, isReversed});
        shape.loopStarts.push_back(static_cast<Index>(shape.coedges.size()));
        ++m_loops;
    }
    /// Takes the loops that were added since the last face.
    void face(const ShapeSurface& surface, bool isReversed = false) {
        const auto all = static_cast<Index>(shape.loopStarts.size() - 1);
        shape.faces.push_back({surface, isReversed, false, all - m_loops, m_loops, 0});
        m_loops = 0;
    }

private:
    Index last() const { return static_cast<Index>(shape.edges.size() - 1); }
    Index m_loops = 0;
};

constexpr bool forward = false, reversed = true;

inline ShapeSurface plane(double z, double normalZ) {
    return {ShapeSurface::Kind::plane, {0, 0, z}, {0, 0, normalZ}, {1, 0, 0}};
}
inline ShapeSurface cone(double radius, double growth, bool looksIn = false) {
    const double cosine = 1.0 / std::sqrt(1.0 + growth * growth) * (looksIn ? -1.0 : 1.0);
    return {ShapeSurface::Kind::cone, {0, 0, 0}, {0, 0, 1}, {radius, 0, 0}, 1.0, growth * cosine, cosine};
}
inline ShapeSurface sphere(double radius) {
    return {ShapeSurface::Kind::sphere, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 1.0, 0.0, 1.0, radius};
}
inline ShapeSurface torus(double radius, double tube) {
    return {ShapeSurface::Kind::torus, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 1.0, 0.0, 1.0, radius, tube};
}

/// Standing on z = 0, with the radius changing by `growth` a unit of height; with a hole along the axis where
/// its radius is above 0.
inline Shape drum(double radius, double height, double growth, double hole = 0.0) {
    Maker m;
    const double top = radius + growth * height;
    const Index low = m.round({0, 0, 0}, {0, 0, 1}, {radius, 0, 0});
    const Index high = top > 1e-9 ? m.round({0, 0, height}, {0, 0, 1}, {top, 0, 0}) : m.apex(height);
    Index lowHole = 0, highHole = 0;
    if (hole > 0.0) {
        lowHole = m.round({0, 0, 0}, {0, 0, 1}, {hole, 0, 0});
        highHole = m.round({0, 0, height}, {0, 0, 1}, {hole, 0, 0});
    }
    if (hole > 0.0) m.loop({{lowHole, forward}});
    m.loop({{low, reversed}});
    m.face(plane(0, -1));
    if (top > 1e-9) {
        m.loop({{high, forward}});
        if (hole > 0.0) m.loop({{highHole, reversed}});
        m.face(plane(height, 1));
    }
    m.loop({{low, forward}});
    m.loop({{high, reversed}});
    m.face(cone(radius, growth));
    if (hole > 0.0) {
        m.loop({{lowHole, reversed}});
        m.loop({{highHole, forward}});
        m.face(cone(hole, 0, true));
    }
    return m.shape;
}

/// A cylinder whose upper end is cut by the plane z = height + slope * x.
inline Shape cutCylinder(double radius, double height, double slope) {
    Maker m;
    const double length = std::sqrt(1.0 + slope * slope);
    const Index low = m.round({0, 0, 0}, {0, 0, 1}, {radius, 0, 0});
    const Index high =
        m.round({0, 0, height}, {-slope / length, 0, 1 / length}, {radius, 0, radius * slope}, 1 / length);
    m.loop({{low, reversed}});
    m.face(plane(0, -1));
    m.loop({{high, forward}});
    m.face({ShapeSurface::Kind::plane, {0, 0, height}, {-slope / length, 0, 1 / length}, {0, 1, 0}});
    m.loop({{low, forward}});
    m.loop({{high, reversed}});
    m.face(cone(radius, 0));
    return m.shape;
}

/// The part of a ball above a height.
inline Shape cap(double radius, double from) {
    Maker m;
    const Index rim = m.round({0, 0, from}, {0, 0, 1}, {std::sqrt(radius * radius - from * from), 0, 0});
    m.loop({{rim, reversed}});
    m.face(plane(from, -1));
    m.loop({{rim, forward}});
    m.face(sphere(radius));
    return m.shape;
}

/// An eighth of a ball: three flat faces and a spherical one.
inline Shape octant(double radius) {
    Maker m;
    const Index o = m.vertex(0, 0, 0), x = m.vertex(radius, 0, 0), y = m.vertex(0, radius, 0),
                z = m.vertex(0, 0, radius);
    const Index ox = m.line(o, x), oy = m.line(o, y), oz = m.line(o, z);
    const double quarter = std::numbers::pi / 2;
    const Index xy = m.arc(x, y, {0, 0, 0}, {0, 0, 1}, quarter),
                yz = m.arc(y, z, {0, 0, 0}, {1, 0, 0}, quarter),
                zx = m.arc(z, x, {0, 0, 0}, {0, 1, 0}, quarter);
    m.loop({{oy, forward}, {xy, reversed}, {ox, reversed}});
    m.face(plane(0, -1));
    m.loop({{ox, forward}, {zx, reversed}, {oz, reversed}});
    m.face({ShapeSurface::Kind::plane, {0, 0, 0}, {0, -1, 0}, {1, 0, 0}});
    m.loop({{oz, forward}, {yz, reversed}, {oy, reversed}});
    m.face({ShapeSurface::Kind::plane, {0, 0, 0}, {-1, 0, 0}, {0, 1, 0}});
    m.loop({{xy, forward}, {yz, forward}, {zx, forward}});
    m.face(sphere(radius));
    return m.shape;
}

/// A half of a ring: x above 0.
inline Shape halfRing(double radius, double tube) {
    Maker m;
    const Index right = m.round({0, radius, 0}, {1, 0, 0}, {0, tube, 0}),
                left = m.round({0, -radius, 0}, {1, 0, 0}, {0, -tube, 0});
    m.loop({{right, reversed}});
    m.face({ShapeSurface::Kind::plane, {0, radius, 0}, {-1, 0, 0}, {0, 1, 0}});
    m.loop({{left, reversed}});
    m.face({ShapeSurface::Kind::plane, {0, -radius, 0}, {-1, 0, 0}, {0, 1, 0}});
    m.loop({{right, forward}});
    m.loop({{left, forward}});
    m.face(torus(radius, tube));
    return m.shape;
}

/// A whole sphere or torus.
inline Shape whole(const ShapeSurface& surface) {
    Maker m;
    m.face(surface);
    return m.shape;
}

} // namespace testshapes
