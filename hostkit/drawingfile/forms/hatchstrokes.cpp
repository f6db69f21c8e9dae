#include "hatchstrokes.h"

#include "dbhatch.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

using Polygon = HatchFigure::Polygon;

double abscissaAt(const Polygon& polygon, std::size_t edge, double height) {
    const AcGePoint2d& from = polygon[edge];
    const AcGePoint2d& to = polygon[(edge + 1) % polygon.size()];
    if (to.y == from.y) return from.x;
    return from.x + (to.x - from.x) * ((height - from.y) / (to.y - from.y));
}

} // namespace

HatchFigure::HatchFigure(const AcDbHatch& hatch, double tolerance)
    : m_loops(HatchArea(hatch.loops(), AcDbHatch::kNormal, tolerance).polygons(tolerance))
    , m_area(hatch.filledArea(tolerance))
    , m_contours(m_area.polygons(tolerance))
    , m_families(hatch.patternDefinitions()) {}

std::vector<HatchFigure::Span> HatchFigure::spansAt(double height) const {
    std::vector<Crossing> crossings;
    for (std::size_t contour = 0; contour < m_contours.size(); ++contour) {
        const Polygon& polygon = m_contours[contour];
        for (std::size_t edge = 0; edge < polygon.size(); ++edge)
            if ((polygon[edge].y <= height) != (polygon[(edge + 1) % polygon.size()].y <= height))
                crossings.push_back({abscissaAt(polygon, edge, height), contour, edge});
    }
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& left, const Crossing& right) { return left.at < right.at; });
    std::vector<Span> spans;
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
        spans.push_back({crossings[i], crossings[i + 1]});
    return spans;
}

std::vector<HatchFigure::Stroke> HatchFigure::strokes(std::size_t limit) const {
    std::vector<Stroke> result;
    const Acad::ErrorStatus status = forEachStroke(m_area, m_families, limit, [&](const HatchStroke& stroke) {
        result.push_back(stroke);
        return true;
    });
    if (status != Acad::eOk) return {};
    return result;
}

std::vector<HatchFigure::Trapezoid> HatchFigure::trapezoids(std::size_t limit) const {
    std::vector<double> heights;
    for (const Polygon& loop : m_contours)
        for (const AcGePoint2d& point : loop) heights.push_back(point.y);
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    std::vector<Trapezoid> result;
    for (std::size_t place = 0; place + 1 < heights.size(); ++place) {
        const double bottom = heights[place];
        const double top = heights[place + 1];
        for (const Span& span : spansAt(bottom + (top - bottom) / 2.0)) {
            const Polygon& left = m_contours[span.from.contour];
            const Polygon& right = m_contours[span.to.contour];
            result.push_back({AcGePoint2d(abscissaAt(left, span.from.edge, bottom), bottom),
                              AcGePoint2d(abscissaAt(right, span.to.edge, bottom), bottom),
                              AcGePoint2d(abscissaAt(left, span.from.edge, top), top),
                              AcGePoint2d(abscissaAt(right, span.to.edge, top), top)});
        }
        if (result.size() > limit) return {};
    }
    return result;
}

} // namespace hostkit
