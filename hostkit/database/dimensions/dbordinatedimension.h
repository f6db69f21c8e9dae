// Stand-in for the host's AcDbOrdinateDimension. Covers its points, axis, text and style; leaves out associations.
#pragma once

#include "dbdimension.h"

/// How far a point lies from a datum along one axis.
class AcDbOrdinateDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbOrdinateDimension)

public:
    AcDbOrdinateDimension()
        : AcDbDimension(kOrdinate) {}
    /// Points in world coordinates; the datum is the origin. A null style is the standing one; a null text is
    /// that of the measurement.
    AcDbOrdinateDimension(bool useXAxis, const AcGePoint3d& definingPoint, const AcGePoint3d& leaderEndPoint,
                          const wchar_t* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbOrdinateDimension(const AcDbOrdinateDimension&) = default;

    AcGePoint3d origin() const { return pointOf(10); }
    AcGePoint3d definingPoint() const { return pointOf(13); }
    AcGePoint3d leaderEndPoint() const { return pointOf(14); }
    bool isUsingXAxis() const { return isOrdinateOfX(); }
    bool isUsingYAxis() const { return !isOrdinateOfX(); }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& point) { return setPointOf(10, point); }
    Acad::ErrorStatus setDefiningPoint(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setLeaderEndPoint(const AcGePoint3d& point) { return setPointOf(14, point); }
    /// What was measured along the other axis is forgotten.
    Acad::ErrorStatus useXAxis() { return setOrdinateOfX(true); }
    Acad::ErrorStatus useYAxis() { return setOrdinateOfX(false); }

    AcRxObject* clone() const override { return new AcDbOrdinateDimension(*this); }
};
