#include "dbdiametricdimension.h"

HOSTKIT_KIT_CLASS(AcDbDiametricDimension, AcDbDimension, L"DIMENSION")

AcDbDiametricDimension::AcDbDiametricDimension(const AcGePoint3d& chordPoint,
                                               const AcGePoint3d& farChordPoint, double leaderLength,
                                               const wchar_t* dimText, AcDbObjectId dimStyle)
    : AcDbDimension(kDiametric, {{15, chordPoint}, {10, farChordPoint}}, dimText, dimStyle) {
    m_leaderLength = leaderLength;
}
