#include "hatchstrokes.h"

#include "dbhatch.h"
#include "hatchcurves.h"

#include "geintrvl.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

using Polygon = HatchFigure::Polygon;

Polygon chordsOf(const HatchLoop& loop, double tolerance) {
    Polygon polygon;
    AcGeInterval interval;
    AcGePoint2dArray points;
    AcGeDoubleArray parameters;
    for (const auto& curve : curvesOf(loop)) {
        curve->getInterval(interval);
        curve->getSamplePoints(interval.lowerBound(), interval.upperBound(), tolerance, points, parameters);
        for (int place = 0; place < points.length(); ++place)
            if (polygon.empty() || !polygon.back().isEqualTo(points[place])) polygon.push_back(points[place]);
    }
    if (polygon.size() > 1 && polygon.front().isEqualTo(polygon.back())) polygon.pop_back();
    return polygon;
}

// About the origin, so that lines at that angle run along x.
AcGePoint2d turned(const AcGePoint2d& point, double cosine, double sine) {
    return {point.x * cosine + point.y * sine, point.y * cosine - point.x * sine};
}

double abscissaAt(const Polygon& polygon, std::size_t edge, double height) {
    const AcGePoint2d& from = polygon[edge];
    const AcGePoint2d& to = polygon[(edge + 1) % polygon.size()];
    if (to.y == from.y) return from.x;
    return from.x + (to.x - from.x) * ((height - from.y) / (to.y - from.y));
}

// The drawn parts of a line between two abscissae; the dashes begin at `origin`. False above the limit.
template <class Add>
bool dash(const std::vector<double>& dashes, double origin, double from, double to, std::size_t limit,
          Add&& add) {
    double period = 0.0;
    for (const double length : dashes) period += std::abs(length);
    if (!(period > 0.0)) {
        add(from, to);
        return true;
    }
    if ((to - from) / period * static_cast<double>(dashes.size()) > static_cast<double>(limit)) return false;
    double place = origin + std::floor((from - origin) / period) * period;
    while (place < to) {
        for (const double length : dashes) {
            const double end = place + std::abs(length);
            const bool meets = length == 0.0 ? place >= from && place <= to : end > from && place < to;
            if (length >= 0.0 && meets) add(std::max(place, from), std::min(end, to));
            place = end;
        }
    }
    return true;
}

} // namespace

HatchFigure::HatchFigure(const AcDbHatch& hatch, double tolerance)
    : m_style(hatch.hatchStyle()) {
    for (const HatchLoop& loop : hatch.loops()) {
        Polygon polygon = chordsOf(loop, tolerance);
        if (polygon.size() > 1) m_loops.push_back(std::move(polygon));
    }
    for (int index = 0; index < hatch.numPatternDefinitions(); ++index) {
        HatchPatternLine family;
        AcGeDoubleArray dashes;
        (void)hatch.getPatternDefinitionAt(index, family.angle, family.base.x, family.base.y, family.offset.x,
                                           family.offset.y, dashes);
        for (int place = 0; place < dashes.length(); ++place) family.dashes.push_back(dashes[place]);
        m_families.push_back(std::move(family));
    }
}

bool HatchFigure::isFilled(const std::vector<bool>& isInside) const {
    const auto depth = std::count(isInside.begin(), isInside.end(), true);
    if (m_style == AcDbHatch::kOuter) return depth == 1;
    return m_style == AcDbHatch::kIgnore ? depth > 0 : depth % 2 == 1;
}

std::vector<HatchFigure::Span> HatchFigure::spansAt(const std::vector<Polygon>& loops, double height) const {
    std::vector<Crossing> crossings;
    for (std::size_t loop = 0; loop < loops.size(); ++loop) {
        for (std::size_t edge = 0; edge < loops[loop].size(); ++edge) {
            const double from = loops[loop][edge].y;
            const double to = loops[loop][(edge + 1) % loops[loop].size()].y;
            if ((from <= height) != (to <= height))
                crossings.push_back({abscissaAt(loops[loop], edge, height), loop, edge});
        }
    }
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& left, const Crossing& right) { return left.at < right.at; });
    std::vector<Span> spans;
    std::vector<bool> isInside(loops.size(), false);
    bool wasFilled = false;
    for (const Crossing& crossing : crossings) {
        isInside[crossing.loop] = !isInside[crossing.loop];
        const bool isNowFilled = isFilled(isInside);
        if (isNowFilled && !wasFilled) spans.push_back({crossing, crossing});
        if (!isNowFilled && wasFilled) spans.back().to = crossing;
        wasFilled = isNowFilled;
    }
    return spans;
}

bool HatchFigure::addFamily(const HatchPatternLine& family, std::size_t limit,
                            std::vector<Stroke>& strokes) const {
    const double cosine = std::cos(family.angle);
    const double sine = std::sin(family.angle);
    std::vector<Polygon> loops = m_loops;
    double low = HUGE_VAL;
    double high = -HUGE_VAL;
    for (Polygon& loop : loops) {
        for (AcGePoint2d& point : loop) {
            point = turned(point, cosine, sine);
            low = std::min(low, point.y);
            high = std::max(high, point.y);
        }
    }
    const AcGePoint2d base = turned(family.base, cosine, sine);
    const AcGePoint2d offset = turned({family.offset.x, family.offset.y}, cosine, sine);
    const double step = std::abs(offset.y);
    if (!(step > 0.0) || !((high - low) / step < static_cast<double>(limit))) return false;
    const double first = std::ceil((low - base.y) / offset.y);
    const double last = std::floor((high - base.y) / offset.y);
    bool isWithin = true;
    for (double line = std::min(first, last); line <= std::max(first, last) + 0.5 && isWithin; ++line) {
        const double height = base.y + line * offset.y;
        const double origin = base.x + line * offset.x;
        for (const Span& span : spansAt(loops, height))
            isWithin = isWithin && dash(family.dashes, origin, span.from.at, span.to.at, limit,
                                        [&](double from, double to) {
                                            strokes.push_back({turned({from, height}, cosine, -sine),
                                                               turned({to, height}, cosine, -sine)});
                                        });
        isWithin = isWithin && strokes.size() <= limit;
    }
    return isWithin;
}

std::vector<HatchFigure::Stroke> HatchFigure::strokes(std::size_t limit) const {
    std::vector<Stroke> result;
    for (const HatchPatternLine& family : m_families)
        if (!addFamily(family, limit, result)) return {};
    return result;
}

std::vector<HatchFigure::Trapezoid> HatchFigure::trapezoids(std::size_t limit) const {
    std::vector<double> heights;
    for (const Polygon& loop : m_loops)
        for (const AcGePoint2d& point : loop) heights.push_back(point.y);
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    std::vector<Trapezoid> result;
    for (std::size_t place = 0; place + 1 < heights.size(); ++place) {
        const double bottom = heights[place];
        const double top = heights[place + 1];
        for (const Span& span : spansAt(m_loops, bottom + (top - bottom) / 2.0)) {
            const Polygon& left = m_loops[span.from.loop];
            const Polygon& right = m_loops[span.to.loop];
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
