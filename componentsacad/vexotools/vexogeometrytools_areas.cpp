#include "contourareas.h"
#include "contourarrangement.h"
#include "contourcleanmerge.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "db2dpolyline.h"
#include "dbcircle.h"
#include "dbpolyline.h"
#include "geplane.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

using namespace VEXOGeometryTools;
using namespace vexo;

namespace {

/// A closed contour in its own plane.
struct PlaneContour {
    ContourLoop loop;
    AcGeVector3d normal;
    double elevation = 0.0;
};

double elevationOf(const AcDbCurve& curve) {
    if (const auto* light = AcDbPolyline::cast(&curve)) return light->elevation();
    if (const auto* old = AcDb2dPolyline::cast(&curve)) return old->elevation();
    if (const auto* circle = AcDbCircle::cast(&curve))
        return circle->normal().dotProduct(circle->center().asVector());
    return 0.0;
}

/// Nothing for a curve that is null, open, or no polyline or circle.
std::optional<PlaneContour> contourOf(const AcDbCurve* curve) {
    if (!curve) return std::nullopt;
    std::unique_ptr<AcDbPolyline> converted;
    const AcDbPolyline* polyline = AcDbPolyline::cast(curve);
    if (!polyline) {
        converted.reset(ConvertToPolyline(curve));
        polyline = converted.get();
    }
    if (!polyline || !polyline->isClosed()) return std::nullopt;
    PlaneContour contour{loopOf(*polyline), polyline->normal(), elevationOf(*curve)};
    if (!bounds(contour.loop)) return std::nullopt;
    return contour;
}

/// The contour in the coordinates of another plane, seen along that plane's normal; false when the planes are
/// not parallel.
bool bringInto(PlaneContour& contour, const AcGeVector3d& normal) {
    const AcGeTol tolerance = toleranceOf(kComparisonTolerance);
    if (contour.normal.isEqualTo(normal, tolerance)) return true;
    if (!contour.normal.isCodirectionalTo(-normal, tolerance)) return false;
    const AcGePlane from(AcGePoint3d::kOrigin, contour.normal);
    const AcGePlane into(AcGePoint3d::kOrigin, normal);
    for (ContourVertex& vertex : contour.loop.vertices) {
        AcGePoint3d point;
        point.set(from, AcGePoint2d(vertex.x, vertex.y));
        const AcGePoint2d seen = point.convert2d(into);
        vertex = {seen.x, seen.y, -vertex.bulge};
    }
    contour.normal = normal;
    contour.elevation = -contour.elevation;
    return true;
}

std::size_t following(const ContourLoop& loop, std::size_t index, std::size_t steps = 1) {
    return (index + steps) % loop.vertices.size();
}

AcGePoint2d pointAt(const ContourLoop& loop, std::size_t index) {
    return {loop.vertices[index].x, loop.vertices[index].y};
}

PlaneBox boxOfVertices(const ContourLoop& loop) {
    PlaneBox box = BoxChain::emptyBox();
    for (const ContourVertex& vertex : loop.vertices) box.extend({vertex.x, vertex.x, vertex.y, vertex.y});
    return box;
}

bool isIn(const PlaneBox& box, const AcGePoint2d& point) {
    return box.meets({point.x, point.x, point.y, point.y});
}

/// A segment of one loop that is also one of another.
struct SharedSegment {
    std::size_t first;
    std::size_t second;
    bool isOpposite;
};

/// Looks for segments that two loops share whole, end on end and middle on middle.
class SharedSegments {
public:
    SharedSegments(const ContourLoop& first, const ContourLoop& second, double tolerance)
        : m_first(first)
        , m_second(second)
        , m_tolerance(tolerance) {}

    /// The only one; nothing when there are none or several.
    std::optional<SharedSegment> only() const {
        std::optional<SharedSegment> found;
        const std::size_t count = m_second.vertices.size();
        const PlaneBox box1 = boxOfVertices(m_first).widened(m_tolerance);
        const PlaneBox box2 = boxOfVertices(m_second).widened(m_tolerance);
        PointGrid grid(m_tolerance, largestCoordinate(), static_cast<int>(count));
        for (std::size_t i = 0; i < count; ++i)
            if (isIn(box1, pointAt(m_second, i)))
                grid.add(inSpace(pointAt(m_second, i)), static_cast<int>(i));
        for (std::size_t i = 0; i < m_first.vertices.size(); ++i) {
            if (!isIn(box2, pointAt(m_first, i))) continue;
            if (pointAt(m_first, i).distanceTo(pointAt(m_first, following(m_first, i))) <= m_tolerance)
                continue;
            bool isSecondFound = false;
            const auto note = [&](std::size_t segment, bool isOpposite) {
                const bool isKnown = found && found->first == i && found->second == segment;
                if (isKnown || !areSame(i, segment, isOpposite)) return;
                isSecondFound = found.has_value();
                found = {i, segment, isOpposite};
            };
            grid.anyNear(inSpace(pointAt(m_first, i)), [&](int vertex) {
                note(static_cast<std::size_t>(vertex), false);
                if (!isSecondFound)
                    note(following(m_second, static_cast<std::size_t>(vertex), count - 1), true);
                return isSecondFound;
            });
            if (isSecondFound) return std::nullopt;
        }
        return found;
    }

private:
    static AcGePoint3d inSpace(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }
    double largestCoordinate() const {
        double largest = 0.0;
        for (const ContourVertex& vertex : m_second.vertices)
            largest = std::max(largest, PointGrid::ordinaryCoordinate({vertex.x, vertex.y, 0.0}));
        return largest;
    }
    bool areSame(std::size_t i, std::size_t j, bool isOpposite) const {
        const AcGePoint2d start = pointAt(m_first, i);
        const AcGePoint2d end = pointAt(m_first, following(m_first, i));
        AcGePoint2d otherStart = pointAt(m_second, j);
        AcGePoint2d otherEnd = pointAt(m_second, following(m_second, j));
        double bulge = m_second.vertices[j].bulge;
        if (isOpposite) {
            std::swap(otherStart, otherEnd);
            bulge = -bulge;
        }
        if (start.distanceTo(otherStart) > m_tolerance || end.distanceTo(otherEnd) > m_tolerance)
            return false;
        const double heights = 0.5 * (m_first.vertices[i].bulge - bulge) * start.distanceTo(end);
        return std::abs(heights) <= m_tolerance;
    }

    const ContourLoop& m_first;
    const ContourLoop& m_second;
    double m_tolerance;
};

/// Do the areas lie side by side with this segment, and no part of another, between them.
bool areNeighbours(const ContourLoop& first, const ContourLoop& second, double bulge) {
    const std::optional<PlaneBox> box = boxOf({first}, {second});
    const ContourArrangement arrangement({first}, {second}, box, areaTolerance(box));
    const int pieces = std::abs(bulge) > 1.0 ? 2 : 1;
    if (!arrangement.isConsistent() || arrangement.sharedEdgeCount() != pieces) return false;
    return arrangement.areaWhere([](const int windings[2]) { return windings[0] != 0 && windings[1] != 0; })
        .empty();
}

bool areApart(const ContourLoop& first, const ContourLoop& second, double tolerance) {
    return !boxOfVertices(first).widened(tolerance).meets(boxOfVertices(second));
}

} // namespace

namespace VEXOGeometryTools {

AcDbCurve* getComonSurfaceFromPolylines(AcDbCurve* first, AcDbCurve* second) {
    CVxLogEntry entry(L"VEXOGeometryTools::getComonSurfaceFromPolylines");
    const std::optional<PlaneContour> one = contourOf(first);
    if (!one) return nullptr;
    std::optional<PlaneContour> two = contourOf(second);
    if (!two || !bringInto(*two, one->normal)) return nullptr;
    const ContourArea common = commonArea(one->loop, two->loop);
    if (common.empty()) return nullptr;
    return polylineOf(withoutStraightVertices(common.front()), one->normal, one->elevation).release();
}

AcDbCurve* MergeContoursIfTheyHaveOneComonSegment(AcDbCurve* first, AcDbCurve* second) {
    CVxLogEntry entry(L"VEXOGeometryTools::MergeContoursIfTheyHaveOneComonSegment");
    const std::optional<PlaneContour> one = contourOf(first);
    if (!one) return nullptr;
    std::optional<PlaneContour> two = contourOf(second);
    if (!two || !bringInto(*two, one->normal)) return nullptr;
    const double tolerance = areaTolerance({one->loop}, {two->loop});
    if (std::abs(one->elevation - two->elevation) > tolerance) return nullptr;
    if (areApart(one->loop, two->loop, tolerance)) return nullptr;
    std::optional<SharedSegment> shared = SharedSegments(one->loop, two->loop, tolerance).only();
    if (!shared) return nullptr;
    const bool haveOneSense = (signedArea(one->loop) > 0.0) == (signedArea(two->loop) > 0.0);
    if (haveOneSense != shared->isOpposite) return nullptr;
    if (!shared->isOpposite) {
        two->loop = reversed(two->loop);
        // Vertex k is now vertex count-1-k, and segment k, which led from it on, leads to it.
        shared->second = following(two->loop, 2 * two->loop.vertices.size() - 2 - shared->second, 0);
    }
    const double bulge = one->loop.vertices[shared->first].bulge;
    if (!areClearNeighbours(one->loop, shared->first, two->loop, shared->second, tolerance) &&
        !areNeighbours(one->loop, two->loop, bulge))
        return nullptr;
    const ContourLoop joined =
        withoutStraightVertices(joinedAt(one->loop, shared->first, two->loop, shared->second));
    if (joined.vertices.size() < 2) return nullptr;
    return polylineOf(joined, one->normal, one->elevation).release();
}

} // namespace VEXOGeometryTools
