#include "geent2d.h"

template class AcGeKernel::EntityOf<AcGeKernel::Plane>;

AcGeEntity2d& AcGeEntity2d::rotateBy(double angle, const AcGePoint2d& wrtPoint) {
    return transformBy(AcGeMatrix2d::rotation(angle, wrtPoint));
}

AcGeEntity2d& AcGeEntity2d::mirror(const AcGeLine2d& line) {
    return transformBy(AcGeMatrix2d::mirroring(line));
}
