// Areas of contours with arcs by integration over lines along y: an oracle that shares nothing with the
// library.
#pragma once

#include "dbpolyline.h"
#include "gearc2d.h"
#include "gecint2d.h"
#include "gelnsg2d.h"
#include "gepnt2d.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

namespace scanlines {

/// A segment as it stands in a contour, in the world and seen along Z.
struct Segment {
    double x1, y1, x2, y2;
    double bulge; ///< the host's, seen from +Z
    double centerX, centerY, radius;

    bool isArc() const { return bulge != 0.0; }
    /// No point of the segment is farther from its start.
    double reach() const { return std::hypot(x2 - x1, y2 - y1) + 2 * radius; }
    /// Is a point of the circle, given from the centre, on the arc.
    bool spans(double x, double y) const {
        const double side = (x2 - x1) * (centerY + y - y1) - (y2 - y1) * (centerX + x - x1);
        return side * bulge < 0.0;
    }
};

using Contour = std::vector<Segment>;

inline Segment segmentOf(double x1, double y1, double x2, double y2, double bulge) {
    Segment segment{x1, y1, x2, y2, bulge, 0.0, 0.0, 0.0};
    if (bulge == 0.0) return segment;
    const double factor = (1.0 - bulge * bulge) / (4.0 * bulge);
    segment.centerX = (x1 + x2) / 2 - (y2 - y1) * factor;
    segment.centerY = (y1 + y2) / 2 + (x2 - x1) * factor;
    segment.radius = std::hypot(x1 - segment.centerX, y1 - segment.centerY);
    return segment;
}

/// Coordinates are taken less the origin, so that contours far out lose nothing here.
inline Contour contourOf(const AcDbPolyline& polyline, const AcGePoint2d& origin) {
    Contour contour;
    const unsigned int count = polyline.numVerts();
    for (unsigned int i = 0; i < count; ++i) {
        AcGePoint3d start;
        AcGePoint3d end;
        double bulge = 0.0;
        (void)polyline.getPointAt(i, start);
        (void)polyline.getPointAt((i + 1) % count, end);
        (void)polyline.getBulgeAt(i, bulge);
        if (polyline.normal().z < 0.0) bulge = -bulge;
        contour.push_back(
            segmentOf(start.x - origin.x, start.y - origin.y, end.x - origin.x, end.y - origin.y, bulge));
    }
    return contour;
}

/// Shoelace and circular segments, with the sign of the run.
inline double areaOf(const Contour& contour) {
    double twice = 0.0;
    for (const Segment& s : contour) {
        twice +=
            (s.x1 - contour[0].x1) * (s.y2 - contour[0].y1) - (s.x2 - contour[0].x1) * (s.y1 - contour[0].y1);
        if (!s.isArc()) continue;
        const double angle = 4 * std::atan(s.bulge);
        twice += s.radius * s.radius * (angle - std::sin(angle));
    }
    return twice / 2;
}

/// A crossing of a contour with the line at some x: its y, and whether the contour runs to the right there.
struct Crossing {
    double y;
    bool toRight;
};

inline std::vector<Crossing> crossingsAt(const Contour& contour, double x) {
    std::vector<Crossing> crossings;
    for (const Segment& s : contour) {
        if (!s.isArc()) {
            if ((s.x1 < x) == (s.x2 < x)) continue;
            crossings.push_back({s.y1 + (s.y2 - s.y1) * ((x - s.x1) / (s.x2 - s.x1)), s.x1 < s.x2});
            continue;
        }
        const double dx = x - s.centerX;
        if (std::abs(dx) >= s.radius) continue;
        const double dy = std::sqrt((s.radius - dx) * (s.radius + dx));
        for (const double y : {-dy, dy})
            if (s.spans(dx, y)) crossings.push_back({s.centerY + y, (y < 0.0) == (s.bulge > 0.0)});
    }
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& a, const Crossing& b) { return a.y < b.y; });
    return crossings;
}

/// How often a contour runs round a point of the line at x, counted against the clock.
inline int windingAt(const Contour& contour, double x, double y) {
    int winding = 0;
    for (const Crossing& crossing : crossingsAt(contour, x))
        if (crossing.y < y) winding += crossing.toRight ? 1 : -1;
    return winding;
}

using Intervals = std::vector<std::pair<double, double>>;

inline Intervals intervalsAt(const Contour& contour, double x) {
    const std::vector<Crossing> crossings = crossingsAt(contour, x);
    Intervals intervals;
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
        intervals.push_back({crossings[i].y, crossings[i + 1].y});
    return intervals;
}

inline Intervals unionOf(Intervals intervals) {
    std::sort(intervals.begin(), intervals.end());
    Intervals joined;
    for (const auto& [low, high] : intervals) {
        if (joined.empty() || low > joined.back().second)
            joined.push_back({low, high});
        else
            joined.back().second = std::max(joined.back().second, high);
    }
    return joined;
}

inline double lengthOf(const Intervals& intervals) {
    double sum = 0.0;
    for (const auto& [low, high] : intervals) sum += high - low;
    return sum;
}

/// Length of what both unions have in common.
inline double commonLength(const Intervals& a, const Intervals& b) {
    double sum = 0.0;
    for (const auto& [low1, high1] : a)
        for (const auto& [low2, high2] : b)
            sum += std::max(0.0, std::min(high1, high2) - std::max(low1, low2));
    return sum;
}

/// A slab and its openings, which may overlap each other and cross its edge.
struct Figure {
    Contour slab;
    std::vector<Contour> holes;

    Intervals holesAt(double x) const {
        Intervals all;
        for (const Contour& hole : holes)
            for (const auto& interval : intervalsAt(hole, x)) all.push_back(interval);
        return unionOf(all);
    }
    /// Length of the slab without its openings on the line at x.
    double freeLengthAt(double x) const {
        const Intervals slabIntervals = intervalsAt(slab, x);
        return lengthOf(slabIntervals) - commonLength(slabIntervals, holesAt(x));
    }
};

inline std::unique_ptr<AcGeCurve2d> curveOf(const Segment& s) {
    if (s.isArc())
        return std::make_unique<AcGeCircArc2d>(AcGePoint2d(s.x1, s.y1), AcGePoint2d(s.x2, s.y2), s.bulge);
    return std::make_unique<AcGeLineSeg2d>(AcGePoint2d(s.x1, s.y1), AcGePoint2d(s.x2, s.y2));
}

/// All x between which the free length is a smooth function. Where segments meet is left to the kit: an x
/// that it missed would cost accuracy only.
inline std::vector<double> breaksOf(const Figure& figure) {
    std::vector<Segment> all = figure.slab;
    for (const Contour& hole : figure.holes) all.insert(all.end(), hole.begin(), hole.end());
    std::vector<double> xs;
    for (const Segment& s : all) {
        xs.push_back(s.x1);
        if (s.isArc()) xs.insert(xs.end(), {s.centerX - s.radius, s.centerX + s.radius});
    }
    std::vector<std::unique_ptr<AcGeCurve2d>> curves;
    curves.reserve(all.size());
    for (const Segment& s : all) curves.push_back(curveOf(s));
    for (std::size_t i = 0; i < all.size(); ++i)
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            const double apart = std::hypot(all[i].x1 - all[j].x1, all[i].y1 - all[j].y1);
            if (apart > all[i].reach() + all[j].reach()) continue;
            const AcGeCurveCurveInt2d meetings(*curves[i], *curves[j]);
            for (int k = 0; k < meetings.numIntPoints(); ++k) xs.push_back(meetings.intPoint(k).x);
        }
    double low = figure.slab[0].x1;
    double high = low;
    for (const Segment& s : figure.slab) {
        low = std::min(low, s.x1 - 2 * s.radius);
        high = std::max(high, s.x1 + 2 * s.radius);
    }
    std::sort(xs.begin(), xs.end());
    const double least = 1e-13 * (high - low);
    std::vector<double> breaks;
    for (const double x : xs)
        if (x >= low && x <= high && (breaks.empty() || x > breaks.back() + least)) breaks.push_back(x);
    return breaks;
}

/// Integral of the free length, counted along a half turn from the one end to the other, so that square
/// roots at the ends are smooth. Gauss-Legendre, twelve points.
inline double freeAreaBetween(const Figure& figure, double from, double to) {
    constexpr std::array<double, 6> nodes = {0.1252334085114689, 0.3678314989981802, 0.5873179542866175,
                                             0.7699026741943047, 0.9041172563704749, 0.9815606342467193};
    constexpr std::array<double, 6> weights = {0.2491470458134028, 0.2334925365383548, 0.2031674267230659,
                                               0.1600783285433462, 0.1069393259953184, 0.0471753363865118};
    const double half = (to - from) / 2;
    const double middle = from + half;
    double area = 0.0;
    for (std::size_t n = 0; n < nodes.size(); ++n)
        for (const double node : {-nodes[n], nodes[n]}) {
            const double t = node * std::numbers::pi / 2;
            area += weights[n] * half * std::cos(t) * (std::numbers::pi / 2) *
                    figure.freeLengthAt(middle + half * std::sin(t));
        }
    return area;
}

/// Halves the interval until both halves agree with the whole; another square root may begin just beyond an
/// end.
inline double refinedArea(const Figure& figure, double from, double to, double whole, double allowed,
                          int depth) {
    const double middle = from + (to - from) / 2;
    const double left = freeAreaBetween(figure, from, middle);
    const double right = freeAreaBetween(figure, middle, to);
    if (depth == 0 || std::abs(left + right - whole) <= allowed) return left + right;
    return refinedArea(figure, from, middle, left, allowed / 2, depth - 1) +
           refinedArea(figure, middle, to, right, allowed / 2, depth - 1);
}

/// Area of the slab without its openings.
inline double freeArea(const Figure& figure) {
    const std::vector<double> breaks = breaksOf(figure);
    const double allowed = 1e-10 * std::abs(areaOf(figure.slab)) / static_cast<double>(breaks.size());
    double area = 0.0;
    for (std::size_t k = 0; k + 1 < breaks.size(); ++k) {
        const double whole = freeAreaBetween(figure, breaks[k], breaks[k + 1]);
        area += refinedArea(figure, breaks[k], breaks[k + 1], whole, allowed, 30);
    }
    return area;
}

} // namespace scanlines
