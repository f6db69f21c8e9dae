#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbxline.h"
#include "gemat3d.h"
#include "geplane.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using CurvePointer = std::shared_ptr<AcDbCurve>;

CurvePointer lineOf(double x1, double y1, double x2, double y2) {
    return std::make_shared<AcDbLine>(AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0));
}

CurvePointer xlineOf(double x, double y, double dx, double dy) {
    auto line = std::make_shared<AcDbXline>();
    line->setBasePoint(AcGePoint3d(x, y, 0));
    line->setUnitDir(AcGeVector3d(dx, dy, 0));
    return line;
}

CurvePointer rayOf(double x, double y, double dx, double dy) {
    auto ray = std::make_shared<AcDbRay>();
    ray->setBasePoint(AcGePoint3d(x, y, 0));
    ray->setUnitDir(AcGeVector3d(dx, dy, 0));
    return ray;
}

CurvePointer circleOf(double x, double y, double radius) {
    return std::make_shared<AcDbCircle>(AcGePoint3d(x, y, 0), AcGeVector3d::kZAxis, radius);
}

CurvePointer polylineOf(const std::vector<std::array<double, 3>>& vertices, bool closed) {
    auto polyline = std::make_shared<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices)
        polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(x, y), bulge);
    polyline->setClosed(closed);
    return polyline;
}

CurvePointer squareOf(double x, double y, double side) {
    return polylineOf({{x, y, 0}, {x + side, y, 0}, {x + side, y + side, 0}, {x, y + side, 0}}, true);
}

struct Case {
    std::string name;
    CurvePointer first;
    CurvePointer second;
    std::vector<AcGePoint3d> expected; ///< in the order of the first curve
    AcDb::Intersect type = AcDb::kOnBothOperands;
};

std::vector<Case> cases() {
    const double h = std::sqrt(3.0);
    return {
        {"lines cross", lineOf(0, 0, 4, 4), lineOf(0, 4, 4, 0), {{2, 2, 0}}},
        {"lines touch at an end", lineOf(0, 0, 4, 0), lineOf(2, 0, 2, 5), {{2, 0, 0}}},
        {"lines miss", lineOf(0, 0, 4, 0), lineOf(2, 0.001, 2, 5), {}},
        {"lines run together", lineOf(0, 0, 4, 0), lineOf(1, 0, 9, 0), {{1, 0, 0}, {4, 0, 0}}},
        {"the same line backward", lineOf(0, 0, 4, 0), lineOf(4, 0, 0, 0), {{0, 0, 0}, {4, 0, 0}}},
        {"collinear lines touch", lineOf(0, 0, 4, 0), lineOf(4, 0, 9, 0), {{4, 0, 0}}},
        {"parallel lines", lineOf(0, 0, 4, 0), lineOf(0, 1, 4, 1), {}},
        {"line through a circle", lineOf(-5, 0, 5, 0), circleOf(0, 0, 2), {{-2, 0, 0}, {2, 0, 0}}},
        {"line touches a circle", lineOf(-5, 2, 5, 2), circleOf(0, 0, 2), {}},
        {"line touches an arc from inside its ends",
         lineOf(2, -5, 2, 5),
         std::make_shared<AcDbArc>(AcGePoint3d(), 2.0, -1.0, 1.0),
         {}},
        {"line ends on a circle", lineOf(0, 0, 2, 0), circleOf(0, 0, 2), {{2, 0, 0}}},
        {"circles cross", circleOf(0, 0, 2), circleOf(2, 0, 2), {{1, h, 0}, {1, -h, 0}}},
        {"the same circle", circleOf(0, 0, 2), circleOf(0, 0, 2), {{2, 0, 0}}},
        {"arcs of one circle overlap",
         std::make_shared<AcDbArc>(AcGePoint3d(), 1.0, 0.0, 2.0),
         std::make_shared<AcDbArc>(AcGePoint3d(), 1.0, 1.0, 3.0),
         {{std::cos(1.0), std::sin(1.0), 0}, {std::cos(2.0), std::sin(2.0), 0}}},
        {"unbounded line through a square", xlineOf(1, -9, 0, 1), squareOf(0, 0, 2), {{1, 0, 0}, {1, 2, 0}}},
        {"unbounded line through corners", xlineOf(0, 0, 1, 1), squareOf(0, 0, 2), {{0, 0, 0}, {2, 2, 0}}},
        {"unbounded line along a side", xlineOf(0, -9, 0, 1), squareOf(0, 0, 2), {{0, 0, 0}, {0, 2, 0}}},
        {"ray from inside", rayOf(1, 1, 1, 0), squareOf(0, 0, 2), {{2, 1, 0}}},
        {"rays run together", rayOf(0, 0, 1, 0), rayOf(3, 0, -1, 0), {{0, 0, 0}, {3, 0, 0}}},
        {"line touches a circle of two half circles at their vertex",
         xlineOf(2, 0, 0, 1),
         polylineOf({{-2, 0, 1}, {2, 0, 1}}, true),
         {}},
        {"line through the vertices of two half circles",
         xlineOf(0, 0, 1, 0),
         polylineOf({{-2, 0, 1}, {2, 0, 1}}, true),
         {{-2, 0, 0}, {2, 0, 0}}},
        {"line along the tangent where an S goes over",
         xlineOf(0, 0, 0, 1),
         polylineOf({{-2, 0, -1}, {0, 0, 1}, {2, 0, 0}}, false),
         {{0, 0, 0}}},
        {"squares cross", squareOf(0, 0, 2), squareOf(1, 1, 2), {{2, 1, 0}, {1, 2, 0}}},
        {"squares share part of a side", squareOf(0, 0, 2), squareOf(2, 1, 2), {{2, 1, 0}, {2, 2, 0}}},
        {"squares share a side and its neighbours' halves",
         squareOf(0, 0, 2),
         polylineOf({{1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, 2, 0}}, true),
         {{1, 0, 0}, {1, 2, 0}}},
        {"common run across the start of a closed curve",
         squareOf(0, 0, 2),
         polylineOf({{1, 0, 0}, {0, 0, 0}, {0, 1, 0}, {-3, 1, 0}}, false),
         {{1, 0, 0}, {0, 1, 0}}},
        {"the same square", squareOf(0, 0, 2), squareOf(0, 0, 2), {{0, 0, 0}}},
        {"squares meet at a corner", squareOf(0, 0, 2), squareOf(2, 2, 2), {{2, 2, 0}}},
        {"line extended to meet", lineOf(0, 0, 1, 0), lineOf(5, -1, 5, 1), {{5, 0, 0}}, AcDb::kExtendThis},
        {"argument not extended", lineOf(5, 1, 5, 2), lineOf(0, 0, 1, 0), {}, AcDb::kExtendThis},
        {"both extended", lineOf(5, 1, 5, 2), lineOf(0, 0, 1, 0), {{5, 0, 0}}, AcDb::kExtendBoth},
        {"arc extended to its circle",
         std::make_shared<AcDbArc>(AcGePoint3d(), 2.0, 0.1, 1.0),
         lineOf(-5, 0, 0, 0),
         {{-2, 0, 0}},
         AcDb::kExtendThis},
        {"open polyline extended at its end",
         polylineOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, false),
         lineOf(0, 5, 3, 5),
         {{1, 5, 0}},
         AcDb::kExtendThis},
        {"ellipse and line",
         std::make_shared<AcDbEllipse>(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(4, 0, 0), 0.5),
         lineOf(0, -5, 0, 5),
         {{0, 2, 0}, {0, -2, 0}}},
    };
}

struct Placement {
    std::string name;
    AcGeMatrix3d matrix;
};

std::vector<Placement> placements() {
    return {{"as made", AcGeMatrix3d()},
            {"a million units out", AcGeMatrix3d::translation(AcGeVector3d(1e6, -1e6, 0))},
            {"turned", AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis)},
            {"in a slanted plane", AcGeMatrix3d::rotation(1.1, AcGeVector3d(1, 2, 3))},
            {"mirrored", AcGeMatrix3d::mirroring(AcGePlane::kYZPlane())},
            {"upside down", AcGeMatrix3d::rotation(AcGe::kPi, AcGeVector3d::kXAxis)}};
}

CurvePointer placed(const CurvePointer& curve, const AcGeMatrix3d& matrix) {
    CurvePointer copy(AcDbCurve::cast(curve->clone()));
    EXPECT_EQ(copy->transformBy(matrix), Acad::eOk);
    return copy;
}

bool contains(const AcGePoint3dArray& points, const AcGePoint3d& wanted) {
    for (const AcGePoint3d& point : points)
        if (point.distanceTo(wanted) <= 1e-9 + 64 * AcGe::ulpOf(wanted.largestCoordinate())) return true;
    return false;
}

} // namespace

TEST(Intersections, EveryMeetingOnceInTheFirstCurvesOrder) {
    for (const Placement& placement : placements()) {
        for (const Case& c : cases()) {
            SCOPED_TRACE(c.name + ", " + placement.name);
            const CurvePointer first = placed(c.first, placement.matrix);
            const CurvePointer second = placed(c.second, placement.matrix);
            AcGePoint3dArray points;
            ASSERT_EQ(first->intersectWith(second.get(), c.type, points), Acad::eOk);
            ASSERT_EQ(points.length(), static_cast<int>(c.expected.size()));
            // A circle's start moves with the axes of its normal, and the order with it.
            const bool keepsOrder = !AcDbCircle::cast(c.first.get());
            for (int i = 0; i < points.length(); ++i) {
                const AcGePoint3d wanted = placement.matrix * c.expected[static_cast<std::size_t>(i)];
                if (keepsOrder) {
                    EXPECT_LE(points[i].distanceTo(wanted),
                              1e-9 + 64 * AcGe::ulpOf(wanted.largestCoordinate()))
                        << i;
                } else if (c.name != "the same circle") {
                    EXPECT_TRUE(contains(points, wanted)) << i;
                }
            }
        }
    }
}

TEST(Intersections, OperandsMayBeExchanged) {
    for (const Case& c : cases()) {
        if (c.type != AcDb::kOnBothOperands) continue;
        AcGePoint3dArray points;
        ASSERT_EQ(c.second->intersectWith(c.first.get(), c.type, points), Acad::eOk) << c.name;
        ASSERT_EQ(points.length(), static_cast<int>(c.expected.size())) << c.name;
        if (c.expected.size() < 2) continue; // the start of a closed common run depends on the order
        for (const AcGePoint3d& wanted : c.expected) EXPECT_TRUE(contains(points, wanted)) << c.name;
    }
}

TEST(Intersections, CrossingsOfLongContoursAreThoseOfAllPairsOfSegments) {
    std::mt19937 random(20260711);
    std::uniform_real_distribution<double> jitter(-0.3, 0.3);
    std::vector<std::array<double, 3>> wave1;
    std::vector<std::array<double, 3>> wave2;
    for (int i = 0; i < 300; ++i) {
        wave1.push_back(
            {i + jitter(random), (i % 2 ? 1.0 : -1.0) + jitter(random), i % 3 == 0 ? jitter(random) : 0.0});
        wave2.push_back({i + 0.4 + jitter(random), jitter(random) * 4, i % 4 == 0 ? jitter(random) : 0.0});
    }
    const CurvePointer long1 = polylineOf(wave1, false);
    const CurvePointer long2 = polylineOf(wave2, false);
    AcGePoint3dArray swept;
    ASSERT_EQ(long1->intersectWith(long2.get(), AcDb::kOnBothOperands, swept), Acad::eOk);
    AcGePoint3dArray plain;
    for (std::size_t i = 0; i + 1 < wave1.size(); ++i)
        for (std::size_t j = 0; j + 1 < wave2.size(); ++j)
            polylineOf({wave1[i], wave1[i + 1]}, false)
                ->intersectWith(polylineOf({wave2[j], wave2[j + 1]}, false).get(), AcDb::kOnBothOperands,
                                plain);
    EXPECT_GT(swept.length(), 250);
    EXPECT_EQ(swept.length(), plain.length());
    for (const AcGePoint3d& point : plain) EXPECT_TRUE(contains(swept, point));
    double last = -1.0;
    for (const AcGePoint3d& point : swept) {
        double parameter = 0.0;
        ASSERT_EQ(long1->getParamAtPoint(point, parameter), Acad::eOk);
        EXPECT_GE(parameter, last);
        last = parameter;
    }
}

TEST(Intersections, SeenOnAPlaneThePointsLieOnTheFirstCurve) {
    const AcDbLine high(AcGePoint3d(0, 0, 5), AcGePoint3d(4, 4, 9));
    const AcDbLine low(AcGePoint3d(0, 4, -2), AcGePoint3d(4, 0, -2));
    AcGePoint3dArray points;
    ASSERT_EQ(high.intersectWith(&low, AcDb::kOnBothOperands, points), Acad::eOk);
    EXPECT_EQ(points.length(), 0);
    ASSERT_EQ(high.intersectWith(&low, AcDb::kOnBothOperands, AcGePlane::kXYPlane(), points), Acad::eOk);
    ASSERT_EQ(points.length(), 1);
    EXPECT_EQ(points[0], AcGePoint3d(2, 2, 7));
}

TEST(Intersections, WhatHasNoCurveIsRefused) {
    AcGePoint3dArray points;
    const AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    EXPECT_EQ(line.intersectWith(nullptr, AcDb::kOnBothOperands, points), Acad::eInvalidInput);
    EXPECT_EQ(line.intersectWith(std::make_unique<AcDbPolyline>().get(), AcDb::kOnBothOperands, points),
              Acad::eDegenerateGeometry);
    EXPECT_EQ(points.length(), 0);
}
