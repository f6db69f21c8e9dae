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
/// operation.
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
    std::vector<Index> corners;       ///< the points of all loops, one loop after the other
    std::vector<Index> loopStarts{0}; ///< where each loop begins in `corners`, and where the last one ends
    std::vector<Face> faces;

    [[nodiscard]] Index loopCount() const { return static_cast<Index>(loopStarts.size() - 1); }
    [[nodiscard]] bool empty() const { return faces.empty(); }
};

} // namespace hostkit::modeler
