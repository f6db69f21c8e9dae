// Stand-in for the host's AcGeEntity2d. Covers kind, copy, transforms and the common tests; leaves out error conditions.
#pragma once

#include "gepnt2d.h"

/// Base of the kit's things in the plane. Entities are plain objects that hold their values themselves;
/// copy() and every function that hands out an entity pointer give a heap object that the caller deletes
/// (through any base pointer, or through a void pointer that is cast back to the base).
class AcGeEntity2d {
public:
    virtual ~AcGeEntity2d() = default;

    virtual AcGe::EntityId type() const = 0;
    /// True for the own class and for its bases.
    Adesk::Boolean isKindOf(AcGe::EntityId id) const { return AcGe::isDerivedFrom(type(), id); }
    /// A new heap object of the same class; the caller deletes it.
    virtual AcGeEntity2d* copy() const = 0;

    virtual AcGeEntity2d& transformBy(const AcGeMatrix2d& matrix) = 0;
    AcGeEntity2d& translateBy(const AcGeVector2d& vector);
    AcGeEntity2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = AcGePoint2d::kOrigin);
    AcGeEntity2d& mirror(const AcGeLine2d& line);
    AcGeEntity2d& scaleBy(double factor, const AcGePoint2d& wrtPoint = AcGePoint2d::kOrigin);

    /// Is the point on the entity, under the point test of AcGeTol.
    virtual Adesk::Boolean isOn(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const = 0;
    /// Same class and same place, each defining point and direction within the tolerance. Two curves that
    /// cover the same points in opposite senses are not equal.
    virtual Adesk::Boolean isEqualTo(const AcGeEntity2d& entity,
                                     const AcGeTol& tol = AcGeContext::gTol) const = 0;
    Adesk::Boolean operator==(const AcGeEntity2d& entity) const { return isEqualTo(entity); }
    Adesk::Boolean operator!=(const AcGeEntity2d& entity) const { return !isEqualTo(entity); }

protected:
    AcGeEntity2d() = default;
    AcGeEntity2d(const AcGeEntity2d&) = default;
    AcGeEntity2d& operator=(const AcGeEntity2d&) = default;
};
