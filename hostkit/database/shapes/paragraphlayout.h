// Paragraphs laid out: their lines with the pieces of each, by the widths of letters that stand in our
// tables.
#pragma once

#include "dbid.h"
#include "paragraphlook.h"

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// Letters of one look, or a line of a stack.
struct ParagraphPiece {
    enum class Kind {
        letters,
        bar,  ///< from (x, rise) on, `width` along
        slash ///< from (x, rise) on, `width` along and the look's height up, of both parts together
    };
    enum class StackRole { none, upper, divider, lower };
    Kind kind = Kind::letters;
    StackRole role = StackRole::none;
    ParagraphLook look;
    std::wstring text{};
    double x = 0.0;    ///< of the start of its first letter
    double rise = 0.0; ///< of its base line above that of its line
    double width = 0.0;
    double fullHeight = 0.0; ///< of the letters, or of the stack that it is a part of

    bool isStacked() const { return role != StackRole::none; }
};

struct ParagraphLine {
    std::vector<ParagraphPiece> pieces{};
    double base = 0.0; ///< of the base line, from the box's top on: below 0
    /// What is seen: the edges along the line, and above and below its base line.
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
    /// The letter that asks for the alignment, l, c or r; others are as 0: the paragraph's own.
    wchar_t alignment = 0;
    int column = 0; ///< it begins at the left, is centred, or ends at the right: 0, 1, 2

    bool isBlank() const { return !(right > left); }
    /// What it is aligned by: its left edge, its middle or its right edge.
    double anchor() const { return (left * (2 - column) + right * column) / 2.0; }
    /// What is seen of it, without blanks around; of a stack the upper part, the bar and the lower part,
    /// behind a digit with a blank between: 10 1/2.
    std::wstring text() const;
};

/// What a paragraph is laid out into.
struct ParagraphFrame {
    AcDbObjectId textStyle{}; ///< face, width factor and oblique angle; null is the standing one
    double height = 1.0;
    double width = 0.0; ///< lines are broken at blanks to be no wider; a wider word stands alone. 0: nowhere
    double lineSpacingFactor = 1.0;
    bool isSpacingExact = false; ///< lines with larger letters get no more room
    int column = 0;              ///< lines begin at the left, are centred, or end at the right: 0, 1, 2
};

/// Along the line places count from the point that the column hangs from, up and down from the top of the box
/// around all that is seen; a letter counts as a capital at least. Each line is placed by what is seen of it,
/// one with an alignment of its own within the frame's width. The first base line is the height of a capital
/// below the top, or more where something stands out above; between a base line and the top of the next line
/// there are 2/3 of its height at factor 1.
struct ParagraphLayout {
    std::vector<ParagraphLine> lines{};
    double left = 0.0;
    double right = 0.0;
    double height = 0.0; ///< 0: nothing is seen

    double width() const { return right - left; }
};

/// By the codes of MarkupReader. A stack takes the height that holds where it stands; \A says where it stands
/// beside larger letters.
ParagraphLayout laidOut(std::wstring_view contents, const ParagraphFrame& frame);

/// Width and height of what is seen, from the left edge of the first letter to the right edge of the last
/// one, from the lowest tail to the highest top; letters count as capitals at least. Drawing units.
struct InkSize {
    double width = 0.0;
    double height = 0.0;
};

/// Of a paragraph that is broken at its line ends alone. Stacks count at their height. `textStyle` gives
/// face, width factor and oblique angle; null is the standing one. Zero where nothing is seen.
InkSize paragraphInk(std::wstring_view contents, double height, AcDbObjectId textStyle);

} // namespace hostkit
