#include "dbattdef.h"

#include "adsdef.h"
#include "attributetag.h"
#include "dbaccess.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbAttributeDefinition, AcDbText, L"ATTDEF")

wchar_t* AcDbAttributeDefinition::tag() const { return acutNewString(m_tag.c_str()); }

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const wchar_t* tag) {
    return hostkit::isAttributeTag(tag) ? hostkit::assignField(*this, m_tag, tag) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbAttributeDefinition::setInvisible(bool invisible) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributeInvisible, invisible);
}

Acad::ErrorStatus AcDbAttributeDefinition::setConstant(bool constant) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributeConstant, constant);
}

Acad::ErrorStatus AcDbAttributeDefinition::setVerifiable(bool verifiable) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributeVerify, verifiable);
}

Acad::ErrorStatus AcDbAttributeDefinition::setPreset(bool preset) {
    return hostkit::setFlag(*this, m_attributeFlags, hostkit::kAttributePreset, preset);
}

wchar_t* AcDbAttributeDefinition::prompt() const { return acutNewString(m_prompt.c_str()); }

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const wchar_t* prompt) {
    return prompt ? hostkit::assignField(*this, m_prompt, prompt) : Acad::eInvalidInput;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbAttributeDefinition::Filing {
    static constexpr short versionOrLockCode = 280;
    static constexpr GroupField<AcDbAttributeDefinition> groups[] = {
        textField<&AcDbAttributeDefinition::m_prompt>(3),
        textField<&AcDbAttributeDefinition::m_tag>(2),
        integerField<&AcDbAttributeDefinition::m_attributeFlags>(70),
        integerField<&AcDbAttributeDefinition::m_fieldLength>(73, 0),
        integerField<&AcDbAttributeDefinition::m_verticalMode, AcDbAttributeDefinition>(74, 0),
    };
};

// From 2010 on the code of the lock stands twice: the first, before the tag, is a version and always 0.
Acad::ErrorStatus AcDbAttributeDefinition::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbText::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbAttributeDefinition")) return status;
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

Acad::ErrorStatus AcDbAttributeDefinition::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbText::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbAttributeDefinition");
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

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbAttributeDefinition)
