#include "contourcleanmerge.h"

#include "contourloopsegment.h"
#include "vexogeometrytools_internal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vexo {

namespace {

/// What is told apart by less than this many tolerances of the areas is unclear.
constexpr double kMarginTolerances = 100.0;
/// The least sine of the angle between segments that clearly cannot run together.
constexpr double kClearSine = 1e-3;

double apart(const ContourVertex& a, const ContourVertex& b) { return std::hypot(b.x - a.x, b.y - a.y); }

/// 1: one segment, run in opposite senses; 0: two; -1: close to being one.
int areOne(const LoopSegment& a, const LoopSegment& b, double tolerance) {
    const double ends = std::max(apart(a.start, b.end), apart(a.end, b.start));
    if (ends > kMarginTolerances * tolerance) return 0;
    const double heights = 0.5 * std::abs(a.start.bulge + b.start.bulge) * a.chord();
    if (heights > kMarginTolerances * tolerance) return 0;
    return ends <= 0.5 * tolerance && heights <= 0.5 * tolerance ? 1 : -1;
}

bool mayLinesRunTogether(const LoopSegment& a, const LoopSegment& b, double margin) {
    const double length = a.chord();
    const double other = b.chord();
    if (!(length > margin && other > margin)) return true;
    const double ux = (a.end.x - a.start.x) / length;
    const double uy = (a.end.y - a.start.y) / length;
    const double vx = b.end.x - b.start.x;
    const double vy = b.end.y - b.start.y;
    if (std::abs(ux * vy - uy * vx) > kClearSine * other) return false;
    const double startOff = ux * (b.start.y - a.start.y) - uy * (b.start.x - a.start.x);
    const double endOff = ux * (b.end.y - a.start.y) - uy * (b.end.x - a.start.x);
    if (std::min(std::abs(startOff), std::abs(endOff)) > margin && (startOff > 0.0) == (endOff > 0.0))
        return false;
    const double startAt = ux * (b.start.x - a.start.x) + uy * (b.start.y - a.start.y);
    const double endAt = ux * (b.end.x - a.start.x) + uy * (b.end.y - a.start.y);
    return std::min(length, std::max(startAt, endAt)) - std::max(0.0, std::min(startAt, endAt)) > margin;
}

double angleOf(const ArcCircle& circle, const ContourVertex& point) {
    return std::atan2(point.y - circle.y, point.x - circle.x);
}

/// Counter-clockwise from the point where the arc begins in that sense.
struct Sweep {
    double from;
    double angle;

    Sweep(const ArcCircle& circle, const LoopSegment& edge)
        : from(angleOf(circle, edge.start.bulge > 0.0 ? edge.start : edge.end))
        , angle(4.0 * std::atan(std::abs(edge.start.bulge))) {}
};

/// Arcs of clearly different circles meet in points only, and so do arcs of one circle one behind the other.
bool mayArcsRunTogether(const LoopSegment& a, const LoopSegment& b, double margin) {
    const ArcCircle first = circleOf(a);
    const ArcCircle second = circleOf(b);
    const double difference =
        std::max(std::abs(first.radius - second.radius), std::hypot(second.x - first.x, second.y - first.y));
    if (difference > kClearSine * std::min(first.radius, second.radius)) return false;
    const Sweep sweep1(first, a);
    const Sweep sweep2(first, b);
    const double turn = 2.0 * std::numbers::pi;
    double offset = std::fmod(sweep2.from - sweep1.from, turn);
    if (offset < 0.0) offset += turn;
    const double common = std::max(0.0, std::min(sweep1.angle, offset + sweep2.angle) - offset) +
                          std::max(0.0, std::min(sweep1.angle, offset + sweep2.angle - turn));
    return common * first.radius > margin;
}

/// A line and an arc that is clearly bent meet in points only.
bool mayRunTogether(const LoopSegment& a, const LoopSegment& b, double margin) {
    if (!a.isArc() && !b.isArc()) return mayLinesRunTogether(a, b, margin);
    if (a.isArc() && b.isArc()) return mayArcsRunTogether(a, b, margin);
    const LoopSegment& arc = a.isArc() ? a : b;
    return 0.5 * std::abs(arc.start.bulge) * arc.chord() <= margin;
}

/// A segment that is half a circle at most.
PlaneSegment planeSegmentOf(const LoopSegment& side) {
    return {{side.start.x, side.start.y}, {side.end.x, side.end.y}, side.start.bulge};
}

/// Is a place near a segment or an end of it.
bool isNear(const PlaneSegment& segment, const AcGePoint2d& place, double margin) {
    return segment.touches(place, margin) || segment.start().distanceTo(place) <= margin ||
           segment.end().distanceTo(place) <= margin;
}

/// Segments without a common end: do they clearly keep apart.
bool keepApart(const PlaneSegment& a, const PlaneSegment& b, double margin) {
    if (a.isClearOf(b, margin) || b.isClearOf(a, margin)) return true;
    AcGePoint2d points[2];
    return crossingsOf(a, b, margin, points) == 0 && !isNear(a, b.start(), margin) &&
           !isNear(a, b.end(), margin) && !isNear(b, a.start(), margin) && !isNear(b, a.end(), margin);
}

/// Segments that share an end: do they clearly go different ways from there and not come together again.
bool partAtEnd(const PlaneSegment& a, bool isAtEndOfA, const PlaneSegment& b, bool isAtEndOfB,
               double margin) {
    const AcGePoint2d common = isAtEndOfA ? a.end() : a.start();
    if (!(std::min(a.chord(), b.chord()) > margin)) return false;
    const AcGeVector2d u = isAtEndOfA ? -a.directionAt(a.chord()) : a.directionAt(0.0);
    const AcGeVector2d v = isAtEndOfB ? -b.directionAt(b.chord()) : b.directionAt(0.0);
    if (std::abs(u.crossProduct(v)) < kClearSine && u.dotProduct(v) > 0.0) return false;
    if (isNear(a, isAtEndOfB ? b.start() : b.end(), margin) ||
        isNear(b, isAtEndOfA ? a.start() : a.end(), margin))
        return false;
    if (a.isStraight() && b.isStraight()) return true;
    AcGePoint2d points[2];
    const int count = crossingsOf(a, b, margin, points);
    return std::all_of(points, points + count,
                       [&](const AcGePoint2d& point) { return point.distanceTo(common) <= margin; });
}

/// Looks at all that comes near of two loops with a common segment.
class Neighbourhood {
public:
    Neighbourhood(const ContourLoop& first, std::size_t i, const ContourLoop& second, std::size_t j,
                  double margin)
        : m_first(first)
        , m_second(second)
        , m_i(i)
        , m_j(j)
        , m_margin(margin) {}

    bool isClear() const {
        const PlaneBox box1 = boxOf(m_first).widened(m_margin);
        const PlaneBox box2 = boxOf(m_second).widened(m_margin);
        if (!hasVertexOutside(m_first, box2) || !hasVertexOutside(m_second, box1)) return false;
        const std::vector<std::size_t> near1 = segmentsNear(m_first, box2);
        const std::vector<std::size_t> near2 = segmentsNear(m_second, box1);
        std::vector<PlaneBox> boxes;
        boxes.reserve(near2.size() + 1);
        for (const std::size_t b : near2) boxes.push_back(LoopSegment(m_second, b).box(m_margin));
        if (boxes.empty()) boxes.push_back(BoxChain::emptyBox());
        const BoxChain chain(std::move(boxes));
        bool isClear = true;
        for (const std::size_t a : near1)
            chain.forEachMeeting(LoopSegment(m_first, a).box(m_margin),
                                 [&](std::size_t k) { isClear = isClear && isPairClear(a, near2[k]); });
        return isClear;
    }

private:
    static bool hasVertexOutside(const ContourLoop& loop, const PlaneBox& box) {
        return std::any_of(loop.vertices.begin(), loop.vertices.end(), [&](const ContourVertex& vertex) {
            return !box.meets({vertex.x, vertex.x, vertex.y, vertex.y});
        });
    }
    std::vector<std::size_t> segmentsNear(const ContourLoop& loop, const PlaneBox& box) const {
        std::vector<std::size_t> near;
        for (std::size_t k = 0; k < loop.vertices.size(); ++k)
            if (LoopSegment(loop, k).box(m_margin).meets(box)) near.push_back(k);
        return near;
    }
    static std::size_t stepsTo(const ContourLoop& loop, std::size_t from, std::size_t to) {
        return (to + loop.vertices.size() - from) % loop.vertices.size();
    }
    bool isPairClear(std::size_t a, std::size_t b) const {
        const LoopSegment side1(m_first, a);
        const LoopSegment side2(m_second, b);
        if (std::max(std::abs(side1.start.bulge), std::abs(side2.start.bulge)) > 1.0) return false;
        if (a == m_i && b == m_j) return true;
        // At the end of the first's segment its follower meets the second's segment and what leads to that,
        // at its start the other way round.
        const std::size_t before1 = stepsTo(m_first, a, m_i), behind1 = stepsTo(m_first, m_i, a);
        const std::size_t before2 = stepsTo(m_second, b, m_j), behind2 = stepsTo(m_second, m_j, b);
        const bool isAtEnd = behind1 <= 1 && before2 <= 1;
        const bool isAtStart = before1 <= 1 && behind2 <= 1;
        const PlaneSegment segment1 = planeSegmentOf(side1);
        const PlaneSegment segment2 = planeSegmentOf(side2);
        if (isAtEnd && isAtStart) return false; // of loops with few sides
        if (isAtEnd) return partAtEnd(segment1, a == m_i, segment2, b != m_j, m_margin);
        if (isAtStart) return partAtEnd(segment1, a != m_i, segment2, b == m_j, m_margin);
        return keepApart(segment1, segment2, m_margin);
    }

    const ContourLoop& m_first;
    const ContourLoop& m_second;
    std::size_t m_i;
    std::size_t m_j;
    double m_margin;
};

} // namespace

bool areClearNeighbours(const ContourLoop& first, std::size_t i, const ContourLoop& second, std::size_t j,
                        double tolerance) {
    const bool haveSides = first.vertices.size() > 2 && second.vertices.size() > 2;
    return haveSides && Neighbourhood(first, i, second, j, kMarginTolerances * tolerance).isClear();
}

ContourLoop joinedAt(const ContourLoop& first, std::size_t i, const ContourLoop& second, std::size_t j) {
    const std::size_t count = first.vertices.size();
    const std::size_t otherCount = second.vertices.size();
    ContourLoop joined;
    joined.vertices.reserve(count + otherCount - 2);
    for (std::size_t k = 1; k <= count; ++k) joined.vertices.push_back(first.vertices[(i + k) % count]);
    joined.vertices.back().bulge = second.vertices[(j + 1) % otherCount].bulge;
    for (std::size_t k = 2; k < otherCount; ++k)
        joined.vertices.push_back(second.vertices[(j + k) % otherCount]);
    return joined;
}

CleanMerge mergeCleanly(const ContourLoop& first, const ContourLoop& second, ContourLoop& merged) {
    const PlaneBox box2 = boxOf(second);
    PlaneBox both = boxOf(first);
    both.extend(box2);
    const double tolerance = kComparisonTolerance * both.largerSide();
    const double margin = kMarginTolerances * tolerance;
    int shared = 0;
    std::size_t sharedFirst = 0;
    std::size_t sharedSecond = 0;
    for (std::size_t i = 0; i < first.vertices.size(); ++i) {
        const LoopSegment a(first, i);
        const PlaneBox near = a.box(margin);
        if (!near.overlaps(box2)) continue;
        for (std::size_t j = 0; j < second.vertices.size(); ++j) {
            const LoopSegment b(second, j);
            if (!near.overlaps(b.box(margin))) continue;
            const int one = areOne(a, b, tolerance);
            if (one < 0) return CleanMerge::kUnclear;
            if (one > 0) {
                if (++shared > 1) return CleanMerge::kNone;
                sharedFirst = i;
                sharedSecond = j;
            } else if (mayRunTogether(a, b, margin)) {
                return CleanMerge::kUnclear;
            }
        }
    }
    if (shared == 0) return CleanMerge::kNone;
    merged = withoutStraightVertices(joinedAt(first, sharedFirst, second, sharedSecond));
    return merged.vertices.size() < 2 ? CleanMerge::kUnclear : CleanMerge::kMerged;
}

} // namespace vexo
