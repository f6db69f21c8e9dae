#include "attributetext.h"

#include "adsdef.h"
#include "dbaccess.h"
#include "fieldsetters.h"
#include "fieldtable.h"

#include <cwctype>

namespace hostkit {

namespace {

/// Not empty and without blanks.
bool isAttributeTag(const wchar_t* tag) {
    if (!tag || !*tag) return false;
    for (; *tag; ++tag)
        if (std::iswspace(static_cast<std::wint_t>(*tag))) return false;
    return true;
}

} // namespace

wchar_t* AttributeText::tag() const { return acutNewString(m_tag.c_str()); }

Acad::ErrorStatus AttributeText::setTag(const wchar_t* tag) {
    return isAttributeTag(tag) ? assignField(*this, m_tag, tag) : Acad::eInvalidInput;
}

Acad::ErrorStatus AttributeText::setInvisible(bool invisible) {
    return setFlag(*this, m_attributeFlags, kInvisible, invisible);
}

Acad::ErrorStatus AttributeText::setConstant(bool constant) {
    return setFlag(*this, m_attributeFlags, kConstant, constant);
}

Acad::ErrorStatus AttributeText::setVerifiable(bool verifiable) {
    return setFlag(*this, m_attributeFlags, kVerify, verifiable);
}

Acad::ErrorStatus AttributeText::setPreset(bool preset) {
    return setFlag(*this, m_attributeFlags, kPreset, preset);
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AttributeText::Filing {
    static constexpr short promptCode = 3;
    static constexpr short versionOrLockCode = 280;
    static constexpr GroupField<AttributeText> groups[] = {
        textField<&AttributeText::m_tag>(2),
        integerField<&AttributeText::m_attributeFlags>(70),
        integerField<&AttributeText::m_fieldLength>(73, 0),
        integerField<&AttributeText::m_verticalMode, AttributeText>(74, 0),
    };
};

// From 2010 on the code of the lock stands twice: the first, before the tag, is a version and always 0.
Acad::ErrorStatus AttributeText::readAttribute(AcDbDxfFiler* filer, const wchar_t* subclass,
                                               std::wstring* prompt) {
    const Acad::ErrorStatus status = AcDbText::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(subclass)) return status;
    m_tag.clear();
    DatabaseAccess::dropEmbedded(*this);
    const bool hasVersion = filer->dwgVersion() >= AcDb::kDHL_1024;
    return readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        if (isOfParagraph(group.code)) return readEmbedded(*this, group);
        if (prompt && group.code == Filing::promptCode) {
            *prompt = group.text;
            return true;
        }
        if (group.code != Filing::versionOrLockCode) return false;
        if (hasVersion && m_tag.empty()) return group.integer == 0;
        m_lockPosition = group.integer == 1;
        return group.integer == 0 || group.integer == 1;
    });
}

Acad::ErrorStatus AttributeText::writeAttribute(AcDbDxfFiler* filer, const wchar_t* subclass,
                                                const std::wstring* prompt) const {
    const Acad::ErrorStatus status = AcDbText::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(subclass);
    if (filer->dwgVersion() >= AcDb::kDHL_1024) {
        filer->markOptional();
        filer->writeInteger(Filing::versionOrLockCode, 0);
    }
    if (prompt) filer->writeText(Filing::promptCode, *prompt);
    writeFields(*filer, Filing::groups, *this);
    if (!m_lockPosition) filer->markDefault();
    filer->writeInteger(Filing::versionOrLockCode, m_lockPosition);
    writeEmbedded(*filer, *this);
    return filer->filerStatus();
}

} // namespace hostkit
