// Stand-in for the host's AcDbRegAppTableRecord. Covers the name; leaves out nothing.
#pragma once

#include "dbsymboltablerecord.h"

class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord)

public:
    AcDbRegAppTableRecord() = default;
    AcDbRegAppTableRecord(const AcDbRegAppTableRecord&) = default;

    AcRxObject* clone() const override { return new AcDbRegAppTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// ACAD stays.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    struct Filing;
};
