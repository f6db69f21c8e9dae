// Stand-in for the host's AcGeEntity2d. Covers kind, copy, transforms and the common tests; leaves out error conditions.
#pragma once

#include "geent.h"
#include "gepnt2d.h"

extern template class AcGeKernel::EntityOf<AcGeKernel::Plane>;

/// Base of the kit's things in the plane; see EntityOf.
class AcGeEntity2d : public AcGeKernel::EntityOf<AcGeKernel::Plane> {
public:
    AcGeEntity2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = AcGePoint2d::kOrigin);
    AcGeEntity2d& mirror(const AcGeLine2d& line);
    Adesk::Boolean operator==(const AcGeEntity2d& entity) const { return isEqualTo(entity); }
    Adesk::Boolean operator!=(const AcGeEntity2d& entity) const { return !isEqualTo(entity); }

protected:
    AcGeEntity2d() = default;
    AcGeEntity2d(const AcGeEntity2d&) = default;
    AcGeEntity2d& operator=(const AcGeEntity2d&) = default;
};
