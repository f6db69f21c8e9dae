// Stand-in for the host's AcDbPlaceHolder. Covers an object without content; leaves out nothing.
#pragma once

#include "dbobject.h"

class AcDbPlaceHolder : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbPlaceHolder)

public:
    AcDbPlaceHolder() = default;
    AcDbPlaceHolder(const AcDbPlaceHolder&) = default;
    AcRxObject* clone() const override { return new AcDbPlaceHolder(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
};
