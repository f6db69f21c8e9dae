// Stand-in for the host's AcDbRotatedDimension. Covers its points, angle, text and style; leaves out jogs and associations.
#pragma once

#include "dbdimension.h"

/// The distance of two points along the angle `rotation` of the dimension's plane.
class AcDbRotatedDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbRotatedDimension)

public:
    AcDbRotatedDimension()
        : AcDbDimension(kRotated) {}
    /// Angle in radians; points in world coordinates. A null style is the standing one; a null text is that
    /// of the measurement.
    AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                         const AcGePoint3d& dimLinePoint, const wchar_t* dimText = nullptr,
                         AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbRotatedDimension(const AcDbRotatedDimension&) = default;

    AcGePoint3d xLine1Point() const { return pointOf(13); }
    AcGePoint3d xLine2Point() const { return pointOf(14); }
    AcGePoint3d dimLinePoint() const { return pointOf(10); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point) { return setPointOf(14, point); }
    Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& point) { return setPointOf(10, point); }

    AcRxObject* clone() const override { return new AcDbRotatedDimension(*this); }
};
