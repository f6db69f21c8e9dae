#include "gelent2d.h"

#include "geline2d.h"

AcGeLinearEnt2d& AcGeLinearEnt2d::transformBy(const AcGeMatrix2d& matrix) {
    move(matrix);
    return *this;
}

void AcGeLinearEnt2d::getPerpLine(const AcGePoint2d& point, AcGeLine2d& line) const {
    line.set(point, direction().perpVector());
}
