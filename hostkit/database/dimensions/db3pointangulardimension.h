// Stand-in for the host's AcDb3PointAngularDimension. Covers its points, text and style; leaves out associations.
#pragma once

#include "dbdimension.h"

/// The angle at a centre between two points, on the side where the arc stands.
class AcDb3PointAngularDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDb3PointAngularDimension)

public:
    AcDb3PointAngularDimension()
        : AcDbDimension(kThreePointAngular) {}
    /// Points in world coordinates. A null style is the standing one; a null text is that of the measurement.
    AcDb3PointAngularDimension(const AcGePoint3d& centerPoint, const AcGePoint3d& xLine1Point,
                               const AcGePoint3d& xLine2Point, const AcGePoint3d& arcPoint,
                               const wchar_t* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDb3PointAngularDimension(const AcDb3PointAngularDimension&) = default;

    AcGePoint3d centerPoint() const { return pointOf(15); }
    AcGePoint3d xLine1Point() const { return pointOf(13); }
    AcGePoint3d xLine2Point() const { return pointOf(14); }
    AcGePoint3d arcPoint() const { return pointOf(10); }
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& point) { return setPointOf(15, point); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point) { return setPointOf(14, point); }
    Acad::ErrorStatus setArcPoint(const AcGePoint3d& point) { return setPointOf(10, point); }

    AcRxObject* clone() const override { return new AcDb3PointAngularDimension(*this); }
};
