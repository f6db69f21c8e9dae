#pragma once

#include "picturesink.h"

#include <string_view>
#include <vector>

class AcDbAttributeDefinition;
class AcDbMText;
class AcDbText;

/// The text as one line where it stands, in world coordinates; without runs for an empty one. The face is
/// that of its style, as far as a browser may have it.
PlacedText placedText(const AcDbText& text, std::uint32_t rgb);
/// The same with another wording: the tag of an attribute definition, say.
PlacedText placedText(const AcDbText& text, const std::wstring& wording, std::uint32_t rgb);

/// A text of several lines where it stands.
struct PlacedParagraph {
    struct Bar {
        AcGePoint3d from;
        AcGePoint3d to;
        std::uint32_t rgb;
    };
    std::vector<PlacedText> texts;
    std::vector<Bar> bars; ///< of stacked fractions
};

/// Lines as AcDbMText::layout() has them. A line of one width factor and slant without a stack is one text at
/// what it is aligned by, so that another face leaves it in its place; the parts of others fill the widths
/// that the layout gives them.
PlacedParagraph placedParagraph(const AcDbMText& text, std::uint32_t rgb);

/// The runs of the visible letters of one line; `rgb` and `family` where nothing else is said.
std::vector<TextRun> runsOfText(std::wstring_view text, std::uint32_t rgb, const std::wstring& family);
