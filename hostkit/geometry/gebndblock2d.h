// Stand-in for the host's AcGeBoundBlock2d. Covers boxes along the axes; leaves out boxes along other directions.
#pragma once

#include "geent2d.h"

/// A box along the axes. A default one is empty: it contains nothing, is disjoint from everything, and takes
/// on the first point that it is extended by.
class AcGeBoundBlock2d : public AcGeEntity2d {
public:
    AcGeBoundBlock2d();
    /// The rectangle of the two corners, given in any order.
    AcGeBoundBlock2d(const AcGePoint2d& point1, const AcGePoint2d& point2);
    AcGeBoundBlock2d& set(const AcGePoint2d& point1, const AcGePoint2d& point2) {
        return *this = AcGeBoundBlock2d(point1, point2);
    }

    Adesk::Boolean isEmpty() const { return m_min.x > m_max.x; }
    AcGePoint2d minPoint() const { return m_min; }
    AcGePoint2d maxPoint() const { return m_max; }
    void getMinMaxPoints(AcGePoint2d& minPoint, AcGePoint2d& maxPoint) const;
    AcGeBoundBlock2d& extend(const AcGePoint2d& point);
    AcGeBoundBlock2d& extend(const AcGeBoundBlock2d& block);
    /// Moves every side outwards by the distance. An empty box stays empty, as does one that a negative
    /// distance turns inside out.
    AcGeBoundBlock2d& swell(double distance);
    Adesk::Boolean contains(const AcGePoint2d& point) const; ///< the sides included
    /// No point in common; boxes that touch are not disjoint.
    Adesk::Boolean isDisjoint(const AcGeBoundBlock2d& block) const;

    AcGe::EntityId type() const override { return AcGe::kBoundBlock2d; }
    AcGeBoundBlock2d* copy() const override { return new AcGeBoundBlock2d(*this); }
    /// The box along the axes around the moved box.
    AcGeBoundBlock2d& transformBy(const AcGeMatrix2d& matrix) override;
    /// Inside or on a side, widened by the point allowance.
    Adesk::Boolean isOn(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isEqualTo(const AcGeEntity2d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;

private:
    AcGePoint2d m_min;
    AcGePoint2d m_max;
};
