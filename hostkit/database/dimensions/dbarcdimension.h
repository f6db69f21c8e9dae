// Stand-in for the host's AcDbArcDimension. Covers its points, text and style; leaves out associations.
#pragma once

#include "dbdimension.h"

/// The length of an arc about a centre between two points.
class AcDbArcDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbArcDimension)

public:
    AcDbArcDimension()
        : AcDbDimension(kThreePointAngular) {}
    /// Points in world coordinates. A null style is the standing one; a null text is that of the measurement.
    AcDbArcDimension(const AcGePoint3d& centerPoint, const AcGePoint3d& xLine1Point,
                     const AcGePoint3d& xLine2Point, const AcGePoint3d& arcPoint,
                     const wchar_t* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbArcDimension(const AcDbArcDimension&) = default;

    AcGePoint3d centerPoint() const { return pointOf(15); }
    AcGePoint3d xLine1Point() const { return pointOf(13); }
    AcGePoint3d xLine2Point() const { return pointOf(14); }
    AcGePoint3d arcPoint() const { return pointOf(10); }
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& point) { return setPointOf(15, point); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point) { return setPointOf(14, point); }
    Acad::ErrorStatus setArcPoint(const AcGePoint3d& point) { return setPointOf(10, point); }

    /// Files tell the type by the record's kind alone.
    Type dimensionType() const override { return kArcLength; }
    AcRxObject* clone() const override { return new AcDbArcDimension(*this); }
};
