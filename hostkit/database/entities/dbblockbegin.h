// Stand-in for the host's AcDbBlockBegin. Covers the record that opens a block in a drawing file; leaves out nothing.
#pragma once

#include "dbent.h"

/// Files the name, base point and comments of the block that owns it.
class AcDbBlockBegin : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbBlockBegin)

public:
    AcDbBlockBegin() = default;
    AcDbBlockBegin(const AcDbBlockBegin&) = default;
    AcRxObject* clone() const override { return new AcDbBlockBegin(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    struct Filing;
};
