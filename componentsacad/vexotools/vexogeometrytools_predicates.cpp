#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbxline.h"
#include "gearc2d.h"
#include "gelnsg2d.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

using namespace vexo;

namespace {

/// How near a point must be to a polyline's segment to be on it, and how parallel a segment to a view.
constexpr double kOnSegment = 1e-06;
/// How far below a contour's box a point must be for isPointInsideContour to take it as below.
constexpr double kBelowBox = 1e-05;
/// Corners of boxes this near are the same corner.
constexpr double kSameCorner = 1e-08;
/// Points this near are no different points.
constexpr double kPointsDiffer = 1e-10;
/// The ray of the inside test on 2d curves: farther away nothing is seen.
constexpr double kRayLength = 100000000.0;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool isNear(double a, double b) { return (a - b) * (a - b) <= kSquaredTolerance; }

/// a < b beyond doubt, the right operand being narrowed by its own magnitude.
bool isLessThanNarrowed(double a, double b) {
    return a < b - (std::abs(b) * kComparisonTolerance + kComparisonTolerance);
}
bool isStrictlyBetween(double value, double a, double b) {
    return (isLessThanNarrowed(a, value) && isLessThanNarrowed(value, b)) ||
           (isLessThanNarrowed(b, value) && isLessThanNarrowed(value, a));
}
/// a <= b, the right operand being widened by its own magnitude.
bool isAtMostWidened(double a, double b) {
    return a <= b + std::abs(b) * kComparisonTolerance + kComparisonTolerance;
}

// ---- the polygon and the ray downwards ----

/// What one corner adds to the count; kOnBoundary ends the question.
constexpr int kOnBoundary = -1;

int crossingsAtCorner(const AcGePoint3d& before, const AcGePoint3d& corner, const AcGePoint3d& after,
                      const AcGePoint3d& point) {
    const bool isLevelInX = isNear(corner.x, point.x);
    if (isLevelInX && isNear(corner.y, point.y)) return kOnBoundary;
    if (isLevelInX && isNear(after.x, point.x) &&
        ((isAtMostWidened(corner.y, point.y) && isAtMostWidened(point.y, after.y)) ||
         (isAtMostWidened(after.y, point.y) && isAtMostWidened(point.y, corner.y))))
        return kOnBoundary;
    int crossings = 0;
    if (isStrictlyBetween(point.x, corner.x, after.x)) {
        const double y = corner.y + (after.y - corner.y) * ((point.x - corner.x) / (after.x - corner.x));
        if (isNear(point.y, y)) return kOnBoundary;
        if (isDefinitelyLess(y, point.y)) ++crossings;
    }
    if (isLevelInX && isDefinitelyLess(corner.y, point.y)) {
        if (isDefinitelyLess(point.x, before.x)) ++crossings;
        if (isDefinitelyLess(point.x, after.x)) ++crossings;
    }
    return crossings;
}

/// The x coordinates beyond which a corner is clearly to the left or to the right of a point: a corner and
/// its follower on one side add nothing.
struct ClearSides {
    double left;
    double right;
    explicit ClearSides(double x)
        : left(x - 2.0 * kComparisonTolerance)
        , right(x + 2.0 * kComparisonTolerance) {}
};

/// Looks at corners sixteen at a time and passes over those that all lie, follower included, on one side. A
/// NaN adds nothing wherever it stands.
int countCrossings(const AcArray<AcGePoint3d>& polygon, const AcGePoint3d& point) {
    constexpr int block = 16;
    const int count = polygon.length();
    const AcGePoint3d* corners = polygon.asArrayPtr();
    const ClearSides sides(point.x);
    int total = 0;
    for (int first = 0; first < count; first += block) {
        const int end = std::min(first + block, count);
        // Two at a time, and in this order of operands, which passes a NaN over.
        const double followerX = corners[end < count ? end : 0].x;
        double low[2] = {std::min(kInfinity, followerX), kInfinity};
        double high[2] = {std::max(-kInfinity, followerX), -kInfinity};
        for (int i = first; i + 1 < end; i += 2)
            for (int k = 0; k < 2; ++k) {
                low[k] = std::min(low[k], corners[i + k].x);
                high[k] = std::max(high[k], corners[i + k].x);
            }
        low[0] = std::min(low[0], corners[end - 1].x);
        high[0] = std::max(high[0], corners[end - 1].x);
        if (std::max(high[0], high[1]) < sides.left || std::min(low[0], low[1]) > sides.right) continue;
        for (int i = first; i < end; ++i) {
            const int crossings = crossingsAtCorner(corners[i > 0 ? i - 1 : count - 1], corners[i],
                                                    corners[i + 1 < count ? i + 1 : 0], point);
            if (crossings == kOnBoundary) return kOnBoundary;
            total += crossings;
        }
    }
    return total;
}

// ---- the ring of curves and the ray to the right ----

/// What a curve between two points adds to the count of the ray to the right.
int crossingsOfCurve(const AcGeCurve2d& curve, const AcGePoint2d& start, const AcGePoint2d& end,
                     const AcGePoint2d& point) {
    const auto isAtPoint = [&](const AcGePoint2d& p) { return isNear(p.x, point.x) && isNear(p.y, point.y); };
    if (isAtPoint(start) || isAtPoint(end)) return kOnBoundary;
    const bool isLine = curve.isKindOf(AcGe::kLinearEnt2d);
    const bool startIsLevel = isNear(start.y, point.y);
    const bool endIsLevel = isNear(end.y, point.y);
    if (!startIsLevel && !endIsLevel) {
        const AcGeLineSeg2d ray(point, AcGePoint2d(point.x + kRayLength, point.y));
        AcGePoint2d first;
        AcGePoint2d second;
        if (isLine)
            return static_cast<const AcGeLinearEnt2d&>(curve).intersectWith(ray, first, AcGeContext::gTol);
        int count = 0;
        static_cast<const AcGeCircArc2d&>(curve).intersectWith(ray, count, first, second, AcGeContext::gTol);
        return count;
    }
    const auto countsBelow = [&](const AcGePoint2d& level, const AcGePoint2d& other) {
        return isLessThanNarrowed(other.y, point.y) && isLessThanNarrowed(point.x, level.x);
    };
    int crossings = 0;
    if (startIsLevel && countsBelow(start, end)) ++crossings;
    if (endIsLevel && countsBelow(end, start)) ++crossings;
    if (!startIsLevel || !endIsLevel || !isStrictlyBetween(point.x, start.x, end.x)) return crossings;
    if (isLine) return kOnBoundary;
    const auto& arc = static_cast<const AcGeCircArc2d&>(curve);
    const AcGePoint2d apex = arc.evalPoint((arc.startAng() + arc.endAng()) / 2);
    return crossings + (isLessThanNarrowed(point.y, apex.y) ? 1 : 0);
}

/// Does the ray to the right pass a curve clearly by: it lies above, below, or to the left of the point. Most
/// of a ring does, and no end of an arc need be computed to know it.
class RayPast {
public:
    explicit RayPast(const AcGePoint2d& point)
        : m_point(point)
        , m_size(point.largestCoordinate()) {}

    bool passes(const AcGeCircArc2d& arc) const {
        const AcGePoint2d center = arc.center();
        const double reach = arc.radius() + slackAt(std::max(center.largestCoordinate(), arc.radius()));
        return std::abs(m_point.y - center.y) > reach || m_point.x > center.x + reach;
    }
    bool passes(const AcGeLineSeg2d& line) const {
        const AcGePoint2d start = line.startPoint();
        const AcGePoint2d end = line.endPoint();
        const double slack = slackAt(std::max(start.largestCoordinate(), end.largestCoordinate()));
        return std::min(start.y, end.y) > m_point.y + slack || std::max(start.y, end.y) < m_point.y - slack ||
               std::max(start.x, end.x) < m_point.x - slack;
    }

private:
    /// More than what any comparison of the rule, or the kit's crossing test, bridges.
    double slackAt(double magnitude) const {
        constexpr double kShares = 4.0;
        return kShares * (kComparisonTolerance + kComparisonTolerance * std::max(magnitude, m_size));
    }

    AcGePoint2d m_point;
    double m_size;
};

// ---- polylines ----

/// Calls visit(index) for the segments of a polyline that a point within the tolerance can lie on.
template <typename Visit>
bool anySegmentNear(const AcDbPolyline& polyline, const AcGePoint3d& point, const AcGeTol& tolerance,
                    const Visit& visit) {
    const unsigned int vertices = polyline.numVerts();
    const unsigned int segments = polyline.isClosed() || vertices == 0 ? vertices : vertices - 1;
    AcGePoint3d start;
    AcGePoint3d end;
    if (segments > 0) (void)polyline.getPointAt(0, start);
    for (unsigned int i = 0; i < segments; ++i, start = end) {
        double bulge = 0.0;
        (void)polyline.getPointAt(i + 1 < vertices ? i + 1 : 0, end);
        (void)polyline.getBulgeAt(i, bulge);
        // The farthest that a segment comes from its chord's middle is its half chord, or its height.
        const double half = start.distanceTo(end) / 2.0;
        const double radius = bulge == 0.0 ? 0.0 : half * (1.0 / std::abs(bulge) + std::abs(bulge));
        const double magnitude =
            std::max({start.largestCoordinate(), point.largestCoordinate(), half}) + 2.0 * radius;
        const double reach =
            half * std::max(1.0, std::abs(bulge)) + 2.0 * AcGe::pointAllowance(tolerance, magnitude);
        if (point.distanceSqrdTo(start + (end - start) / 2.0) > reach * reach) continue;
        if (visit(i)) return true;
    }
    return false;
}

// ---- boxes ----

bool flatBoxOf(const AcDbCurve& curve, AcDbExtents& box) {
    AcDbExtents extents;
    if (curve.getGeomExtents(extents) != Acad::eOk) return false;
    box = AcDbExtents({extents.minPoint().x, extents.minPoint().y, 0.0},
                      {extents.maxPoint().x, extents.maxPoint().y, 0.0});
    return true;
}

bool isStrictlyInside(double x, double y, const AcDbExtents& box) {
    return isDefinitelyLess(box.minPoint().x, x) && isDefinitelyLess(x, box.maxPoint().x) &&
           isDefinitelyLess(box.minPoint().y, y) && isDefinitelyLess(y, box.maxPoint().y);
}

bool hasCornerInside(const AcDbExtents& box, const AcDbExtents& other) {
    for (const double x : {box.minPoint().x, box.maxPoint().x})
        for (const double y : {box.minPoint().y, box.maxPoint().y})
            if (isStrictlyInside(x, y, other)) return true;
    return false;
}

bool doMeet(const AcDbCurve& first, const AcDbCurve& second) {
    AcGePoint3dArray points;
    (void)first.intersectWith(&second, AcDb::kOnBothOperands, points);
    return !points.isEmpty();
}

/// So far apart that nothing in one box meets anything in the other, tolerances included.
bool areClearlyApart(const AcDbExtents& first, const AcDbExtents& second) {
    double magnitude = 0.0;
    for (const AcGePoint3d& corner :
         {first.minPoint(), first.maxPoint(), second.minPoint(), second.maxPoint()})
        magnitude = std::max(magnitude, corner.largestCoordinate());
    constexpr double allowances = 16.0;
    const double gap = allowances * AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    return first.maxPoint().x + gap < second.minPoint().x || second.maxPoint().x + gap < first.minPoint().x ||
           first.maxPoint().y + gap < second.minPoint().y || second.maxPoint().y + gap < first.minPoint().y;
}

bool doDiagonalsMeet(const AcDbExtents& first, const AcDbExtents& second) {
    return doMeet(AcDbLine(first.minPoint(), first.maxPoint()),
                  AcDbLine(second.minPoint(), second.maxPoint()));
}

} // namespace

namespace VEXOGeometryTools {

int IsInteriorPoint(AcArray<AcGePoint3d> polygon, AcGePoint3d point) {
    CVxLogEntry entry(L"VEXOGeometryTools::IsInteriorPoint");
    const int crossings = countCrossings(polygon, point);
    return crossings == kOnBoundary || crossings % 2 != 0 ? 1 : 0;
}

int IsInteriorPoint(const std::vector<AcGeCurve2d*>& curves, const AcGePoint2d& point) {
    CVxLogEntry entry(L"VEXOGeometryTools::IsInteriorPoint");
    int total = 0;
    const RayPast ray(point);
    for (const AcGeCurve2d* curve : curves) {
        if (!curve) continue;
        const AcGe::EntityId type = curve->type();
        if (type == AcGe::kCircArc2d
                ? ray.passes(static_cast<const AcGeCircArc2d&>(*curve))
                : type == AcGe::kLineSeg2d && ray.passes(static_cast<const AcGeLineSeg2d&>(*curve)))
            continue;
        AcGePoint2d start;
        AcGePoint2d end;
        if (!(curve->isKindOf(AcGe::kLinearEnt2d) || type == AcGe::kCircArc2d) ||
            !curve->hasStartPoint(start) || !curve->hasEndPoint(end))
            continue;
        const int crossings = crossingsOfCurve(*curve, start, end, point);
        if (crossings == kOnBoundary) return 1;
        total += crossings;
    }
    return total % 2;
}

bool isPointInsideContour(AcGePoint3d point, AcDbCurve* contour) {
    CVxLogEntry entry(L"VEXOGeometryTools::isPointInsideContour");
    // A light polyline at elevation 0 is its own conversion.
    const auto* polyline = AcDbPolyline::cast(contour);
    std::unique_ptr<AcDbPolyline> converted;
    if (!polyline || polyline->elevation() != 0.0) {
        converted.reset(ConvertToPolyline(contour));
        polyline = converted.get();
    }
    AcDbExtents box;
    if (!polyline || polyline->getGeomExtents(box) != Acad::eOk) return false;
    const AcGePoint3d start(point.x, box.minPoint().y, point.z);
    AcDbExtents way(start, start);
    way.addPoint(point);
    if (areClearlyApart(box, way)) return false;
    AcGeTol tolerance;
    tolerance.setEqualVector(kBelowBox);
    if ((start - point).isCodirectionalTo(AcGeVector3d::kYAxis, tolerance)) {
        AcGePoint3d closest;
        if (polyline->getClosestPointTo(start, closest) == Acad::eOk && closest.isEqualTo(start, tolerance))
            return false;
    }
    const AcDbLine line(start, point);
    AcGePoint3dArray points;
    (void)polyline->intersectWith(&line, AcDb::kOnBothOperands, points);
    return points.length() % 2 != 0;
}

bool isPointOnPolyLine(AcDbPolyline* polyline, AcGePoint3d point) {
    CVxLogEntry entry(L"VEXOGeometryTools::isPointOnPolyLine");
    if (!polyline) return false;
    const AcGeTol tolerance = toleranceOf(kOnSegment);
    return anySegmentNear(*polyline, point, tolerance, [&](unsigned int i) {
        AcGeLineSeg3d line;
        AcGeCircArc3d arc;
        if (polyline->segType(i) == AcDbPolyline::kLine)
            return polyline->getLineSegAt(i, line) == Acad::eOk && line.isOn(point, tolerance);
        return polyline->segType(i) == AcDbPolyline::kArc && polyline->getArcSegAt(i, arc) == Acad::eOk &&
               arc.isOn(point, tolerance);
    });
}

bool isPointOnPolySegParalelWithViewDir(AcDbPolyline* polyline, AcGePoint3d point, AcGeVector3d viewDir) {
    CVxLogEntry entry(L"VEXOGeometryTools::isPointOnPolySegParalelWithViewDir");
    if (!polyline) return false;
    const AcGeTol tolerance = toleranceOf(kOnSegment);
    return anySegmentNear(*polyline, point, tolerance, [&](unsigned int i) {
        AcGeLineSeg3d line;
        if (polyline->segType(i) != AcDbPolyline::kLine || polyline->getLineSegAt(i, line) != Acad::eOk ||
            !line.isOn(point, tolerance))
            return false;
        const AcGeVector3d direction = line.startPoint() - line.endPoint();
        return !direction.isZeroLength(tolerance) && direction.isParallelTo(viewDir, tolerance);
    });
}

bool isPerpVectorOrientedInsideContour(AcGePoint3d first, AcGePoint3d second, AcDbCurve* contour) {
    CVxLogEntry entry(L"VEXOGeometryTools::isPerpVectorOrientedInsideContour");
    if (!contour) return false;
    const AcGeVector3d up = (first - second).perpVector();
    const AcGePoint3d middle = first + (second - first) / 2;
    AcDbXline perpendicular;
    if (perpendicular.setBasePoint(middle) != Acad::eOk || perpendicular.setUnitDir(up) != Acad::eOk)
        return false;
    AcGePoint3dArray points;
    (void)contour->intersectWith(&perpendicular, AcDb::kOnBothOperands, points);
    int upCount = 0;
    // The points lie on the perpendicular: the sign of the distance along it tells codirectional from not,
    // far from the origin too, where rounding turns the direction of a near point by more than its tolerance.
    for (const AcGePoint3d& point : points)
        if (!point.isEqualTo(middle, AcGeContext::gTol) && (point - middle).dotProduct(up) > 0.0) ++upCount;
    const int downCount = points.length() - upCount;
    return downCount % 2 != 0 && upCount % 2 == 0;
}

bool isContourOutside(AcDbCurve* first, AcDbCurve* second) {
    CVxLogEntry entry(L"VEXOGeometryTools::isContourOutside");
    AcDbExtents box1;
    AcDbExtents box2;
    if (!first || !second || !flatBoxOf(*first, box1) || !flatBoxOf(*second, box2)) return false;
    AcDbExtents both = box1;
    both.addExt(box2);
    const AcGeTol tolerance = pointToleranceOf(kSameCorner);
    if (both.minPoint().isEqualTo(box1.minPoint(), tolerance) &&
        both.maxPoint().isEqualTo(box1.maxPoint(), tolerance))
        return false;
    if (areClearlyApart(box1, box2)) return true;
    // Whether the curves cross is the dear question: it is put last.
    const bool areBoxesEntangled =
        hasCornerInside(box1, box2) || hasCornerInside(box2, box1) || doDiagonalsMeet(box1, box2);
    return !(areBoxesEntangled && doMeet(*first, *second));
}

bool arePointsDiff(const AcArray<AcGePoint3d>& first, const AcArray<AcGePoint3d>& second) {
    CVxLogEntry entry(L"VEXOGeometryTools::arePointsDiff");
    if (first.length() != second.length()) return true;
    const AcGeTol tolerance = toleranceOf(kPointsDiffer);
    for (int i = 0; i < first.length(); ++i)
        if (!first[i].isEqualTo(second[i], tolerance)) return true;
    return false;
}

bool IsIntersecting(AcDbExtents first, AcDbExtents second) {
    CVxLogEntry entry(L"VEXOGeometryTools::IsIntersecting");
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const double low1 = first.minPoint()[axis];
        const double high1 = first.maxPoint()[axis];
        const double low2 = second.minPoint()[axis];
        const double high2 = second.maxPoint()[axis];
        const bool areBoxes = low1 <= high1 && low2 <= high2;
        if (!areBoxes || isDefinitelyLess(high1, low2) || isDefinitelyLess(high2, low1)) return false;
    }
    return true;
}

bool getEntitiesExtents(const AcArray<void*>& entities, AcDbExtents& extents) {
    CVxLogEntry entry(L"VEXOGeometryTools::getEntitiesExtents");
    AcDbExtents all;
    for (void* pointer : entities) {
        AcDbExtents own;
        const auto* entity = static_cast<const AcDbEntity*>(pointer);
        if (entity && entity->getGeomExtents(own) == Acad::eOk) all.addExt(own);
    }
    if (all.isEmpty()) return false;
    extents = all;
    return true;
}

} // namespace VEXOGeometryTools
