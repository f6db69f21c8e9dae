// Where a boolean is worked: about an origin in the midst of the bodies, along the directions in which they
// run.
#pragma once

#include "polyhedron.h"
#include "spacetree.h"

#include <span>

namespace hostkit::modeler {

/// Far bodies are worked as exactly as near ones, and boxes about the faces of turned bodies are as tight as
/// those of upright ones. Bodies that are near and run along the axes are worked as they stand, to the bit.
class WorkFrame {
public:
    WorkFrame() = default;
    WorkFrame(std::span<const Polyhedron* const> bodies, const std::vector<Box>& boxes);

    AcGePoint3d placeInside(const AcGePoint3d& p) const;
    AcGePoint3d placeOutside(const AcGePoint3d& p) const;
    AcGeVector3d directionInside(const AcGeVector3d& v) const;
    /// From the outer origin to the inner one.
    const AcGeVector3d& shift() const { return m_shift; }

private:
    AcGeVector3d m_shift;
    bool m_turned = false;
    std::array<AcGeVector3d, 3> m_axes;
};

} // namespace hostkit::modeler
