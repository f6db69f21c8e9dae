// Stand-in for the host's AcDbDiametricDimension. Covers its points, text and style; leaves out associations.
#pragma once

#include "dbdimension.h"

/// The diameter of an arc or a circle, by two opposite points.
class AcDbDiametricDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbDiametricDimension)

public:
    AcDbDiametricDimension()
        : AcDbDimension(kDiametric) {}
    /// Points in world coordinates. The leader's length is kept and filed; the layout has its own. A null
    /// style is the standing one; a null text is that of the measurement.
    AcDbDiametricDimension(const AcGePoint3d& chordPoint, const AcGePoint3d& farChordPoint,
                           double leaderLength, const wchar_t* dimText = nullptr,
                           AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbDiametricDimension(const AcDbDiametricDimension&) = default;

    AcGePoint3d chordPoint() const { return pointOf(15); }
    AcGePoint3d farChordPoint() const { return pointOf(10); }
    Acad::ErrorStatus setChordPoint(const AcGePoint3d& point) { return setPointOf(15, point); }
    Acad::ErrorStatus setFarChordPoint(const AcGePoint3d& point) { return setPointOf(10, point); }

    AcRxObject* clone() const override { return new AcDbDiametricDimension(*this); }
};
