#include "gevec2d.h"

#include "valuekernel.hpp"

double AcGeVector2d::angle() const {
    const double value = std::atan2(y, x);
    if (value >= 0.0) return value;
    const double turned = value + AcGe::kTwoPi;
    return turned < AcGe::kTwoPi ? turned : 0.0;
}

Adesk::Boolean AcGeVector2d::isParallelTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return AcGeKernel::isParallel(*this, v, tol);
}

Adesk::Boolean AcGeVector2d::isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return AcGeKernel::isCodirectional(*this, v, tol);
}

Adesk::Boolean AcGeVector2d::isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return AcGeKernel::isPerpendicular(*this, v, tol);
}

AcGeVector2d& AcGeVector2d::rotateBy(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return *this = {x * c - y * s, x * s + y * c};
}

AcGeVector2d& AcGeVector2d::mirror(const AcGeVector2d& line) {
    const double sizeSquared = line.lengthSqrd();
    if (!(sizeSquared > 0.0)) return *this;
    return *this = line * (2.0 * dotProduct(line) / sizeSquared) - *this;
}
