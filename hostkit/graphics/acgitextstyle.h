// Stand-in for the host's AcGiTextStyle. Covers fonts, sizes, slants and turns; leaves out the style's record, which an entity reads it from.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

#include <string>

class AcGePoint2d;

/// How letters look that are drawn. Setters refuse nothing: who draws takes what cannot be shown as the
/// default.
class AcGiTextStyle {
public:
    AcGiTextStyle() = default;

    const wchar_t* fileName() const { return m_fileName.c_str(); }
    const wchar_t* bigFontFileName() const { return m_bigFontFileName.c_str(); }
    double textSize() const { return m_textSize; } ///< height of capitals
    double xScale() const { return m_xScale; }
    double obliquingAngle() const { return m_obliquingAngle; }   ///< radians
    double trackingPercent() const { return m_trackingPercent; } ///< factor of the advances, 1 is plain
    Adesk::Boolean isBackward() const { return m_isBackward; }
    Adesk::Boolean isUpsideDown() const { return m_isUpsideDown; }
    Adesk::Boolean isVertical() const { return m_isVertical; }
    Adesk::Boolean isUnderlined() const { return m_isUnderlined; }
    Adesk::Boolean isOverlined() const { return m_isOverlined; }
    Adesk::Boolean isStrikethrough() const { return m_isStrikethrough; }

    void setFileName(const wchar_t* name) { m_fileName = name ? name : L""; }
    void setBigFontFileName(const wchar_t* name) { m_bigFontFileName = name ? name : L""; }
    void setTextSize(double size) { m_textSize = size; }
    void setXScale(double scale) { m_xScale = scale; }
    void setObliquingAngle(double angle) { m_obliquingAngle = angle; }
    void setTrackingPercent(double factor) { m_trackingPercent = factor; }
    void setBackward(Adesk::Boolean isSo) { m_isBackward = isSo; }
    void setUpsideDown(Adesk::Boolean isSo) { m_isUpsideDown = isSo; }
    void setVertical(Adesk::Boolean isSo) { m_isVertical = isSo; }
    void setUnderlined(Adesk::Boolean isSo) { m_isUnderlined = isSo; }
    void setOverlined(Adesk::Boolean isSo) { m_isOverlined = isSo; }
    void setStrikethrough(Adesk::Boolean isSo) { m_isStrikethrough = isSo; }

    /// A face of the system instead of a font file. eInvalidInput for null.
    Acad::ErrorStatus setFont(const wchar_t* typeface, Adesk::Boolean bold, Adesk::Boolean italic,
                              int characterSet, int pitchAndFamily);
    /// The same; an empty face where a font file is used.
    void font(std::wstring& typeface, Adesk::Boolean& bold, Adesk::Boolean& italic, int& characterSet,
              int& pitchAndFamily) const;
    /// Width and height of the letters as the kit's tables of faces have them; `length` characters or all
    /// with -1.
    AcGePoint2d extents(const wchar_t* text, Adesk::Boolean penUp, int length, Adesk::Boolean raw) const;

private:
    std::wstring m_fileName;
    std::wstring m_bigFontFileName;
    std::wstring m_typeface;
    double m_textSize = 1.0;
    double m_xScale = 1.0;
    double m_obliquingAngle = 0.0;
    double m_trackingPercent = 1.0;
    int m_characterSet = 0;
    int m_pitchAndFamily = 0;
    bool m_isBold = false;
    bool m_isItalic = false;
    bool m_isBackward = false;
    bool m_isUpsideDown = false;
    bool m_isVertical = false;
    bool m_isUnderlined = false;
    bool m_isOverlined = false;
    bool m_isStrikethrough = false;
};
