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

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr double kPi = AcGe::kPi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct NamedCurve {
    std::string name;
    std::shared_ptr<AcDbCurve> curve;
};

std::shared_ptr<AcDbPolyline> polylineOf(const std::vector<std::array<double, 3>>& vertices, bool closed) {
    auto polyline = std::make_shared<AcDbPolyline>();
    for (const auto& [x, y, bulge] : vertices)
        EXPECT_EQ(polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(x, y), bulge), Acad::eOk);
    polyline->setClosed(closed);
    return polyline;
}

std::shared_ptr<AcDbSpline> waveSpline() {
    AcGePoint3dArray points;
    for (int i = 0; i < 6; ++i) points.append(AcGePoint3d(i * 2.0, i % 2 ? 3.0 : -1.0, 0.5 * i));
    AcGeDoubleArray knots;
    for (const double knot : {0.0, 0.0, 0.0, 0.0, 1.0, 2.0, 3.0, 3.0, 3.0, 3.0}) knots.append(knot);
    return std::make_shared<AcDbSpline>(3, false, false, false, points, knots, AcGeDoubleArray());
}

std::vector<NamedCurve> allBoundedCurves() {
    AcGePoint3dArray corners;
    for (const AcGePoint3d& p :
         {AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0), AcGePoint3d(4, 3, 1), AcGePoint3d(0, 3, 2)})
        corners.append(p);
    AcGeDoubleArray bulges;
    for (const double bulge : {0.0, 0.7, -0.3, 0.0}) bulges.append(bulge);
    const std::vector<std::array<double, 3>> slab = {{0, 0, 0},    {6, 0, 0.5}, {6, 4, 0},
                                                     {3, 5, -0.4}, {0, 4, 0},   {0, 3, 1.5}};
    return {
        {"line", std::make_shared<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, -2, 5))},
        {"arc", std::make_shared<AcDbArc>(AcGePoint3d(1, 1, 0), 2.5, 0.4, 5.0)},
        {"arc across angle 0", std::make_shared<AcDbArc>(AcGePoint3d(1, 1, 0), 2.5, 5.0, 1.0)},
        {"arc downwards",
         std::make_shared<AcDbArc>(AcGePoint3d(1, 1, 2), -AcGeVector3d::kZAxis, 1.5, 0.3, 2.0)},
        {"circle", std::make_shared<AcDbCircle>(AcGePoint3d(-1, 2, 0), AcGeVector3d(0.2, 0.3, 1), 3.0)},
        {"ellipse", std::make_shared<AcDbEllipse>(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis,
                                                  AcGeVector3d(3, 1, 0), 0.4)},
        {"ellipse arc", std::make_shared<AcDbEllipse>(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis,
                                                      AcGeVector3d(3, 1, 0), 0.4, 0.5, 4.0)},
        {"spline", waveSpline()},
        {"open polyline", polylineOf(slab, false)},
        {"closed polyline", polylineOf(slab, true)},
        {"2d polyline",
         std::make_shared<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 1.5, false, 0.0, 0.0, &bulges)},
        {"closed 2d polyline",
         std::make_shared<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 1.5, true, 0.0, 0.0, &bulges)},
        {"3d polyline", std::make_shared<AcDb3dPolyline>(AcDb::k3dSimplePoly, corners, false)},
        {"closed 3d polyline", std::make_shared<AcDb3dPolyline>(AcDb::k3dSimplePoly, corners, true)},
    };
}

struct Placement {
    std::string name;
    AcGeMatrix3d matrix;
};

std::vector<Placement> placements() {
    const AcGePlane slanted(AcGePoint3d(1, 2, 3), AcGeVector3d(1, -2, 0.5));
    return {
        {"as made", AcGeMatrix3d()},
        {"a million units out", AcGeMatrix3d::translation(AcGeVector3d(1e6, -1e6, 0))},
        {"turned about z", AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis)},
        {"turned in space", AcGeMatrix3d::rotation(2.1, AcGeVector3d(1, 2, 3), AcGePoint3d(5, 5, 5))},
        {"mirrored", AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(2, 0, 0), AcGeVector3d::kXAxis))},
        {"mirrored on a slant", AcGeMatrix3d::mirroring(slanted)},
        {"upside down", AcGeMatrix3d::rotation(kPi, AcGeVector3d::kXAxis)},
        {"scaled", AcGeMatrix3d::scaling(0.01, AcGePoint3d(3, 3, 3))},
    };
}

/// How far computed points may be off: rounding of the coordinates, several times over.
double allowance(const AcGePoint3d& point) { return 1e-9 + 64 * AcGe::ulpOf(point.largestCoordinate()); }

void forEachPlacedCurve(
    const std::function<void(const AcDbCurve&, const AcDbCurve&, const AcGeMatrix3d&)>& check) {
    for (const Placement& placement : placements()) {
        for (const NamedCurve& source : allBoundedCurves()) {
            SCOPED_TRACE(source.name + ", " + placement.name);
            const std::unique_ptr<AcDbCurve> placed(AcDbCurve::cast(source.curve->clone()));
            ASSERT_TRUE(placed);
            ASSERT_EQ(placed->transformBy(placement.matrix), Acad::eOk);
            check(*placed, *source.curve, placement.matrix);
        }
    }
}

std::vector<double> parametersOf(const AcDbCurve& curve) {
    double start = 0.0;
    double end = 0.0;
    EXPECT_EQ(curve.getStartParam(start), Acad::eOk);
    EXPECT_EQ(curve.getEndParam(end), Acad::eOk);
    std::vector<double> parameters;
    for (int i = 0; i <= 40; ++i) parameters.push_back(start + (end - start) * i / 40.0);
    return parameters;
}

AcGePoint3d pointAt(const AcDbCurve& curve, double parameter) {
    AcGePoint3d point(kNaN, kNaN, kNaN);
    EXPECT_EQ(curve.getPointAtParam(parameter, point), Acad::eOk) << parameter;
    return point;
}

double wholeLength(const AcDbCurve& curve) {
    double end = 0.0;
    double length = kNaN;
    EXPECT_EQ(curve.getEndParam(end), Acad::eOk);
    EXPECT_EQ(curve.getDistAtParam(end, length), Acad::eOk);
    return length;
}

} // namespace

TEST(Curves, PointsParametersAndDistancesAgree) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d&) {
        AcGePoint3d start;
        AcGePoint3d end;
        ASSERT_EQ(curve.getStartPoint(start), Acad::eOk);
        ASSERT_EQ(curve.getEndPoint(end), Acad::eOk);
        const std::vector<double> parameters = parametersOf(curve);
        EXPECT_LE(pointAt(curve, parameters.front()).distanceTo(start), allowance(start));
        EXPECT_LE(pointAt(curve, parameters.back()).distanceTo(end), allowance(end));
        double last = -1.0;
        for (const double parameter : parameters) {
            const AcGePoint3d point = pointAt(curve, parameter);
            double found = kNaN;
            ASSERT_EQ(curve.getParamAtPoint(point, found), Acad::eOk) << parameter;
            // On a closed curve the end is the start.
            EXPECT_LE(pointAt(curve, found).distanceTo(point), allowance(point)) << parameter;
            if (parameter != parameters.back() || !curve.isClosed()) {
                EXPECT_NEAR(found, parameter, 1e-6) << parameter;
            }
            double distance = kNaN;
            double back = kNaN;
            ASSERT_EQ(curve.getDistAtParam(parameter, distance), Acad::eOk);
            EXPECT_GT(distance, last);
            last = distance;
            ASSERT_EQ(curve.getParamAtDist(distance, back), Acad::eOk) << distance;
            EXPECT_NEAR(back, parameter, 1e-6);
        }
    });
}

TEST(Curves, LengthIsThatOfManyChordsAndScalesWithTheCurve) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve& source, const AcGeMatrix3d& matrix) {
        constexpr int pieces = 1800;
        const std::vector<double> parameters = parametersOf(source);
        double chords = 0.0;
        AcGePoint3d last = pointAt(source, parameters.front());
        for (int i = 1; i <= pieces; ++i) {
            const AcGePoint3d next =
                pointAt(source, parameters.front() + (parameters.back() - parameters.front()) * i / pieces);
            chords += next.distanceTo(last);
            last = next;
        }
        EXPECT_NEAR(wholeLength(source), chords, 1e-4);
        EXPECT_NEAR(wholeLength(curve), wholeLength(source) * matrix.scale(), 1e-6);
    });
}

TEST(Curves, DerivativesAreThoseOfThePoints) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d& matrix) {
        const bool isFar = matrix.translation().length() > 1e5;
        const double step = isFar ? 1e-4 : 1e-5;
        for (const double parameter : parametersOf(curve)) {
            AcGeVector3d first;
            AcGeVector3d second;
            const double at = parameter + 0.0123;
            if (curve.getFirstDeriv(at, first) != Acad::eOk) continue;
            AcGePoint3d before;
            AcGePoint3d after;
            if (curve.getPointAtParam(at - step, before) != Acad::eOk) continue;
            if (curve.getPointAtParam(at + step, after) != Acad::eOk) continue;
            if (std::floor(at - step) != std::floor(at + step)) continue; // a corner
            EXPECT_LE(((after - before) / (2 * step) - first).length(), isFar ? 1e-4 : 1e-5) << parameter;
            AcGeVector3d laterFirst;
            if (curve.getSecondDeriv(at, second) != Acad::eOk ||
                curve.getFirstDeriv(at + step, laterFirst) != Acad::eOk)
                continue;
            EXPECT_LE(((laterFirst - first) / step - second).length(), 1e-2) << parameter;
        }
    });
}

TEST(Curves, ClosestPointIsNoFartherThanAnySample) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d& matrix) {
        for (const AcGePoint3d& probe :
             {AcGePoint3d(2, 1, 0), AcGePoint3d(10, -3, 1), AcGePoint3d(-4, 9, -2)}) {
            const AcGePoint3d given = matrix * probe;
            AcGePoint3d closest;
            ASSERT_EQ(curve.getClosestPointTo(given, closest), Acad::eOk);
            double parameter = 0.0;
            EXPECT_EQ(curve.getParamAtPoint(closest, parameter), Acad::eOk);
            for (const double sample : parametersOf(curve))
                EXPECT_LE(closest.distanceTo(given),
                          pointAt(curve, sample).distanceTo(given) + allowance(given));
        }
        AcGePoint3d untouched(7, 7, 7);
        EXPECT_NE(curve.getClosestPointTo(AcGePoint3d(kNaN, 0, 0), untouched), Acad::eOk);
        EXPECT_EQ(untouched.x, 7.0);
    });
}

TEST(Curves, TransformedCurveHoldsTheTransformedPointsInTheSameSense) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve& source, const AcGeMatrix3d& matrix) {
        double last = -1.0;
        // A circle's start follows its normal's axes.
        const bool startsElsewhere = AcDbCircle::cast(&source) != nullptr;
        std::vector<double> parameters = parametersOf(source);
        parameters.pop_back();
        for (const double parameter : parameters) {
            const AcGePoint3d expected = matrix * pointAt(source, parameter);
            AcGePoint3d closest;
            ASSERT_EQ(curve.getClosestPointTo(expected, closest), Acad::eOk);
            EXPECT_LE(closest.distanceTo(expected), allowance(expected)) << parameter;
            double distance = kNaN;
            ASSERT_EQ(curve.getDistAtPoint(closest, distance), Acad::eOk);
            if (!startsElsewhere) {
                EXPECT_GT(distance, last - 1e-7) << parameter;
            }
            last = distance;
        }
    });
}

TEST(Curves, ExtentsHoldThePointsAndNoMore) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d&) {
        AcDbExtents extents;
        ASSERT_EQ(curve.getGeomExtents(extents), Acad::eOk);
        AcDbExtents sampled;
        const std::vector<double> ends = parametersOf(curve);
        for (int i = 0; i <= 1200; ++i)
            sampled.addPoint(pointAt(curve, ends.front() + (ends.back() - ends.front()) * i / 1200.0));
        for (unsigned int axis = 0; axis < 3; ++axis) {
            const double slack = 1e-9 + 64 * AcGe::ulpOf(extents.maxPoint().largestCoordinate());
            EXPECT_LE(extents.minPoint()[axis], sampled.minPoint()[axis] + slack);
            EXPECT_GE(extents.maxPoint()[axis], sampled.maxPoint()[axis] - slack);
            EXPECT_NEAR(extents.minPoint()[axis], sampled.minPoint()[axis], 1e-3);
            EXPECT_NEAR(extents.maxPoint()[axis], sampled.maxPoint()[axis], 1e-3);
        }
    });
}

TEST(Curves, SplitPiecesFollowEachOtherAndHaveTheWholeLength) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d&) {
        const std::vector<double> ends = parametersOf(curve);
        const double low = ends.front() + (ends.back() - ends.front()) * 0.3;
        const double high = ends.front() + (ends.back() - ends.front()) * 0.85;
        for (const bool swapped : {false, true}) {
            AcGeDoubleArray cuts;
            cuts.append(swapped ? high : low);
            cuts.append(swapped ? low : high);
            AcDbVoidPtrArray parts;
            ASSERT_EQ(curve.getSplitCurves(cuts, parts), Acad::eOk);
            std::vector<std::unique_ptr<AcDbCurve>> pieces;
            for (void* part : parts) pieces.emplace_back(static_cast<AcDbCurve*>(part));
            ASSERT_EQ(pieces.size(), curve.isClosed() ? 2u : 3u);
            double sum = 0.0;
            for (std::size_t i = 0; i < pieces.size(); ++i) {
                sum += wholeLength(*pieces[i]);
                AcGePoint3d end;
                AcGePoint3d next;
                if (!curve.isClosed() && i + 1 == pieces.size()) break;
                ASSERT_EQ(pieces[i]->getEndPoint(end), Acad::eOk);
                ASSERT_EQ(pieces[(i + 1) % pieces.size()]->getStartPoint(next), Acad::eOk);
                EXPECT_LE(end.distanceTo(next), allowance(end));
            }
            EXPECT_NEAR(sum, wholeLength(curve), 1e-6);
            const AcGePoint3d atLow = pointAt(curve, low);
            AcGePoint3d start;
            ASSERT_EQ(pieces[curve.isClosed() ? 0 : 1]->getStartPoint(start), Acad::eOk);
            EXPECT_LE(start.distanceTo(atLow), allowance(atLow));
        }
    });
}

TEST(Curves, ReversedCurveRunsTheSamePointsBackward) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d&) {
        const std::unique_ptr<AcDbCurve> reversed(AcDbCurve::cast(curve.clone()));
        const Acad::ErrorStatus status = reversed->reverseCurve();
        ASSERT_EQ(status, Acad::eOk);
        if (AcDbCircle::cast(&curve)) return; // it begins elsewhere
        const double length = wholeLength(curve);
        for (int i = 1; i < 20; ++i) {
            AcGePoint3d forward;
            AcGePoint3d backward;
            ASSERT_EQ(curve.getPointAtDist(length * i / 20, forward), Acad::eOk);
            ASSERT_EQ(reversed->getPointAtDist(length - length * i / 20, backward), Acad::eOk);
            EXPECT_LE(forward.distanceTo(backward), 100 * allowance(forward)) << i;
        }
    });
}

TEST(Curves, ProjectedCurveHoldsTheProjectedPoints) {
    const AcGePlane slanted(AcGePoint3d(0, 0, 5), AcGeVector3d(0.3, 0.2, 1));
    struct View {
        const char* name;
        AcGePlane plane;
        AcGeVector3d direction;
    };
    const View views[] = {
        {"from above", AcGePlane::kXYPlane(), AcGeVector3d::kZAxis},
        {"from below", AcGePlane(AcGePoint3d::kOrigin, -AcGeVector3d::kZAxis), AcGeVector3d::kZAxis},
        {"on a slanted plane", slanted, AcGeVector3d::kZAxis},
        {"on edge", AcGePlane::kYZPlane(), AcGeVector3d::kXAxis}};
    for (const View& view : views) {
        for (const NamedCurve& source : allBoundedCurves()) {
            SCOPED_TRACE(source.name + ", " + view.name);
            AcDbCurve* made = nullptr;
            const Acad::ErrorStatus status =
                source.curve->getProjectedCurve(view.plane, view.direction, made);
            const std::unique_ptr<AcDbCurve> projected(made);
            if (status == Acad::eNotApplicable) continue; // arcs of a polyline that would be elliptic
            ASSERT_EQ(status, Acad::eOk);
            for (const double parameter : parametersOf(*source.curve)) {
                const AcGePoint3d expected =
                    pointAt(*source.curve, parameter).project(view.plane, view.direction);
                AcGePoint3d closest;
                ASSERT_EQ(projected->getClosestPointTo(expected, closest), Acad::eOk);
                EXPECT_LE(closest.distanceTo(expected), 1e-8) << parameter;
            }
        }
    }
    AcDbCurve* untouched = nullptr;
    EXPECT_EQ(AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0))
                  .getProjectedCurve(AcGePlane::kXYPlane(), AcGeVector3d::kXAxis, untouched),
              Acad::eInvalidInput);
    EXPECT_EQ(untouched, nullptr);
}

TEST(Curves, AreasOfKnownFigures) {
    struct Case {
        const char* name;
        std::shared_ptr<AcDbCurve> curve;
        double area;
    };
    const Case cases[] = {
        {"square", polylineOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, true), 4.0},
        {"open square, closed by its chord", polylineOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, false),
         4.0},
        {"two half circles", polylineOf({{0, 0, 1}, {2, 0, 1}}, true), kPi},
        {"clockwise half circles", polylineOf({{0, 0, -1}, {2, 0, -1}}, true), kPi},
        {"notched square", polylineOf({{0, 0, -1}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, true), 4.0 - kPi / 2},
        {"circle", std::make_shared<AcDbCircle>(AcGePoint3d(1e6, 1e6, 0), AcGeVector3d::kZAxis, 2.0),
         4 * kPi},
        {"half disc", std::make_shared<AcDbArc>(AcGePoint3d(), 2.0, 0.0, kPi), 2 * kPi},
        {"ellipse",
         std::make_shared<AcDbEllipse>(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(3, 0, 0), 0.5),
         4.5 * kPi},
        {"line", std::make_shared<AcDbLine>(AcGePoint3d(), AcGePoint3d(1, 1, 1)), 0.0},
    };
    for (const Case& c : cases) {
        double area = kNaN;
        EXPECT_EQ(c.curve->getArea(area), Acad::eOk) << c.name;
        EXPECT_NEAR(area, c.area, 1e-9) << c.name;
    }
    AcGePoint3dArray twisted;
    for (const AcGePoint3d& p :
         {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(0, 1, 0)})
        twisted.append(p);
    double untouched = 7.0;
    EXPECT_EQ(AcDb3dPolyline(AcDb::k3dSimplePoly, twisted, true).getArea(untouched), Acad::eNotApplicable);
    EXPECT_EQ(untouched, 7.0);
}

TEST(Curves, BadQuestionsAreRefusedAndOutputsStay) {
    const auto polyline = polylineOf({{0, 0, 0}, {2, 0, 0.5}, {2, 2, 0}}, false);
    AcGePoint3d point(7, 7, 7);
    double value = 7.0;
    for (const double parameter : {-0.1, 2.1, kNaN, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(polyline->getPointAtParam(parameter, point), Acad::eInvalidInput) << parameter;
    EXPECT_EQ(polyline->getParamAtPoint(AcGePoint3d(1, 1e-6, 0), value), Acad::eInvalidInput);
    EXPECT_EQ(polyline->getParamAtPoint(AcGePoint3d(kNaN, 0, 0), value), Acad::eInvalidInput);
    EXPECT_EQ(polyline->getParamAtDist(100.0, value), Acad::eInvalidInput);
    EXPECT_EQ(AcDbPolyline().getEndParam(value), Acad::eDegenerateGeometry);
    EXPECT_EQ(AcDbXline().getStartParam(value), Acad::eNotApplicable);
    EXPECT_EQ(AcDbRay().getEndPoint(point), Acad::eNotApplicable);
    EXPECT_EQ(AcDbSpline().getStartPoint(point), Acad::eDegenerateGeometry);
    AcDbArc arc(AcGePoint3d(), 1.0, 0.0, 1.0);
    EXPECT_EQ(arc.setRadius(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(arc.setStartAngle(kNaN), Acad::eInvalidInput);
    EXPECT_EQ(arc.setNormal(AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(arc.transformBy(AcGeMatrix3d::scaling(0.0)), Acad::eInvalidInput);
    AcGeMatrix3d stretched;
    stretched(0, 0) = 2.0;
    EXPECT_EQ(arc.transformBy(stretched), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(polyline->transformBy(stretched), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(arc.radius(), 1.0);
    AcDbVoidPtrArray parts;
    EXPECT_EQ(polyline->getSplitCurves(AcGeDoubleArray(), parts), Acad::eInvalidInput);
    AcGeDoubleArray atEnds;
    atEnds.append(0.0);
    atEnds.append(2.0);
    EXPECT_EQ(polyline->getSplitCurves(atEnds, parts), Acad::eInvalidInput);
    EXPECT_TRUE(parts.isEmpty());
    EXPECT_EQ(point.x, 7.0);
    EXPECT_EQ(value, 7.0);
}

TEST(Curves, LinesWithoutEndsAreCutIntoRays) {
    AcDbXline line;
    line.setBasePoint(AcGePoint3d(1, 0, 0));
    line.setUnitDir(AcGeVector3d(0, 5, 0));
    AcGeDoubleArray cuts;
    cuts.append(3.0);
    cuts.append(-2.0);
    AcDbVoidPtrArray parts;
    ASSERT_EQ(line.getSplitCurves(cuts, parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 3);
    std::vector<std::unique_ptr<AcDbCurve>> pieces;
    for (void* part : parts) pieces.emplace_back(static_cast<AcDbCurve*>(part));
    const AcDbRay* down = AcDbRay::cast(pieces[0].get());
    const AcDbLine* middle = AcDbLine::cast(pieces[1].get());
    const AcDbRay* up = AcDbRay::cast(pieces[2].get());
    ASSERT_TRUE(down && middle && up);
    EXPECT_EQ(down->basePoint(), AcGePoint3d(1, -2, 0));
    EXPECT_EQ(down->unitDir(), -AcGeVector3d::kYAxis);
    EXPECT_EQ(middle->endPoint(), AcGePoint3d(1, 3, 0));
    EXPECT_EQ(up->basePoint(), AcGePoint3d(1, 3, 0));
}

TEST(Polyline, SegmentsByKind) {
    const auto polyline = polylineOf({{0, 0, 0}, {2, 0, 1}, {2, 2, 0.5}, {2, 2, 0}, {0, 2, 1e-14}}, true);
    const AcDbPolyline::SegType expected[] = {AcDbPolyline::kLine,       AcDbPolyline::kArc,
                                              AcDbPolyline::kCoincident, AcDbPolyline::kLine,
                                              AcDbPolyline::kLine,       AcDbPolyline::kEmpty};
    for (unsigned int i = 0; i < 6; ++i) EXPECT_EQ(polyline->segType(i), expected[i]) << i;
    AcGeCircArc3d arc;
    AcGeLineSeg3d line;
    EXPECT_EQ(polyline->getArcSegAt(0, arc), Acad::eNotApplicable);
    EXPECT_EQ(polyline->getLineSegAt(1, line), Acad::eNotApplicable);
    EXPECT_EQ(polyline->getLineSegAt(9, line), Acad::eInvalidIndex);
    ASSERT_EQ(polyline->getArcSegAt(1, arc), Acad::eOk);
    EXPECT_EQ(arc.center(), AcGePoint3d(2, 1, 0));
    EXPECT_EQ(arc.startPoint(), AcGePoint3d(2, 0, 0));
    EXPECT_TRUE(arc.isOn(AcGePoint3d(3, 1, 0)));
    polyline->setClosed(false);
    EXPECT_EQ(polyline->segType(4), AcDbPolyline::kPoint);
    ASSERT_EQ(polyline->setNormal(-AcGeVector3d::kZAxis), Acad::eOk);
    ASSERT_EQ(polyline->getArcSegAt(1, arc), Acad::eOk);
    AcGePoint3d vertex;
    polyline->getPointAt(1, vertex);
    EXPECT_EQ(vertex, AcGePoint3d(-2, 0, 0));
    EXPECT_EQ(arc.startPoint(), vertex);
    EXPECT_TRUE(arc.isOn(AcGePoint3d(-3, 1, 0)));
}

TEST(Polyline, PartsKeepArcsAndTaperWidths) {
    const auto polyline = polylineOf({{0, 0, 0}, {4, 0, 1}}, true);
    ASSERT_EQ(polyline->setWidthsAt(0, 1.0, 3.0), Acad::eOk);
    AcGeDoubleArray cuts;
    cuts.append(0.5);
    cuts.append(1.5);
    AcDbVoidPtrArray parts;
    ASSERT_EQ(polyline->getSplitCurves(cuts, parts), Acad::eOk);
    ASSERT_EQ(parts.length(), 2);
    std::vector<std::unique_ptr<AcDbPolyline>> pieces;
    for (void* part : parts) pieces.emplace_back(AcDbPolyline::cast(static_cast<AcDbCurve*>(part)));
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
    ASSERT_EQ(pieces[0]->numVerts(), 3u);
    pieces[0]->getWidthsAt(0, startWidth, endWidth);
    EXPECT_DOUBLE_EQ(startWidth, 2.0);
    EXPECT_DOUBLE_EQ(endWidth, 3.0);
    pieces[0]->getBulgeAt(1, bulge);
    EXPECT_NEAR(bulge, std::tan(kPi / 8), 1e-15);
    AcGePoint3d end;
    pieces[0]->getEndPoint(end);
    EXPECT_TRUE(end.isEqualTo(AcGePoint3d(2, 2, 0)));
    ASSERT_EQ(pieces[1]->numVerts(), 3u);
    pieces[1]->getBulgeAt(0, bulge);
    EXPECT_NEAR(bulge, std::tan(kPi / 8), 1e-15);
}
