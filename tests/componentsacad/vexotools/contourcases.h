// Named shapes, seeded random arcs, points and contours, and what the tests of the contour tools ask of
// curves.
#pragma once

#include "acarray.h"
#include "dbextents.h"
#include "dbpolyline.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gepnt3d.h"

#include <array>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace contourcases {

inline constexpr double kPi = AcGe::kPi;
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Whole numbers up to `most` behind the offset, one in six up to three jitters beside them: many in common.
inline double onLattice(std::mt19937& random, int most, double offset, double jitter) {
    const double place = offset + std::uniform_int_distribution<int>(0, most)(random);
    return random() % 6 ? place : place + std::uniform_int_distribution<int>(-3, 3)(random) * jitter;
}

inline AcGeTol toleranceOf(double point, double vector = AcGeTol().equalVector()) {
    AcGeTol tolerance;
    tolerance.setEqualPoint(point);
    tolerance.setEqualVector(vector);
    return tolerance;
}

/// Equal to the bit, so that NaN equals itself and 0 does not equal -0.
template <typename T>
bool areSame(const AcArray<T>& a, const AcArray<T>& b) {
    if (a.length() != b.length()) return false;
    for (int i = 0; i < a.length(); ++i)
        if (std::memcmp(&a[i], &b[i], sizeof(T)) != 0) return false;
    return true;
}

using Vertices = std::vector<std::array<double, 3>>;

/// Straight sides through the corners, given as x and y in turn.
inline Vertices corners(std::initializer_list<double> coordinates) {
    Vertices vertices;
    for (const double* x = coordinates.begin(); x < coordinates.end(); x += 2)
        vertices.push_back({x[0], x[1], 0});
    return vertices;
}

inline Vertices rectangle(double x, double y, double width, double height) {
    return corners({x, y, x + width, y, x + width, y + height, x, y + height});
}

inline Vertices circle(double x, double y, double radius) { return {{x - radius, y, 1}, {x + radius, y, 1}}; }

/// Of this length between the centres of its ends, along x or y.
inline Vertices capsule(double x, double y, double length, double radius, bool isUpright = false) {
    if (isUpright)
        return {
            {x + radius, y, 0}, {x + radius, y + length, 1}, {x - radius, y + length, 0}, {x - radius, y, 1}};
    return {{x, y - radius, 0}, {x + length, y - radius, 1}, {x + length, y + radius, 0}, {x, y + radius, 1}};
}

inline Vertices roundedRectangle(double x, double y, double width, double height, double radius) {
    if (radius == 0.0) return rectangle(x, y, width, height);
    const double quarter = std::tan(AcGe::kPi / 8);
    const double right = x + width;
    const double top = y + height;
    const Vertices all = {{x + radius, y, 0},       {right - radius, y, quarter},
                          {right, y + radius, 0},   {right, top - radius, quarter},
                          {right - radius, top, 0}, {x + radius, top, quarter},
                          {x, top - radius, 0},     {x, y + radius, quarter}};
    Vertices vertices; // without sides of no length
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto& next = all[(i + 1) % all.size()];
        if (all[i][0] != next[0] || all[i][1] != next[1]) vertices.push_back(all[i]);
    }
    return vertices;
}

inline std::unique_ptr<AcDbPolyline> polylineOf(const Vertices& vertices, bool closed) {
    auto polyline = std::make_unique<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices)
        polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(x, y), bulge);
    polyline->setClosed(closed);
    return polyline;
}

/// A closed rectangle from corner to corner.
inline std::unique_ptr<AcDbPolyline> panel(double x1, double y1, double x2, double y2) {
    return polylineOf(rectangle(x1, y1, x2 - x1, y2 - y1), true);
}

/// From 2 to `most` vertices in any order on a lattice, some sides arcs of common heights.
inline Vertices latticeRun(std::mt19937& random, int most, int size, double offset, double jitter) {
    const double bulges[] = {0, 0, 0, 1, -1, 0.5, std::tan(-kPi / 8), 3};
    Vertices vertices;
    for (int left = std::uniform_int_distribution<int>(2, most)(random); left > 0; --left) {
        const auto coordinate = [&] { return onLattice(random, size, offset, jitter); };
        vertices.push_back({coordinate(), coordinate(), bulges[random() % 8]});
    }
    return vertices;
}

/// A star-shaped contour that does not cross itself, counter-clockwise, a third of its sides arcs.
inline Vertices randomContour(std::mt19937& random, int count, double offset = 0.0) {
    std::uniform_real_distribution<double> radius(5, 10);
    std::uniform_real_distribution<double> bulge(-0.2, 0.2);
    Vertices vertices;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * AcGe::kPi * i / count;
        const double r = radius(random);
        vertices.push_back(
            {offset + r * std::cos(angle), offset + r * std::sin(angle), i % 3 ? 0.0 : bulge(random)});
    }
    return vertices;
}

inline Vertices reversed(const Vertices& vertices) {
    Vertices result;
    const std::size_t count = vertices.size();
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t i = count - 1 - k;
        result.push_back({vertices[i][0], vertices[i][1], -vertices[(i + count - 1) % count][2]});
    }
    return result;
}

/// Turned about the origin, then shifted.
inline Vertices moved(const Vertices& vertices, double angle, double x, double y) {
    Vertices result;
    for (const auto& [vx, vy, bulge] : vertices)
        result.push_back({vx * std::cos(angle) - vy * std::sin(angle) + x,
                          vx * std::sin(angle) + vy * std::cos(angle) + y, bulge});
    return result;
}

// ---- what stands in arrays and curves; NaN where a curve does not tell ----

inline AcArray<AcGePoint3d> pointsOf(const std::vector<AcGePoint3d>& list) {
    AcArray<AcGePoint3d> points;
    for (const AcGePoint3d& point : list) points.append(point);
    return points;
}

inline AcArray<void*> curvesOf(const std::vector<AcDbCurve*>& list) {
    AcArray<void*> curves;
    for (AcDbCurve* curve : list) curves.append(curve);
    return curves;
}

/// Form 3 of a closed contour: points, and for each the vector from the chord's middle to the arc's apex.
struct Outline {
    AcArray<AcGePoint3d> points;
    AcArray<AcGeVector3d> bulges;

    Outline() = default;
    explicit Outline(const Vertices& vertices) {
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const auto& [x, y, bulge] = vertices[i];
            const auto& next = vertices[(i + 1) % vertices.size()];
            points.append(AcGePoint3d(x, y, 0));
            // To the right of the chord for a positive bulge, as the host's.
            bulges.append(AcGeVector3d(next[1] - y, x - next[0], 0) * (bulge / 2));
        }
    }
};

inline double bulgeOf(const AcDbPolyline& polyline, unsigned int index) {
    double bulge = kNaN;
    (void)polyline.getBulgeAt(index, bulge);
    return bulge;
}

/// Those of the segment at its start and its end.
inline std::pair<double, double> widthsOf(const AcDbPolyline& polyline, unsigned int index) {
    double start = kNaN;
    double end = kNaN;
    (void)polyline.getWidthsAt(index, start, end);
    return {start, end};
}

inline Vertices verticesOf(const AcDbPolyline& polyline) {
    Vertices vertices;
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint2d point;
        (void)polyline.getPointAt(i, point);
        vertices.push_back({point.x, point.y, bulgeOf(polyline, i)});
    }
    return vertices;
}

inline AcGePoint3d startOf(const AcDbCurve& curve) {
    AcGePoint3d point(kNaN, kNaN, kNaN);
    (void)curve.getStartPoint(point);
    return point;
}

inline AcGePoint3d endOf(const AcDbCurve& curve) {
    AcGePoint3d point(kNaN, kNaN, kNaN);
    (void)curve.getEndPoint(point);
    return point;
}

inline double lengthOf(const AcDbCurve& curve) {
    double end = kNaN;
    double length = kNaN;
    (void)curve.getEndParam(end);
    (void)curve.getDistAtParam(end, length);
    return length;
}

inline double areaOf(const AcDbCurve& curve) {
    double area = kNaN;
    (void)curve.getArea(area);
    return area;
}

inline AcDbExtents boxOf(const AcDbCurve& curve) {
    AcDbExtents box;
    (void)curve.getGeomExtents(box);
    return box;
}

/// Owns the curves that a tool gave.
struct Curves {
    AcArray<void*> array;

    explicit Curves(const AcArray<void*>& given)
        : array(given) {}
    Curves(const Curves&) = delete;
    Curves& operator=(const Curves&) = delete;
    ~Curves() {
        for (int i = 0; i < count(); ++i) delete curve(i);
    }
    int count() const { return array.length(); }
    AcDbCurve* curve(int i) const { return static_cast<AcDbCurve*>(array[i]); }
    AcDbPolyline& operator[](int i) const { return *AcDbPolyline::cast(curve(i)); }
    double area() const {
        double sum = 0.0;
        for (int i = 0; i < count(); ++i) sum += areaOf(*curve(i));
        return sum;
    }
};

/// The segments of two polylines at these vertices, each a line or an arc, meet here: up to two points.
inline std::vector<AcGePoint3d> meetingsOf(const AcDbPolyline& first, unsigned int i,
                                           const AcDbPolyline& second, unsigned int j,
                                           const AcGeTol& tolerance) {
    AcGeLineSeg3d line1, line2;
    AcGeCircArc3d arc1, arc2;
    const bool isLine1 = first.segType(i) == AcDbPolyline::kLine;
    const bool isLine2 = second.segType(j) == AcDbPolyline::kLine;
    if ((isLine1 ? first.getLineSegAt(i, line1) : first.getArcSegAt(i, arc1)) != Acad::eOk ||
        (isLine2 ? second.getLineSegAt(j, line2) : second.getArcSegAt(j, arc2)) != Acad::eOk)
        return {};
    std::vector<AcGePoint3d> points(2);
    int count = 0;
    if (isLine1 && isLine2)
        count = line1.intersectWith(line2, points[0], tolerance);
    else if (isLine1)
        arc2.intersectWith(line1, count, points[0], points[1], tolerance);
    else if (isLine2)
        arc1.intersectWith(line2, count, points[0], points[1], tolerance);
    else
        arc1.intersectWith(arc2, count, points[0], points[1], tolerance);
    points.resize(static_cast<std::size_t>(count));
    return points;
}

} // namespace contourcases
