#include "curvecases.h"

#include <random>

using namespace curvecases;

namespace {

using CurvePointer = std::shared_ptr<AcDbCurve>;

CurvePointer lineOf(double x1, double y1, double x2, double y2) {
    return std::make_shared<AcDbLine>(AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0));
}

CurvePointer xlineOf(double x, double y, double dx, double dy) {
    return throughPoint<AcDbXline>({x, y, 0}, {dx, dy, 0});
}

CurvePointer rayOf(double x, double y, double dx, double dy) {
    return throughPoint<AcDbRay>({x, y, 0}, {dx, dy, 0});
}

CurvePointer circleOf(double x, double y, double radius) {
    return std::make_shared<AcDbCircle>(AcGePoint3d(x, y, 0), AcGeVector3d::kZAxis, radius);
}

CurvePointer arcOf(double radius, double from, double to) {
    return std::make_shared<AcDbArc>(AcGePoint3d(), radius, from, to);
}

CurvePointer squareOf(double x, double y, double side) {
    return polyline({{x, y, 0}, {x + side, y, 0}, {x + side, y + side, 0}, {x, y + side, 0}}, true);
}

struct Meeting {
    std::string name;
    CurvePointer first;
    CurvePointer second;
    std::vector<AcGePoint3d> expected; ///< in the order of the first curve
    AcDb::Intersect type = AcDb::kOnBothOperands;
};

std::vector<Meeting> cases() {
    const double h = std::sqrt(3.0);
    const CurvePointer square = squareOf(0, 0, 2), disc = circleOf(0, 0, 2);
    const CurvePointer halves = polyline({{-2, 0, 1}, {2, 0, 1}}, true);
    const CurvePointer narrow = polyline({{1, 0}, {2, 0}, {2, 2}, {1, 2}}, true);
    const CurvePointer across = polyline({{1, 0}, {0, 0}, {0, 1}, {-3, 1}}, false);
    const CurvePointer corner = polyline({{0, 0}, {1, 0}, {1, 1}}, false);
    const CurvePointer snake = polyline(
        {{-2, 0, -1}, {0, 0, 1}, {2, 0}, {2, 4, -1}, {0, 4, 1}, {-2, 4}, {-2, 8, -1}, {0, 8, 1}, {2, 8}},
        false);
    const CurvePointer ellipse =
        std::make_shared<AcDbEllipse>(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(4, 0, 0), 0.5);
    return {
        {"lines cross", lineOf(0, 0, 4, 4), lineOf(0, 4, 4, 0), {{2, 2, 0}}},
        {"lines touch at an end", lineOf(0, 0, 4, 0), lineOf(2, 0, 2, 5), {{2, 0, 0}}},
        {"lines miss", lineOf(0, 0, 4, 0), lineOf(2, 0.001, 2, 5), {}},
        {"lines run together", lineOf(0, 0, 4, 0), lineOf(1, 0, 9, 0), {{1, 0, 0}, {4, 0, 0}}},
        {"the same line backward", lineOf(0, 0, 4, 0), lineOf(4, 0, 0, 0), {{0, 0, 0}, {4, 0, 0}}},
        {"collinear lines touch", lineOf(0, 0, 4, 0), lineOf(4, 0, 9, 0), {{4, 0, 0}}},
        {"parallel lines", lineOf(0, 0, 4, 0), lineOf(0, 1, 4, 1), {}},
        {"line through a circle", lineOf(-5, 0, 5, 0), disc, {{-2, 0, 0}, {2, 0, 0}}},
        {"line touches a circle", lineOf(-5, 2, 5, 2), disc, {}},
        {"line touches an arc from inside its ends", lineOf(2, -5, 2, 5), arcOf(2.0, -1.0, 1.0), {}},
        {"line ends on a circle", lineOf(0, 0, 2, 0), disc, {{2, 0, 0}}},
        {"circles cross", disc, circleOf(2, 0, 2), {{1, h, 0}, {1, -h, 0}}},
        {"the same circle", disc, disc, {{2, 0, 0}}},
        {"arcs of one circle overlap",
         arcOf(1.0, 0.0, 2.0),
         arcOf(1.0, 1.0, 3.0),
         {{std::cos(1.0), std::sin(1.0), 0}, {std::cos(2.0), std::sin(2.0), 0}}},
        {"unbounded line through a square", xlineOf(1, -9, 0, 1), square, {{1, 0, 0}, {1, 2, 0}}},
        {"unbounded line through corners", xlineOf(0, 0, 1, 1), square, {{0, 0, 0}, {2, 2, 0}}},
        {"unbounded line along a side", xlineOf(0, -9, 0, 1), square, {{0, 0, 0}, {0, 2, 0}}},
        {"ray from inside", rayOf(1, 1, 1, 0), square, {{2, 1, 0}}},
        {"rays run together", rayOf(0, 0, 1, 0), rayOf(3, 0, -1, 0), {{0, 0, 0}, {3, 0, 0}}},
        {"line touches a circle of two half circles at their vertex", xlineOf(2, 0, 0, 1), halves, {}},
        {"line through the vertices of two half circles",
         xlineOf(0, 0, 1, 0),
         halves,
         {{-2, 0, 0}, {2, 0, 0}}},
        {"line along the tangent where a snake goes over, three times",
         xlineOf(0, 0, 0, 1),
         snake,
         {{0, 0, 0}, {0, 4, 0}, {0, 8, 0}}},
        {"squares cross", square, squareOf(1, 1, 2), {{2, 1, 0}, {1, 2, 0}}},
        {"squares share part of a side", square, squareOf(2, 1, 2), {{2, 1, 0}, {2, 2, 0}}},
        {"squares share a side and its neighbours' halves", square, narrow, {{1, 0, 0}, {1, 2, 0}}},
        {"common run across the start of a closed curve", square, across, {{1, 0, 0}, {0, 1, 0}}},
        {"the same square", square, square, {{0, 0, 0}}},
        {"squares meet at a corner", square, squareOf(2, 2, 2), {{2, 2, 0}}},
        {"line extended to meet", lineOf(0, 0, 1, 0), lineOf(5, -1, 5, 1), {{5, 0, 0}}, AcDb::kExtendThis},
        {"argument not extended", lineOf(5, 1, 5, 2), lineOf(0, 0, 1, 0), {}, AcDb::kExtendThis},
        {"both extended", lineOf(5, 1, 5, 2), lineOf(0, 0, 1, 0), {{5, 0, 0}}, AcDb::kExtendBoth},
        {"arc extended to its circle",
         arcOf(2.0, 0.1, 1.0),
         lineOf(-5, 0, 0, 0),
         {{-2, 0, 0}},
         AcDb::kExtendThis},
        {"open polyline extended at its end", corner, lineOf(0, 5, 3, 5), {{1, 5, 0}}, AcDb::kExtendThis},
        {"ellipse and line", ellipse, lineOf(0, -5, 0, 5), {{0, 2, 0}, {0, -2, 0}}},
    };
}

double allowance(const AcGePoint3d& point) { return 1e-9 + 64 * AcGe::ulpOf(point.largestCoordinate()); }

} // namespace

TEST(Intersections, EveryMeetingOnceInTheFirstCurvesOrder) {
    for (const auto& [place, matrix] : placements()) {
        for (const Meeting& c : cases()) {
            SCOPED_TRACE(c.name + ", " + place);
            const auto first = placed(*c.first, matrix);
            const auto second = placed(*c.second, matrix);
            AcGePoint3dArray points;
            ASSERT_EQ(first->intersectWith(second.get(), c.type, points), Acad::eOk);
            ASSERT_EQ(points.length(), static_cast<int>(c.expected.size()));
            // A circle's start moves with the axes of its normal, and the order with it.
            const bool keepsOrder = !AcDbCircle::cast(c.first.get());
            for (int i = 0; i < points.length(); ++i) {
                const AcGePoint3d wanted = matrix * c.expected[static_cast<std::size_t>(i)];
                if (keepsOrder) {
                    EXPECT_LE(points[i].distanceTo(wanted), allowance(wanted)) << i;
                } else if (c.name != "the same circle") {
                    EXPECT_TRUE(hasPoint(points, wanted, allowance(wanted))) << i;
                }
            }
        }
    }
}

TEST(Intersections, OperandsMayBeExchanged) {
    for (const Meeting& c : cases()) {
        if (c.type != AcDb::kOnBothOperands) continue;
        AcGePoint3dArray points;
        ASSERT_EQ(c.second->intersectWith(c.first.get(), c.type, points), Acad::eOk) << c.name;
        ASSERT_EQ(points.length(), static_cast<int>(c.expected.size())) << c.name;
        if (c.expected.size() < 2) continue; // the start of a closed common run depends on the order
        for (const AcGePoint3d& wanted : c.expected)
            EXPECT_TRUE(hasPoint(points, wanted, allowance(wanted))) << c.name;
    }
}

TEST(Intersections, CrossingsOfLongContoursAreThoseOfAllPairsOfSegments) {
    std::mt19937 random(20260711);
    std::uniform_real_distribution<double> jitter(-0.3, 0.3);
    std::vector<Vertex> wave1;
    std::vector<Vertex> wave2;
    for (int i = 0; i < 300; ++i) {
        wave1.push_back(
            {i + jitter(random), (i % 2 ? 1.0 : -1.0) + jitter(random), i % 3 == 0 ? jitter(random) : 0.0});
        wave2.push_back({i + 0.4 + jitter(random), jitter(random) * 4, i % 4 == 0 ? jitter(random) : 0.0});
    }
    const CurvePointer long1 = polyline(wave1, false);
    const CurvePointer long2 = polyline(wave2, false);
    AcGePoint3dArray swept;
    ASSERT_EQ(long1->intersectWith(long2.get(), AcDb::kOnBothOperands, swept), Acad::eOk);
    AcGePoint3dArray plain;
    for (std::size_t i = 0; i + 1 < wave1.size(); ++i)
        for (std::size_t j = 0; j + 1 < wave2.size(); ++j)
            polyline({wave1[i], wave1[i + 1]}, false)
                ->intersectWith(polyline({wave2[j], wave2[j + 1]}, false).get(), AcDb::kOnBothOperands,
                                plain);
    EXPECT_GT(swept.length(), 250);
    EXPECT_EQ(swept.length(), plain.length());
    for (const AcGePoint3d& point : plain) EXPECT_TRUE(hasPoint(swept, point, allowance(point)));
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
