#include "geline3d.h"

#include "geray3d.h"

namespace {

AcGeVector3d unitOrNone(const AcGeVector3d& direction) {
    return direction.isZeroLength() ? AcGeVector3d::kIdentity : direction.normal();
}

} // namespace

AcGeLine3d::AcGeLine3d()
    : AcGeLine3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}

AcGeLine3d::AcGeLine3d(const AcGePoint3d& point, const AcGeVector3d& direction)
    : AcGeLinearEnt3d(point, unitOrNone(direction), AcGeInterval()) {}

AcGeLine3d::AcGeLine3d(const AcGePoint3d& point1, const AcGePoint3d& point2)
    : AcGeLine3d(point1, point2 - point1) {}

const AcGeLine3d& AcGeLine3d::kXAxis() {
    static const AcGeLine3d line(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis);
    return line;
}

const AcGeLine3d& AcGeLine3d::kYAxis() {
    static const AcGeLine3d line(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis);
    return line;
}

const AcGeLine3d& AcGeLine3d::kZAxis() {
    static const AcGeLine3d line(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis);
    return line;
}

AcGeLine3d& AcGeLine3d::transformBy(const AcGeMatrix3d& matrix) {
    AcGeLinearEnt3d::transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeLine3d::setInterval(const AcGeInterval&) { return Adesk::kFalse; }

AcGeLine3d& AcGeLine3d::reverseParam() { return *this = AcGeLine3d(m_origin, -m_step); }

void AcGeLine3d::getSplitCurves(double param, AcGeCurve3d*& before, AcGeCurve3d*& after) const {
    before = new AcGeRay3d(evalPoint(param), -m_step);
    after = new AcGeRay3d(evalPoint(param), m_step);
}
