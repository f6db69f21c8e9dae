// Stand-in for the host's AcGeBoundBlock3d. Covers boxes along the axes; leaves out boxes along other directions.
#pragma once

#include "geent3d.h"

/// A box along the axes. A default one is empty: it contains nothing, is disjoint from everything, and takes
/// on the first point that it is extended by.
class AcGeBoundBlock3d : public AcGeEntity3d {
public:
    AcGeBoundBlock3d();
    /// The box of the two corners, given in any order.
    AcGeBoundBlock3d(const AcGePoint3d& point1, const AcGePoint3d& point2);
    AcGeBoundBlock3d& set(const AcGePoint3d& point1, const AcGePoint3d& point2) {
        return *this = AcGeBoundBlock3d(point1, point2);
    }

    Adesk::Boolean isEmpty() const { return m_min.x > m_max.x; }
    AcGePoint3d minPoint() const { return m_min; }
    AcGePoint3d maxPoint() const { return m_max; }
    void getMinMaxPoints(AcGePoint3d& minPoint, AcGePoint3d& maxPoint) const;
    AcGeBoundBlock3d& extend(const AcGePoint3d& point);
    AcGeBoundBlock3d& extend(const AcGeBoundBlock3d& block);
    /// Moves every side outwards by the distance. An empty box stays empty, as does one that a negative
    /// distance turns inside out.
    AcGeBoundBlock3d& swell(double distance);
    Adesk::Boolean contains(const AcGePoint3d& point) const; ///< the sides included
    /// No point in common; boxes that touch are not disjoint.
    Adesk::Boolean isDisjoint(const AcGeBoundBlock3d& block) const;

    AcGe::EntityId type() const override { return AcGe::kBoundBlock3d; }
    AcGeBoundBlock3d* copy() const override { return new AcGeBoundBlock3d(*this); }
    /// The box along the axes around the moved box.
    AcGeBoundBlock3d& transformBy(const AcGeMatrix3d& matrix) override;
    /// Inside or on a side, widened by the point allowance.
    Adesk::Boolean isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isEqualTo(const AcGeEntity3d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;

private:
    AcGePoint3d m_min;
    AcGePoint3d m_max;
};
