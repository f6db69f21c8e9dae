// Stand-in for the host's AcGeEntity3d. Covers kind, copy, transforms and the common tests; leaves out error conditions.
#pragma once

#include "gepnt3d.h"

/// Base of the kit's things in space. Entities are plain objects that hold their values themselves; copy()
/// and every function that hands out an entity pointer give a heap object that the caller deletes (through
/// any base pointer, or through a void pointer that is cast back to the base).
class AcGeEntity3d {
public:
    virtual ~AcGeEntity3d() = default;

    virtual AcGe::EntityId type() const = 0;
    /// True for the own class and for its bases.
    Adesk::Boolean isKindOf(AcGe::EntityId id) const { return AcGe::isDerivedFrom(type(), id); }
    /// A new heap object of the same class; the caller deletes it.
    virtual AcGeEntity3d* copy() const = 0;

    virtual AcGeEntity3d& transformBy(const AcGeMatrix3d& matrix) = 0;
    AcGeEntity3d& translateBy(const AcGeVector3d& vector);
    AcGeEntity3d& rotateBy(double angle, const AcGeVector3d& axis,
                           const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin);
    AcGeEntity3d& mirror(const AcGePlane& plane);
    AcGeEntity3d& scaleBy(double factor, const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin);

    /// Is the point on the entity, under the point test of AcGeTol.
    virtual Adesk::Boolean isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const = 0;
    /// Same class and same place, each defining point and direction within the tolerance. Two curves that
    /// cover the same points in opposite senses are not equal.
    virtual Adesk::Boolean isEqualTo(const AcGeEntity3d& entity,
                                     const AcGeTol& tol = AcGeContext::gTol) const = 0;
    Adesk::Boolean operator==(const AcGeEntity3d& entity) const { return isEqualTo(entity); }
    Adesk::Boolean operator!=(const AcGeEntity3d& entity) const { return !isEqualTo(entity); }

protected:
    AcGeEntity3d() = default;
    AcGeEntity3d(const AcGeEntity3d&) = default;
    AcGeEntity3d& operator=(const AcGeEntity3d&) = default;
};
