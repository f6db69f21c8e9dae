#include "db3pointangulardimension.h"

HOSTKIT_KIT_CLASS(AcDb3PointAngularDimension, AcDbDimension, L"DIMENSION")

AcDb3PointAngularDimension::AcDb3PointAngularDimension(const AcGePoint3d& centerPoint,
                                                       const AcGePoint3d& xLine1Point,
                                                       const AcGePoint3d& xLine2Point,
                                                       const AcGePoint3d& arcPoint, const wchar_t* dimText,
                                                       AcDbObjectId dimStyle)
    : AcDbDimension(kThreePointAngular,
                    {{15, centerPoint}, {13, xLine1Point}, {14, xLine2Point}, {10, arcPoint}}, dimText,
                    dimStyle) {}
