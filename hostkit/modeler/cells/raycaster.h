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

    /// What a ray starts from: a place inside a cell or inside a face that passes through, and the side to
    /// which it goes.
    struct Start {
        AcGePoint3d place;
        AcGeVector3d ahead;
        Index planeClass = none; ///< of the cell
        Index face = none;       ///< or the face
    };
    /// The coverage just ahead of a piece. The piece itself, and what lies in its plane, are not counted.
    /// Nothing where another face is as near as the tolerance, or no direction keeps clear of edges.
    std::optional<Coverage> coverageAhead(const Start& start) const;

private:
    enum class Hit : unsigned char { missed, through, unclear };

    std::optional<Coverage> along(const Start& start, const AcGeVector3d& direction) const;
    Hit hit(Index face, const Start& start, const AcGeVector3d& direction) const;
    Hit isInside(Index face, const AcGePoint3d& place) const;

    const Arrangement& m_all;
    SpaceTree m_tree;
};

/// A point inside a region of the plane, given by its borders as pairs of points: at `part`, between 0 and 1,
/// of the widest run of a line through it. Nothing where the region has no width.
std::optional<Planar> pointInside(const std::vector<std::array<Planar, 2>>& borders, double part);

} // namespace hostkit::modeler
