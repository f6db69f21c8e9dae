// Stand-in for the host's AcDbTextStyleTableRecord. Covers fonts, typefaces, size and slant; leaves out nothing callers ask for.
#pragma once

#include "dbsymboltablerecord.h"

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord)

public:
    AcDbTextStyleTableRecord() = default;
    AcDbTextStyleTableRecord(const AcDbTextStyleTableRecord&) = default;

    const std::wstring& fileName() const { return m_fileName; }
    const std::wstring& bigFontFileName() const { return m_bigFontFileName; }
    /// Copies from acutNewString for the caller.
    Acad::ErrorStatus fileName(wchar_t*& name) const;
    Acad::ErrorStatus bigFontFileName(wchar_t*& name) const;
    Acad::ErrorStatus setFileName(const wchar_t* name);
    Acad::ErrorStatus setBigFontFileName(const wchar_t* name);
    /// The typeface of a style that takes one in place of a font file: its name from acutNewString for the
    /// caller, the platform's character set, and pitch and family in one number. Drawings keep it in the
    /// extended data of "ACAD": a style without that has an empty name and zeros.
    Acad::ErrorStatus font(wchar_t*& typeface, Adesk::Boolean& bold, Adesk::Boolean& italic, int& charset,
                           int& pitchAndFamily) const;
    /// An empty name takes the typeface away. eInvalidInput for null and numbers beyond a byte; what setXData
    /// says.
    Acad::ErrorStatus setFont(const wchar_t* typeface, Adesk::Boolean bold, Adesk::Boolean italic,
                              int charset, int pitchAndFamily);
    /// 0: each text has its own size.
    double textSize() const { return m_textSize; }
    /// eInvalidInput below 0.
    Acad::ErrorStatus setTextSize(double size);
    double priorSize() const { return m_priorSize; }
    Acad::ErrorStatus setPriorSize(double size);
    double xScale() const { return m_xScale; }
    /// eInvalidInput unless above 0.
    Acad::ErrorStatus setXScale(double scale);
    double obliquingAngle() const { return m_obliquingAngle; }
    /// eInvalidInput at 85 degrees and above, either way.
    Acad::ErrorStatus setObliquingAngle(double angle);
    bool isShapeFile() const { return m_isShapeFile; }
    Acad::ErrorStatus setIsShapeFile(bool isShapeFile);
    bool isVertical() const { return m_isVertical; }
    Acad::ErrorStatus setIsVertical(bool isVertical);
    /// Bits 2: backward, 4: upside down.
    Adesk::UInt8 flagBits() const { return static_cast<Adesk::UInt8>(m_generationFlags); }
    Acad::ErrorStatus setFlagBits(Adesk::UInt8 bits);

    AcRxObject* clone() const override { return new AcDbTextStyleTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    bool allowsName(std::wstring_view name) const override { return m_isShapeFile || isValidName(name); }

private:
    struct Filing;
    bool m_isShapeFile = false;
    bool m_isVertical = false;
    Adesk::Int16 m_generationFlags = 0;
    std::wstring m_fileName;
    std::wstring m_bigFontFileName;
    double m_textSize = 0.0;
    double m_priorSize = 0.2;
    double m_xScale = 1.0;
    double m_obliquingAngle = 0.0;
};
