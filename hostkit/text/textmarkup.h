// Codes within texts: the characters that are seen, line by line; leaves out heights, faces and colours.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// What is seen of one line of text; its codes are those of MarkupReader.
std::wstring visibleText(std::wstring_view text);

/// What is seen of a paragraph text, a line for each line end that its contents ask for. Of a stacked
/// fraction the upper part, the bar and the lower part are left, behind a digit with a blank between: 10 1/2.
std::vector<std::wstring> visibleLines(std::wstring_view contents);

} // namespace hostkit
