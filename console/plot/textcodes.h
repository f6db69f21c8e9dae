#pragma once

#include "picturesink.h"

#include <optional>
#include <string_view>
#include <vector>

/// How a whole text is drawn where its codes say nothing else.
struct TextDefaults {
    std::uint32_t rgb = 0;
    double height = 1.0; ///< drawing units; a paragraph's codes give heights in them
    bool isBold = false;
    bool isItalic = false;
    std::wstring family{};
};

/// The runs of a single-line text: %%c %%d %%p are the diameter, degree and plus-minus signs, %%u, %%o and
/// %%k switch a line below, above and through, %%nnn is a character by its number, %%% a per cent sign. A
/// code that is none stays as it is.
std::vector<TextRun> runsOfText(std::wstring_view text, const TextDefaults& defaults);

/// One paragraph of a text of several lines, before it is broken into lines.
struct Paragraph {
    std::vector<TextRun> runs;
    std::optional<PlacedText::Anchor> alignment; ///< where the paragraph has one of its own
};

/// The paragraphs of a text of several lines, with the codes behind backslashes taken out: line breaks,
/// height, colour, face, bold and italic, lines below, above and through, stacked fractions (as one line,
/// raised and lowered), groups in braces. Codes for spacing, slant, tracking and columns are taken out and
/// change nothing.
std::vector<Paragraph> paragraphsOfText(std::wstring_view text, const TextDefaults& defaults);

/// Breaks a paragraph at blanks so that no line is wider than `width` heights of capitals, by estimated
/// widths; a word that is wider stands alone. A width of 0 breaks nothing.
std::vector<std::vector<TextRun>> brokenLines(const Paragraph& paragraph, double width);

/// The text alone, for lists.
std::wstring plainText(const std::vector<TextRun>& runs);
