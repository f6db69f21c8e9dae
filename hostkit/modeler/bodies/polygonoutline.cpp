#include "polygonoutline.h"

#include "amerror.h"
#include "planarpoints.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace hostkit::modeler {

using namespace AModeler;
namespace {

/// Adds the points of a contour's arc, the one at its end left out.
void addArc(PolygonOutline& outline, const Point3d& from, const Point3d& to, const PolygonVertexData& data) {
    const Circle3d& circle = data.circle();
    if (data.type() != PolygonVertexData::kArc3d) throw Error(eArc3dTypeExpected);
    if (!circle.isValid()) throw Error(eCircleIsNotValid);
    const double allowance = std::max(gEpsAbs, 1.0e-9 * circle.radius());
    const bool forward =
        from.isEqual(circle.startPoint(), allowance) && to.isEqual(circle.endPoint(), allowance);
    const bool backward =
        from.isEqual(circle.endPoint(), allowance) && to.isEqual(circle.startPoint(), allowance);
    if (!forward && !backward) throw Error(eBadArcCenter);

    // From the circle's start to its end the arc runs clockwise about the circle's normal.
    const AcGeVector3d axis = forward ? -circle.normal() : AcGeVector3d(circle.normal());
    const AcGeVector3d first = from - circle.center();
    const double span = first.angleTo(to - circle.center(), axis);
    const int sides =
        std::max(1, static_cast<int>(std::ceil(data.approximation() * span / (2 * AcGe::kPi) - 1.0e-9)));
    const AcGeVector3d across = axis.crossProduct(first);
    outline.circles.push_back(circle);
    for (int i = 0; i < sides; ++i) {
        const double angle = span * i / sides;
        outline.points.push_back(i == 0
                                     ? AcGePoint3d(from)
                                     : circle.center() + first * std::cos(angle) + across * std::sin(angle));
        outline.arcs.push_back(static_cast<int>(outline.circles.size()) - 1);
    }
}

double areaAlong(const PolygonOutline& outline) {
    AcGeVector3d area;
    const std::size_t count = outline.points.size();
    for (std::size_t i = 0; i < count; ++i)
        area += (outline.points[i] - outline.points[0])
                    .crossProduct(outline.points[(i + 1) % count] - outline.points[0]);
    return area.dotProduct(outline.normal);
}

/// The same polygon the other way round: sides keep their arcs.
void reverse(PolygonOutline& outline) {
    std::reverse(outline.points.begin(), outline.points.end());
    std::reverse(outline.arcs.begin(), outline.arcs.end());
    std::rotate(outline.arcs.begin(), outline.arcs.begin() + 1, outline.arcs.end());
}

void check(const PolygonOutline& outline) {
    const std::size_t count = outline.points.size();
    if (count < 3) throw Error(eBadPolygon);
    for (std::size_t i = 0; i < count; ++i) {
        const AcGePoint3d& p = outline.points[i];
        if (!std::isfinite(p.x + p.y + p.z)) throw Error(eBadPolygon);
        if (Point3d(p).isEqual(outline.points[(i + 1) % count])) throw Error(ePolygonPointsCoincide);
        if (std::abs(outline.normal.dotProduct(p - outline.points[0])) > gEpsAbs)
            throw Error(eNonPlanarPolygon);
    }
}

} // namespace

PolygonOutline outlineOf(const Point3d points[], PolygonVertexData* const data[], int count,
                         const AcGeVector3d& normal) {
    if (!points) throw Error(ePolygonPointerIsNull);
    const double length = normal.length();
    if (!(length > gEpsAbs * gEpsAbs) || !std::isfinite(length)) throw Error(eNullNormalVector);
    PolygonOutline outline;
    outline.normal = normal / length;
    for (int i = 0; i < count; ++i) {
        if (data && data[i]) {
            addArc(outline, points[i], points[(i + 1) % count], *data[i]);
        } else {
            outline.points.push_back(points[i]);
            outline.arcs.push_back(-1);
        }
    }
    check(outline);
    if (crossesItself(outline, gEpsAbs)) throw Error(ePolygonIsSelfIntersectingOrTouching);
    if (areaAlong(outline) < 0.0) reverse(outline);
    return outline;
}

namespace {

struct Side {
    AcGePoint3d begin, end;
};

double distanceBetween(const AcGePoint3d& p, const Side& side) {
    const AcGeVector3d along = side.end - side.begin;
    const double t = std::clamp((p - side.begin).dotProduct(along) / along.lengthSqrd(), 0.0, 1.0);
    return p.distanceTo(side.begin + along * t);
}

bool meet(const Side& a, const Side& b, const AcGeVector3d& normal, double epsilon) {
    const auto turn = [&](const AcGePoint3d& p, const AcGePoint3d& q, const AcGePoint3d& r) {
        return (q - p).crossProduct(r - p).dotProduct(normal);
    };
    const bool across = (turn(a.begin, a.end, b.begin) > 0.0) != (turn(a.begin, a.end, b.end) > 0.0) &&
                        (turn(b.begin, b.end, a.begin) > 0.0) != (turn(b.begin, b.end, a.end) > 0.0);
    return across || distanceBetween(a.begin, b) <= epsilon || distanceBetween(a.end, b) <= epsilon ||
           distanceBetween(b.begin, a) <= epsilon || distanceBetween(b.end, a) <= epsilon;
}

} // namespace

bool crossesItself(const PolygonOutline& outline, double epsilon) {
    const std::size_t count = outline.points.size();
    const FaceView view(outline.normal);
    const auto sideAt = [&](std::size_t i) {
        return Side{outline.points[i], outline.points[(i + 1) % count]};
    };
    for (std::size_t i = 0; i < count; ++i) { // a spike: a neighbour's end on the side itself
        const Side here = sideAt(i), next = sideAt((i + 1) % count);
        if (distanceBetween(next.end, here) <= epsilon || distanceBetween(here.begin, next) <= epsilon)
            return true;
    }
    std::vector<double> low(count), high(count);
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = 0; i < count; ++i) {
        const double a = view(outline.points[i]).x, b = view(outline.points[(i + 1) % count]).x;
        low[i] = std::min(a, b) - epsilon;
        high[i] = std::max(a, b) + epsilon;
    }
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return low[a] < low[b]; });
    std::vector<std::size_t> active;
    for (std::size_t i : order) {
        std::erase_if(active, [&](std::size_t k) { return high[k] < low[i]; });
        for (std::size_t k : active) {
            const bool neighbours = (i + 1) % count == k || (k + 1) % count == i;
            if (!neighbours && meet(sideAt(i), sideAt(k), outline.normal, epsilon)) return true;
        }
        active.push_back(i);
    }
    return false;
}

} // namespace hostkit::modeler
