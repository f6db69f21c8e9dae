// Stand-in for the host's AcDbBlockEnd. Covers the record that closes a block in a drawing file; leaves out nothing.
#pragma once

#include "dbent.h"

class AcDbBlockEnd : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbBlockEnd)

public:
    AcDbBlockEnd() = default;
    AcDbBlockEnd(const AcDbBlockEnd&) = default;
    AcRxObject* clone() const override { return new AcDbBlockEnd(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};
