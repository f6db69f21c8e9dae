#include "picturesink.h"

#include "letterface.h"

#include <algorithm>

double estimatedWidth(const std::wstring& text) {
    return hostkit::lineWidth(text, hostkit::LetterFace::sans());
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
