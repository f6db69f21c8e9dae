// Stand-in for the host's symbol table record. Covers the name and its rules; leaves out dependence on external drawings.
#pragma once

#include "dbobject.h"

#include <string>
#include <string_view>

/// A named record of a table. Names: 1 to 255 characters, none of < > / \ " : ; ? * | , = ` and none below
/// the space; a leading * only where the kind of record has one.
class AcDbSymbolTableRecord : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)

public:
    AcDbSymbolTableRecord() = default;
    AcDbSymbolTableRecord(const AcDbSymbolTableRecord&) = default;

    /// A copy from acutNewString for the caller; eInvalidKey for a record without a name.
    Acad::ErrorStatus getName(wchar_t*& name) const;
    /// The name, good until it changes.
    Acad::ErrorStatus getName(const wchar_t*& name) const;
    const std::wstring& name() const { return m_name; }
    /// eInvalidSymbolTableName, or eDuplicateKey when another record of the table has it; eInvalidInput for
    /// the records that files know by their names: the layer 0, the spaces, the linetypes ByBlock, ByLayer
    /// and Continuous.
    Acad::ErrorStatus setName(const wchar_t* name);
    bool isDependent() const { return m_name.find(L'|') != std::wstring::npos; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    static bool isValidName(std::wstring_view name);

protected:
    /// Beyond isValidName, what this kind of record allows; for the names of unnamed and standing records.
    virtual bool allowsName(std::wstring_view name) const { return isValidName(name); }
    /// A record of a table is found by the name that it gets.
    AcDbSymbolTableRecord& operator=(const AcDbSymbolTableRecord& other);
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

    std::wstring m_name;
    Adesk::Int16 m_dxfFlags = 0; ///< group 70 as read; bits that the class has fields for follow those

private:
    friend class hostkit::DatabaseAccess;
    friend class AcDbSymbolTable;
};
