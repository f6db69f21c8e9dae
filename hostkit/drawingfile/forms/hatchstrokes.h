// Hatches as plain figures: the strokes of a pattern and the trapezoids of a fill; leaves out gradients,
// which are filled in one colour.
#pragma once

#include "hatchlines.h"

#include "gepnt2d.h"

#include <array>
#include <vector>

class AcDbHatch;

namespace hostkit {

/// Of a hatch, in the coordinates of its normal. Splines are taken as chords within `tolerance`, and arcs too
/// but for strokes. What is filled is HatchArea's to say.
class HatchFigure {
public:
    using Polygon = std::vector<AcGePoint2d>;
    using Stroke = HatchStroke;
    /// Left and right at the bottom, left and right at the top: the order of a solid's corners.
    using Trapezoid = std::array<AcGePoint2d, 4>;

    HatchFigure(const AcDbHatch& hatch, double tolerance);

    /// All loops, whatever the style.
    const std::vector<Polygon>& loops() const { return m_loops; }
    /// The dashes of all families of the pattern; a dot is a stroke without length. Empty where there would
    /// be more than `limit`, and for a pattern without lines.
    std::vector<Stroke> strokes(std::size_t limit) const;
    /// The fill, cut along x at each corner. Empty where there would be more than `limit`. Edges that cross
    /// between two corners leave slivers.
    std::vector<Trapezoid> trapezoids(std::size_t limit) const;

private:
    struct Crossing {
        double at = 0.0;
        std::size_t contour = 0;
        std::size_t edge = 0;
    };
    /// Two crossings between which is filled.
    struct Span {
        Crossing from;
        Crossing to;
    };
    std::vector<Span> spansAt(double height) const;

    std::vector<Polygon> m_loops;
    HatchArea m_area;
    std::vector<Polygon> m_contours; ///< of the area
    std::vector<HatchPatternLine> m_families;
};

} // namespace hostkit
