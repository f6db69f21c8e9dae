#include "gemat2d.h"

#include "geline2d.h"
#include "valuekernel.hpp"

namespace {

AcGeVector2d columnOf(const AcGeMatrix2d& m, int column) { return {m.entry[0][column], m.entry[1][column]}; }

AcGeMatrix2d& aboutPoint(AcGeMatrix2d& m, const AcGeVector2d& x, const AcGeVector2d& y,
                         const AcGePoint2d& fixed) {
    m.setCoordSystem(AcGePoint2d::kOrigin, x, y);
    const AcGeVector2d offset = fixed - m * fixed;
    return m.setCoordSystem(AcGePoint2d::kOrigin + offset, x, y);
}

} // namespace

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& right) const {
    return AcGeKernel::product(*this, right);
}

double AcGeMatrix2d::det() const { return columnOf(*this, 0).crossProduct(columnOf(*this, 1)); }

Adesk::Boolean AcGeMatrix2d::isSingular(const AcGeTol& tol) const {
    const double sizes = columnOf(*this, 0).length() * columnOf(*this, 1).length();
    return !(std::abs(det()) > tol.equalVector() * sizes);
}

AcGeMatrix2d AcGeMatrix2d::inverse() const {
    if (isSingular()) return kIdentity;
    const double d = det();
    const AcGeVector2d x{entry[1][1] / d, -entry[1][0] / d}, y{-entry[0][1] / d, entry[0][0] / d};
    AcGeMatrix2d result;
    result.setCoordSystem(AcGePoint2d::kOrigin, x, y);
    return result.setCoordSystem(AcGePoint2d::kOrigin - result * translation(), x, y);
}

AcGeMatrix2d& AcGeMatrix2d::invert() {
    if (!isSingular()) *this = inverse();
    return *this;
}

AcGeMatrix2d AcGeMatrix2d::transpose() const { return AcGeKernel::transposed(*this); }

Adesk::Boolean AcGeMatrix2d::isEqualTo(const AcGeMatrix2d& matrix, const AcGeTol& tol) const {
    return AcGeKernel::areEqual<AcGePoint2d>(*this, matrix, tol);
}

Adesk::Boolean AcGeMatrix2d::isUniScaledOrtho(const AcGeTol& tol) const {
    const AcGeVector2d x = columnOf(*this, 0), y = columnOf(*this, 1);
    return x.isPerpendicularTo(y, tol) && std::abs(x.length() - y.length()) <= tol.equalVector() * scale();
}

double AcGeMatrix2d::scale() const {
    return std::max(columnOf(*this, 0).length(), columnOf(*this, 1).length());
}

AcGeMatrix2d& AcGeMatrix2d::setToTranslation(const AcGeVector2d& vector) {
    return setCoordSystem(AcGePoint2d::kOrigin + vector, AcGeVector2d::kXAxis, AcGeVector2d::kYAxis);
}

AcGeMatrix2d& AcGeMatrix2d::setToRotation(double angle, const AcGePoint2d& center) {
    AcGeVector2d x = AcGeVector2d::kXAxis, y = AcGeVector2d::kYAxis;
    return aboutPoint(*this, x.rotateBy(angle), y.rotateBy(angle), center);
}

AcGeMatrix2d& AcGeMatrix2d::setToScaling(double factor, const AcGePoint2d& center) {
    return aboutPoint(*this, AcGeVector2d::kXAxis * factor, AcGeVector2d::kYAxis * factor, center);
}

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGePoint2d& point) { return setToScaling(-1.0, point); }

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGeLine2d& line) {
    AcGeVector2d x = AcGeVector2d::kXAxis, y = AcGeVector2d::kYAxis;
    return aboutPoint(*this, x.mirror(line.direction()), y.mirror(line.direction()), line.pointOnLine());
}

AcGeMatrix2d& AcGeMatrix2d::setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& xAxis,
                                           const AcGeVector2d& yAxis) {
    setToIdentity();
    for (unsigned int row = 0; row < 2; ++row) {
        entry[row][0] = xAxis[row];
        entry[row][1] = yAxis[row];
        entry[row][2] = origin[row];
    }
    return *this;
}

void AcGeMatrix2d::getCoordSystem(AcGePoint2d& origin, AcGeVector2d& xAxis, AcGeVector2d& yAxis) const {
    origin = AcGePoint2d::kOrigin + translation();
    xAxis = columnOf(*this, 0);
    yAxis = columnOf(*this, 1);
}
