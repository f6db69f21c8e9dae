// Stand-in for the host's AcDbDimStyleTableRecord. Covers the name; the rest is kept as the drawing has it; leaves out its meaning.
#pragma once

#include "dbsymboltablerecord.h"
#include "groupblock.h"

class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord)

public:
    AcDbDimStyleTableRecord() = default;
    AcDbDimStyleTableRecord(const AcDbDimStyleTableRecord&) = default;

    /// All groups beyond the name and the flags, in order.
    const hostkit::GroupBlock& groups() const { return m_groups; }
    /// eInvalidInput for reals and coordinates that are infinite or no numbers.
    Acad::ErrorStatus setGroups(hostkit::GroupBlock groups);

    AcRxObject* clone() const override { return new AcDbDimStyleTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Filing;
    hostkit::GroupBlock m_groups;
};
