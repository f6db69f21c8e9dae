#pragma once

#include "picturesink.h"

#include <vector>

class AcDbAttributeDefinition;
class AcDbMText;
class AcDbText;

/// The text as one line where it stands, in world coordinates; without runs for an empty one. The face is
/// that of its style, as far as a browser may have it.
PlacedText placedText(const AcDbText& text, std::uint32_t rgb);
/// The same with another wording: the tag of an attribute definition, say.
PlacedText placedText(const AcDbText& text, const std::wstring& wording, std::uint32_t rgb);

/// The lines of a text of several lines where they stand. Lines are broken at the box's width by estimated
/// widths.
std::vector<PlacedText> placedLines(const AcDbMText& text, std::uint32_t rgb);
