// What the things of the plane and of space share: kind, copy, moving, scaling and the tests.
#pragma once

#include "gegbl.h"

namespace AcGeKernel {

/// Base of the kit's things in the plane or in space. Entities are plain objects that hold their values
/// themselves; copy() and every function that hands out an entity pointer give a heap object that the caller
/// deletes (through any base pointer, or through a void pointer that is cast back to the base).
template <class T>
class EntityOf {
    using Entity = typename T::Entity;
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using Matrix = typename T::Matrix;

public:
    virtual ~EntityOf() = default;

    virtual AcGe::EntityId type() const = 0;
    /// True for the own class and for its bases.
    Adesk::Boolean isKindOf(AcGe::EntityId id) const { return AcGe::isDerivedFrom(type(), id); }
    /// A new heap object of the same class; the caller deletes it.
    virtual Entity* copy() const = 0;

    virtual Entity& transformBy(const Matrix& matrix) = 0;
    Entity& translateBy(const Vector& vector) { return transformBy(Matrix::translation(vector)); }
    Entity& scaleBy(double factor, const Point& wrtPoint = Point::kOrigin) {
        return transformBy(Matrix::scaling(factor, wrtPoint));
    }

    /// Is the point on the entity, under the point test of AcGeTol.
    virtual Adesk::Boolean isOn(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const = 0;
    /// Same class and same place, each defining point and direction within the tolerance. Two curves that
    /// cover the same points in opposite senses are not equal.
    virtual Adesk::Boolean isEqualTo(const Entity& entity, const AcGeTol& tol = AcGeContext::gTol) const = 0;

protected:
    EntityOf() = default;
    EntityOf(const EntityOf&) = default;
    EntityOf& operator=(const EntityOf&) = default;
};

} // namespace AcGeKernel
