// Texts as letters in their places.
#pragma once

#include "placedtext.h"

#include <optional>
#include <string_view>
#include <vector>

class AcDbMText;
class AcDbObjectId;
class AcDbText;
class AcGiTextStyle;

namespace hostkit {

/// The text as one line where it stands, in world coordinates; without runs for an empty one. The face is
/// that of its style, as far as a browser may have it.
PlacedText placedText(const AcDbText& text);
/// The same with another wording: the tag of an attribute definition, say.
PlacedText placedText(const AcDbText& text, const std::wstring& wording);

/// A text of several lines where it stands.
struct PlacedParagraph {
    struct Bar {
        AcGePoint3d from;
        AcGePoint3d to;
        std::uint32_t rgb;
        bool hasOwnColor; ///< else that of the text
    };
    /// What hides what was drawn before, from corner to corner; none: empty.
    std::vector<AcGePoint3d> ground;
    std::optional<std::uint32_t> groundRgb; ///< none: the colour of the text
    std::vector<PlacedText> texts;
    std::vector<Bar> bars; ///< of stacked fractions
};

/// Lines as AcDbMText::layout() has them. A line of one width factor and slant without a stack is one text at
/// what it is aligned by, so that another face leaves it in its place; the parts of others fill the widths
/// that the layout gives them. The drawing's background is the white of paper.
PlacedParagraph placedParagraph(const AcDbMText& text);

/// The runs of the visible letters of one line; `family` where nothing else is said.
std::vector<TextRun> runsOfText(std::wstring_view text, const std::wstring& family);

/// Face, weight and lines of a draw style, besides what the run has already.
void takeForm(TextRun& run, const AcGiTextStyle& style);
/// The other way round: one run in the style of its text, its height that of the run.
AcGiTextStyle styleOf(const TextRun& run, AcDbObjectId textStyle, double height, double widthFactor,
                      double oblique);

} // namespace hostkit
