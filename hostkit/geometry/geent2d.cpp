#include "geent2d.h"

AcGeEntity2d& AcGeEntity2d::translateBy(const AcGeVector2d& vector) {
    return transformBy(AcGeMatrix2d::translation(vector));
}

AcGeEntity2d& AcGeEntity2d::rotateBy(double angle, const AcGePoint2d& wrtPoint) {
    return transformBy(AcGeMatrix2d::rotation(angle, wrtPoint));
}

AcGeEntity2d& AcGeEntity2d::mirror(const AcGeLine2d& line) {
    return transformBy(AcGeMatrix2d::mirroring(line));
}

AcGeEntity2d& AcGeEntity2d::scaleBy(double factor, const AcGePoint2d& wrtPoint) {
    return transformBy(AcGeMatrix2d::scaling(factor, wrtPoint));
}
