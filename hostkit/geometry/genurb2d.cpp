#include "genurb2d.h"

AcGeNurbCurve2d& AcGeNurbCurve2d::transformBy(const AcGeMatrix2d& matrix) {
    move(matrix);
    return *this;
}

AcGeNurbCurve2d& AcGeNurbCurve2d::reverseParam() {
    reverse();
    return *this;
}
