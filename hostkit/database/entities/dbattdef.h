// Stand-in for the host's AcDbAttributeDefinition. Covers tag, prompt and kind; leaves out several lines, which stay in the drawing as they are.
#pragma once

#include "dbtext.h"

/// What an insertion of its block asks for; its text is the value where none is given. What is seen of the
/// definition itself is its tag.
class AcDbAttributeDefinition : public AcDbText {
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition)

public:
    AcDbAttributeDefinition() = default;
    AcDbAttributeDefinition(const AcDbAttributeDefinition&) = default;

    const std::wstring& tagName() const { return m_tag; }
    /// A copy from acutNewString for the caller.
    wchar_t* tag() const;
    /// eInvalidInput for null, an empty tag and one with blanks.
    Acad::ErrorStatus setTag(const wchar_t* tag);
    bool isInvisible() const { return (m_attributeFlags & 1) != 0; }
    bool isConstant() const { return (m_attributeFlags & 2) != 0; }
    bool isVerifiable() const { return (m_attributeFlags & 4) != 0; }
    bool isPreset() const { return (m_attributeFlags & 8) != 0; }
    Acad::ErrorStatus setInvisible(bool invisible);
    Acad::ErrorStatus setConstant(bool constant);
    Acad::ErrorStatus setVerifiable(bool verifiable);
    Acad::ErrorStatus setPreset(bool preset);
    Adesk::UInt16 fieldLength() const { return static_cast<Adesk::UInt16>(m_fieldLength); }
    bool lockPositionInBlock() const { return m_lockPosition; }
    const std::wstring& promptText() const { return m_prompt; }
    wchar_t* prompt() const;
    Acad::ErrorStatus setPrompt(const wchar_t* prompt);
    AcRxObject* clone() const override { return new AcDbAttributeDefinition(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    const std::wstring& shownText() const override { return m_tag; }

private:
    struct Filing;
    Adesk::Int16 m_attributeFlags = 0;
    Adesk::Int16 m_fieldLength = 0;
    bool m_lockPosition = false;
    std::wstring m_tag;
    std::wstring m_prompt;
};
