// A flat face seen in two dimensions.
#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"

namespace hostkit::modeler {

/// Drops the coordinate in which the normal is longest, so that no rounding moves a point, and keeps the
/// sense of turning about it.
class FaceView {
public:
    explicit FaceView(const AcGeVector3d& normal)
        : m_dropped(normal.largestElement())
        , m_turned(normal[m_dropped] < 0.0) {}

    [[nodiscard]] AcGePoint2d operator()(const AcGePoint3d& p) const {
        const double u = p[(m_dropped + 1) % 3], v = p[(m_dropped + 2) % 3];
        return m_turned ? AcGePoint2d(v, u) : AcGePoint2d(u, v);
    }

private:
    unsigned int m_dropped;
    bool m_turned;
};

/// Above 0 where c lies to the left of a to b: twice the triangle's area.
inline double turn(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// From left to right, of one x from below to above.
inline bool comesBefore(const AcGePoint2d& a, const AcGePoint2d& b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

} // namespace hostkit::modeler
