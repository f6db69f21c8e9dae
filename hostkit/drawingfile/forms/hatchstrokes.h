// Hatches as plain figures: the strokes of a pattern and the trapezoids of a fill; leaves out gradients,
// which are filled in one colour.
#pragma once

#include "hatchloop.h"

#include "gepnt2d.h"

#include <array>
#include <vector>

class AcDbHatch;

namespace hostkit {

/// Of a hatch, in the coordinates of its normal. Curved edges are taken as chords within `tolerance`.
///
/// What is filled follows from how many loops a point lies in: an odd number (normal style), just one
/// (outer), any (ignore).
class HatchFigure {
public:
    using Polygon = std::vector<AcGePoint2d>;
    struct Stroke {
        AcGePoint2d from;
        AcGePoint2d to;
    };
    /// Left and right at the bottom, left and right at the top: the order of a solid's corners.
    using Trapezoid = std::array<AcGePoint2d, 4>;

    HatchFigure(const AcDbHatch& hatch, double tolerance);

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
        std::size_t loop = 0;
        std::size_t edge = 0;
    };
    /// Two crossings between which is filled.
    struct Span {
        Crossing from;
        Crossing to;
    };
    std::vector<Span> spansAt(const std::vector<Polygon>& loops, double height) const;
    bool isFilled(const std::vector<bool>& isInside) const;
    bool addFamily(const HatchPatternLine& family, std::size_t limit, std::vector<Stroke>& strokes) const;

    std::vector<Polygon> m_loops;
    std::vector<HatchPatternLine> m_families;
    int m_style = 0;
};

} // namespace hostkit
