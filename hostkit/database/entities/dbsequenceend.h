// Stand-in for the host's AcDbSequenceEnd. Covers the record that closes vertices or attributes in a drawing file; leaves out nothing.
#pragma once

#include "dbent.h"

class AcDbSequenceEnd : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbSequenceEnd)

public:
    AcDbSequenceEnd() = default;
    AcDbSequenceEnd(const AcDbSequenceEnd&) = default;
    AcRxObject* clone() const override { return new AcDbSequenceEnd(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};
