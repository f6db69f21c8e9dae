#include "dbattdef.h"

#include "attributetag.h"
#include "fieldsetters.h"

#include "adsdef.h"

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
