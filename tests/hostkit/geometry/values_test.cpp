#include "geline3d.h"
#include "gemat2d.h"
#include "geplane.h"
#include "gepnt2d.h"
#include "placements.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(PointTest, HoldsWithinTheToleranceOrAFewUnitsInTheLastPlace) {
    struct Case {
        double at, apart;
        bool equal;
    };
    for (const Case& c :
         {Case{0.0, 0.9e-10, true}, Case{0.0, 1.1e-10, false}, Case{1.0, 0.9e-10, true},
          Case{1.0e6, 7.0 * AcGe::ulpOf(1.0e6), true}, Case{1.0e6, 10.0 * AcGe::ulpOf(1.0e6), false},
          Case{1.0e6, 2.0e-9, false}, Case{0.0, kNan, false}, Case{0.0, kInfinity, false},
          Case{kInfinity, 0.0, false}, Case{1.0e15, 1.0, true}, Case{1.0e15, 3.0, false}}) {
        const AcGePoint3d a(c.at, 1.0, 2.0), b(c.at + c.apart, 1.0, 2.0);
        EXPECT_EQ(c.equal, a.isEqualTo(b)) << c.at << " and " << c.apart << " more";
        EXPECT_EQ(c.equal, b.isEqualTo(a)) << c.at << " and " << c.apart << " more";
        EXPECT_EQ(c.equal, AcGePoint2d(1.0, c.at).isEqualTo(AcGePoint2d(1.0, c.at + c.apart)))
            << c.at << "," << c.apart;
    }
    AcGeTol coarse;
    coarse.setEqualPoint(0.001);
    EXPECT_TRUE(AcGePoint3d(0, 0, 0).isEqualTo(AcGePoint3d(0.0, 0.0009, 0.0), coarse));
    EXPECT_FALSE(AcGePoint3d(0, 0, 0).isEqualTo(AcGePoint3d(0.0, 0.0011, 0.0), coarse));
}

TEST(Vector, ZeroHasNoDirection) {
    const AcGeVector3d zero, tiny(1e-11, 0, 0), x = AcGeVector3d::kXAxis;
    for (const AcGeVector3d& v : {zero, tiny}) {
        EXPECT_FALSE(v.isCodirectionalTo(x));
        EXPECT_FALSE(x.isCodirectionalTo(v));
        EXPECT_FALSE(v.isCodirectionalTo(v));
        EXPECT_FALSE(v.isParallelTo(x));
        EXPECT_FALSE(v.isPerpendicularTo(x));
        EXPECT_EQ(v.x, v.normal().x);
        EXPECT_TRUE(v.isZeroLength());
    }
    EXPECT_TRUE(x.isParallelTo(-x));
    EXPECT_FALSE(x.isCodirectionalTo(-x));
    EXPECT_TRUE(x.isCodirectionalTo(AcGeVector3d(5.0, 4e-10, 0.0)));
    EXPECT_FALSE(x.isCodirectionalTo(AcGeVector3d(5.0, 6e-10, 0.0)));
    EXPECT_TRUE(x.isPerpendicularTo(AcGeVector3d(0.0, 3.0, 4.0)));
}

TEST(Vector, AnglesKeepTheirDigitsNearTheEndsOfTheirRange) {
    for (double angle : {0.0, 1e-12, 1e-6, 0.5, 1.5, 3.0, AcGe::kPi - 1e-6, AcGe::kPi}) {
        const AcGeVector3d v = AcGeVector3d::kXAxis * 7.0,
                           turned = AcGeVector3d(v).rotateBy(angle, {0.0, 0.0, 2.0});
        EXPECT_NEAR(angle, v.angleTo(turned), 1e-15 + angle * 4e-16) << angle;
        EXPECT_NEAR(angle, v.angleTo(turned, AcGeVector3d::kZAxis), 1e-15 + angle * 4e-16) << angle;
        if (angle > 0.0 && angle < AcGe::kPi) {
            EXPECT_NEAR(AcGe::kTwoPi - angle, v.angleTo(turned, -AcGeVector3d::kZAxis), 2e-15) << angle;
        }
    }
    EXPECT_EQ(0.0, AcGeVector3d::kXAxis.angleTo(AcGeVector3d()));
    EXPECT_NEAR(1.5 * AcGe::kPi, AcGeVector2d(0.0, -2.0).angle(), 1e-15);
    EXPECT_LT(AcGeVector2d(1.0, -1e-300).angle(), AcGe::kTwoPi);
}

TEST(Vector, PerpVectorTurnsLeftInThePlane) {
    const AcGeVector3d v(3.0, 1.0, 0.0), left = v.perpVector();
    EXPECT_TRUE(left.isEqualTo(AcGeVector3d::kZAxis.crossProduct(v)));
    EXPECT_TRUE(AcGeVector3d(-2.0, 0.0, 0.0).perpVector().isEqualTo({0.0, -2.0, 0.0}));
    placements::Random random(11);
    for (int i = 0; i < 100; ++i) {
        const AcGeVector3d any = random.vector(10.0);
        EXPECT_TRUE(any.isPerpendicularTo(any.perpVector()));
    }
    EXPECT_EQ(0.0, AcGeVector3d().perpVector().length());
}

TEST(ArbitraryAxes, FollowTheDrawingFormat) {
    struct Case {
        AcGeVector3d normal, x;
    };
    const double below = 1.0 / 64.0 - 1e-6, above = 1.0 / 64.0 + 1e-6;
    const auto unit = [](double nx, double ny) {
        return AcGeVector3d(nx, ny, std::sqrt(1.0 - nx * nx - ny * ny));
    };
    for (const Case& c :
         {Case{{0, 0, 1}, {1, 0, 0}}, Case{{0, 0, -1}, {-1, 0, 0}}, Case{{1, 0, 0}, {0, 1, 0}},
          Case{{0, 1, 0}, {-1, 0, 0}}, Case{{0, -3, 0}, {1, 0, 0}},
          Case{unit(below, 0), AcGeVector3d::kYAxis.crossProduct(unit(below, 0)).normal()},
          Case{unit(above, 0), {0, 1, 0}}, Case{unit(0, above), {-1, 0, 0}}}) {
        AcGeVector3d x, y;
        AcGe::arbitraryAxes(c.normal, x, y);
        EXPECT_TRUE(x.isEqualTo(c.x)) << c.normal.x << "," << c.normal.y << "," << c.normal.z;
        EXPECT_TRUE(x.crossProduct(y).isEqualTo(c.normal.normal()));
        const AcGePlane plane(AcGePoint3d(4, 5, 6), c.normal);
        EXPECT_NEAR(0.0, x.angleOnPlane(plane), 1e-15);
        EXPECT_NEAR(AcGe::kPi / 2.0, y.angleOnPlane(plane), 1e-15);
    }
}

TEST(Matrix, InverseUndoesAndPartsAreFound) {
    placements::Random random(5);
    double worst = 0.0;
    for (const AcGeMatrix3d& m : placements::ofSpace()) {
        EXPECT_TRUE(m.isUniScaledOrtho());
        EXPECT_FALSE(m.isSingular());
        EXPECT_NEAR(std::pow(m.scale(), 3.0), std::abs(m.det()), 1e-9 * std::abs(m.det()));
        for (int i = 0; i < 50; ++i) {
            const AcGePoint3d p = random.point(10.0), moved = m * p, back = m.inverse() * moved;
            worst = std::max(worst, placements::inUlps(back, p, moved.largestCoordinate()));
        }
    }
    EXPECT_LE(worst, 8.0);
    AcGeMatrix3d flat;
    flat.entry[2][2] = 0.0;
    EXPECT_TRUE(flat.isSingular());
    EXPECT_TRUE(flat.inverse().isEqualTo(AcGeMatrix3d::kIdentity));
    AcGeMatrix3d uneven;
    uneven.entry[1][1] = 2.0;
    EXPECT_TRUE(uneven.isScaledOrtho());
    EXPECT_FALSE(uneven.isUniScaledOrtho());
}

TEST(Matrix, ConstructionsMoveWhatTheyName) {
    const AcGePlane plane(AcGePoint3d(1, 2, 3), AcGeVector3d(1, -1, 2));
    const AcGePoint3d p(4, -5, 6);
    const AcGePoint3d mirrored = AcGeMatrix3d::mirroring(plane) * p;
    EXPECT_TRUE(mirrored.isEqualTo(AcGePoint3d(p).mirror(plane)));
    EXPECT_NEAR(plane.signedDistanceTo(p), -plane.signedDistanceTo(mirrored), 1e-14);
    EXPECT_TRUE((AcGeMatrix3d::planeToWorld(plane) * AcGePoint3d(2, 3, 0))
                    .isEqualTo(AcGePoint3d(plane, AcGePoint2d(2, 3))));
    EXPECT_TRUE((AcGeMatrix3d::worldToPlane(plane) * (AcGeMatrix3d::planeToWorld(plane) * p)).isEqualTo(p));
    const AcGePoint2d flat = p.convert2d(plane);
    EXPECT_TRUE(AcGePoint3d(plane, flat).isEqualTo(p.orthoProject(plane)));
    EXPECT_TRUE((AcGeMatrix3d::projection(plane, {0, 0, 1}) * p).isEqualTo(p.project(plane, {0, 0, 1})));
    const AcGeLine3d axis(AcGePoint3d(1, 0, 0), AcGeVector3d(0, 0, 5));
    EXPECT_TRUE((AcGeMatrix3d::mirroring(axis) * AcGePoint3d(3, 1, 7)).isEqualTo({-1, -1, 7}));
    EXPECT_TRUE((AcGeMatrix3d::rotation(AcGe::kPi / 2.0, {0, 0, 3}, {1, 0, 0}) * AcGePoint3d(2, 0, 0))
                    .isEqualTo({1, 1, 0}));
    const auto moved = AcGeMatrix3d::alignCoordSys({1, 1, 1}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {5, 5, 5},
                                                   {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    EXPECT_TRUE((moved * AcGePoint3d(2, 1, 1)).isEqualTo({5, 6, 5}));
}

TEST(Matrix, ConvertToLocalCarriesPlaneCoordinates) {
    placements::Random random(17);
    for (const AcGeMatrix3d& m : placements::ofSpace())
        for (const AcGeVector3d& start :
             {AcGeVector3d(0, 0, 1), AcGeVector3d(0, 0, -1), AcGeVector3d(1, 1, 1)}) {
            AcGeVector3d normal = start.normal();
            double elevation = 2.5;
            const AcGeMatrix3d before = AcGeMatrix3d::planeToWorld(normal);
            const AcGeMatrix2d local = m.convertToLocal(normal, elevation);
            const AcGePoint2d flat = random.flatPoint(10.0), movedFlat = local * flat;
            const AcGePoint3d expected = m * (before * AcGePoint3d(flat.x, flat.y, 2.5));
            const AcGePoint3d found =
                AcGeMatrix3d::planeToWorld(normal) * AcGePoint3d(movedFlat.x, movedFlat.y, elevation);
            EXPECT_LE(placements::inUlps(found, expected, expected.largestCoordinate()), 8.0);
        }
}

TEST(Plane, FromPointsIsRightHandedAndRefusesWhatSpansNone) {
    EXPECT_TRUE(AcGePlane({0, 0, 0}, AcGePoint3d(1, 0, 0), {1, 1, 0}).normal().isEqualTo({0, 0, 1}));
    EXPECT_TRUE(AcGePlane({0, 0, 0}, AcGePoint3d(1, 1, 0), {1, 0, 0}).normal().isEqualTo({0, 0, -1}));
    for (const AcGePlane& none :
         {AcGePlane(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(3, 3, 3)),
          AcGePlane(AcGePoint3d(0, 0, 0), AcGeVector3d()),
          AcGePlane(AcGePoint3d(1e6, 0, 0), AcGePoint3d(1e6, 0, 0), AcGePoint3d(1e6, 1, 0)),
          AcGePlane(AcGePoint3d(), AcGeVector3d(1, 0, 0), AcGeVector3d(-2, 0, 0))}) {
        EXPECT_TRUE(none.normal().isZeroLength());
        EXPECT_FALSE(none.isOn(AcGePoint3d(0, 0, 0)));
        AcGePoint3d untouched(7, 7, 7);
        EXPECT_FALSE(AcGeLine3d(AcGePoint3d(0, 0, 5), AcGeVector3d(0, 0, 1)).intersectWith(none, untouched));
        EXPECT_EQ(7.0, untouched.x);
    }
    const AcGePlane general(2.0, -1.0, 2.0, -9.0);
    EXPECT_TRUE(general.isOn(AcGePoint3d(4.5, 0, 0)));
    EXPECT_NEAR(-3.0, general.signedDistanceTo(AcGePoint3d::kOrigin), 1e-15);
}

TEST(Plane, MeetsLinesAndPlanesFarOut) {
    double worst = 0.0;
    placements::Random random(23);
    for (const AcGeMatrix3d& m : placements::ofSpace())
        for (int i = 0; i < 50; ++i) {
            AcGePlane plane(random.point(5.0), random.vector(1.0)),
                other(random.point(5.0), random.vector(1.0));
            AcGeLine3d line(random.point(5.0), random.vector(1.0)), common;
            plane.transformBy(m);
            other.transformBy(m);
            line.transformBy(m);
            AcGePoint3d point;
            if (std::abs(plane.normal().dotProduct(line.direction())) > 0.1) {
                ASSERT_TRUE(line.intersectWith(plane, point));
                const double off = std::max(plane.distanceTo(point), line.distanceTo(point));
                const double magnitude =
                    std::max({point.largestCoordinate(), plane.pointOnPlane().largestCoordinate(),
                              line.pointOnLine().largestCoordinate()});
                worst = std::max(worst, placements::inUlps(off, magnitude));
            }
            ASSERT_TRUE(plane.intersectWith(other, common));
            EXPECT_TRUE(plane.isOn(common.pointOnLine()) && other.isOn(common.pointOnLine()));
        }
    EXPECT_LE(worst, 8.0);
    AcGeLine3d untouched;
    EXPECT_FALSE(AcGePlane().intersectWith(AcGePlane(AcGePoint3d(0, 0, 1), AcGeVector3d::kZAxis), untouched));
}

} // namespace
