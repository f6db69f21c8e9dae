// One question of picking in progress: what is shown comes piece by piece until the answer is known; leaves
// out where the pieces come from.
#pragma once

#include "planeregion.h"

#include "gemat3d.h"

#include <vector>

namespace hostkit {

/// From the world, or a block's coordinates, to the view plane near the local origin.
struct ViewMap {
    AcGeMatrix3d matrix;

    AcGePoint2d operator()(const AcGePoint3d& point) const {
        const auto& m = matrix.entry;
        return {m[0][0] * point.x + m[0][1] * point.y + m[0][2] * point.z + m[0][3],
                m[1][0] * point.x + m[1][1] * point.y + m[1][2] * point.z + m[1][3]};
    }
    AcGeVector2d operator()(const AcGeVector3d& vector) const {
        const auto& m = matrix.entry;
        return {m[0][0] * vector.x + m[0][1] * vector.y + m[0][2] * vector.z,
                m[1][0] * vector.x + m[1][1] * vector.y + m[1][2] * vector.z};
    }
    ViewMap operator*(const AcGeMatrix3d& inner) const { return {matrix * inner}; }
};

/// Whether the region takes what is shown to it. Pieces with coordinates that are infinite or no numbers
/// touch nothing and lie within nothing.
class RegionProbe {
public:
    RegionProbe(const PlaneRegion& region, PickMode mode)
        : m_region(region)
        , m_mode(mode)
        , m_isDecided(region.isEmpty() || (mode == PickMode::inside && region.isFence())) {}

    const PlaneRegion& region() const { return m_region; }
    PickMode mode() const { return m_mode; }
    /// What comes from here on changes nothing.
    bool isDecided() const { return m_isDecided; }
    bool isTaken() const { return m_isTaken && !m_isOut; }

    void addPoint(const AcGePoint2d& point) { addPiece(PlanePiece::segment(point, point)); }
    void addPiece(const PlanePiece& piece);
    void addPieces(const std::vector<PlanePiece>& pieces);
    /// What the pieces enclose by even and odd, filled. Their order does not matter.
    void addArea(const std::vector<PlanePiece>& boundary);
    /// Filled, but only where touching is asked: the width of a line.
    void addWidth(const std::vector<PlanePiece>& outline) {
        if (m_mode == PickMode::touching) addArea(outline);
    }
    /// A ray, or a line both ways. Touched, never inside.
    void addEndless(const AcGePoint2d& base, const AcGeVector2d& direction, bool isBothWays);
    /// Whatever lies within the hull, the answer stays what it is: the hull is far from a region that is to
    /// be touched, or within the region while something else was found to be inside.
    bool mayPass(const PlaneBox& hull) const;

private:
    void take();
    void leave();

    const PlaneRegion& m_region;
    PickMode m_mode;
    bool m_isDecided;
    bool m_isTaken = false;
    bool m_isOut = false;
};

} // namespace hostkit
