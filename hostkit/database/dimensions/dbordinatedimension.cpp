#include "dbordinatedimension.h"

HOSTKIT_KIT_CLASS(AcDbOrdinateDimension, AcDbDimension, L"DIMENSION")

AcDbOrdinateDimension::AcDbOrdinateDimension(bool useXAxis, const AcGePoint3d& definingPoint,
                                             const AcGePoint3d& leaderEndPoint, const wchar_t* dimText,
                                             AcDbObjectId dimStyle)
    : AcDbDimension(kOrdinate, {{10, AcGePoint3d()}, {13, definingPoint}, {14, leaderEndPoint}}, dimText,
                    dimStyle) {
    (void)setOrdinateOfX(useXAxis);
}
