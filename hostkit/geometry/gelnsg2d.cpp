#include "gelnsg2d.h"

AcGeLineSeg2d::AcGeLineSeg2d()
    : AcGeLineSeg2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}

AcGeLineSeg2d::AcGeLineSeg2d(const AcGePoint2d& start, const AcGePoint2d& end)
    : AcGeLinearEnt2d(start, end - start, AcGeInterval(0.0, 1.0)) {
    m_end = end;
}

AcGeLineSeg2d::AcGeLineSeg2d(const AcGePoint2d& start, const AcGeVector2d& vector)
    : AcGeLineSeg2d(start, start + vector) {}

AcGeLineSeg2d& AcGeLineSeg2d::transformBy(const AcGeMatrix2d& matrix) {
    AcGeLinearEnt2d::transformBy(matrix);
    return *this;
}

Adesk::Boolean AcGeLineSeg2d::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    set(evalPoint(interval.lowerBound()), evalPoint(interval.upperBound()));
    return Adesk::kTrue;
}

AcGeLineSeg2d& AcGeLineSeg2d::reverseParam() { return *this = AcGeLineSeg2d(m_end, m_origin); }
