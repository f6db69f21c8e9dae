#include "placedtext.h"

#include "gemat3d.h"
#include "letterface.h"

#include <algorithm>

namespace hostkit {

void PlacedText::transformBy(const AcGeMatrix3d& matrix) {
    const double length = along.length();
    origin.transformBy(matrix);
    along.transformBy(matrix);
    up.transformBy(matrix);
    if (fitLength > 0.0 && length > 0.0) fitLength *= along.length() / length;
}

TextReach reachOf(const PlacedText& text) {
    constexpr double least = 1e-300;
    double wide = 0.0;
    if (text.fitLength > 0.0)
        wide = text.fitLength / std::max(text.along.length(), least);
    else
        for (const TextRun& run : text.runs)
            wide += lineWidth(run.text, LetterFace::sans()) * run.heightFactor;
    const double start = text.anchor == PlacedText::Anchor::start    ? 0.0
                         : text.anchor == PlacedText::Anchor::middle ? -wide / 2
                                                                     : -wide;
    return {start, start + wide};
}

} // namespace hostkit
