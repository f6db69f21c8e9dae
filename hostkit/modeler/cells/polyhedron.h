// Bodies as arrays: what the booleans work on. Faces with holes of indexed points, no half-edges and no
// bridges.
#pragma once

#include "gepnt3d.h"

#include <cstdint>
#include <vector>

namespace AModeler {
class Surface;
}

namespace hostkit::modeler {

/// One closed body, or several that do not overlap. Closed: every directed edge of a loop has its reverse in
/// the loops as often as it stands there itself. A face lies in its plane within the tolerance of the
/// operation. Edges of one body meet at their ends alone; points and edges that are not a face's own may
/// touch it from one side. A loop may pass a point twice where it touches itself, and there and back along an
/// edge where others touch the face from both sides; a hole may be such a slit of two corners.
struct Polyhedron {
    using Index = std::uint32_t;
    static constexpr Index none = ~Index{0};

    struct Face {
        AcGeVector3d normal; ///< of length 1, out of the material
        double distance =
            0; ///< of the plane from the origin along the normal: a point p of it has normal . p = distance
        Index firstLoop =
            0; ///< the outer loop, counter-clockwise seen against the normal; the holes follow, clockwise
        Index loopCount = 0;
        /// What the facets of one arc share; null for a face of its own. Neighbours in one plane are one face
        /// only where it is equal.
        const AModeler::Surface* surface = nullptr;
        Index origin = none; ///< of a result: the number of the face that this one is a piece of, counted
                             ///< through all inputs in order
    };

    std::vector<AcGePoint3d> points;
    std::vector<Index> corners; ///< the points of all loops, one loop after the other; each begins an edge to
                                ///< the next of its loop
    std::vector<Index> loopStarts{0}; ///< where each loop begins in `corners`, and where the last one ends
    std::vector<Face> faces;          ///< their loops follow each other without a gap
    /// Of each corner: the corner whose edge is the reverse of its own. Where more than two faces meet at an
    /// edge, the two bound the same wedge of material. Of an input it may be empty; a result has it.
    std::vector<Index> partners;

    [[nodiscard]] Index loopCount() const { return static_cast<Index>(loopStarts.size() - 1); }
    [[nodiscard]] bool empty() const { return faces.empty(); }
};

/// Whether the arrays fit together, all numbers are finite, normals have length 1 within 1e-6, loops have two
/// corners or more, and the body is closed. `partners` that stand are looked at and not trusted.
[[nodiscard]] bool isClosed(const Polyhedron& body);

/// Sets `partners`. False, with nothing set, where an edge has no reverse or the faces about an edge bound no
/// wedges in turn.
[[nodiscard]] bool findPartners(Polyhedron& body);

/// The content of a closed body, by the divergence theorem about its first point. Exact but for rounding.
[[nodiscard]] double volume(const Polyhedron& body);

} // namespace hostkit::modeler
