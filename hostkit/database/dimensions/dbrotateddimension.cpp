#include "dbrotateddimension.h"

HOSTKIT_KIT_CLASS(AcDbRotatedDimension, AcDbDimension, L"DIMENSION")

AcDbRotatedDimension::AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point,
                                           const AcGePoint3d& xLine2Point, const AcGePoint3d& dimLinePoint,
                                           const wchar_t* dimText, AcDbObjectId dimStyle)
    : AcDbDimension(kRotated, {{13, xLine1Point}, {14, xLine2Point}, {10, dimLinePoint}}, dimText, dimStyle) {
    m_rotation = rotation;
}
