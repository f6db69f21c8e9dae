// Stand-in for the host's AcDbViewportTableRecord. Covers the name and what a view shows; leaves out grids, snaps and coordinate systems, which are kept as the drawing has them.
#pragma once

#include "dbabstractviewtablerecord.h"

class AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord)

public:
    AcDbViewportTableRecord() = default;
    AcDbViewportTableRecord(const AcDbViewportTableRecord&) = default;

    AcRxObject* clone() const override { return new AcDbViewportTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    const Codes& codes() const override;
    bool allowsName(std::wstring_view name) const override;

private:
    struct Filing;
};
