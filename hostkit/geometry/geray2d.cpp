#include "geray2d.h"

#include "gelnsg2d.h"

AcGeRay2d::AcGeRay2d()
    : AcGeRay2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}

AcGeRay2d::AcGeRay2d(const AcGePoint2d& point, const AcGeVector2d& direction)
    : AcGeLinearEnt2d(point, direction.isZeroLength() ? AcGeVector2d::kIdentity : direction.normal(),
                      AcGeInterval().setLower(0.0)) {}

AcGeRay2d::AcGeRay2d(const AcGePoint2d& start, const AcGePoint2d& through)
    : AcGeRay2d(start, through - start) {}

AcGeRay2d& AcGeRay2d::transformBy(const AcGeMatrix2d& matrix) {
    AcGeLinearEnt2d::transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeRay2d::setInterval(const AcGeInterval&) { return Adesk::kFalse; }

void AcGeRay2d::getSplitCurves(double param, AcGeCurve2d*& before, AcGeCurve2d*& after) const {
    before = after = nullptr;
    if (!(param > 0.0) || !std::isfinite(param)) return;
    before = new AcGeLineSeg2d(m_origin, evalPoint(param));
    after = new AcGeRay2d(evalPoint(param), m_step);
}
