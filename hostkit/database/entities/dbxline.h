// Stand-in for the host's AcDbXline. Covers the line without ends; leaves out grips.
#pragma once

#include "unboundedline.h"

/// A line without ends in world coordinates. The questions for its start or end give eNotApplicable.
class AcDbXline : public hostkit::UnboundedLine {
    ACRX_DECLARE_MEMBERS(AcDbXline)

public:
    AcDbXline() = default;
    AcDbXline(const AcDbXline&) = default;

    Acad::ErrorStatus reverseCurve() override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbXline(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    hostkit::UnboundedLine* plainCopy() const override { return new AcDbXline(*this); }
    bool geometry(hostkit::CurveGeometry& geometry) const override;
    AcDbCurve* piece(double from, double to) const override;
};
