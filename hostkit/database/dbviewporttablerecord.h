// Stand-in for the host's AcDbViewportTableRecord. Covers the name; the rest is kept as the drawing has it; leaves out its meaning.
#pragma once

#include "dbsymboltablerecord.h"
#include "groupblock.h"

class AcDbViewportTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord)

public:
    AcDbViewportTableRecord() = default;
    AcDbViewportTableRecord(const AcDbViewportTableRecord&) = default;

    /// All groups beyond the name and the flags, in order.
    const hostkit::GroupBlock& groups() const { return m_groups; }
    Acad::ErrorStatus setGroups(hostkit::GroupBlock groups);

    AcRxObject* clone() const override { return new AcDbViewportTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool allowsName(std::wstring_view name) const override;

private:
    struct Filing;
    hostkit::GroupBlock m_groups;
};
