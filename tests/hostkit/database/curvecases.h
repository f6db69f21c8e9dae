// Curves that the tests of drawing curves share.
#pragma once

#include "drawingparts.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbxline.h"
#include "gemat3d.h"
#include "geplane.h"

#include <vector>

namespace curvecases {

using drawingtest::numbersOf;
using drawingtest::pointsOf;

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
    return std::make_unique<AcDbSpline>(
        3, rational, false, false, pointsOf({{0, 0, 0}, {2, 5, 0}, {5, -4, 1}, {7, 3, 2}, {9, 0, 0}}),
        numbersOf({0, 0, 0, 0, 1.5, 4, 4, 4, 4}), numbersOf({1, 2, 0.5, 1, 3}));
}

/// A closed square ring of cubic pieces with one seam at a corner.
inline std::unique_ptr<AcDbSpline> closedSpline() {
    return std::make_unique<AcDbSpline>(
        3, false, true, false, pointsOf({{0, 0, 0}, {4, -1, 0}, {5, 4, 0}, {1, 6, 0}, {-2, 3, 0}, {0, 0, 0}}),
        numbersOf({0, 0, 0, 0, 1, 2, 3, 3, 3, 3}), AcGeDoubleArray());
}

template <class Unbounded>
std::unique_ptr<Unbounded> throughPoint(const AcGePoint3d& point, const AcGeVector3d& direction) {
    auto line = std::make_unique<Unbounded>();
    EXPECT_EQ(line->setBasePoint(point), Acad::eOk);
    EXPECT_EQ(line->setUnitDir(direction), Acad::eOk);
    return line;
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

/// One of each kind and sense.
inline std::vector<Case> ordinaryCurves() {
    const AcGePoint3dArray corners = pointsOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 1}, {0, 3, 2}});
    AcGeDoubleArray bulges = numbersOf({0.0, 0.7, -0.3, 0.0});
    const std::vector<Vertex> slab = {{0, 0}, {6, 0, 0.5}, {6, 4}, {3, 5, -0.4}, {0, 4}, {0, 3, 1.5}};
    const AcGeVector3d up = AcGeVector3d::kZAxis, along(3, 1, 0);
    const AcGePoint3d center(1, 1, 0), middle(1, 0, 0);
    std::vector<Case> cases;
    const auto add = [&](const std::string& name, AcDbCurve* curve) {
        cases.push_back({name, std::unique_ptr<AcDbCurve>(curve)});
    };
    add("line", new AcDbLine({1, 2, 3}, {4, -2, 5}));
    add("arc", new AcDbArc(center, 2.5, 0.4, 5.0));
    add("arc across angle 0", new AcDbArc(center, 2.5, 5.0, 1.0));
    add("arc downwards", new AcDbArc({1, 1, 2}, -up, 1.5, 0.3, 2.0));
    add("circle", new AcDbCircle({-1, 2, 0}, {0.2, 0.3, 1}, 3.0));
    add("ellipse", new AcDbEllipse(middle, up, along, 0.4));
    add("ellipse arc", new AcDbEllipse(middle, up, along, 0.4, 0.5, 4.0));
    add("spline", cubicSpline(false).release());
    add("open polyline", polyline(slab, false).release());
    add("closed polyline", polyline(slab, true).release());
    for (const bool closed : {false, true}) {
        const std::string name = closed ? "closed " : "";
        add(name + "2d polyline",
            new AcDb2dPolyline(AcDb::k2dSimplePoly, corners, 1.5, closed, 0.0, 0.0, &bulges));
        add(name + "3d polyline", new AcDb3dPolyline(AcDb::k3dSimplePoly, corners, closed));
    }
    return cases;
}

/// Where a curve may lie, with its shape kept.
inline std::vector<std::pair<std::string, AcGeMatrix3d>> placements() {
    const AcGePlane upright({2, 0, 0}, AcGeVector3d::kXAxis), slanted({1, 2, 3}, {1, -2, 0.5});
    return {{"as made", AcGeMatrix3d()},
            {"a million units out", AcGeMatrix3d::translation({1e6, -1e6, 0})},
            {"turned about z", AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis)},
            {"turned in space", AcGeMatrix3d::rotation(2.1, {1, 2, 3}, {5, 5, 5})},
            {"mirrored", AcGeMatrix3d::mirroring(upright)},
            {"mirrored on a slant", AcGeMatrix3d::mirroring(slanted)},
            {"upside down", AcGeMatrix3d::rotation(AcGe::kPi, AcGeVector3d::kXAxis)},
            {"scaled", AcGeMatrix3d::scaling(0.01, {3, 3, 3})}};
}

inline std::unique_ptr<AcDbCurve> placed(const AcDbCurve& curve, const AcGeMatrix3d& matrix) {
    std::unique_ptr<AcDbCurve> copy(AcDbCurve::cast(curve.clone()));
    EXPECT_EQ(copy->transformBy(matrix), Acad::eOk);
    return copy;
}

/// The awkward curves, and the ordinary ones in every place.
inline std::vector<Case> allCurves() {
    std::vector<Case> cases = awkwardCurves();
    for (const auto& [name, matrix] : placements())
        for (const Case& each : ordinaryCurves())
            cases.push_back({each.name + ", " + name, placed(*each.curve, matrix)});
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

/// What a curve answers to a question that it can answer.
template <class Value>
Value answer(const AcDbCurve& curve, Acad::ErrorStatus (AcDbCurve::*question)(Value&) const) {
    Value value{};
    EXPECT_EQ((curve.*question)(value), Acad::eOk);
    return value;
}
inline AcGePoint3d startOf(const AcDbCurve& curve) { return answer(curve, &AcDbCurve::getStartPoint); }
inline AcGePoint3d endOf(const AcDbCurve& curve) { return answer(curve, &AcDbCurve::getEndPoint); }
inline double startParamOf(const AcDbCurve& curve) { return answer(curve, &AcDbCurve::getStartParam); }
inline double endParamOf(const AcDbCurve& curve) { return answer(curve, &AcDbCurve::getEndParam); }

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

/// The parameter that is that part of the way from the start to the end.
inline double paramAt(const AcDbCurve& curve, double share) {
    const double start = startParamOf(curve);
    return start + (endParamOf(curve) - start) * share;
}

inline bool hasPoint(const AcGePoint3dArray& points, const AcGePoint3d& wanted, double allowed) {
    for (const AcGePoint3d& point : points)
        if (point.distanceTo(wanted) <= allowed) return true;
    return false;
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
