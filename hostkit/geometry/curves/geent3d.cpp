#include "geent3d.h"

template class AcGeKernel::EntityOf<AcGeKernel::Space>;

AcGeEntity3d& AcGeEntity3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis, wrtPoint));
}

AcGeEntity3d& AcGeEntity3d::mirror(const AcGePlane& plane) {
    return transformBy(AcGeMatrix3d::mirroring(plane));
}
