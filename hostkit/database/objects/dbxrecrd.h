// Stand-in for the host's AcDbXrecord. Covers free group lists; leaves out translation of ids between drawings.
#pragma once

#include "dbobject.h"
#include "groupblock.h"

/// Free groups of an application.
class AcDbXrecord : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbXrecord)

public:
    AcDbXrecord() = default;
    AcDbXrecord(const AcDbXrecord&) = default;

    /// A list that belongs to the caller (acutRelRb); null for an empty record. Handles come as text.
    Acad::ErrorStatus rbChain(resbuf** list, AcDbDatabase* database = nullptr) const;
    /// Replaces the groups. eInvalidDxfCode for a code outside 1 to 369 (0, 5 and 105 have no place here),
    /// eInvalidResBuf for types that are no group codes and for reals and coordinates that are infinite or no
    /// numbers. The old ones stay on failure.
    Acad::ErrorStatus setFromRbChain(const resbuf& list, AcDbDatabase* database = nullptr);
    Acad::ErrorStatus appendRbChain(const resbuf& list, AcDbDatabase* database = nullptr);
    const hostkit::GroupBlock& groups() const { return m_groups; }
    /// eInvalidInput for reals and coordinates that are infinite or no numbers.
    Acad::ErrorStatus setGroups(hostkit::GroupBlock groups);

    AcDb::DuplicateRecordCloning mergeStyle() const {
        return static_cast<AcDb::DuplicateRecordCloning>(m_mergeStyle);
    }
    Acad::ErrorStatus setMergeStyle(AcDb::DuplicateRecordCloning style);

    AcRxObject* clone() const override { return new AcDbXrecord(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Filing;
    static Acad::ErrorStatus pack(const resbuf& list, hostkit::GroupBlock& groups);

    hostkit::GroupBlock m_groups;
    Adesk::Int16 m_mergeStyle = AcDb::kDrcIgnore;
};
