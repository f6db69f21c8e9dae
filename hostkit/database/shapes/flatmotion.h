// Transforms of flat things: the new normal, points, vectors and angles in its plane, and the height over it;
// leaves out what the things themselves are.
#pragma once

#include "gemat3d.h"
#include "gevec2d.h"

namespace hostkit {

/// Only places change: the linear part is the identity. Directions, sizes and angles are then kept to the
/// bit; arithmetic with normals would lose their last digits, and a drawing's records would differ for
/// nothing.
bool isShift(const AcGeMatrix3d& matrix);

/// A matrix as seen by a thing that keeps its points in the coordinates of its normal. The moved thing lies
/// in the moved plane, on the side that the moved normal shows; a mirror thus shows as a mirror within the
/// plane.
class FlatMotion {
public:
    /// The matrix is invertible.
    FlatMotion(const AcGeMatrix3d& matrix, const AcGeVector3d& normal);

    bool isShift() const { return m_isShift; }
    /// Nothing changes: the matrix is the identity.
    bool isStill() const { return m_isStill; }
    /// The run of the axes in the plane is turned round.
    bool isMirror() const { return m_x.x * m_y.y - m_x.y * m_y.x < 0.0; }
    const AcGeVector3d& normal() const { return m_normal; }
    /// What lengths along the old normal grow by, without sign.
    double normalScale() const { return m_normalScale; }
    /// Angles are kept between directions in the plane, and lengths are scaled alike, to 1e-10.
    bool keepsShape() const;
    /// Of lengths along a direction of the plane; where the shape is kept, of all of them.
    double scale() const { return m_x.length(); }
    /// From the old normal's coordinates to the new one's.
    AcGePoint3d point(const AcGePoint3d& point) const;
    AcGeVector2d vector(const AcGeVector2d& vector) const { return m_x * vector.x + m_y * vector.y; }
    /// The direction of a moved ray, from the new system's x axis, in [0, 2 pi).
    double angle(double angle) const;

private:
    AcGeMatrix3d m_local;
    AcGeVector3d m_normal;
    AcGeVector2d m_x;
    AcGeVector2d m_y;
    double m_normalScale = 1.0;
    bool m_isShift = false;
    bool m_isStill = false;
};

} // namespace hostkit
