// Stand-in for the host's AcDbRay. Covers the half line; leaves out grips.
#pragma once

#include "unboundedline.h"

/// A half line in world coordinates. It has no end: the questions for one give eNotApplicable.
class AcDbRay : public hostkit::UnboundedLine {
    ACRX_DECLARE_MEMBERS(AcDbRay)

public:
    AcDbRay() = default;
    AcDbRay(const AcDbRay&) = default;

    Acad::ErrorStatus reverseCurve() override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbRay(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    hostkit::UnboundedLine* plainCopy() const override { return new AcDbRay(*this); }
    bool geometry(hostkit::CurveGeometry& geometry) const override;
    AcDbCurve* piece(double from, double to) const override;
};
