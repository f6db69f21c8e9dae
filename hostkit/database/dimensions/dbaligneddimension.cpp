#include "dbaligneddimension.h"

HOSTKIT_KIT_CLASS(AcDbAlignedDimension, AcDbDimension, L"DIMENSION")

AcDbAlignedDimension::AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                                           const AcGePoint3d& dimLinePoint, const wchar_t* dimText,
                                           AcDbObjectId dimStyle)
    : AcDbDimension(kAligned, {{13, xLine1Point}, {14, xLine2Point}, {10, dimLinePoint}}, dimText, dimStyle) {
}
