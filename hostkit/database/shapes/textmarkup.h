// Codes within texts: the characters that are seen, line by line, and the size that texts are reckoned with;
// leaves out heights, faces and colours within a text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

// Fonts are not read: sizes are reckoned by these, in text heights.
constexpr double kReckonedCharacterWidth = 0.6;
constexpr double kReckonedLinePitch = 5.0 / 3.0;

/// What is seen of one line of text; its codes are those of MarkupReader.
std::wstring visibleText(std::wstring_view text);

/// What is seen of a paragraph text, a line for each line end that its contents ask for. Of a stacked
/// fraction the upper part, the bar and the lower part are left, behind a digit with a blank between: 10 1/2.
std::vector<std::wstring> visibleLines(std::wstring_view contents);

/// Breaks a line at blanks so that none is longer than that many characters; a longer word stands alone. 0
/// breaks nothing.
std::vector<std::wstring> brokenAtBlanks(const std::wstring& line, std::size_t longest);

} // namespace hostkit
