#include "geline2d.h"

#include "geray2d.h"

namespace {

AcGeVector2d unitOrNone(const AcGeVector2d& direction) {
    return direction.isZeroLength() ? AcGeVector2d::kIdentity : direction.normal();
}

} // namespace

AcGeLine2d::AcGeLine2d()
    : AcGeLine2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}

AcGeLine2d::AcGeLine2d(const AcGePoint2d& point, const AcGeVector2d& direction)
    : AcGeLinearEnt2d(point, unitOrNone(direction), AcGeInterval()) {}

AcGeLine2d::AcGeLine2d(const AcGePoint2d& point1, const AcGePoint2d& point2)
    : AcGeLine2d(point1, point2 - point1) {}

const AcGeLine2d& AcGeLine2d::kXAxis() {
    static const AcGeLine2d line(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis);
    return line;
}

const AcGeLine2d& AcGeLine2d::kYAxis() {
    static const AcGeLine2d line(AcGePoint2d::kOrigin, AcGeVector2d::kYAxis);
    return line;
}

AcGeLine2d& AcGeLine2d::transformBy(const AcGeMatrix2d& matrix) {
    AcGeLinearEnt2d::transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeLine2d::setInterval(const AcGeInterval&) { return Adesk::kFalse; }

AcGeLine2d& AcGeLine2d::reverseParam() { return *this = AcGeLine2d(m_origin, -m_step); }

void AcGeLine2d::getSplitCurves(double param, AcGeCurve2d*& before, AcGeCurve2d*& after) const {
    before = new AcGeRay2d(evalPoint(param), -m_step);
    after = new AcGeRay2d(evalPoint(param), m_step);
}
