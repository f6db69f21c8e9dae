// Bodies for tests and benchmarks of the booleans, and what can be asked of a body without them.
#pragma once

#include "polyhedron.h"

#include "gemat3d.h"

#include <cmath>
#include <cstdint>
#include <map>
#include <numbers>
#include <random>
#include <span>
#include <utility>
#include <vector>

namespace polyhedra {

using hostkit::modeler::Polyhedron;
using Index = Polyhedron::Index;
using Outline = std::vector<std::pair<double, double>>;

/// Adds a face of one loop; its plane by the corners' vector area.
inline void addFace(Polyhedron& body, const std::vector<Index>& loop,
                    const AModeler::Surface* surface = nullptr) {
    AcGeVector3d area;
    const AcGePoint3d first = body.points[loop[0]];
    for (std::size_t i = 0; i < loop.size(); ++i)
        area += (body.points[loop[i]] - first).crossProduct(body.points[loop[(i + 1) % loop.size()]] - first);
    Polyhedron::Face face;
    face.normal = area / area.length();
    face.distance = face.normal.dotProduct(first.asVector());
    face.firstLoop = body.loopCount();
    face.loopCount = 1;
    face.surface = surface;
    body.corners.insert(body.corners.end(), loop.begin(), loop.end());
    body.loopStarts.push_back(static_cast<Index>(body.corners.size()));
    body.faces.push_back(face);
}

/// Upright over a counter-clockwise outline. Sides from `firstFacet` on share `surface`.
inline Polyhedron prism(const Outline& outline, double bottom, double top, std::size_t firstFacet = 0,
                        const AModeler::Surface* surface = nullptr) {
    Polyhedron body;
    const auto n = static_cast<Index>(outline.size());
    for (const double z : {bottom, top})
        for (const auto& [x, y] : outline) body.points.emplace_back(x, y, z);
    std::vector<Index> below;
    std::vector<Index> above;
    for (Index i = 0; i < n; ++i) {
        below.push_back(n - 1 - i);
        above.push_back(n + i);
    }
    addFace(body, below);
    addFace(body, above);
    for (Index i = 0; i < n; ++i) {
        const Index j = (i + 1) % n;
        addFace(body, {i, j, n + j, n + i}, i >= firstFacet ? surface : nullptr);
    }
    return body;
}

inline Polyhedron box(double x0, double y0, double z0, double x1, double y1, double z1) {
    return prism({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}, z0, z1);
}

inline Outline circle(double x, double y, double radius, int sides, double start = 0) {
    Outline outline;
    for (int i = 0; i < sides; ++i) {
        const double angle = start + 2 * std::numbers::pi * i / sides;
        outline.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
    }
    return outline;
}

/// Planes follow the transform; it keeps lengths.
inline Polyhedron moved(Polyhedron body, const AcGeMatrix3d& matrix) {
    for (AcGePoint3d& p : body.points) p.transformBy(matrix);
    for (Polyhedron::Face& f : body.faces) {
        f.normal.transformBy(matrix);
        f.distance = f.normal.dotProduct(body.points[body.corners[body.loopStarts[f.firstLoop]]].asVector());
    }
    return body;
}

/// How often the body winds about a point, by solid angles (Van Oosterom and Strackee, 1983): near 1 inside,
/// near 0 outside.
inline double windings(const Polyhedron& body, const AcGePoint3d& p) {
    double sum = 0;
    for (std::size_t loop = 0; loop + 1 < body.loopStarts.size(); ++loop) {
        const AcGeVector3d a = body.points[body.corners[body.loopStarts[loop]]] - p;
        for (Index i = body.loopStarts[loop] + 1; i + 1 < body.loopStarts[loop + 1]; ++i) {
            const AcGeVector3d b = body.points[body.corners[i]] - p;
            const AcGeVector3d c = body.points[body.corners[i + 1]] - p;
            const double la = a.length();
            const double lb = b.length();
            const double lc = c.length();
            sum += 2 * std::atan2(a.dotProduct(b.crossProduct(c)), la * lb * lc + a.dotProduct(b) * lc +
                                                                       b.dotProduct(c) * la +
                                                                       c.dotProduct(a) * lb);
        }
    }
    return sum / (4 * std::numbers::pi);
}

/// The content as a sum of tetrahedra from the origin's place.
inline double content(const Polyhedron& body) {
    if (body.points.empty()) return 0;
    const AcGePoint3d origin = body.points[0];
    double sum = 0;
    for (std::size_t loop = 0; loop + 1 < body.loopStarts.size(); ++loop) {
        const AcGeVector3d a = body.points[body.corners[body.loopStarts[loop]]] - origin;
        for (Index i = body.loopStarts[loop] + 1; i + 1 < body.loopStarts[loop + 1]; ++i)
            sum += a.dotProduct((body.points[body.corners[i]] - origin)
                                    .crossProduct(body.points[body.corners[i + 1]] - origin));
    }
    return sum / 6;
}

/// Euler's characteristic of the surface, V - E + F - (loops - F), with points counted once for each fan of
/// faces about them. 2 for a ball, 2 - 2 g for g handles. Needs partners.
inline long eulerCharacteristic(const Polyhedron& body) {
    std::vector<Index> before(body.corners.size());
    for (std::size_t loop = 0; loop + 1 < body.loopStarts.size(); ++loop) {
        Index last = body.loopStarts[loop + 1] - 1;
        for (Index i = body.loopStarts[loop]; i < body.loopStarts[loop + 1]; last = i++) before[i] = last;
    }
    std::vector<bool> seen(body.corners.size(), false);
    long fans = 0;
    for (Index start = 0; start < seen.size(); ++start) {
        if (seen[start]) continue;
        ++fans;
        for (Index i = start; !seen[i]; i = body.partners[before[i]]) seen[i] = true;
    }
    const auto faces = static_cast<long>(body.faces.size());
    return fans - static_cast<long>(body.corners.size() / 2) + 2 * faces -
           static_cast<long>(body.loopCount());
}

} // namespace polyhedra
