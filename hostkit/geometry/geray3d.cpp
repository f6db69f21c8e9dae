#include "geray3d.h"

#include "gelnsg3d.h"

AcGeRay3d::AcGeRay3d()
    : AcGeRay3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}

AcGeRay3d::AcGeRay3d(const AcGePoint3d& point, const AcGeVector3d& direction)
    : AcGeLinearEnt3d(point, direction.isZeroLength() ? AcGeVector3d::kIdentity : direction.normal(),
                      AcGeInterval().setLower(0.0)) {}

AcGeRay3d::AcGeRay3d(const AcGePoint3d& start, const AcGePoint3d& through)
    : AcGeRay3d(start, through - start) {}

AcGeRay3d& AcGeRay3d::transformBy(const AcGeMatrix3d& matrix) {
    AcGeLinearEnt3d::transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeRay3d::setInterval(const AcGeInterval&) { return Adesk::kFalse; }

void AcGeRay3d::getSplitCurves(double param, AcGeCurve3d*& before, AcGeCurve3d*& after) const {
    before = after = nullptr;
    if (!(param > 0.0) || !std::isfinite(param)) return;
    before = new AcGeLineSeg3d(m_origin, evalPoint(param));
    after = new AcGeRay3d(evalPoint(param), m_step);
}
