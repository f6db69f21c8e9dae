// Faces of letters whose widths and heights stand in our own tables; leaves out all others, which are
// reckoned with as the nearest of these.
#pragma once

#include <string_view>

namespace hostkit {

/// One letter in the units of its face, from the base line. Bearings are what is empty of the advance on
/// either side.
struct LetterUnits {
    short advance;
    short left;
    short right;
    short top;
    short bottom;
};

/// Of the sans-serif face.
LetterUnits sansLetter(wchar_t letter);

/// The same in heights of capitals.
struct LetterSize {
    double advance;
    double left;
    double right;
    double top;
    double bottom;
};

class LetterFace {
public:
    /// The common sans-serif face.
    static const LetterFace& sans();
    /// The plain font of strokes, a grid of six units to the height; what is not known of it is as wide as
    /// most of its letters.
    static const LetterFace& strokes();
    /// What a text style is reckoned with: strokes for a font file of shapes or none, sans for all others.
    static const LetterFace& ofFile(std::wstring_view fontFile);

    LetterSize letter(wchar_t letter) const;
    /// The blank behind the last letter is part of the width of a line.
    bool countsLastBlank() const { return m_isOutline; }

private:
    LetterFace(LetterUnits (*units)(wchar_t), double capitalHeight, bool isOutline)
        : m_units(units)
        , m_unit(1.0 / capitalHeight)
        , m_isOutline(isOutline) {}

    LetterUnits (*m_units)(wchar_t);
    double m_unit;
    bool m_isOutline;
};

/// The width of a line of visible letters in heights of capitals: the advances, of strokes without the blank
/// behind the last one. Control characters count for nothing.
double lineWidth(std::wstring_view letters, const LetterFace& face);

} // namespace hostkit
