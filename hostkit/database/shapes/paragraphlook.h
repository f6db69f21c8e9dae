// How the letters of a paragraph look, and what its codes make of that.
#pragma once

#include "dbid.h"
#include "letterface.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hostkit {

struct MarkupPiece;

/// Null is the standing style.
const LetterFace& faceOfStyle(AcDbObjectId textStyle);

struct ParagraphLook {
    const LetterFace* face = nullptr;
    std::wstring font{}; ///< as a code names it; empty: the style's
    double height = 0.0; ///< of capitals, drawing units
    double widthFactor = 1.0;
    double oblique = 0.0;  ///< radians
    double tracking = 1.0; ///< of the advances
    /// Index, or red, green and blue in the lower three bytes; none: the paragraph's own colour.
    std::optional<int> colorIndex{};
    std::optional<std::uint32_t> rgb{};
    int verticalPlace = 0; ///< of what is lower than its line: 0 on the base line, 1 in the middle, 2 above
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isOverlined = false;
    bool isStruckOut = false;

    /// Of a text style, null being the standing one; a height that is none leaves nothing to be seen.
    static ParagraphLook ofStyle(AcDbObjectId textStyle, double height);

    /// Takes a form or a toggle. What is no number, or beyond all use, changes nothing: heights within
    /// 1/10000 and 10000 of the paragraph's, width factors and tracking within 0.01 and 100, slants below 85
    /// degrees.
    void take(const MarkupPiece& code, double paragraphHeight);

    double advanceScale() const { return height * widthFactor * tracking; }
    bool operator==(const ParagraphLook&) const = default;

private:
    void setHeight(std::wstring_view value, double paragraphHeight);
    void setFont(wchar_t code, std::wstring_view argument);
};

} // namespace hostkit
