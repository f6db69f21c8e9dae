// Stand-in for the host's AcDbCircle. Covers the full circle; leaves out grips.
#pragma once

#include "circularcurve.h"

/// A full circle, counter-clockwise about its normal, from and to the point on the x axis of the normal's
/// arbitrary-axis system.
class AcDbCircle : public hostkit::CircularCurve {
    ACRX_DECLARE_MEMBERS(AcDbCircle)

public:
    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
        : CircularCurve(center, normal, radius) {}
    AcDbCircle(const AcDbCircle&) = default;

    Acad::ErrorStatus reverseCurve() override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbCircle(*this); }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool geometry(hostkit::CurveGeometry& geometry) const override;
    AcDbCurve* piece(double from, double to) const override;
};
