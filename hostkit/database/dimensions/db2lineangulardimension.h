// Stand-in for the host's AcDb2LineAngularDimension. Covers its points, text and style; leaves out associations.
#pragma once

#include "dbdimension.h"

/// The angle between two lines, in the sector where the arc stands.
class AcDb2LineAngularDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDb2LineAngularDimension)

public:
    AcDb2LineAngularDimension()
        : AcDbDimension(kTwoLineAngular) {}
    /// Points in world coordinates. A null style is the standing one; a null text is that of the measurement.
    AcDb2LineAngularDimension(const AcGePoint3d& xLine1Start, const AcGePoint3d& xLine1End,
                              const AcGePoint3d& xLine2Start, const AcGePoint3d& xLine2End,
                              const AcGePoint3d& arcPoint, const wchar_t* dimText = nullptr,
                              AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDb2LineAngularDimension(const AcDb2LineAngularDimension&) = default;

    AcGePoint3d xLine1Start() const { return pointOf(13); }
    AcGePoint3d xLine1End() const { return pointOf(14); }
    AcGePoint3d xLine2Start() const { return pointOf(15); }
    AcGePoint3d xLine2End() const { return pointOf(10); }
    Acad::ErrorStatus setXLine1Start(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setXLine1End(const AcGePoint3d& point) { return setPointOf(14, point); }
    Acad::ErrorStatus setXLine2Start(const AcGePoint3d& point) { return setPointOf(15, point); }
    Acad::ErrorStatus setXLine2End(const AcGePoint3d& point) { return setPointOf(10, point); }
    AcGePoint3d arcPoint() const;
    Acad::ErrorStatus setArcPoint(const AcGePoint3d& point);

    AcRxObject* clone() const override { return new AcDb2LineAngularDimension(*this); }
};
