#include "dbradialdimension.h"

HOSTKIT_KIT_CLASS(AcDbRadialDimension, AcDbDimension, L"DIMENSION")

AcDbRadialDimension::AcDbRadialDimension(const AcGePoint3d& center, const AcGePoint3d& chordPoint,
                                         double leaderLength, const wchar_t* dimText, AcDbObjectId dimStyle)
    : AcDbDimension(kRadial, {{10, center}, {15, chordPoint}}, dimText, dimStyle) {
    m_leaderLength = leaderLength;
}
