// Angles of ellipses as they are set and read, and elliptic edges of hatches: nothing drifts.
#include "dbelipse.h"
#include "dbhatch.h"
#include "geell2d.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

namespace {

constexpr double kPi = 3.14159265358979323846;

// The angle of a direction in the ellipse's plane, from the point itself.
double seenAt(const AcDbEllipse& ellipse, double parameter) {
    const AcGePoint3d point = ellipse.center() + ellipse.majorAxis() * std::cos(parameter) +
                              ellipse.minorAxis() * std::sin(parameter);
    const AcGeVector3d minor = ellipse.normal().crossProduct(ellipse.majorAxis());
    const AcGeVector3d away = point - ellipse.center();
    return std::atan2(away.dotProduct(minor), away.dotProduct(ellipse.majorAxis()));
}

} // namespace

TEST(EllipseAngles, AreThoseThatWereSetHoweverOften) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> angles(-10, 20), ratios(0.01, 1);
    for (int round = 0; round < 2000; ++round) {
        const double start = round % 8 ? angles(random) : (round % 17 - 8) * kPi / 2.0;
        const double end = round % 3 ? angles(random) : start + 2.0 * kPi;
        const double ratio = ratios(random);
        AcDbEllipse ellipse({1, 2, 3}, {0, 0, 1}, {3, 4, 0}, ratio, start, end);
        EXPECT_NEAR(ellipse.startAngle(), start, 1e-14 * (1.0 + std::abs(start)));
        EXPECT_NEAR(ellipse.endAngle(), end, 1e-14 * (1.0 + std::abs(end)));
        EXPECT_NEAR(std::remainder(seenAt(ellipse, ellipse.startParam()) - start, 2.0 * kPi), 0.0, 1e-12);
        EXPECT_NEAR(ellipse.startParam(), start, kPi / 2.0) << "in the same quarter turn";
        // What is read is set again, and again.
        const double first = ellipse.startAngle(), last = ellipse.endAngle();
        for (int again = 0; again < 3; ++again) {
            ASSERT_EQ(ellipse.setStartAngle(ellipse.startAngle()), Acad::eOk);
            ASSERT_EQ(ellipse.set(ellipse.center(), ellipse.normal(), ellipse.majorAxis(), ratio,
                                  ellipse.startAngle(), ellipse.endAngle()),
                      Acad::eOk);
        }
        EXPECT_EQ(ellipse.startAngle(), first) << ratio;
        EXPECT_EQ(ellipse.endAngle(), last) << ratio;
    }
}

TEST(EllipseAngles, OfAFullEllipseAreATurn) {
    for (const double ratio : {1.0, 0.5, 1e-6}) {
        const AcDbEllipse given({0, 0, 0}, {0, 0, 1}, {2, 0, 0}, ratio, 0.0, 2.0 * kPi);
        const AcDbEllipse made({0, 0, 0}, {0, 0, 1}, {2, 0, 0}, ratio);
        for (const AcDbEllipse* each : {&given, &made}) {
            EXPECT_EQ(each->startAngle(), 0.0);
            EXPECT_EQ(each->endAngle(), 2.0 * kPi);
            EXPECT_EQ(each->endParam(), 2.0 * kPi);
        }
    }
    EXPECT_EQ(AcDbEllipse().endAngle(), 2.0 * kPi);
}

TEST(EllipticEdges, AreThoseThatWereGivenToTheBit) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> values(-50, 50), angles(-7, 7);
    for (int round = 0; round < 500; ++round) {
        const AcGeVector2d major(values(random), values(random));
        AcGeEllipArc2d given({values(random), values(random)}, major,
                             round % 2 ? major.perpVector() : -major.perpVector(), values(random),
                             values(random), angles(random), angles(random));
        AcDbHatch hatch;
        AcGeVoidPointerArray edges, found;
        AcArray<int> types, foundTypes;
        edges.append(&given);
        types.append(AcDbHatch::kEllArc);
        ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, edges, types), Acad::eOk);
        const std::unique_ptr<AcDbHatch> copy(static_cast<AcDbHatch*>(hatch.clone()));
        Adesk::Int32 type = 0;
        ASSERT_EQ(copy->getLoopAt(0, type, found, foundTypes), Acad::eOk);
        const std::unique_ptr<const AcGeEllipArc2d> read(static_cast<const AcGeEllipArc2d*>(found[0]));
        EXPECT_TRUE(read->center().x == given.center().x && read->center().y == given.center().y);
        EXPECT_TRUE(read->majorAxis().x == given.majorAxis().x && read->majorAxis().y == given.majorAxis().y);
        EXPECT_TRUE(read->minorAxis().x == given.minorAxis().x && read->minorAxis().y == given.minorAxis().y);
        EXPECT_TRUE(read->majorRadius() == given.majorRadius() && read->minorRadius() == given.minorRadius());
        EXPECT_TRUE(read->startAng() == given.startAng() && read->endAng() == given.endAng());

        // A moved hatch has moved edges.
        ASSERT_EQ(copy->transformBy(AcGeMatrix3d().setToTranslation({7, -3, 0})), Acad::eOk);
        ASSERT_EQ(copy->getLoopAt(0, type, found, foundTypes), Acad::eOk);
        const std::unique_ptr<const AcGeEllipArc2d> moved(static_cast<const AcGeEllipArc2d*>(found[0]));
        EXPECT_LT(moved->startPoint().distanceTo(given.startPoint() + AcGeVector2d(7, -3)), 1e-11);
        EXPECT_LT(moved->endPoint().distanceTo(given.endPoint() + AcGeVector2d(7, -3)), 1e-11);
    }
}
