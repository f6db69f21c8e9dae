// Stand-in for the host's AcDbAttributeDefinition. Covers tag, prompt and kind; leaves out several lines, which stay in the drawing as they are.
#pragma once

#include "attributetext.h"

/// What an insertion of its block asks for; its text is the value where none is given. What is seen of the
/// definition itself is its tag.
class AcDbAttributeDefinition : public hostkit::AttributeText {
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition)

public:
    AcDbAttributeDefinition() = default;
    AcDbAttributeDefinition(const AcDbAttributeDefinition&) = default;

    const std::wstring& promptText() const { return m_prompt; }
    /// A copy from acutNewString for the caller.
    wchar_t* prompt() const;
    Acad::ErrorStatus setPrompt(const wchar_t* prompt);
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbAttributeDefinition(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    const std::wstring& shownText() const override { return tagName(); }

private:
    std::wstring m_prompt;
};
