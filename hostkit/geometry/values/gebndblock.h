// What the boxes along the axes of the plane and of space share.
#pragma once

#include "geent.h"

namespace AcGeKernel {

/// A box along the axes. A default one is empty: it contains nothing, is disjoint from everything, and takes
/// on the first point that it is extended by.
template <class T>
class BlockOf : public T::Entity {
    using Entity = typename T::Entity;
    using Block = typename T::Block;
    using Point = typename T::Point;

public:
    BlockOf();
    /// The box of the two corners, given in any order.
    BlockOf(const Point& point1, const Point& point2);
    Block& set(const Point& point1, const Point& point2) { return self() = Block(point1, point2); }

    Adesk::Boolean isEmpty() const { return m_min.x > m_max.x; }
    Point minPoint() const { return m_min; }
    Point maxPoint() const { return m_max; }
    void getMinMaxPoints(Point& minPoint, Point& maxPoint) const;
    Block& extend(const Point& point);
    Block& extend(const Block& block);
    /// Moves every side outwards by the distance. An empty box stays empty, as does one that a negative
    /// distance turns inside out.
    Block& swell(double distance);
    Adesk::Boolean contains(const Point& point) const; ///< the sides included
    /// No point in common; boxes that touch are not disjoint.
    Adesk::Boolean isDisjoint(const Block& block) const;

    /// Inside or on a side, widened by the point allowance.
    Adesk::Boolean isOn(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isEqualTo(const Entity& entity, const AcGeTol& tol = AcGeContext::gTol) const override;

protected:
    /// What transformBy of the classes does.
    void move(const typename T::Matrix& matrix);

private:
    const Block& self() const { return static_cast<const Block&>(*this); }
    Block& self() { return static_cast<Block&>(*this); }
    void takeOn(const Point& point);

    Point m_min;
    Point m_max;
};

} // namespace AcGeKernel
