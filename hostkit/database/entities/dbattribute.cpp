#include "dbattribute.h"

#include "adsdef.h"
#include "attributetag.h"
#include "dbaccess.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbAttribute, AcDbText, L"ATTRIB")

wchar_t* AcDbAttribute::tag() const { return acutNewString(m_tag.c_str()); }

Acad::ErrorStatus AcDbAttribute::setTag(const wchar_t* tag) {
    return hostkit::isAttributeTag(tag) ? hostkit::assignField(*this, m_tag, tag) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbAttribute::setInvisible(bool invisible) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributeInvisible, invisible);
}

Acad::ErrorStatus AcDbAttribute::setConstant(bool constant) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributeConstant, constant);
}

Acad::ErrorStatus AcDbAttribute::setVerifiable(bool verifiable) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributeVerify, verifiable);
}

Acad::ErrorStatus AcDbAttribute::setPreset(bool preset) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributePreset, preset);
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbAttribute::Filing {
    static constexpr short versionOrLockCode = 280;
    static constexpr GroupField<AcDbAttribute> groups[] = {
        textField<&AcDbAttribute::m_tag>(2),
        integerField<&AcDbAttribute::m_attributeFlags>(70),
        integerField<&AcDbAttribute::m_fieldLength>(73, 0),
        integerField<&AcDbAttribute::m_verticalMode, AcDbAttribute>(74, 0),
    };
};

// From 2010 on the code of the lock stands twice: the first, before the tag, is a version and always 0.
Acad::ErrorStatus AcDbAttribute::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbText::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbAttribute")) return status;
    m_tag.clear();
    DatabaseAccess::dropEmbedded(*this);
    const bool hasVersion = filer->dwgVersion() >= AcDb::kDHL_1024;
    return readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        if (isOfParagraph(group.code)) return readEmbedded(*this, group);
        if (group.code != Filing::versionOrLockCode) return false;
        if (hasVersion && m_tag.empty()) return group.integer == 0;
        m_lockPosition = group.integer == 1;
        return group.integer == 0 || group.integer == 1;
    });
}

Acad::ErrorStatus AcDbAttribute::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbText::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbAttribute");
    if (filer->dwgVersion() >= AcDb::kDHL_1024) {
        filer->markOptional();
        filer->writeInteger(Filing::versionOrLockCode, 0);
    }
    writeFields(*filer, Filing::groups, *this);
    if (!m_lockPosition) filer->markDefault();
    filer->writeInteger(Filing::versionOrLockCode, m_lockPosition);
    writeEmbedded(*filer, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbAttribute)
