#include "picturesink.h"

#include "letterface.h"

#include <algorithm>

double estimatedWidth(const std::wstring& text) {
    return hostkit::lineWidth(text, hostkit::LetterFace::sans());
}

TextReach reachOf(const PlacedText& text) {
    constexpr double least = 1e-300;
    double wide = 0.0;
    if (text.fitLength > 0.0)
        wide = text.fitLength / std::max(text.along.length(), least);
    else
        for (const TextRun& run : text.runs) wide += estimatedWidth(run.text) * run.heightFactor;
    const double start = text.anchor == PlacedText::Anchor::start    ? 0.0
                         : text.anchor == PlacedText::Anchor::middle ? -wide / 2
                                                                     : -wide;
    return {start, start + wide};
}
