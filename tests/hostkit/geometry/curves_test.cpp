#include "gearc2d.h"
#include "gearc3d.h"
#include "gebndblock2d.h"
#include "gebndblock3d.h"
#include "geell2d.h"
#include "geell3d.h"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "genurb2d.h"
#include "genurb3d.h"
#include "geray2d.h"
#include "geray3d.h"
#include "placements.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

using placements::inUlps;
using placements::numbersOf;
using placements::pointsOf;

struct Space : AcGeKernel::Space {
    static auto placementsOf() { return placements::ofSpace(); }
    static std::vector<std::shared_ptr<Curve>> curves() {
        const auto control = pointsOf({{0, 0, 0}, {1, 3, 1}, {4, 3, -1}, {5, 0, 0}, {7, -2, 2}});
        const AcGeKnotVector knots(numbersOf({0, 0, 0, 0, 1.5, 3, 3, 3, 3}));
        const AcGeKnotVector open(numbersOf({0, 1, 2, 3, 4, 5, 6, 7}));
        const AcGePoint3d p(1, 0, 2), q(2, 3, 1), r(-1, 4, 2);
        return {
            std::make_shared<AcGeLineSeg3d>(p, AcGePoint3d(4, -2, 5)),
            std::make_shared<AcGeCircArc3d>(p, AcGeVector3d(1, 1, 3), 4.0),
            std::make_shared<AcGeCircArc3d>(p, q, r),
            std::make_shared<AcGeCircArc3d>(p, AcGeVector3d(0, 0, -1), AcGeVector3d(1, 1, 0), 2.0, 4.0, 9.0),
            std::make_shared<AcGeEllipArc3d>(q, AcGeVector3d(1, 1, 0), AcGeVector3d(-1, 1, 1), 5.0, 2.0, 0.5,
                                             4.0),
            std::make_shared<AcGeNurbCurve3d>(3, knots, control),
            std::make_shared<AcGeNurbCurve3d>(3, knots, control, numbersOf({1.0, 2.0, 0.5, 1.0, 3.0})),
            std::make_shared<AcGeNurbCurve3d>(2, open, control)};
    }
};

struct Plane : AcGeKernel::Plane {
    static auto placementsOf() { return placements::ofPlane(); }
    static std::vector<std::shared_ptr<Curve>> curves() {
        AcGePoint2dArray control;
        for (const AcGePoint2d& p :
             {AcGePoint2d(0, 0), AcGePoint2d(1, 3), AcGePoint2d(4, 3), AcGePoint2d(5, 0)})
            control.append(p);
        const AcGePoint2d p(1, 0), q(2, 3), r(-1, 4);
        return {
            std::make_shared<AcGeLineSeg2d>(q, AcGePoint2d(4, -2)),
            std::make_shared<AcGeCircArc2d>(p, 4.0),
            std::make_shared<AcGeCircArc2d>(p, q, r),
            std::make_shared<AcGeCircArc2d>(r, q, p),
            std::make_shared<AcGeCircArc2d>(p, 2.0, 5.0, 8.0, AcGeVector2d(1, 2), true),
            std::make_shared<AcGeEllipArc2d>(q, AcGeVector2d(1, 1), AcGeVector2d(1, -1), 5.0, 2.0, 0.5, 4.0),
            std::make_shared<AcGeNurbCurve2d>(2, AcGeKnotVector(numbersOf({0, 0, 0, 1, 2, 2, 2})), control)};
    }
};

template <class T>
class EveryCurve : public testing::Test {
protected:
    /// Runs the check on every curve in every placement, and reversed.
    template <class Check>
    void each(const Check& check) {
        int which = 0;
        for (const auto& original : T::curves()) {
            int where = 0;
            for (const auto& m : T::placementsOf())
                for (bool reversed : {false, true}) {
                    SCOPED_TRACE("curve " + std::to_string(which) + ", placement " +
                                 std::to_string(where / 2) + (reversed ? ", reversed" : ""));
                    std::unique_ptr<typename T::Curve> curve(original->copy());
                    curve->transformBy(m);
                    if (reversed) curve->reverseParam();
                    AcGeInterval range, own;
                    curve->getInterval(range);
                    original->getInterval(own);
                    const double magnitude = std::max(
                        {1.0, curve->coordinateMagnitude(), curve->evalPoint(0.0).largestCoordinate()});
                    for (double part : {0.0, 0.4, 1.0})
                        EXPECT_LE(inUlps(curve->evalPoint(range.lowerBound() +
                                                          range.length() * (reversed ? 1.0 - part : part)),
                                         m * original->evalPoint(own.lowerBound() + own.length() * part),
                                         magnitude),
                                  16.0)
                            << "moved as its points are";
                    check(*curve, range.lowerBound(), range.upperBound(), magnitude);
                    ++where;
                }
            ++which;
        }
    }
};

using Both = testing::Types<Plane, Space>;
TYPED_TEST_SUITE(EveryCurve, Both);

TYPED_TEST(EveryCurve, FindsItsOwnPointsAgain) {
    this->each([&](const auto& curve, double lo, double hi, double magnitude) {
        for (int i = 0; i <= 12; ++i) {
            const double param = lo + (hi - lo) * i / 12.0;
            const auto point = curve.evalPoint(param);
            double found = -1.0;
            EXPECT_TRUE(curve.isOn(point, found)) << param;
            EXPECT_LE(inUlps(curve.evalPoint(curve.paramOf(point)), point, magnitude), 8.0) << param;
            EXPECT_TRUE(curve.isOn(param));
        }
        EXPECT_FALSE(curve.isOn(curve.evalPoint(lo) + (curve.evalPoint(hi) - curve.evalPoint(lo)) * 0.5 +
                                decltype(curve.evalPoint(lo) - curve.evalPoint(lo))::kXAxis * 1e5));
    });
}

TYPED_TEST(EveryCurve, DerivativesAgreeWithDifferences) {
    this->each([&](const auto& curve, double lo, double hi, double magnitude) {
        typename TypeParam::VectorArray at, before, after;
        const double step = (hi - lo) * 1e-4;
        for (double part : {0.13, 0.37, 0.81}) {
            const double param = lo + (hi - lo) * part;
            const auto point = curve.evalPoint(param, 3, at);
            EXPECT_EQ(0.0, (point - curve.evalPoint(param)).length() > 8.0 * AcGe::ulpOf(magnitude));
            const auto slope = (curve.evalPoint(param + step) - curve.evalPoint(param - step)) / (2.0 * step);
            const double noise = 16.0 * AcGe::ulpOf(magnitude) / step;
            EXPECT_LE((slope - at[0]).length(), noise + 1e-5 * (1.0 + at[0].length() + at[2].length()));
            curve.evalPoint(param - step, 2, before);
            curve.evalPoint(param + step, 2, after);
            for (int k = 0; k < 2; ++k) {
                const auto next = (after[k] - before[k]) / (2.0 * step);
                EXPECT_LE((next - at[k + 1]).length(), 1e-4 * (1.0 + at[1].length() + at[2].length())) << k;
            }
        }
    });
}

TYPED_TEST(EveryCurve, NearestPointIsNotBeatenByDenseSamples) {
    placements::Random random(3);
    this->each([&](const auto& curve, double lo, double hi, double magnitude) {
        typename TypeParam::PointArray samples;
        curve.getSamplePoints(400, samples);
        const double size = std::max(1.0, samples[0].distanceTo(samples[200]));
        for (int i = 0; i < 5; ++i) {
            auto point = samples[(i * 83) % 400];
            point.x += random.between(-size, size);
            point.y += random.between(-size, size);
            const double distance = curve.distanceTo(point);
            double best = distance;
            for (const auto& sample : samples) best = std::min(best, sample.distanceTo(point));
            EXPECT_GE(best, distance - 8.0 * AcGe::ulpOf(magnitude));
            typename TypeParam::VectorArray tangent;
            const double param = curve.paramOfClosestPoint(point);
            curve.evalPoint(param, 1, tangent);
            const auto offset = point - curve.evalPoint(param);
            if (param > lo && param < hi) {
                EXPECT_NEAR(0.0, offset.dotProduct(tangent[0]) / tangent[0].length(),
                            16.0 * AcGe::ulpOf(std::max(magnitude, offset.length())));
            }
        }
    });
}

TYPED_TEST(EveryCurve, SplitsIntoPartsThatCoverIt) {
    this->each([&](const auto& curve, double lo, double hi, double magnitude) {
        const double at = lo + (hi - lo) * 0.3;
        typename TypeParam::Curve *first = nullptr, *second = nullptr;
        curve.getSplitCurves(at, first, second);
        ASSERT_TRUE(first && second);
        const std::unique_ptr<typename TypeParam::Curve> owned1(first), owned2(second);
        AcGeInterval range1, range2;
        typename TypeParam::Point start, middle1, middle2, end;
        first->getInterval(range1, start, middle1);
        second->getInterval(range2, middle2, end);
        const double allowed = 8.0 * AcGe::ulpOf(magnitude);
        EXPECT_LE(start.distanceTo(curve.evalPoint(lo)), allowed);
        EXPECT_LE(middle1.distanceTo(curve.evalPoint(at)), allowed);
        EXPECT_LE(middle2.distanceTo(curve.evalPoint(at)), allowed);
        EXPECT_LE(end.distanceTo(curve.evalPoint(hi)), allowed);
        const double whole = curve.length(lo, hi);
        const double parts = first->length(range1.lowerBound(), range1.upperBound()) +
                             second->length(range2.lowerBound(), range2.upperBound());
        EXPECT_NEAR(whole, parts, 1e-11 * whole + 4.0 * allowed);
        for (double part : {0.2, 0.7})
            EXPECT_TRUE(curve.isOn(second->evalPoint(range2.lowerBound() + range2.length() * part)));
        curve.getSplitCurves(hi, first, second);
        EXPECT_TRUE(!first && !second);
    });
}

TYPED_TEST(EveryCurve, MeasuresAgreeWithFineChords) {
    this->each([&](const auto& curve, double lo, double hi, double magnitude) {
        typename TypeParam::PointArray chords;
        curve.getSamplePoints(2001, chords);
        double length = 0.0;
        const auto block =
            typename TypeParam::Block(curve.orthoBoundBlock()).swell(8.0 * AcGe::ulpOf(magnitude));
        for (int i = 0; i + 1 < chords.length(); ++i) length += chords[i].distanceTo(chords[i + 1]);
        for (const auto& point : chords) EXPECT_TRUE(block.contains(point));
        EXPECT_NEAR(length, curve.length(lo, hi), 2e-6 * length + 2001 * AcGe::ulpOf(magnitude));
        const double half = curve.paramAtLength(lo, curve.length(lo, hi) / 2.0);
        EXPECT_NEAR(curve.length(lo, half), curve.length(half, hi), 1e-10 * length);
        // The box is tight: each side is near some sample.
        const auto size = block.maxPoint() - block.minPoint();
        typename TypeParam::Block sampled;
        for (const auto& point : chords) sampled.extend(point);
        EXPECT_LE((size - (sampled.maxPoint() - sampled.minPoint())).length(), 1e-4 * length);
    });
}

TYPED_TEST(EveryCurve, SamplesStayWithinTheChordTolerance) {
    this->each([&](const auto& curve, double lo, double hi, double magnitude) {
        const double tolerance = 1e-3 * curve.length(lo, hi);
        typename TypeParam::PointArray points;
        AcGeDoubleArray params;
        curve.getSamplePoints(lo, hi, tolerance, points, params);
        ASSERT_EQ(points.length(), params.length());
        ASSERT_GE(points.length(), 2);
        EXPECT_EQ(lo, params.first());
        EXPECT_EQ(hi, params.last());
        for (int i = 0; i + 1 < points.length(); ++i) {
            const auto chord = points[i + 1] - points[i];
            for (double part : {0.1, 0.35, 0.5, 0.65, 0.9}) {
                const auto offset =
                    curve.evalPoint(params[i] + (params[i + 1] - params[i]) * part) - points[i];
                const double along = std::clamp(offset.dotProduct(chord) / chord.lengthSqrd(), 0.0, 1.0);
                EXPECT_LE((offset - chord * along).length(), 1.05 * tolerance + 8.0 * AcGe::ulpOf(magnitude));
            }
        }
        EXPECT_LT(points.length(), 200);
        for (int count = 2; count < 60; ++count) {
            curve.getSamplePoints(count, points, params);
            EXPECT_EQ(lo, params.first());
            EXPECT_EQ(hi, params.last());
        }
    });
}

TYPED_TEST(EveryCurve, StraightOnesKeepTheirEndsAndAreCutWhereAsked) {
    using Point = typename TypeParam::Point;
    placements::Random random(19);
    for (int i = 0; i < 100; ++i) {
        Point start, end;
        for (unsigned int axis = 0; axis < TypeParam::dimensions; ++axis) {
            start[axis] = random.between(-1e3, 1e3);
            end[axis] = random.between(-1.0, 1.0);
        }
        const typename TypeParam::Segment segment(start, end);
        EXPECT_EQ(0.0, segment.endPoint().distanceTo(end));
        EXPECT_EQ(0.0, segment.evalPoint(1.0).distanceTo(end));
        const typename TypeParam::Ray ray(start, end);
        const typename TypeParam::Line line(start, end);
        for (const typename TypeParam::Curve* curve :
             {static_cast<const typename TypeParam::Curve*>(&ray),
              static_cast<const typename TypeParam::Curve*>(&line)}) {
            typename TypeParam::Curve *before = nullptr, *after = nullptr;
            curve->getSplitCurves(2.0, before, after);
            ASSERT_TRUE(before && after);
            const std::unique_ptr<typename TypeParam::Curve> owned1(before), owned2(after);
            const Point cut = curve->evalPoint(2.0);
            Point met;
            EXPECT_TRUE(after->hasStartPoint(met) && met.isEqualTo(cut));
            EXPECT_TRUE(after->isOn(curve->evalPoint(9.0)) && !after->isOn(curve->evalPoint(1.0)));
            EXPECT_TRUE(before->isOn(cut) && before->isOn(curve->evalPoint(1.0)));
            EXPECT_FALSE(before->isOn(curve->evalPoint(9.0)));
            EXPECT_EQ(curve == &line, before->isOn(curve->evalPoint(-9.0)) != 0);
        }
    }
    typename TypeParam::Curve *before = nullptr, *after = nullptr;
    typename TypeParam::Ray().getSplitCurves(0.0, before, after);
    EXPECT_TRUE(!before && !after);
}

TEST(Arc, ThreePointsAreMetWithinAFewUlpsAnywhere) {
    placements::Random random(7);
    double worst = 0.0;
    for (const AcGeMatrix3d& m : placements::ofSpace())
        for (int i = 0; i < 300; ++i) {
            const AcGeCircArc3d source(random.point(5.0), random.vector(1.0), random.vector(1.0),
                                       random.between(0.5, 50.0), random.between(0.0, 6.0),
                                       random.between(6.5, 12.0));
            const double lo = source.startAng(), sweep = source.endAng() - lo;
            // Ends that nearly meet leave the tangent there, and with it the far side, to rounding.
            if (sweep < 0.3 || sweep > 5.5) continue;
            const AcGePoint3d a = m * source.evalPoint(lo),
                              b = m * source.evalPoint(lo + sweep * random.between(0.2, 0.8)),
                              c = m * source.evalPoint(lo + sweep);
            const AcGeCircArc3d arc(a, b, c);
            const double magnitude = std::max(arc.coordinateMagnitude(), a.largestCoordinate());
            worst =
                std::max({worst, inUlps(arc.startPoint(), a, magnitude), inUlps(arc.endPoint(), c, magnitude),
                          inUlps(arc.closestPointTo(b), b, magnitude)});
            EXPECT_TRUE(arc.isOn(b));
            EXPECT_NEAR(sweep, arc.endAng() - arc.startAng(), 1e-6);
        }
    EXPECT_LE(worst, 8.0);
}

TEST(Arc, CollinearPointsGiveTheDegenerateArc) {
    for (double far : {0.0, 1.0e6}) {
        const AcGeVector3d out(far, far, 0.0);
        struct Case {
            AcGePoint3d a, b, c;
        };
        for (const Case& k :
             {Case{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, Case{{0, 0, 0}, {1, 5e-11, 0}, {2, 0, 0}},
              Case{{0, 0, 0}, {0, 0, 0}, {1, 1, 0}}, Case{{0, 0, 0}, {1, 1, 0}, {0, 0, 0}},
              Case{{0, 0, 0}, {3, 3, 3}, {1, 1, 1}}, Case{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}) {
            const AcGeCircArc3d arc(k.a + out, k.b + out, k.c + out);
            EXPECT_EQ(0.0, arc.radius());
            EXPECT_EQ(0.0, arc.endAng() - arc.startAng());
            EXPECT_TRUE(arc.startPoint().isEqualTo(k.a + out));
            EXPECT_TRUE(std::isfinite(arc.evalPoint(1.0).x));
            EXPECT_TRUE(arc.isOn(k.a + out));
            const AcGeVector2d flatOut(far, far);
            const AcGePoint2d a(k.a.x, k.a.y), b(k.b.x, k.b.y), c(k.c.x, k.c.y);
            EXPECT_EQ(0.0, AcGeCircArc2d(a + flatOut, b + flatOut, c + flatOut).radius());
        }
    }
    // Just above the tolerance the arc is there, flat as it is.
    const AcGeCircArc3d flat(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 2e-10, 0), AcGePoint3d(2, 0, 0));
    EXPECT_NEAR(2.5e9, flat.radius(), 1.0);
}

TEST(Arc, SenseAnglesAndBulgesOfThePlane) {
    const AcGeCircArc2d left({2, 0}, {1, 1}, {0, 0}), right({0, 0}, {1, 1}, {2, 0});
    EXPECT_FALSE(left.isClockWise());
    EXPECT_TRUE(right.isClockWise());
    for (const AcGeCircArc2d* arc : {&left, &right}) {
        EXPECT_NEAR(AcGe::kPi, arc->endAng() - arc->startAng(), 1e-15);
        EXPECT_TRUE(arc->center().isEqualTo({1, 0}));
        EXPECT_TRUE(arc->evalPoint((arc->startAng() + arc->endAng()) / 2.0).isEqualTo({1, 1}));
    }
    double area = 0.0;
    right.area(right.startAng(), right.endAng(), area);
    EXPECT_NEAR(-AcGe::kPi / 2.0, area, 1e-15);
    for (double bulge : {1.0, -1.0, 0.2, -3.0, 1e-6, 40.0}) {
        const AcGeCircArc2d arc(AcGePoint2d(1e6, 2), AcGePoint2d(1e6 + 3, 4), bulge);
        EXPECT_NEAR(std::abs(bulge), std::tan((arc.endAng() - arc.startAng()) / 4.0),
                    1e-12 * std::abs(bulge) + 1e-15);
        EXPECT_EQ(bulge < 0.0, arc.isClockWise());
        EXPECT_TRUE(arc.startPoint().isEqualTo({1e6, 2}) && arc.endPoint().isEqualTo({1e6 + 3, 4})) << bulge;
        const AcGeCircArc2d byHeight(AcGePoint2d(1e6, 2), AcGePoint2d(1e6 + 3, 4),
                                     bulge * std::sqrt(13.0) / 2.0, true);
        EXPECT_NEAR(arc.radius(), byHeight.radius(), 1e-12 * arc.radius());
    }
    EXPECT_EQ(0.0, AcGeCircArc2d(AcGePoint2d(0, 0), AcGePoint2d(1, 0), 0.0).radius());
}

TEST(Arc, AnglesAreBroughtIntoOneTurn) {
    struct Case {
        double start, end, sweep;
    };
    for (const Case& c :
         {Case{0, 1, 1}, Case{1, 0, AcGe::kTwoPi - 1}, Case{2, 2, AcGe::kTwoPi},
          Case{0, 20, 20 - 6 * AcGe::kPi}, Case{-1, 1, 2}, Case{5, -30, 5 * AcGe::kTwoPi + AcGe::kTwoPi - 35},
          Case{0, AcGe::kTwoPi, AcGe::kTwoPi}}) {
        AcGeCircArc3d arc;
        arc.setAngles(c.start, c.end);
        EXPECT_EQ(c.start, arc.startAng());
        EXPECT_NEAR(c.sweep, arc.endAng() - arc.startAng(), 1e-13) << c.start << ".." << c.end;
    }
    // A start plus whole turns is rounded, to either side of a turn.
    for (double start = -7.0; start < 7.0; start += 0.1) {
        for (int turns = -3; turns <= 3; ++turns) {
            AcGeEllipArc2d arc;
            arc.setAngles(start, start + turns * AcGe::kTwoPi);
            EXPECT_NEAR(AcGe::kTwoPi, arc.endAng() - arc.startAng(), 1e-14) << start << " and " << turns;
        }
    }
    AcGeCircArc3d circle;
    double period = 0.0;
    EXPECT_TRUE(circle.isClosed() && circle.isPeriodic(period));
    EXPECT_EQ(0.0, circle.paramOf(AcGePoint3d(1.0, -1e-16, 0.0)));
    circle.setAngles(0.5, 1.5);
    EXPECT_NEAR(1.7, circle.paramOf(circle.evalPoint(1.7)), 1e-15);
    EXPECT_NEAR(0.3, circle.paramOf(circle.evalPoint(0.3)), 1e-15);
    EXPECT_EQ(1.5, circle.paramOfClosestPoint(circle.evalPoint(1.7)));
    EXPECT_EQ(0.5, circle.paramOfClosestPoint(AcGePoint3d::kOrigin));
}

TEST(Ellipse, StaysRightUnderEveryAffineMatrix) {
    AcGeMatrix3d shear;
    shear.entry[0][0] = 3.0;
    shear.entry[0][1] = 1.5;
    shear.entry[2][0] = -0.7;
    const AcGeEllipArc3d source(AcGePoint3d(1, 2, 0), AcGeVector3d(1, 1, 0), AcGeVector3d(-1, 1, 1), 5.0, 2.0,
                                0.5, 4.0);
    AcGeEllipArc3d moved = source;
    moved.transformBy(shear);
    EXPECT_TRUE(moved.majorAxis().isPerpendicularTo(moved.minorAxis()));
    for (int i = 0; i <= 10; ++i) {
        const double t = 0.5 + 3.5 * i / 10.0;
        EXPECT_TRUE(moved.evalPoint(moved.startAng() + (t - 0.5)).isEqualTo(shear * source.evalPoint(t)))
            << t;
    }
    double sliced = 0.0;
    AcGeEllipArc3d().area(0.0, AcGe::kPi, sliced);
    EXPECT_NEAR(AcGe::kPi / 2.0, sliced, 1e-15);
    // The perimeter with half-axes 2 and 1, by the arithmetic-geometric mean.
    EXPECT_NEAR(9.688448220547676,
                AcGeEllipArc3d(AcGePoint3d(), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 2, 1)
                    .length(0.0, AcGe::kTwoPi),
                1e-11);
}

TEST(Spline, QuarterCircleIsExact) {
    AcGeNurbCurve3d quarter(2, AcGeKnotVector(numbersOf({0, 0, 0, 1, 1, 1})),
                            pointsOf({{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}),
                            numbersOf({1.0, std::sqrt(0.5), 1.0}));
    EXPECT_NEAR(AcGe::kPi / 2.0, quarter.length(0.0, 1.0), 1e-12);
    ASSERT_TRUE(quarter.setInterval(AcGeInterval(0.25, 0.75)));
    for (int i = 0; i <= 20; ++i)
        EXPECT_NEAR(1.0, quarter.evalPoint(0.25 + 0.5 * i / 20.0).distanceTo(AcGePoint3d::kOrigin), 4e-16);
    double area = 0.0;
    const double sweep =
        2.0 * (AcGe::kPi / 4.0 - quarter.startPoint().asVector().angleTo(AcGeVector3d::kXAxis));
    ASSERT_TRUE(quarter.area(0.25, 0.75, area));
    EXPECT_NEAR((sweep - std::sin(sweep)) / 2.0, area, 1e-13);
}

TEST(Spline, RefusesWhatIsNoDefinition) {
    const auto control = pointsOf({{0, 0, 0}, {1, 1, 0}, {2, 4, 0}, {3, 9, 0}});
    const auto knots = [](std::initializer_list<double> list) { return AcGeKnotVector(numbersOf(list)); };
    const AcGeKnotVector good = knots({0, 0, 0, 0, 1, 1, 1, 1});
    EXPECT_FALSE(AcGeNurbCurve3d(3, good, control).isEmpty());
    for (const AcGeNurbCurve3d& curve :
         {AcGeNurbCurve3d(3, knots({0, 0, 0, 0, 1, 1, 1}), control),
          AcGeNurbCurve3d(3, knots({0, 0, 0, 0, 1, 1, 0.5, 1}), control),
          AcGeNurbCurve3d(3, knots({2, 2, 2, 2, 2, 2, 2, 2}), control),
          AcGeNurbCurve3d(0, knots({0, 0, 0, 0, 1}), control),
          AcGeNurbCurve3d(3, good, control, numbersOf({1.0, -1.0, 1.0, 1.0})),
          AcGeNurbCurve3d(3, good, control, numbersOf({1.0})), AcGeNurbCurve3d()}) {
        EXPECT_TRUE(curve.isEmpty());
        EXPECT_TRUE(curve.evalPoint(0.5).isEqualTo(AcGePoint3d::kOrigin));
        EXPECT_FALSE(AcGeNurbCurve3d(curve).setInterval(AcGeInterval(0.0, 0.5)));
        EXPECT_EQ(0.0, curve.length(0.0, 0.0));
        EXPECT_TRUE(curve.orthoBoundBlock().isEmpty());
    }
}

TEST(Spline, FitRunsThroughThePointsSmoothly) {
    const auto fit = pointsOf({{0, 0, 0}, {1, 2, 0}, {1, 2, 0}, {3, 1, 1}, {4, 4, 0}, {9, 3, 2}});
    const AcGeNurbCurve3d curve(fit, AcGeVector3d(0, 1, 0), AcGeVector3d());
    for (const AcGePoint3d& p : fit) EXPECT_TRUE(curve.isOn(p));
    AcGeVector3dArray left, right;
    curve.evalPoint(curve.startParam(), 1, left);
    EXPECT_TRUE(left[0].isCodirectionalTo(AcGeVector3d::kYAxis));
    curve.evalPoint(curve.endParam(), 2, right);
    EXPECT_LT(right[1].length(), 1e-12);
    for (int i = 4; i < curve.numControlPoints(); ++i) {
        const double knot = curve.knotAt(i), tiny = 1e-9;
        curve.evalPoint(knot - tiny, 2, left);
        curve.evalPoint(knot + tiny, 2, right);
        EXPECT_LT((left[1] - right[1]).length(), 1e-6);
    }
    EXPECT_TRUE(AcGeNurbCurve3d(pointsOf({{1, 1, 1}}), AcGeVector3d(), AcGeVector3d()).isEmpty());
}

TEST(BadNumbers, EndQuicklyAndMeetNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 infinity = std::numeric_limits<double>::infinity();
    for (double bad : {nan, infinity}) {
        const AcGePoint3d origin, middle(1, bad, 0), end(2, 0, 0);
        const AcGeLineSeg3d line(origin, AcGePoint3d(bad, 1, 0)), good(origin, AcGePoint3d(1, 1, 0));
        const AcGeCircArc3d arc(origin, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 1.0, 0.0, bad);
        const AcGeCircArc3d through(origin, middle, end), huge(origin, AcGeVector3d::kZAxis, bad);
        const AcGeEllipArc3d ellipse(AcGePoint3d(bad, 0, 0), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 2.0,
                                     1.0);
        const AcGeNurbCurve3d spline(2, AcGeKnotVector(numbersOf({0, 0, 0, 1, 1, 1})),
                                     pointsOf({origin, middle, end}));
        for (const AcGeCurve3d* curve :
             std::initializer_list<const AcGeCurve3d*>{&line, &arc, &through, &huge, &ellipse, &spline}) {
            AcGePoint3dArray points;
            AcGeDoubleArray params;
            AcGePoint3d other;
            AcGeInterval range;
            curve->getInterval(range);
            curve->getSamplePoints(range.lowerBound(), range.upperBound(), 0.01, points, params);
            curve->length(range.lowerBound(), range.upperBound());
            curve->closestPointTo(good, other);
            good.closestPointTo(*curve, other);
            curve->orthoBoundBlock();
            EXPECT_FALSE(curve->isOn(AcGePoint3d(bad, bad, bad)));
            EXPECT_LE(points.length(), 1000001);
        }
    }
}

TEST(BoundBlock, EmptyBlocksAndSides) {
    AcGeBoundBlock3d block;
    EXPECT_TRUE(block.isEmpty());
    EXPECT_TRUE(block.isDisjoint(block));
    EXPECT_FALSE(block.contains(AcGePoint3d()));
    EXPECT_TRUE(AcGeBoundBlock3d(block).transformBy(AcGeMatrix3d::scaling(2.0)).isEmpty());
    block.set({5, 1, 2}, {1, 4, 0});
    EXPECT_TRUE(block.contains({1, 1, 0}) && block.contains({3, 4, 1}));
    EXPECT_FALSE(block.isDisjoint(AcGeBoundBlock3d({5, 4, 2}, {9, 9, 9})));
    EXPECT_TRUE(block.isDisjoint(AcGeBoundBlock3d({5.1, 0, 0}, {9, 9, 9})));
    EXPECT_TRUE(AcGeBoundBlock3d(block).swell(-2.0).isEmpty());
    block.transformBy(AcGeMatrix3d::rotation(AcGe::kPi / 2.0, AcGeVector3d::kZAxis));
    EXPECT_TRUE(block.minPoint().isEqualTo({-4, 1, 0}) && block.maxPoint().isEqualTo({-1, 5, 2}));
    const AcGeBoundBlock3d ray = AcGeRay3d(AcGePoint3d(1, 2, 3), AcGeVector3d(0, -1, 0)).orthoBoundBlock();
    EXPECT_TRUE(ray.contains({1, -1e300, 3}));
    EXPECT_FALSE(ray.contains({1, 2.1, 3}));
}

} // namespace
