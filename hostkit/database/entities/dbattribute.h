// Stand-in for the host's AcDbAttribute. Covers tag, value and kind; leaves out several lines, which stay in the drawing as they are.
#pragma once

#include "attributetext.h"

/// A text that one block reference owns.
class AcDbAttribute : public hostkit::AttributeText {
    ACRX_DECLARE_MEMBERS(AcDbAttribute)

public:
    AcDbAttribute() = default;
    AcDbAttribute(const AcDbAttribute&) = default;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbAttribute(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};
