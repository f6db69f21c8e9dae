// Stand-in for the host's AcDbViewTableRecord. Covers the name and what a view shows; leaves out coordinate systems and live sections, which are kept as the drawing has them.
#pragma once

#include "dbabstractviewtablerecord.h"

class AcDbViewTableRecord : public AcDbAbstractViewTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbViewTableRecord)

public:
    AcDbViewTableRecord() = default;
    AcDbViewTableRecord(const AcDbViewTableRecord&) = default;

    AcRxObject* clone() const override { return new AcDbViewTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    const Codes& codes() const override;

private:
    struct Filing;
};
