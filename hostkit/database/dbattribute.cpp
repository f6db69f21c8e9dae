#include "dbattribute.h"

#include "attributetag.h"
#include "fieldsetters.h"

#include "adsdef.h"

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
