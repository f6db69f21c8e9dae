// Font metrics: widths and heights of one sans-serif face in any size; leaves out other faces and kerning.
#pragma once

#include <string_view>

namespace hostkit {

/// A size of the one face. Every character's width comes from a table of classes of characters (slim, thin,
/// narrow, ... wide), our own data: rounded widths as they are common among sans-serif faces, on the wide
/// side, so that a text measured here fits where a viewer has a face of its own.
struct FontFace {
    int em = 11; ///< pixels
    bool isBold = false;
    bool isUnderlined = false;

    /// The size that a font's height asks for: an em below 0, the height of a line above it (the largest em
    /// that fits), the default's for 0. From 1 up to a million.
    static int emOfHeight(int height);
    int ascent() const { return em - em / 10; }
    int descent() const { return em / 5 + 1; }
    /// Of a line: ascent and descent.
    int height() const { return ascent() + descent(); }
};

/// In em. Accented letters are as wide as their base; combining marks and control characters have no width;
/// ideographs are one em.
double characterWidth(wchar_t character);
/// To the next character in the face, rounded to whole pixels.
int characterAdvance(const FontFace& face, wchar_t character);
/// In whole pixels, rounded up; a line end or a tab within counts nothing.
int textWidth(const FontFace& face, std::wstring_view text);
/// How many of the first characters fit into that many pixels.
std::size_t fittingLength(const FontFace& face, std::wstring_view text, int width);

} // namespace hostkit
