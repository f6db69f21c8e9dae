// Stand-in for the host's AcDbDictionaryWithDefault. Covers the entry that stands for missing ones; leaves out nothing.
#pragma once

#include "dbdictionary.h"

class AcDbDictionaryWithDefault : public AcDbDictionary {
    ACRX_DECLARE_MEMBERS(AcDbDictionaryWithDefault)

public:
    AcDbDictionaryWithDefault() = default;

    AcDbObjectId defaultId() const { return m_defaultId; }
    Acad::ErrorStatus setDefaultId(AcDbObjectId id);
    /// The entry, or the default one for a name that is missing; eKeyNotFound when there is no default
    /// either.
    Acad::ErrorStatus getAtOrDefault(const wchar_t* name, AcDbObjectId& id) const;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Filing;
    AcDbObjectId m_defaultId;
};
