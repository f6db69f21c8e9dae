// Stand-in for the host's AcDbDimStyleTableRecord. Covers the name and all variables; leaves out annotation scales and sub-units.
#pragma once

#include "dbsymboltablerecord.h"
#include "dimensionvariabletable.h"

#include <bitset>

/// A dimension style: a value for each variable. A record of a drawing may leave values out; it then has the
/// imperial default (dimensionvariables.h).
class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord)

public:
    AcDbDimStyleTableRecord() = default;
    AcDbDimStyleTableRecord(const AcDbDimStyleTableRecord&) = default;

    HOSTKIT_DIMENSION_VARIABLES(HOSTKIT_DECLARE_DIMENSION_VARIABLE)

    // Arrow blocks by name, with or without the underscore of the standing ones. A standing block that the
    // style's drawing (a style of none: the host's working one) lacks is made there. An empty name or "." is
    // the filled closed arrow. eKeyNotFound: no such block; eNoDatabase.
    Acad::ErrorStatus setDimblk(const wchar_t* name);
    Acad::ErrorStatus setDimblk1(const wchar_t* name);
    Acad::ErrorStatus setDimblk2(const wchar_t* name);
    Acad::ErrorStatus setDimldrblk(const wchar_t* name);

    /// They as a style of no drawing, which belongs to the caller.
    Acad::ErrorStatus getDimstyleData(AcDbDimStyleTableRecord*& record) const;
    /// The variables become those of the other record, as AcDbDatabase::setDimstyleData takes them.
    Acad::ErrorStatus setDimstyleData(const AcDbDimStyleTableRecord* record);
    Acad::ErrorStatus setDimstyleData(AcDbObjectId record);

    /// All of them at once.
    hostkit::DimensionVariables variables() const;
    /// The same unchecked, as values of a drawing come; for a record of no drawing.
    void putVariables(const hostkit::DimensionVariables& variables) { m_variables = variables; }
    /// For who reads drawings, when their blocks are there: arrows that were read by name (bindNamedBlocks).
    void bindNamedBlocks();

    AcRxObject* clone() const override { return new AcDbDimStyleTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Filing;
    hostkit::DimensionVariables m_variables;
    std::bitset<hostkit::variableLimit> m_given; ///< by place: what the record that was read has
};
