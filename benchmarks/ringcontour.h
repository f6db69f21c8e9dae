// Round contours that the benchmarks of the contour tools measure on.
#pragma once

#include "dbpolyline.h"

#include <cmath>
#include <memory>

/// A closed ring, every third side an arc of this bulge; `radiusAt(i)` is the distance of vertex i from the
/// centre.
template <typename RadiusAt>
std::unique_ptr<AcDbPolyline> ringOf(int count, double centerX, double bulge, const RadiusAt& radiusAt) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(count));
    for (int i = 0; i < count; ++i) {
        const double angle = AcGe::kTwoPi * i / count;
        const double radius = radiusAt(i);
        (void)polyline->addVertexAt(static_cast<unsigned int>(i),
                                    {centerX + radius * std::cos(angle), radius * std::sin(angle)},
                                    i % 3 ? 0.0 : bulge);
    }
    polyline->setClosed(Adesk::kTrue);
    return polyline;
}
