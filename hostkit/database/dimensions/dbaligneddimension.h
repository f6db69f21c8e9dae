// Stand-in for the host's AcDbAlignedDimension. Covers its points, text and style; leaves out jogs and associations.
#pragma once

#include "dbdimension.h"

/// The distance of two points.
class AcDbAlignedDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbAlignedDimension)

public:
    AcDbAlignedDimension()
        : AcDbDimension(kAligned) {}
    /// Points in world coordinates. A null style is the standing one; a null text is that of the measurement.
    AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                         const AcGePoint3d& dimLinePoint, const wchar_t* dimText = nullptr,
                         AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbAlignedDimension(const AcDbAlignedDimension&) = default;

    AcGePoint3d xLine1Point() const { return pointOf(13); }
    AcGePoint3d xLine2Point() const { return pointOf(14); }
    AcGePoint3d dimLinePoint() const { return pointOf(10); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point) { return setPointOf(14, point); }
    Acad::ErrorStatus setDimLinePoint(const AcGePoint3d& point) { return setPointOf(10, point); }

    AcRxObject* clone() const override { return new AcDbAlignedDimension(*this); }
};
