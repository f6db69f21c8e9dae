// Stand-in for the host's AcGeCircArc3d. Covers arcs and circles with their constructions and crossings; leaves out fillets and tangent circles.
#pragma once

#include "gearc.h"
#include "gecurv3d.h"

extern template class AcGeKernel::ArcOf<AcGeKernel::Space>;

/// A circular arc or a full circle in space.
///
/// The parameter is the angle in radians from the reference vector, counter-clockwise about the normal (seen
/// from its tip). See ArcOf for what arcs of the plane and of space share.
class AcGeCircArc3d : public AcGeKernel::ArcOf<AcGeKernel::Space> {
public:
    AcGeCircArc3d(); ///< the unit circle about the origin, normal +Z, reference +X
    /// A full circle; the reference vector is the x axis that the arbitrary-axis rule gives for the normal.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    /// The reference vector is made perpendicular to the normal and of unit length; where it has no part in
    /// the plane, the arbitrary-axis rule gives it. Angles as setAngles takes them.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAngle, double endAngle);
    /// The arc from start through a point on it to end. The reference vector points to the start, so that the
    /// angles run from 0 to the included angle, and the normal is that about which the run is
    /// counter-clockwise. Points that are collinear, the middle one no farther from the chord's line than the
    /// global point test allows, or that coincide, give the degenerate arc: radius 0 at the start point, both
    /// angles 0, normal +Z.
    /// From 0.3 to 5.5 radians, with the middle point well inside, all three points are met within 8 units in
    /// the last place of the largest of coordinates, centre and radius; ends that nearly meet let the middle
    /// point drift by a few more.
    AcGeCircArc3d(const AcGePoint3d& start, const AcGePoint3d& onArc, const AcGePoint3d& end);

    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
        return *this = AcGeCircArc3d(center, normal, radius);
    }
    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                       double radius, double startAngle, double endAngle) {
        return *this = AcGeCircArc3d(center, normal, refVec, radius, startAngle, endAngle);
    }
    AcGeCircArc3d& set(const AcGePoint3d& start, const AcGePoint3d& onArc, const AcGePoint3d& end) {
        return *this = AcGeCircArc3d(start, onArc, end);
    }

    AcGeVector3d normal() const { return m_normal; }
    /// Unit normal and reference vector, as the constructor takes them.
    AcGeCircArc3d& setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec);
    void getPlane(AcGePlane& plane) const;

    /// Is the point in the arc's plane and within its circle, the rim included.
    Adesk::Boolean isInside(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    using ArcOf::intersectWith;
    /// None when the arc lies in the plane.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Crossings with a line as seen along `direction`, with the points on each. None when the view shows the
    /// arc from its edge or the line as a point.
    Adesk::Boolean projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction, int& count,
                                     AcGePoint3d& onArc1, AcGePoint3d& onArc2, AcGePoint3d& onLine1,
                                     AcGePoint3d& onLine2, const AcGeTol& tol = AcGeContext::gTol) const;

    AcGe::EntityId type() const override { return AcGe::kCircArc3d; }
    AcGeCircArc3d* copy() const override { return new AcGeCircArc3d(*this); }
    /// A matrix that is not uniform in the arc's plane cannot keep it circular: the radius then follows the
    /// reference vector. Points at equal parameters stay corresponding points under uniform ones, mirrors
    /// included.
    AcGeCircArc3d& transformBy(const AcGeMatrix3d& matrix) override;
    AcGeCircArc3d& reverseParam() override;
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;

private:
    friend AcGeKernel::ArcOf<AcGeKernel::Space>;
    /// The reference vector a quarter turn on in the arc's sense.
    AcGeVector3d quarter() const { return m_normal.crossProduct(m_refVec); }
    bool hasSenseOf(const AcGeCircArc3d& other, const AcGeTol& tol) const {
        return m_normal.isEqualTo(other.m_normal, tol);
    }

    AcGeVector3d m_normal = AcGeVector3d::kZAxis;
};
