// The contract's steps written down one by one, with the geometry kit alone: the library's tools give the
// same on random input, about their tolerances too.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "gearc2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "plaincontour.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

using plaincontour::isDefinitelyLess;

const AcGeVector3d kUp = AcGeVector3d::kZAxis;
constexpr double kOffsets[] = {0.0, 1e6};

double between(std::mt19937& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}

AcGePoint3d randomPoint(std::mt19937& random, double size, double offset = 0.0) {
    return {offset + between(random, -size, size), offset + between(random, -size, size), 0.0};
}

AcGeCircArc3d randomArc(std::mt19937& random, const AcGePoint3d& center) {
    const double start = between(random, -7, 7);
    return {center,
            random() % 2 ? kUp : -kUp,
            AcGeVector3d(between(random, -1, 1), 1, 0),
            between(random, 0.5, 9),
            start,
            start + (random() % 4 ? between(random, 0.1, 6.2) : 2 * kPi)};
}

AcGePoint3d gravityPlainly(const Outline& outline) {
    const auto& [points, bulges] = outline;
    AcGeVector3d sum;
    int count = points.length();
    for (int i = 0; i < points.length(); ++i) {
        const AcGePoint3d p = points[i], q = points[(i + 1) % points.length()];
        sum += p.asVector();
        double h = bulges[i].length();
        if (!bulges[i].crossProduct(p - q).isCodirectionalTo(kUp)) h = -h;
        if (h * h <= 1e-20) continue;
        const double c = p.distanceTo(q);
        const double r = h / 2 + c * c / (h * 8), s = c / (r * 2), k = (r - h) / r;
        const double ratio = (2 / h) * (r * s * s * s / (std::asin(s) - s * k)) - ((r - h) * 3) / h;
        const AcGePoint3d middle = p + (q - p) / 2;
        const AcGeVector3d rise = -h * (q - p).crossProduct(kUp).normal();
        sum += (middle + rise).asVector();
        sum += ratio * rise.normal();
        ++count;
    }
    return AcGePoint3d::kOrigin + sum / count;
}

double turnsPlainly(const AcDbPolyline& given) {
    const auto polyline = polylineOf(verticesOf(given), true);
    (void)polyline->setNormal(given.normal());
    const unsigned int count = polyline->numVerts();
    const auto halves = [&](unsigned int i, AcGeVector3d& leaving, AcGeVector3d& arriving) {
        AcGeLineSeg3d line;
        AcGeCircArc3d arc;
        if (polyline->segType(i) == AcDbPolyline::kLine && polyline->getLineSegAt(i, line) == Acad::eOk) {
            leaving = arriving = line.endPoint() - line.startPoint();
            return true;
        }
        if (polyline->segType(i) != AcDbPolyline::kArc || polyline->getArcSegAt(i, arc) != Acad::eOk)
            return false;
        const AcGePoint3d apex = arc.evalPoint((arc.startAng() + arc.endAng()) / 2);
        leaving = apex - arc.startPoint();
        arriving = arc.endPoint() - apex;
        return true;
    };
    double sum = 0.0;
    for (unsigned int i = 0; i < count; ++i) {
        AcGeVector3d unused, incoming, outgoing;
        if (!halves((i + count - 1) % count, unused, incoming) || !halves(i, outgoing, unused)) continue;
        incoming.normalize();
        outgoing.normalize();
        const double s = incoming.crossProduct(outgoing).z;
        const double phi = std::asin(s);
        if (s >= 1 - 2e-10)
            sum += kPi / 2;
        else if (s <= -1 + 2e-10)
            sum -= kPi / 2;
        else if (incoming.dotProduct(outgoing) < 0 && std::abs(s) < 1e-8)
            return kNaN; // straight back: rounding decides which way
        else if (incoming.dotProduct(outgoing) < 0)
            sum += phi > 0 ? kPi - phi : -kPi - phi;
        else
            sum += phi;
    }
    return sum;
}

TEST(Contract, GravityCentreOfAnyArcs) {
    std::mt19937 random(81);
    for (int round = 0; round < 2000; ++round) {
        Vertices vertices = randomContour(random, 3 + round % 9, kOffsets[round % 2]);
        for (auto& vertex : vertices) vertex[2] = random() % 2 ? 0.0 : between(random, -0.95, 0.95);
        const Outline outline(vertices);
        const AcGePoint3d expected = gravityPlainly(outline);
        EXPECT_LT(GetGravityCenter(outline.points, outline.bulges).distanceTo(expected), 1e-8) << round;
    }
}

TEST(Contract, SenseByTheSumOfTurns) {
    std::mt19937 random(82);
    int clockwise = 0;
    for (int round = 0; round < 4000; ++round) {
        const double offset = kOffsets[round % 3 == 0];
        // Any run over a lattice, whose turns may sum up to any number of full ones, right angles or nearly.
        Vertices vertices = round % 2 ? latticeRun(random, 9, 4, offset, round % 4 == 1 ? 0.0 : 3e-6)
                                      : randomContour(random, 3 + round % 50, offset);
        if (round % 5 == 0) vertices = reversed(vertices);
        const auto polyline = polylineOf(vertices, round % 7 != 0);
        if (round % 11 == 0)
            (void)polyline->setNormal(round % 2 ? -kUp : AcGeVector3d(0.3, -0.2, 1).normal());
        const double sum = turnsPlainly(*polyline);
        if (!(std::abs(sum + 1e-10) > 1e-12)) continue; // rounding decides
        ASSERT_EQ(isContourClockWise(polyline.get()), sum < -1e-10) << round << " sum " << sum;
        clockwise += sum < -1e-10;
    }
    EXPECT_GT(clockwise, 1000);
}

TEST(Contract, PointsOnACircleTangentsAndDifferencesOfArcs) {
    std::mt19937 random(83);
    for (int round = 0; round < 2000; ++round) {
        const AcGePoint3d center = randomPoint(random, 5, kOffsets[round % 2]);
        const AcGeCircArc3d arc = randomArc(random, center);
        // ---- points along their rays, sorted by exchange ----
        AcArray<AcGePoint3d> points, expected;
        for (int i = round % 12; i > 0; --i)
            points.append(random() % 9 ? center + randomPoint(random, 12).asVector() : center);
        AcArray<double> params;
        for (const AcGePoint3d& point : points) {
            const AcGeVector3d v = point - center;
            if (v.isZeroLength()) continue;
            AcGePoint3d meetings[2];
            int count = 0;
            const AcGeLine3d line(center, v);
            (void)arc.intersectWith(line, count, meetings[0], meetings[1]);
            AcGePoint3d snapped = point;
            double param = 0.0;
            for (int k = 1; k >= 0 && count == 2; --k)
                if ((meetings[k] - center).isCodirectionalTo(line.direction())) {
                    snapped = meetings[k];
                    param = arc.paramOf(snapped);
                }
            expected.append(snapped);
            params.append(param);
        }
        for (int i = 0; i < params.length(); ++i)
            for (int j = i + 1; j < params.length(); ++j)
                if (isDefinitelyLess(params[j], params[i])) {
                    params.swap(i, j);
                    expected.swap(i, j);
                }
        getPointsOnCircle(arc, points);
        ASSERT_TRUE(areSame(points, expected)) << round;
        // ---- tangents: about +Z, whatever the arc's normal ----
        const AcGeCircArc3d circle(center, arc.normal(), arc.radius());
        const AcGePoint3d from = center + randomPoint(random, 12).asVector();
        const AcGeVector3d away = center - from;
        AcGePoint3d touch[2] = {center, center};
        const bool isOutside = isDefinitelyLess(circle.radius(), away.length());
        ASSERT_EQ(getArcTangents(circle, from, touch[0], touch[1]), isOutside) << round;
        const double turn = std::asin(circle.radius() / away.length());
        const double reach = std::sqrt(away.lengthSqrd() - circle.radius() * circle.radius());
        for (const int side : {0, 1}) {
            AcGeVector3d ray = away.normal() * reach;
            ray.rotateBy(side == 0 ? turn : -turn, kUp);
            if (isOutside && reach > 0.1) {
                EXPECT_LT(touch[side].distanceTo(from + ray), 1e-5) << round;
            } else if (!isOutside) {
                EXPECT_EQ(touch[side], center) << "untouched";
            }
        }
        // ---- offsets of a second arc's ends ----
        const AcGeCircArc3d other = randomArc(random, center + randomPoint(random, 1).asVector());
        const auto angle = [&](const AcGePoint3d& a, const AcGePoint3d& b, const AcGeVector3d& about) {
            return (a - center).angleTo(b - center, about);
        };
        const auto difference = [&](const AcGePoint3d& own, const AcGePoint3d& its, double span) {
            const double a = angle(own, its, kUp);
            return span <= a + std::abs(a) * 1e-10 + 1e-10 ? -angle(own, its, -kUp) * arc.radius()
                                                           : a * arc.radius();
        };
        const double span = angle(arc.startPoint(), arc.endPoint(), kUp);
        double atStart = kNaN, atEnd = kNaN;
        getArcDifferences(arc, other, atStart, atEnd);
        EXPECT_NEAR(atStart, difference(arc.startPoint(), other.startPoint(), span), 1e-9) << round;
        EXPECT_NEAR(atEnd, difference(arc.endPoint(), other.endPoint(), 2 * kPi - span), 1e-9) << round;
    }
}

/// Runs over a coarse lattice, vertices about `jitter` beside each other.
std::unique_ptr<AcDbPolyline> randomRun(std::mt19937& random, double jitter, bool closed) {
    return polylineOf(latticeRun(random, 7, 2, 0.0, jitter), closed);
}

TEST(Contract, CurvesAreJoinedWithinTheTolerance) {
    std::mt19937 random(84);
    int atEnds = 0;
    for (int round = 0; round < 4000; ++round) {
        const auto first = randomRun(random, 4e-7, round % 9 == 0);
        const auto second = randomRun(random, 4e-7, round % 8 == 0);
        const bool close = random() % 2;
        const std::unique_ptr<AcDbCurve> result(concatenateCurves(first.get(), second.get(), close));
        const plaincontour::Owned expected = plaincontour::joined(*first, *second, close);
        ASSERT_EQ(verticesOf(*AcDbPolyline::cast(result.get())),
                  verticesOf(*AcDbPolyline::cast(expected.get())))
            << round;
        ASSERT_EQ(result->isClosed(), expected->isClosed()) << round;
        atEnds += endOf(*first).distanceTo(startOf(*second)) < 1e-6;
    }
    EXPECT_GT(atEnds, 200);
}

/// On the curve, on its vertices and beside them, or off it.
AcGePoint3d pointAt(std::mt19937& random, const AcDbPolyline& curve) {
    double end = 0.0;
    (void)curve.getEndParam(end);
    AcGePoint3d point;
    (void)curve.getPointAtParam(
        random() % 3 ? std::floor(between(random, 0, end + 0.99)) : between(random, 0, end), point);
    const double jitters[] = {0.0, 0.4e-10, 0.4e-8, 1.3e-8, 2.0};
    point.x += jitters[random() % 5];
    return point;
}

void expectSame(const Curves& curves, const std::vector<plaincontour::Owned>& expected, int round) {
    ASSERT_EQ(curves.count(), static_cast<int>(expected.size())) << round;
    for (int i = 0; i < curves.count(); ++i) {
        const auto& plain = *AcDbPolyline::cast(expected[static_cast<std::size_t>(i)].get());
        ASSERT_EQ(verticesOf(curves[i]), verticesOf(plain)) << round;
        ASSERT_EQ(curves[i].isClosed(), plain.isClosed()) << round;
    }
}

TEST(Contract, PartsOfCurvesAndHalvesOfContours) {
    std::mt19937 random(85);
    int parts = 0, halved = 0;
    for (int round = 0; round < 4000; ++round) {
        const double offset = kOffsets[round % 4 == 0];
        const auto curve = round % 2
                               ? polylineOf(randomContour(random, 3 + round % 30, offset), round % 3 != 0)
                               : polylineOf(latticeRun(random, 8, 3, offset, 0.0), round % 3 != 0);
        // ---- cut at points ----
        AcArray<AcGePoint3d> points;
        for (int i = round % 7; i > 0; --i) points.append(pointAt(random, *curve));
        AcArray<AcGePoint3d> distinct;
        AcGeDoubleArray params;
        for (const AcGePoint3d& point : points) {
            double param = 0.0;
            if (distinct.contains(point)) continue;
            distinct.append(point);
            if (curve->getParamAtPoint(point, param) == Acad::eOk) params.append(param);
        }
        for (int i = 0; i < params.length(); ++i)
            for (int j = i + 1; j < params.length(); ++j)
                if (isDefinitelyLess(params[j], params[i])) params.swap(i, j);
        AcArray<void*> cut;
        (void)curve->getSplitCurves(params, cut);
        std::vector<plaincontour::Owned> expected;
        for (void* piece : cut) expected.emplace_back(static_cast<AcDbCurve*>(piece));
        parts += cut.length();
        expectSame(Curves(splitPolyLineByPoints(curve.get(), points)), expected, round);
        // ---- the part between two points ----
        const AcGePoint3d first = pointAt(random, *curve), second = pointAt(random, *curve);
        for (const bool nearPart : {false, true}) {
            expected.clear();
            if (auto part = plaincontour::partBetween(first, second, *curve, nearPart))
                expected.push_back(std::move(part));
            AcDbCurve* part = giveMeSplitContourByPoints(first, second, curve.get(), nearPart);
            expectSame(Curves(part ? curvesOf({part}) : AcArray<void*>()), expected, round);
        }
        // ---- halves at a line; clearly beside the vertices ----
        if (round % 2 == 0 || !curve->isClosed()) continue;
        AcDbXline line = plaincontour::lineAt(AcGePoint3d(offset + between(random, -9, 9), 0, 0),
                                              AcGeVector3d(0, random() % 2 ? 1 : -2, 0));
        const Curves halves(splitContourByLine(curve.get(), line));
        expected = plaincontour::halvesAt(*curve, line);
        ASSERT_EQ(halves.count(), static_cast<int>(expected.size())) << round;
        for (int i = 0; i < halves.count(); ++i) {
            const AcDbCurve& plain = *expected[static_cast<std::size_t>(i)];
            EXPECT_NEAR(areaOf(halves[i]), areaOf(plain), 1e-6) << round;
            EXPECT_LT(boxOf(halves[i]).minPoint().distanceTo(boxOf(plain).minPoint()), 1e-6) << round;
            EXPECT_TRUE(halves[i].isClosed());
        }
        halved += halves.count();
    }
    EXPECT_GT(parts, 3000);
    EXPECT_GT(halved, 800);
}

/// The ray to the right, and what each curve adds to its count.
int insidePlainly(const std::vector<AcGeCurve2d*>& curves, const AcGePoint2d& q) {
    const AcGeLineSeg2d ray(q, AcGePoint2d(q.x + 100000000.0, q.y));
    const auto near = [](double a, double b) { return (a - b) * (a - b) <= 1e-20; };
    const auto isLess = [](double a, double b) { return a < b - (std::abs(b) * 1e-10 + 1e-10); };
    int total = 0;
    for (const AcGeCurve2d* curve : curves) {
        AcGePoint2d s, e, meetings[2];
        (void)curve->hasStartPoint(s);
        (void)curve->hasEndPoint(e);
        const bool isLine = curve->isKindOf(AcGe::kLinearEnt2d);
        const auto* arc = static_cast<const AcGeCircArc2d*>(isLine ? nullptr : curve);
        if ((near(s.x, q.x) && near(s.y, q.y)) || (near(e.x, q.x) && near(e.y, q.y))) return 1;
        int count = 0;
        if (!near(s.y, q.y) && !near(e.y, q.y)) {
            if (isLine)
                count = static_cast<const AcGeLinearEnt2d*>(curve)->intersectWith(ray, meetings[0]);
            else
                (void)arc->intersectWith(ray, count, meetings[0], meetings[1]);
            total += count;
            continue;
        }
        total += near(s.y, q.y) && isLess(e.y, q.y) && isLess(q.x, s.x);
        total += near(e.y, q.y) && isLess(s.y, q.y) && isLess(q.x, e.x);
        const bool isBetween =
            (isLess(s.x, q.x) && isLess(q.x, e.x)) || (isLess(e.x, q.x) && isLess(q.x, s.x));
        if (!near(s.y, q.y) || !near(e.y, q.y) || !isBetween) continue;
        if (isLine) return 1;
        total += isLess(q.y, arc->evalPoint((arc->startAng() + arc->endAng()) / 2).y);
    }
    return total % 2;
}

TEST(Contract, InsideARingOfCurves) {
    std::mt19937 random(86);
    int inside = 0;
    for (int round = 0; round < 20000; ++round) {
        const double offset = kOffsets[round % 4 == 0];
        const Vertices vertices = round % 3 ? latticeRun(random, 9, 4, offset, 0.4e-10)
                                            : randomContour(random, 3 + round % 40, offset);
        std::vector<std::unique_ptr<AcGeCurve2d>> owned;
        std::vector<AcGeCurve2d*> curves;
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const auto& [x, y, bulge] = vertices[i];
            const auto& next = vertices[(i + 1) % vertices.size()];
            const AcGePoint2d start(x, y), end(next[0], next[1]);
            if (bulge == 0.0)
                owned.push_back(std::make_unique<AcGeLineSeg2d>(start, end));
            else
                owned.push_back(std::make_unique<AcGeCircArc2d>(start, end, bulge));
            curves.push_back(owned.back().get());
        }
        const auto coordinate = [&] {
            return round % 3 ? onLattice(random, 5, offset, 0.4e-10) : offset + between(random, -11, 11);
        };
        const AcGePoint2d q(coordinate(), coordinate());
        const int expected = insidePlainly(curves, q);
        ASSERT_EQ(IsInteriorPoint(curves, q), expected) << round;
        inside += expected;
    }
    EXPECT_GT(inside, 3000);
}

TEST(Contract, OutsideAndInwards) {
    std::mt19937 random(87);
    int outside = 0, inwards = 0;
    for (int round = 0; round < 8000; ++round) {
        const auto contour = [&] {
            const Vertices any =
                round % 2 ? latticeRun(random, 6, 4, 0.0, 4e-9)
                          : rectangle(onLattice(random, 4, 0, 0.6e-8), onLattice(random, 4, 0, 0.6e-8),
                                      1 + random() % 4, 1 + random() % 4);
            return polylineOf(any, random() % 4 != 0);
        };
        const auto first = contour(), second = contour();
        const bool expected = plaincontour::liesOutside(*first, *second);
        ASSERT_EQ(isContourOutside(first.get(), second.get()), expected) << round;
        outside += expected;
        const AcGePoint3d p(onLattice(random, 4, 0, 0.3), onLattice(random, 4, 0, 0.3), 0);
        const AcGePoint3d q(onLattice(random, 4, 0, 0.3), onLattice(random, 4, 0, 0.3), 0);
        const AcGePoint3d middle = p + (q - p) / 2;
        AcGePoint3d nearest;
        // Near the middle rounding turns directions; the library goes by the sign there.
        if (p == q || first->getClosestPointTo(middle, nearest) != Acad::eOk ||
            nearest.distanceTo(middle) < 1e-3)
            continue;
        const bool isIn = plaincontour::pointsInside(p, q, *first);
        ASSERT_EQ(isPerpVectorOrientedInsideContour(p, q, first.get()), isIn) << round;
        inwards += isIn;
    }
    EXPECT_GT(outside, 1500);
    EXPECT_LT(outside, 6500);
    EXPECT_GT(inwards, 300);
}

} // namespace
