// Stand-in for the host's AcGeEntity3d. Covers kind, copy, transforms and the common tests; leaves out error conditions.
#pragma once

#include "geent.h"
#include "gepnt3d.h"

extern template class AcGeKernel::EntityOf<AcGeKernel::Space>;

/// Base of the kit's things in space; see EntityOf.
class AcGeEntity3d : public AcGeKernel::EntityOf<AcGeKernel::Space> {
public:
    AcGeEntity3d& rotateBy(double angle, const AcGeVector3d& axis,
                           const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin);
    AcGeEntity3d& mirror(const AcGePlane& plane);
    Adesk::Boolean operator==(const AcGeEntity3d& entity) const { return isEqualTo(entity); }
    Adesk::Boolean operator!=(const AcGeEntity3d& entity) const { return !isEqualTo(entity); }

protected:
    AcGeEntity3d() = default;
    AcGeEntity3d(const AcGeEntity3d&) = default;
    AcGeEntity3d& operator=(const AcGeEntity3d&) = default;
};
