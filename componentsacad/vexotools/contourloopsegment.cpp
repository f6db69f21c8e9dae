#include "contourloopsegment.h"

#include <algorithm>

namespace vexo {

namespace {

/// Adds the points of the arc's circle farthest along the axes, as far as the arc runs over them.
void addArc(const LoopSegment& arc, PlaneBox& box) {
    const double chordX = arc.end.x - arc.start.x;
    const double chordY = arc.end.y - arc.start.y;
    const ArcCircle circle = circleOf(arc);
    // A point of the circle is on the arc when it lies on the arc's side of the chord.
    const auto add = [&](double x, double y) {
        const double side = chordX * (y - arc.start.y) - chordY * (x - arc.start.x);
        if (side * arc.start.bulge < 0.0) box.extend({x, x, y, y});
    };
    add(circle.x + circle.radius, circle.y);
    add(circle.x - circle.radius, circle.y);
    add(circle.x, circle.y + circle.radius);
    add(circle.x, circle.y - circle.radius);
}

} // namespace

PlaneBox LoopSegment::box(double margin) const {
    if (!isArc())
        return PlaneBox{std::min(start.x, end.x), std::max(start.x, end.x), std::min(start.y, end.y),
                        std::max(start.y, end.y)}
            .widened(margin);
    const double reach = 0.5 * chord() * std::max(1.0, std::abs(start.bulge)) + margin;
    const double x = 0.5 * (start.x + end.x);
    const double y = 0.5 * (start.y + end.y);
    return {x - reach, x + reach, y - reach, y + reach};
}

ArcCircle circleOf(const LoopSegment& arc) {
    const double bulge = arc.start.bulge;
    const double chordX = arc.end.x - arc.start.x;
    const double chordY = arc.end.y - arc.start.y;
    const double factor = (1.0 - bulge * bulge) / (4.0 * bulge);
    const double toX = chordX * 0.5 - chordY * factor;
    const double toY = chordY * 0.5 + chordX * factor;
    return {arc.start.x + toX, arc.start.y + toY, std::hypot(toX, toY)};
}

std::vector<PlaneSegment> planeSegmentsOf(const ContourLoop& loop) {
    std::vector<PlaneSegment> segments;
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        const LoopSegment segment(loop, i);
        const AcGePoint2d start(segment.start.x, segment.start.y);
        const AcGePoint2d end(segment.end.x, segment.end.y);
        const AcGeVector2d chord = end - start;
        const double bulge = segment.start.bulge;
        if (chord.length() == 0.0) continue;
        if (std::abs(bulge) <= 1.0) {
            segments.emplace_back(start, end, bulge);
            continue;
        }
        const AcGePoint2d middle = start + chord * 0.5 - chord.perpVector() * (0.5 * bulge);
        const double half = (std::sqrt(1.0 + bulge * bulge) - 1.0) / bulge;
        segments.emplace_back(start, middle, half);
        segments.emplace_back(middle, end, half);
    }
    return segments;
}

PlaneBox boxOf(const ContourLoop& loop) {
    PlaneBox box = BoxChain::emptyBox();
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        const LoopSegment segment(loop, i);
        box.extend({segment.start.x, segment.start.x, segment.start.y, segment.start.y});
        if (segment.isArc()) addArc(segment, box);
    }
    return box;
}

ContourLoop reversedLoop(const ContourLoop& loop) {
    ContourLoop result = reversed(loop);
    if (!result.vertices.empty())
        std::rotate(result.vertices.begin(), result.vertices.end() - 1, result.vertices.end());
    return result;
}

} // namespace vexo
