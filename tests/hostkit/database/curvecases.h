// Curves that the tests of drawing curves share.
#pragma once

#include "dbarc.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbxline.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace curvecases {

struct Vertex {
    double x;
    double y;
    double bulge = 0.0;
};

inline std::unique_ptr<AcDbPolyline> polyline(const std::vector<Vertex>& vertices, bool closed) {
    auto result = std::make_unique<AcDbPolyline>();
    for (const Vertex& vertex : vertices)
        (void)result->addVertexAt(result->numVerts(), {vertex.x, vertex.y}, vertex.bulge);
    result->setClosed(closed);
    return result;
}

inline std::unique_ptr<AcDbSpline> cubicSpline(bool rational) {
    AcGePoint3dArray points;
    for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(2, 5, 0), AcGePoint3d(5, -4, 1),
                                     AcGePoint3d(7, 3, 2), AcGePoint3d(9, 0, 0)})
        points.append(point);
    AcGeDoubleArray knots;
    for (const double knot : {0.0, 0.0, 0.0, 0.0, 1.5, 4.0, 4.0, 4.0, 4.0}) knots.append(knot);
    AcGeDoubleArray weights;
    for (const double weight : {1.0, 2.0, 0.5, 1.0, 3.0}) weights.append(weight);
    return std::make_unique<AcDbSpline>(3, rational, false, false, points, knots, weights);
}

/// A closed square ring of cubic pieces with one seam at a corner.
inline std::unique_ptr<AcDbSpline> closedSpline() {
    AcGePoint3dArray points;
    for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(4, -1, 0), AcGePoint3d(5, 4, 0),
                                     AcGePoint3d(1, 6, 0), AcGePoint3d(-2, 3, 0), AcGePoint3d(0, 0, 0)})
        points.append(point);
    AcGeDoubleArray knots;
    for (const double knot : {0.0, 0.0, 0.0, 0.0, 1.0, 2.0, 3.0, 3.0, 3.0, 3.0}) knots.append(knot);
    return std::make_unique<AcDbSpline>(3, false, true, false, points, knots, AcGeDoubleArray());
}

struct Case {
    std::string name;
    std::unique_ptr<AcDbCurve> curve;
};

/// Curves that are hard on the arithmetic or have a seam: flat and nearly full arcs, vertices on tangents,
/// knots of several kinds, places far out.
inline std::vector<Case> awkwardCurves() {
    const AcGeVector3d aslant = AcGeVector3d(1.0, -2.0, 3.0).normal();
    std::vector<Case> cases;
    const auto add = [&](const char* name, std::unique_ptr<AcDbCurve> curve) {
        cases.push_back({name, std::move(curve)});
    };
    add("circle as polyline", polyline({{5, 0, 1.0}, {-5, 0, 1.0}}, true));
    add("flat arcs", polyline({{0, 0, 1e-6}, {10, 0, -1e-7}, {10, 20, 3e-9}}, true));
    add("nearly full arc", polyline({{0, 0, 300.0}, {0.01, 0}, {5, 5, -2.0}}, true));
    add("flat arc far out", polyline({{1e6, 1e6, 1e-5}, {1e6 + 10, 1e6 + 3}, {1e6, 1e6 + 9, -1.0}}, false));
    auto slant = polyline({{1, 1, 0.4}, {6, 1}, {6, 5, -0.7}}, true);
    (void)slant->setNormal(aslant);
    (void)slant->setElevation(7.0);
    add("polyline aslant", std::move(slant));
    add("arc aslant, far out", std::make_unique<AcDbArc>(AcGePoint3d(1e6, 2e6, 30), aslant, 3.0, 6.0, 4.0));
    add("tall ellipse arc", std::make_unique<AcDbEllipse>(AcGePoint3d(1, 0, 0), AcGeVector3d::kXAxis,
                                                          AcGeVector3d(0, 0, 4), 0.01, 5.0, 8.0));
    add("rational spline", cubicSpline(true));
    add("closed spline", closedSpline());
    return cases;
}

/// Curves that a call appended, freed at the end.
class Pieces {
public:
    ~Pieces() {
        for (void* piece : array) delete static_cast<AcDbCurve*>(piece);
    }
    int count() const { return array.length(); }
    const AcDbCurve& operator[](int index) const { return *static_cast<const AcDbCurve*>(array[index]); }

    AcDbVoidPtrArray array;
};

inline AcGePoint3d startOf(const AcDbCurve& curve) {
    AcGePoint3d point(NAN, NAN, NAN);
    EXPECT_EQ(curve.getStartPoint(point), Acad::eOk);
    return point;
}

inline AcGePoint3d endOf(const AcDbCurve& curve) {
    AcGePoint3d point(NAN, NAN, NAN);
    EXPECT_EQ(curve.getEndPoint(point), Acad::eOk);
    return point;
}

inline double startParamOf(const AcDbCurve& curve) {
    double parameter = NAN;
    EXPECT_EQ(curve.getStartParam(parameter), Acad::eOk);
    return parameter;
}

inline double endParamOf(const AcDbCurve& curve) {
    double parameter = NAN;
    EXPECT_EQ(curve.getEndParam(parameter), Acad::eOk);
    return parameter;
}

inline AcGePoint3d pointAt(const AcDbCurve& curve, double parameter) {
    AcGePoint3d point(NAN, NAN, NAN);
    EXPECT_EQ(curve.getPointAtParam(parameter, point), Acad::eOk);
    return point;
}

inline double lengthOf(const AcDbCurve& curve) {
    double length = NAN;
    EXPECT_EQ(curve.getDistAtParam(endParamOf(curve), length), Acad::eOk);
    return length;
}

inline ::testing::AssertionResult isNear(const AcGePoint3d& actual, const AcGePoint3d& expected,
                                         double allowed) {
    const double distance = actual.distanceTo(expected);
    if (distance <= allowed) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") is " << distance << " from ("
           << expected.x << ", " << expected.y << ", " << expected.z << ")";
}

/// What points at these coordinates, computed in a few steps, may be off.
inline double roundingAt(const AcGePoint3d& point) {
    return std::max(1e-12, 16.0 * AcGe::ulpOf(point.largestCoordinate()));
}

} // namespace curvecases
