#include "gepnt2d.h"

#include "geline2d.h"

AcGePoint2d& AcGePoint2d::rotateBy(double angle, const AcGePoint2d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle);
}

AcGePoint2d& AcGePoint2d::mirror(const AcGeLine2d& line) {
    return *this = line.pointOnLine() + (*this - line.pointOnLine()).mirror(line.direction());
}
