#include "gelent2d.h"

#include "geline2d.h"

void AcGeLinearEnt2d::getPerpLine(const AcGePoint2d& point, AcGeLine2d& line) const {
    line.set(point, direction().perpVector());
}
