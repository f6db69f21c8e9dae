#include "dbattdef.h"

#include "adsdef.h"
#include "assignfield.h"
#include "fielditems.h"

HOSTKIT_KIT_CLASS(AcDbAttributeDefinition, AcDbText, L"ATTDEF")

wchar_t* AcDbAttributeDefinition::prompt() const { return acutNewString(m_prompt.c_str()); }

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const wchar_t* prompt) {
    return prompt ? hostkit::assignField(*this, m_prompt, prompt) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfInFields(AcDbDxfFiler* filer) {
    return readAttribute(filer, L"AcDbAttributeDefinition", &m_prompt);
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeAttribute(filer, L"AcDbAttributeDefinition", &m_prompt);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbAttributeDefinition)
