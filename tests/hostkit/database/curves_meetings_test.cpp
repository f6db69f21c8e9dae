#include "curvecases.h"

#include <random>

using namespace curvecases;

namespace {

/// A contour that does not meet itself, on a coarse grid: a row of towers of random heights, some with round
/// tops or bays, so that random ones share vertices, run along each other, cross and touch. An open one lacks
/// the ground line.
std::unique_ptr<AcDbPolyline> towers(std::mt19937& random) {
    std::uniform_int_distribution<int> any(0, 9);
    const int width = 1 + any(random) % 5;
    std::vector<Vertex> vertices;
    const double left = any(random) % 4;
    const double ground = any(random) % 3;
    const double slant = any(random) < 3 ? 0.5 : 0.0;
    vertices.push_back({left + width, ground});
    for (int i = width; i > 0; --i) {
        const int kind = any(random);
        const double height = ground + 1.0 + any(random) % 3;
        const double bulge = kind == 0 ? 1.0 : kind == 1 ? -1.0 : kind == 2 ? std::sqrt(2.0) - 1.0 : 0.0;
        vertices.push_back({left + i, height, bulge});
        vertices.push_back({left + i - 1.0, height + (bulge == 0.0 ? slant : 0.0)});
    }
    vertices.push_back({left, ground});
    return polyline(vertices, any(random) < 6);
}

AcGePoint3dArray meetings(const AcDbCurve& first, const AcDbCurve& second) {
    AcGePoint3dArray points;
    EXPECT_EQ(first.intersectWith(&second, AcDb::kOnBothOperands, points), Acad::eOk);
    return points;
}

} // namespace

// Whatever two contours have in common: the points are on both of them, none is told twice, they come in the
// first one's order, and the other one finds the same.
TEST(CurveMeetings, HoldOnContoursThatShareVerticesAndSides) {
    std::mt19937 random(7041);
    int found = 0;
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        const std::unique_ptr<AcDbPolyline> first = towers(random);
        const std::unique_ptr<AcDbPolyline> second = towers(random);
        const AcGeMatrix3d far = AcGeMatrix3d::translation({1e6, -2e6, 0}) *
                                 AcGeMatrix3d::rotation(0.3 * round, AcGeVector3d::kZAxis);
        const AcGeMatrix3d matrix = round % 2 ? far : AcGeMatrix3d();
        ASSERT_EQ(first->transformBy(matrix), Acad::eOk);
        ASSERT_EQ(second->transformBy(matrix), Acad::eOk);
        const AcGePoint3dArray points = meetings(*first, *second);
        const AcGePoint3dArray exchanged = meetings(*second, *first);
        EXPECT_EQ(points.length(), exchanged.length());
        double before = -1.0;
        for (int i = 0; i < points.length(); ++i) {
            double own = NAN;
            double others = NAN;
            EXPECT_EQ(first->getParamAtPoint(points[i], own), Acad::eOk);
            EXPECT_EQ(second->getParamAtPoint(points[i], others), Acad::eOk);
            EXPECT_GE(own, before - 1e-6);
            before = own;
            EXPECT_TRUE(hasPoint(exchanged, points[i], 1e-8));
            for (int j = 0; j < i; ++j) EXPECT_FALSE(points[j].isEqualTo(points[i]));
            ++found;
        }
    }
    EXPECT_GT(found, 5000);
}

TEST(CurveMeetings, OfTwoClosedContoursInGeneralPositionAreEven) {
    std::mt19937 random(99);
    std::uniform_real_distribution<double> coordinate(0.0, 10.0);
    std::uniform_real_distribution<double> bulge(-1.5, 1.5);
    for (int round = 0; round < 500; ++round) {
        std::unique_ptr<AcDbPolyline> contours[2];
        for (std::unique_ptr<AcDbPolyline>& contour : contours) {
            std::vector<Vertex> vertices;
            for (int i = 0; i < 6; ++i)
                vertices.push_back({coordinate(random), coordinate(random), i % 2 ? bulge(random) : 0.0});
            contour = polyline(vertices, true);
        }
        EXPECT_EQ(meetings(*contours[0], *contours[1]).length() % 2, 0) << round;
    }
}

// Callers move a cut inwards by this much when it only touches a hole.
TEST(CurveMeetings, CrossAnArcThatReachesABarelyVisibleWayOver) {
    for (const double far : {0.0, 1e4, 1e6}) {
        const auto hole = polyline({{far + 3, 0, 1.0}, {far - 3, 0, 1.0}}, true);
        for (const auto& [x, count] : {std::pair(far + 3.0, 0), std::pair(far + 3.0 - 1e-8, 2),
                                       std::pair(far + 3.0 + 1e-8, 0), std::pair(far - 3.0, 0)}) {
            const auto cut = throughPoint<AcDbXline>({x, -50, 0}, {0, 1, 0});
            EXPECT_EQ(meetings(*cut, *hole).length(), count) << far << " " << x - far;
        }
    }
}

TEST(CurveMeetings, InSpaceAreOnlyWhereTheCurvesReallyMeet) {
    const AcDbCircle flat(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 5.0);
    const AcDbCircle upright(AcGePoint3d(5, 0, 0), AcGeVector3d::kYAxis, 2.0);
    const AcGePoint3dArray none = meetings(flat, upright);
    EXPECT_EQ(none.length(), 0);
    const AcDbCircle through(AcGePoint3d(0, 0, 0), AcGeVector3d::kYAxis, 5.0);
    const AcGePoint3dArray both = meetings(flat, through);
    ASSERT_EQ(both.length(), 2);
    EXPECT_TRUE(isNear(both[0], AcGePoint3d(5, 0, 0), 1e-12));
    EXPECT_TRUE(isNear(both[1], AcGePoint3d(-5, 0, 0), 1e-12));
    const AcDbLine upwards(AcGePoint3d(3, 4, -1), AcGePoint3d(3, 4, 1));
    const AcGePoint3dArray pierced = meetings(upwards, flat);
    ASSERT_EQ(pierced.length(), 1);
    EXPECT_TRUE(isNear(pierced[0], AcGePoint3d(3, 4, 0), 1e-12));
    const auto raised = polyline({{-9, 4}, {9, 4}}, false);
    ASSERT_EQ(raised->setElevation(1e-3), Acad::eOk);
    EXPECT_EQ(meetings(*raised, flat).length(), 0);
}

// A flat arc's centre lies far away; its meetings must be good enough to be found on the contour again.
TEST(CurveMeetings, WithFlatArcsAreFoundOnBothCurves) {
    for (const double bulge : {1e-2, 1e-4, 1e-6, -1e-8, 1e-9}) {
        SCOPED_TRACE(bulge);
        const auto slab = polyline({{0, 0, bulge}, {10, 0}, {10, 4, -bulge}, {0, 4}}, true);
        const auto cut = throughPoint<AcDbXline>({3.3, 0, 0}, {0.1, 1, 0});
        const AcGePoint3dArray points = meetings(*slab, *cut);
        ASSERT_EQ(points.length(), 2);
        for (const AcGePoint3d& point : points) {
            double parameter = NAN;
            EXPECT_EQ(slab->getParamAtPoint(point, parameter), Acad::eOk);
        }
        // The height of the arc over its chord, by the chord's parts: h ~ 2 b x (c - x) / c. Meetings are
        // computed by way of the centre and have the digits that the radius leaves.
        const double digits = AcGe::pointAllowance(AcGeContext::gTol, 2.5 / std::abs(bulge));
        const double x = points[0].x;
        EXPECT_NEAR(points[0].y, -2.0 * bulge * x * (10.0 - x) / 10.0, 5.0 * bulge * bulge + digits);
        Pieces halves;
        ASSERT_EQ(slab->getSplitCurves(points, halves.array), Acad::eOk);
        EXPECT_EQ(halves.count(), 2);
    }
}
