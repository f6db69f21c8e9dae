// Texts with a tag: all that attributes and their definitions have alike; leaves out the prompt.
#pragma once

#include "dbtext.h"

namespace hostkit {

/// A text that is known by its tag.
class AttributeText : public AcDbText {
public:
    const std::wstring& tagName() const { return m_tag; }
    /// A copy from acutNewString for the caller.
    wchar_t* tag() const;
    /// eInvalidInput for null, an empty tag and one with blanks.
    Acad::ErrorStatus setTag(const wchar_t* tag);
    bool isInvisible() const { return (m_attributeFlags & kInvisible) != 0; }
    bool isConstant() const { return (m_attributeFlags & kConstant) != 0; }
    bool isVerifiable() const { return (m_attributeFlags & kVerify) != 0; }
    bool isPreset() const { return (m_attributeFlags & kPreset) != 0; }
    Acad::ErrorStatus setInvisible(bool invisible);
    Acad::ErrorStatus setConstant(bool constant);
    Acad::ErrorStatus setVerifiable(bool verifiable);
    Acad::ErrorStatus setPreset(bool preset);
    Adesk::UInt16 fieldLength() const { return static_cast<Adesk::UInt16>(m_fieldLength); }
    bool lockPositionInBlock() const { return m_lockPosition; }

protected:
    AttributeText() = default;
    AttributeText(const AttributeText&) = default;
    AttributeText& operator=(const AttributeText&) = default;

    /// The fields in a file, in the subclass of that name, with the prompt of a definition.
    Acad::ErrorStatus readAttribute(AcDbDxfFiler* filer, const wchar_t* subclass,
                                    std::wstring* prompt = nullptr);
    Acad::ErrorStatus writeAttribute(AcDbDxfFiler* filer, const wchar_t* subclass,
                                     const std::wstring* prompt = nullptr) const;

private:
    /// Bits of group 70.
    enum Flag { kInvisible = 1, kConstant = 2, kVerify = 4, kPreset = 8 };
    struct Filing;
    Adesk::Int16 m_attributeFlags = 0;
    Adesk::Int16 m_fieldLength = 0;
    bool m_lockPosition = false;
    std::wstring m_tag;
};

} // namespace hostkit
