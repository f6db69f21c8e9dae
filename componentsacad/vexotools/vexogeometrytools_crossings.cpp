#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "contourboxchain.h"
#include "contourpointgrid.h"
#include "contoursplitting.h"

#include "cvxlogentry.h"
#include "dbextents.h"
#include "dbpolyline.h"
#include "dbxline.h"
#include "geline3d.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>
#include <vector>

using namespace vexo;

namespace {

/// Crossings of two polylines are looked for, and told apart, with this.
constexpr double kCrossingTolerance = 1e-6;
/// Boxes of segments that are to be tried against each other are wider by this many tolerances: more than any
/// test of the geometry kit stretches.
constexpr double kBoxSlack = 8.0;
/// Up to this many points repeats are found by comparing all pairs.
constexpr int kFewPoints = 32;

// ---- segments and their boxes ----

/// The segments of a polyline that are lines or arcs, with boxes that hold whatever a test may reach.
class Segments {
public:
    explicit Segments(const AcDbPolyline& polyline);

    std::size_t count() const { return m_boxes.size(); }
    const BoxChain::Box& box(std::size_t i) const { return m_boxes[i]; }
    /// An index of the boxes.
    BoxChain chain() const { return BoxChain(m_boxes); }
    bool isArc(std::size_t i) const { return m_isArc[i]; }
    AcGeLineSeg3d line(std::size_t i) const {
        AcGeLineSeg3d segment;
        (void)m_polyline.getLineSegAt(static_cast<unsigned int>(i), segment);
        return segment;
    }
    AcGeCircArc3d arc(std::size_t i) const {
        AcGeCircArc3d segment;
        (void)m_polyline.getArcSegAt(static_cast<unsigned int>(i), segment);
        return segment;
    }

private:
    const AcDbPolyline& m_polyline;
    std::vector<BoxChain::Box> m_boxes; ///< empty for what is neither a line nor an arc
    std::vector<char> m_isArc;
};

/// Everything within half the chord, or within the apex' height where that is more, of the chord's middle.
BoxChain::Box boxOfSegment(const AcGePoint3d& start, const AcGePoint3d& end, double bulge, bool isArc) {
    const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
    const double slack = kBoxSlack * std::max(kCrossingTolerance, AcGe::kPointUlps * AcGe::ulpOf(magnitude));
    const double reach = isArc ? start.distanceTo(end) * 0.5 * std::max(1.0, std::abs(bulge)) : 0.0;
    const AcGePoint3d middle = start + (end - start) * 0.5;
    if (isArc)
        return {middle.x - reach - slack, middle.x + reach + slack, middle.y - reach - slack,
                middle.y + reach + slack};
    return {std::min(start.x, end.x) - slack, std::max(start.x, end.x) + slack,
            std::min(start.y, end.y) - slack, std::max(start.y, end.y) + slack};
}

Segments::Segments(const AcDbPolyline& polyline)
    : m_polyline(polyline) {
    const unsigned int vertices = polyline.numVerts();
    const unsigned int count = vertices > 0 && !polyline.isClosed() ? vertices - 1 : vertices;
    m_boxes.resize(count, BoxChain::emptyBox());
    m_isArc.resize(count);
    for (unsigned int i = 0; i < count; ++i) {
        const AcDbPolyline::SegType type = polyline.segType(i);
        if (type != AcDbPolyline::kLine && type != AcDbPolyline::kArc) continue;
        AcGePoint3d start;
        AcGePoint3d end;
        double bulge = 0.0;
        (void)polyline.getPointAt(i, start);
        (void)polyline.getPointAt(i + 1 < vertices ? i + 1 : 0, end);
        (void)polyline.getBulgeAt(i, bulge);
        m_isArc[i] = type == AcDbPolyline::kArc;
        m_boxes[i] = boxOfSegment(start, end, bulge, m_isArc[i]);
    }
}

// ---- crossings ----

/// A segment in work as a geometry curve; pairs come grouped by it.
struct GeometrySegment {
    std::optional<AcGeLineSeg3d> line;
    std::optional<AcGeCircArc3d> arc;

    GeometrySegment(const Segments& segments, std::size_t i) {
        if (segments.isArc(i))
            arc = segments.arc(i);
        else
            line = segments.line(i);
    }
};

/// Appends what two segments have in common: at most one point for two lines, else at most two.
void appendCrossings(const GeometrySegment& first, const GeometrySegment& second, const AcGeTol& tolerance,
                     AcArray<AcGePoint3d>& points) {
    AcGePoint3d crossings[2];
    int count = 0;
    if (first.line && second.line)
        count = first.line->intersectWith(*second.line, crossings[0], tolerance) ? 1 : 0;
    else if (first.line)
        (void)second.arc->intersectWith(*first.line, count, crossings[0], crossings[1], tolerance);
    else if (second.line)
        (void)first.arc->intersectWith(*second.line, count, crossings[0], crossings[1], tolerance);
    else
        (void)first.arc->intersectWith(*second.arc, count, crossings[0], crossings[1], tolerance);
    for (int i = 0; i < count; ++i) points.append(crossings[i]);
}

// ---- order along a direction ----

/// Sorts when the keys stand one behind the other along `dir` beyond doubt, so that any two of them do: the
/// vectors between neighbours lie in a cone around dir, and their sums lie in the same cone. False, and no
/// change, when they do not.
bool sortAlong(const AcGeVector3d& dir, AcArray<AcGePoint3d>& points, const AcArray<AcGePoint3d>& keys) {
    AcGeTol half;
    half.setEqualVector(AcGeContext::gTol.equalVector() * 0.5);
    std::vector<int> order(static_cast<std::size_t>(keys.length()));
    std::iota(order.begin(), order.end(), 0);
    std::vector<double> along;
    along.reserve(order.size());
    for (const AcGePoint3d& key : keys) {
        along.push_back((key - keys[0]).dotProduct(dir));
        if (!std::isfinite(along.back())) return false;
    }
    const auto at = [&](int i) { return along[static_cast<std::size_t>(i)]; };
    std::sort(order.begin(), order.end(), [&](int a, int b) { return at(a) < at(b); });
    for (std::size_t k = 1; k < order.size(); ++k)
        if (!(keys[order[k]] - keys[order[k - 1]]).isCodirectionalTo(dir, half)) return false;
    AcArray<AcGePoint3d> sorted;
    for (const int i : order) sorted.append(points[i]);
    points = sorted;
    return true;
}

} // namespace

namespace vexo {

void removeRepeats(AcArray<AcGePoint3d>& points, const AcGeTol& tolerance) {
    double largest = 0.0;
    for (const AcGePoint3d& point : points) largest = std::max(largest, PointGrid::ordinaryCoordinate(point));
    std::optional<PointGrid> grid;
    if (points.length() > kFewPoints) grid.emplace(tolerance.equalPoint(), largest, points.length());
    int kept = 0;
    for (int j = 0; j < points.length(); ++j) {
        const AcGePoint3d point = points[j];
        const auto isSame = [&](int i) { return points[i].isEqualTo(point, tolerance); };
        bool repeated = false;
        if (grid)
            repeated = grid->anyNear(point, isSame);
        else
            for (int i = 0; i < kept && !repeated; ++i) repeated = isSame(i);
        if (repeated) continue;
        if (grid) grid->add(point, kept);
        points[kept++] = point;
    }
    points.setLogicalLength(kept);
}

} // namespace vexo

namespace VEXOGeometryTools {

AcArray<AcGePoint3d> getClosestPointsToLine(const AcGeLine3d& line, const AcArray<AcGePoint3d>& points,
                                            const AcGeTol&) {
    CVxLogEntry entry(L"VEXOGeometryTools::getClosestPointsToLine");
    AcArray<AcGePoint3d> closest;
    for (const AcGePoint3d& point : points) closest.append(line.closestPointTo(point));
    return closest;
}

void orderPointsByDir(AcGeVector3d dir, AcArray<AcGePoint3d>& points, bool onLine) {
    CVxLogEntry entry(L"VEXOGeometryTools::orderPointsByDir");
    if (dir.isZeroLength(toleranceOf(kComparisonTolerance)) || points.isEmpty()) return;
    const AcGeLine3d line(points.first(), dir);
    AcArray<AcGePoint3d> keys = onLine ? points : getClosestPointsToLine(line, points, AcGeContext::gTol);
    if (keys.length() != points.length() || sortAlong(dir, points, keys)) return;
    for (int i = 0; i < points.length(); ++i)
        for (int j = i + 1; j < points.length(); ++j)
            if (!(keys[j] - keys[i]).isCodirectionalTo(dir, AcGeContext::gTol)) {
                points.swap(i, j);
                keys.swap(i, j);
            }
}

void filterArray(AcArray<AcGePoint3d>& points) {
    CVxLogEntry entry(L"VEXOGeometryTools::filterArray");
    if (points.isEmpty()) return;
    const AcGePoint3d first = points.first();
    const AcGePoint3d last = points.last();
    points.removeAll();
    points.append(first);
    points.append(last);
    if ((last - first).dotProduct(AcGeVector3d::kXAxis) < -kComparisonTolerance) points.reverse();
}

AcArray<AcGePoint3d> intersectPolyLines(AcDbCurve* first, AcDbCurve* second) {
    CVxLogEntry entry(L"VEXOGeometryTools::intersectPolyLines");
    const std::unique_ptr<AcDbPolyline> polyline1(ConvertToPolyline(first));
    const std::unique_ptr<AcDbPolyline> polyline2(ConvertToPolyline(second));
    AcArray<AcGePoint3d> points;
    if (!polyline1 || !polyline2) return points;
    const AcGeTol tolerance = toleranceOf(kCrossingTolerance);
    const Segments segments1(*polyline1);
    const Segments segments2(*polyline2);
    const BoxChain chain = segments2.chain();
    for (std::size_t i = 0; i < segments1.count(); ++i) {
        std::optional<GeometrySegment> segment;
        chain.forEachMeeting(segments1.box(i), [&](std::size_t j) {
            if (!segment) segment.emplace(segments1, i);
            appendCrossings(*segment, GeometrySegment(segments2, j), tolerance, points);
        });
    }
    removeRepeats(points, tolerance);
    return points;
}

bool isPointsOnExtents(AcGePoint3d point, AcDbExtents extents, bool inX) {
    CVxLogEntry entry(L"VEXOGeometryTools::isPointsOnExtents");
    const AcGeTol tolerance = inX ? toleranceOf(kCrossingTolerance) : AcGeContext::gTol;
    const auto flattened = [inX](const AcGePoint3d& whole) {
        return inX ? AcGePoint3d(whole.x, 0.0, 0.0) : AcGePoint3d(0.0, whole.y, 0.0);
    };
    const AcGePoint3d place = flattened(point);
    return place.isEqualTo(flattened(extents.minPoint()), tolerance) ||
           place.isEqualTo(flattened(extents.maxPoint()), tolerance);
}

void correctExtentsPoints(AcGePoint3d& left, AcGePoint3d& right, AcDbCurve* hole) {
    CVxLogEntry entry(L"VEXOGeometryTools::correctExtentsPoints");
    if (!hole) return;
    const auto misses = [hole](const AcGePoint3d& point) {
        const AcDbXline line = lineAlongY(point);
        AcGePoint3dArray points;
        (void)hole->intersectWith(&line, AcDb::kOnBothOperands, points);
        return points.isEmpty();
    };
    if (misses(left)) left.x += kExtentsNudge;
    if (misses(right)) right.x -= kExtentsNudge;
}

} // namespace VEXOGeometryTools
