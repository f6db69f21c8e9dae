// Stand-in for the host's AcGeLinearEnt3d. Covers direction, relations, crossings and overlaps of straight curves; leaves out projected overlaps.
#pragma once

#include "gecurv3d.h"
#include "gelent.h"

extern template class AcGeKernel::LinearOf<AcGeKernel::Space>;

/// Base of line, segment and ray in space; see LinearOf for what they all answer.
class AcGeLinearEnt3d : public AcGeKernel::LinearOf<AcGeKernel::Space> {
public:
    AcGeLinearEnt3d* copy() const override = 0;
    AcGeLinearEnt3d& transformBy(const AcGeMatrix3d& matrix) override {
        move(matrix);
        return *this;
    }

    /// The plane through the point of the unbounded line at `point`'s foot, perpendicular to the line.
    void getPerpPlane(const AcGePoint3d& point, AcGePlane& plane) const;

    using LinearOf::isParallelTo;
    Adesk::Boolean isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
    using LinearOf::isPerpendicularTo;
    Adesk::Boolean isPerpendicularTo(const AcGePlanarEnt& plane,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    using LinearOf::intersectWith;
    /// False, and `point` untouched, when they miss or when this runs in the plane.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Crossing as seen along `direction`, with the point on each. False when they do not cross in that view.
    Adesk::Boolean projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction,
                                     AcGePoint3d& pointOnThis, AcGePoint3d& pointOnOther,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    using LinearOf::isOn;
    /// Does the whole curve lie in the plane.
    Adesk::Boolean isOn(const AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;

protected:
    using LinearOf::LinearOf;
};
