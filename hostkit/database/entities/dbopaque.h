// Stand-in for the host's records of kinds that have no class here. Covers keeping them whole; leaves out their meaning.
#pragma once

#include "dbent.h"
#include "subentitylist.h"

#include <string>

/// An object that only its record in the source bytes describes. It can be looked at, erased and owned; its
/// fields cannot be changed.
class AcDbOpaqueObject : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbOpaqueObject)

public:
    AcDbOpaqueObject() = default;
    explicit AcDbOpaqueObject(std::wstring dxfName)
        : m_dxfName(std::move(dxfName)) {}
    const wchar_t* dxfName() const override { return m_dxfName.c_str(); }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    std::wstring m_dxfName;
};

/// As above for entities: the common properties are known and can be changed, the geometry is not. Vertices
/// and the like that its record owns are parts of it. Kinds whose records are known draw themselves by them
/// (recordpictures.h), others draw nothing.
class AcDbOpaqueEntity : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbOpaqueEntity)

public:
    AcDbOpaqueEntity() = default;
    explicit AcDbOpaqueEntity(std::wstring dxfName)
        : m_dxfName(std::move(dxfName)) {}
    const wchar_t* dxfName() const override { return m_dxfName.c_str(); }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    const hostkit::SubentityList& parts() const { return m_parts; }

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    hostkit::SubentityList* subentities() override { return &m_parts; }
    std::wstring m_dxfName;
    hostkit::SubentityList m_parts;
};
