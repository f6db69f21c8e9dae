#include "picturesink.h"

#include "consoletext.h"

#include <algorithm>

#include <string_view>

namespace {

// Advance widths in thousandths of the type size for the characters from blank to tilde, of the common
// sans-serif faces.
constexpr short advances[] = {
    278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278, //
    556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, //
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778, //
    667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556, //
    333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556, //
    556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};
// Capitals of these faces are so high for a type size of 1.
constexpr double capitalHeight = 0.72;

} // namespace

double estimatedWidth(const std::wstring& text) {
    double thousandths = 0.0;
    for (const wchar_t character : text) {
        if (character >= L' ' && character <= L'~')
            thousandths += advances[character - L' '];
        else
            thousandths += 556.0 * static_cast<double>(columnsOf(std::wstring_view(&character, 1)));
    }
    return thousandths / 1000.0 / capitalHeight;
}

double estimatedWidth(const std::vector<TextRun>& runs) {
    double width = 0.0;
    for (const TextRun& run : runs) width += estimatedWidth(run.text) * run.heightFactor;
    return width;
}

TextReach reachOf(const PlacedText& text) {
    constexpr double least = 1e-300;
    const double wide = text.fitLength > 0.0 ? text.fitLength / std::max(text.along.length(), least)
                                             : estimatedWidth(text.runs);
    const double start = text.anchor == PlacedText::Anchor::start    ? 0.0
                         : text.anchor == PlacedText::Anchor::middle ? -wide / 2
                                                                     : -wide;
    return {start, start + wide};
}
