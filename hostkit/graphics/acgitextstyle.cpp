#include "acgitextstyle.h"

#include "gepnt2d.h"
#include "letterface.h"
#include "textmarkup.h"

#include <algorithm>
#include <string_view>

Acad::ErrorStatus AcGiTextStyle::setFont(const wchar_t* typeface, Adesk::Boolean bold, Adesk::Boolean italic,
                                         int characterSet, int pitchAndFamily) {
    if (!typeface) return Acad::eInvalidInput;
    m_typeface = typeface;
    m_isBold = bold;
    m_isItalic = italic;
    m_characterSet = characterSet;
    m_pitchAndFamily = pitchAndFamily;
    return Acad::eOk;
}

void AcGiTextStyle::font(std::wstring& typeface, Adesk::Boolean& bold, Adesk::Boolean& italic,
                         int& characterSet, int& pitchAndFamily) const {
    typeface = m_typeface;
    bold = m_isBold;
    italic = m_isItalic;
    characterSet = m_characterSet;
    pitchAndFamily = m_pitchAndFamily;
}

AcGePoint2d AcGiTextStyle::extents(const wchar_t* text, Adesk::Boolean, int length,
                                   Adesk::Boolean raw) const {
    if (!text) return AcGePoint2d();
    const std::wstring_view whole(text);
    const std::wstring_view told =
        length < 0 ? whole : whole.substr(0, std::min(whole.size(), static_cast<std::size_t>(length)));
    const std::wstring letters = raw ? std::wstring(told) : hostkit::visibleText(told);
    const hostkit::LetterFace& face =
        m_typeface.empty() ? hostkit::LetterFace::ofFile(m_fileName) : hostkit::LetterFace::sans();
    return AcGePoint2d(hostkit::lineWidth(letters, face) * m_textSize * m_xScale * m_trackingPercent,
                       m_textSize);
}
