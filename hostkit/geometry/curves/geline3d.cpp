#include "geline3d.h"

const AcGeLine3d& AcGeLine3d::kZAxis() {
    static const AcGeLine3d line(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
    return line;
}
