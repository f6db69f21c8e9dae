// How often a place is covered, asked of all faces at once.
#pragma once

#include "arrangement.h"

#include <optional>

namespace hostkit::modeler {

class RayCaster {
public:
    explicit RayCaster(const Arrangement& all)
        : m_all(all)
        , m_tree(all.boxes) {}

    /// The coverage just before a plane piece, on the side of its normal. `start` lies inside the piece.
    /// Faces in the plane of the piece are not counted. Nothing where no direction keeps clear of edges.
    std::optional<Coverage> coverageBefore(const AcGePoint3d& start, const AcGeVector3d& normal) const;

private:
    enum class Hit : unsigned char { missed, through, unclear };

    std::optional<Coverage> along(const AcGePoint3d& start, const AcGeVector3d& normal,
                                  const AcGeVector3d& direction) const;
    Hit hit(Index face, const AcGePoint3d& start, const AcGeVector3d& normal,
            const AcGeVector3d& direction) const;
    Hit isInside(Index face, const AcGePoint3d& place) const;

    const Arrangement& m_all;
    BoxTree m_tree;
};

/// A point inside a region of the plane, given by its borders as pairs of points: at `part`, between 0 and 1,
/// of the widest run of a line through it. Nothing where the region has no width.
std::optional<Planar> pointInside(const std::vector<std::array<Planar, 2>>& borders, double part);

} // namespace hostkit::modeler
