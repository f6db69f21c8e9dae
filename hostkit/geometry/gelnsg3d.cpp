#include "gelnsg3d.h"

AcGeLineSeg3d::AcGeLineSeg3d()
    : AcGeLineSeg3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}

AcGeLineSeg3d::AcGeLineSeg3d(const AcGePoint3d& start, const AcGePoint3d& end)
    : AcGeLinearEnt3d(start, end - start, AcGeInterval(0.0, 1.0)) {
    m_end = end;
}

AcGeLineSeg3d::AcGeLineSeg3d(const AcGePoint3d& start, const AcGeVector3d& vector)
    : AcGeLineSeg3d(start, start + vector) {}

AcGeLineSeg3d& AcGeLineSeg3d::transformBy(const AcGeMatrix3d& matrix) {
    AcGeLinearEnt3d::transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeLineSeg3d::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    set(evalPoint(interval.lowerBound()), evalPoint(interval.upperBound()));
    return Adesk::kTrue;
}

AcGeLineSeg3d& AcGeLineSeg3d::reverseParam() { return *this = AcGeLineSeg3d(m_end, m_origin); }
