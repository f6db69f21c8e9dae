// Stand-in for the host's AcDbRadialDimension. Covers its points, text and style; leaves out associations.
#pragma once

#include "dbdimension.h"

/// The radius of an arc or a circle.
class AcDbRadialDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbRadialDimension)

public:
    AcDbRadialDimension()
        : AcDbDimension(kRadial) {}
    /// Points in world coordinates. The leader's length is kept and filed; the layout has its own. A null
    /// style is the standing one; a null text is that of the measurement.
    AcDbRadialDimension(const AcGePoint3d& center, const AcGePoint3d& chordPoint, double leaderLength,
                        const wchar_t* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbRadialDimension(const AcDbRadialDimension&) = default;

    AcGePoint3d center() const { return pointOf(10); }
    AcGePoint3d chordPoint() const { return pointOf(15); }
    Acad::ErrorStatus setCenter(const AcGePoint3d& point) { return setPointOf(10, point); }
    Acad::ErrorStatus setChordPoint(const AcGePoint3d& point) { return setPointOf(15, point); }

    AcRxObject* clone() const override { return new AcDbRadialDimension(*this); }
};
