#include "geent3d.h"

AcGeEntity3d& AcGeEntity3d::translateBy(const AcGeVector3d& vector) {
    return transformBy(AcGeMatrix3d::translation(vector));
}

AcGeEntity3d& AcGeEntity3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis, wrtPoint));
}

AcGeEntity3d& AcGeEntity3d::mirror(const AcGePlane& plane) {
    return transformBy(AcGeMatrix3d::mirroring(plane));
}

AcGeEntity3d& AcGeEntity3d::scaleBy(double factor, const AcGePoint3d& wrtPoint) {
    return transformBy(AcGeMatrix3d::scaling(factor, wrtPoint));
}
