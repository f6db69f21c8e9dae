#include "curvecases.h"
#include "entitymotions.h"

#include <functional>
#include <limits>

using namespace curvecases;

namespace {

constexpr double kPi = AcGe::kPi;

/// How far computed points may be off: rounding of the coordinates, several times over.
double allowance(const AcGePoint3d& point) { return 1e-9 + 64 * AcGe::ulpOf(point.largestCoordinate()); }

void forEachPlacedCurve(
    const std::function<void(const AcDbCurve&, const AcDbCurve&, const AcGeMatrix3d&)>& check) {
    for (const auto& [name, matrix] : placements()) {
        for (const Case& source : ordinaryCurves()) {
            SCOPED_TRACE(source.name + ", " + name);
            check(*placed(*source.curve, matrix), *source.curve, matrix);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

std::vector<double> parametersOf(const AcDbCurve& curve, int steps = 40) {
    std::vector<double> parameters;
    for (int i = 0; i <= steps; ++i) parameters.push_back(paramAt(curve, i / double(steps)));
    return parameters;
}

} // namespace

TEST(Curves, PointsParametersAndDistancesAgree) {
    for (const Case& each : allCurves()) {
        SCOPED_TRACE(each.name);
        const AcDbCurve& curve = *each.curve;
        const std::vector<double> parameters = parametersOf(curve);
        ASSERT_LT(parameters.front(), parameters.back());
        EXPECT_TRUE(isNear(pointAt(curve, parameters.front()), startOf(curve), roundingAt(startOf(curve))));
        EXPECT_TRUE(isNear(pointAt(curve, parameters.back()), endOf(curve), roundingAt(endOf(curve))));
        double last = -1.0;
        for (const double parameter : parameters) {
            const AcGePoint3d point = pointAt(curve, parameter);
            double found = NAN;
            ASSERT_EQ(curve.getParamAtPoint(point, found), Acad::eOk) << parameter;
            EXPECT_TRUE(isNear(pointAt(curve, found), point, 10.0 * roundingAt(point))) << parameter;
            // On a closed curve the end is the start.
            const bool isSeam = curve.isClosed() && parameter == parameters.back();
            EXPECT_NEAR(found, isSeam ? parameters.front() : parameter, isSeam ? 0.0 : 1e-7);
            double distance = NAN;
            double back = NAN;
            ASSERT_EQ(curve.getDistAtParam(parameter, distance), Acad::eOk);
            EXPECT_GT(distance, last);
            last = distance;
            ASSERT_EQ(curve.getParamAtDist(distance, back), Acad::eOk) << distance;
            EXPECT_NEAR(back, parameter, 1e-6);
        }
    }
}

TEST(Curves, LengthIsThatOfManyChordsAndScalesWithTheCurve) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve& source, const AcGeMatrix3d& matrix) {
        double chords = 0.0;
        AcGePoint3d last = startOf(source);
        for (const double parameter : parametersOf(source, 1800)) {
            const AcGePoint3d next = pointAt(source, parameter);
            chords += next.distanceTo(last);
            last = next;
        }
        EXPECT_NEAR(lengthOf(source), chords, 1e-4);
        EXPECT_NEAR(lengthOf(curve), lengthOf(source) * matrix.scale(), 1e-6);
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
        EXPECT_NE(curve.getClosestPointTo(AcGePoint3d(NAN, 0, 0), untouched), Acad::eOk);
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
            double distance = NAN;
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
        for (const double parameter : parametersOf(curve, 1200)) sampled.addPoint(pointAt(curve, parameter));
        for (unsigned int axis = 0; axis < 3; ++axis) {
            const double slack = 1e-9 + 64 * AcGe::ulpOf(extents.maxPoint().largestCoordinate());
            EXPECT_LE(extents.minPoint()[axis], sampled.minPoint()[axis] + slack);
            EXPECT_GE(extents.maxPoint()[axis], sampled.maxPoint()[axis] - slack);
            EXPECT_NEAR(extents.minPoint()[axis], sampled.minPoint()[axis], 1e-3);
            EXPECT_NEAR(extents.maxPoint()[axis], sampled.maxPoint()[axis], 1e-3);
        }
    });
}

TEST(Curves, ReversedCurveRunsTheSamePointsBackward) {
    forEachPlacedCurve([](const AcDbCurve& curve, const AcDbCurve&, const AcGeMatrix3d&) {
        const std::unique_ptr<AcDbCurve> reversed(AcDbCurve::cast(curve.clone()));
        ASSERT_EQ(reversed->reverseCurve(), Acad::eOk);
        if (AcDbCircle::cast(&curve)) return; // it begins elsewhere
        const double length = lengthOf(curve);
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
    const std::tuple<std::string, AcGePlane, AcGeVector3d> views[] = {
        {"from above", AcGePlane::kXYPlane(), AcGeVector3d::kZAxis},
        {"from below", AcGePlane(AcGePoint3d::kOrigin, -AcGeVector3d::kZAxis), AcGeVector3d::kZAxis},
        {"on a slanted plane", slanted, AcGeVector3d::kZAxis},
        {"on edge", AcGePlane::kYZPlane(), AcGeVector3d::kXAxis}};
    for (const auto& [name, plane, direction] : views) {
        for (const Case& source : ordinaryCurves()) {
            SCOPED_TRACE(source.name + ", " + name);
            AcDbCurve* made = nullptr;
            const Acad::ErrorStatus status = source.curve->getProjectedCurve(plane, direction, made);
            const std::unique_ptr<AcDbCurve> projected(made);
            if (status == Acad::eNotApplicable) continue; // arcs of a polyline that would be elliptic
            ASSERT_EQ(status, Acad::eOk);
            for (const double parameter : parametersOf(*source.curve)) {
                const AcGePoint3d expected = pointAt(*source.curve, parameter).project(plane, direction);
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

TEST(Curves, ProjectedUnboundedLinesHaveUnitDirections) {
    for (const AcGeVector3d& along : {AcGeVector3d(0.6, 0.0, 0.8), AcGeVector3d(0.0, -0.8, 0.6)}) {
        const auto check = [&](const auto& line) {
            AcDbCurve* made = nullptr;
            ASSERT_EQ(line.getProjectedCurve(AcGePlane::kXYPlane(), AcGeVector3d::kZAxis, made), Acad::eOk);
            const std::unique_ptr<AcDbCurve> owned(made);
            const auto* const projected = std::remove_cvref_t<decltype(line)>::cast(made);
            ASSERT_TRUE(projected);
            EXPECT_TRUE(projected->basePoint().isEqualTo({1.0, 2.0, 0.0}));
            EXPECT_NEAR(projected->unitDir().length(), 1.0, 1e-15);
            EXPECT_GT(projected->unitDir().dotProduct(along), 0.0);
        };
        check(*throughPoint<AcDbRay>({1.0, 2.0, 3.0}, along));
        check(*throughPoint<AcDbXline>({1.0, 2.0, 3.0}, along));
    }
}

TEST(Curves, TheThicknessOfCirclesFollowsTheMotion) {
    for (const motions::Motion& motion : motions::all()) {
        SCOPED_TRACE(motion.name);
        const auto check = [&](auto curve) {
            ASSERT_EQ(curve.setThickness(2.5), Acad::eOk);
            const AcGeVector3d wall = curve.normal() * curve.thickness();
            const Acad::ErrorStatus status = curve.transformBy(motion.matrix);
            EXPECT_EQ(status, motion.keepsShape ? Acad::eOk : Acad::eCannotScaleNonUniformly);
            const AcGeVector3d expected = status == Acad::eOk ? motion.matrix * wall : wall;
            const AcGeVector3d moved = curve.normal() * curve.thickness();
            EXPECT_LE((moved - expected).length(), 1e-12 * expected.length());
        };
        check(AcDbCircle({1.0, 2.0, 3.0}, {0.3, -0.5, 0.8}, 4.0));
        check(AcDbArc({1.0, 2.0, 3.0}, {0.3, -0.5, 0.8}, 4.0, 0.5, 4.0));
    }
}

TEST(Curves, OldPolylinesCloseAndOpen) {
    const auto check = [](auto&& line) {
        EXPECT_FALSE(line.isClosed());
        ASSERT_EQ(line.makeClosed(), Acad::eOk);
        EXPECT_TRUE(line.isClosed());
        ASSERT_EQ(line.makeOpen(), Acad::eOk);
        EXPECT_FALSE(line.isClosed());
    };
    const AcGePoint3dArray points = pointsOf({{0, 0, 0}, {5, 0, 0}, {5, 5, 0}});
    check(AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, false, 0.0, 0.0, nullptr));
    check(AcDb3dPolyline(AcDb::k3dSimplePoly, points, false));
}

TEST(Curves, AConstantWidthTakesThePlaceOfOthers) {
    const std::unique_ptr<AcDbPolyline> line = polyline({{0, 0}, {10, 0}, {10, 5}}, false);
    ASSERT_EQ(line->setWidthsAt(1, 2.0, 3.0), Acad::eOk);
    EXPECT_EQ(line->setConstantWidth(-1.0), Acad::eInvalidInput);
    double start = 0.0, end = 0.0;
    ASSERT_EQ(line->getWidthsAt(1, start, end), Acad::eOk);
    EXPECT_EQ(start, 2.0);
    EXPECT_EQ(end, 3.0);
    ASSERT_EQ(line->setConstantWidth(0.5), Acad::eOk);
    for (unsigned int i = 0; i < 3; ++i) {
        ASSERT_EQ(line->getWidthsAt(i, start, end), Acad::eOk);
        EXPECT_EQ(start, 0.5) << i;
        EXPECT_EQ(end, 0.5) << i;
    }
}

TEST(Curves, AreasOfKnownFigures) {
    const auto check = [](const char* name, const AcDbCurve& curve, double expected) {
        double area = NAN;
        EXPECT_EQ(curve.getArea(area), Acad::eOk) << name;
        EXPECT_NEAR(area, expected, 1e-9) << name;
    };
    const std::vector<Vertex> square = {{0, 0}, {2, 0}, {2, 2}, {0, 2}};
    const AcGeVector3d up = AcGeVector3d::kZAxis;
    check("square", *polyline(square, true), 4.0);
    check("open square, closed by its chord", *polyline(square, false), 4.0);
    check("two half circles", *polyline({{0, 0, 1}, {2, 0, 1}}, true), kPi);
    check("clockwise half circles", *polyline({{0, 0, -1}, {2, 0, -1}}, true), kPi);
    check("notched square", *polyline({{0, 0, -1}, {2, 0}, {2, 2}, {0, 2}}, true), 4.0 - kPi / 2);
    check("circle", AcDbCircle({1e6, 1e6, 0}, up, 2.0), 4 * kPi);
    check("half disc", AcDbArc({}, 2.0, 0.0, kPi), 2 * kPi);
    check("ellipse", AcDbEllipse({}, up, {3, 0, 0}, 0.5), 4.5 * kPi);
    check("line", AcDbLine({}, {1, 1, 1}), 0.0);
    const AcGePoint3dArray twisted = pointsOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}});
    double untouched = 7.0;
    EXPECT_EQ(AcDb3dPolyline(AcDb::k3dSimplePoly, twisted, true).getArea(untouched), Acad::eNotApplicable);
    EXPECT_EQ(untouched, 7.0);
}

TEST(Curves, BadQuestionsAreRefusedAndOutputsStay) {
    const auto contour = polyline({{0, 0, 0}, {2, 0, 0.5}, {2, 2, 0}}, false);
    AcGePoint3d point(7, 7, 7);
    double value = 7.0;
    for (const double parameter : {-0.1, 2.1, double{NAN}, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(contour->getPointAtParam(parameter, point), Acad::eInvalidInput) << parameter;
    EXPECT_EQ(contour->getParamAtPoint(AcGePoint3d(1, 1e-6, 0), value), Acad::eInvalidInput);
    EXPECT_EQ(AcDbPolyline().getEndParam(value), Acad::eDegenerateGeometry);
    AcDbArc arc(AcGePoint3d(), 1.0, 0.0, 1.0);
    EXPECT_EQ(arc.setRadius(-1.0), Acad::eInvalidInput);
    EXPECT_EQ(arc.setStartAngle(NAN), Acad::eInvalidInput);
    EXPECT_EQ(arc.setNormal(AcGeVector3d()), Acad::eInvalidInput);
    EXPECT_EQ(arc.transformBy(AcGeMatrix3d::scaling(0.0)), Acad::eInvalidInput);
    AcGeMatrix3d stretched;
    stretched(0, 0) = 2.0;
    EXPECT_EQ(arc.transformBy(stretched), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(contour->transformBy(stretched), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(arc.radius(), 1.0);
    EXPECT_EQ(point.x, 7.0);
    EXPECT_EQ(value, 7.0);
}

TEST(Curves, LinesWithoutEndsAreCutIntoRays) {
    const auto line = throughPoint<AcDbXline>({1, 0, 0}, {0, 5, 0});
    Pieces pieces;
    ASSERT_EQ(line->getSplitCurves(numbersOf({3.0, -2.0}), pieces.array), Acad::eOk);
    ASSERT_EQ(pieces.count(), 3);
    const AcDbRay* down = AcDbRay::cast(&pieces[0]);
    const AcDbLine* middle = AcDbLine::cast(&pieces[1]);
    const AcDbRay* up = AcDbRay::cast(&pieces[2]);
    ASSERT_TRUE(down && middle && up);
    EXPECT_EQ(down->basePoint(), AcGePoint3d(1, -2, 0));
    EXPECT_EQ(down->unitDir(), -AcGeVector3d::kYAxis);
    EXPECT_EQ(middle->endPoint(), AcGePoint3d(1, 3, 0));
    EXPECT_EQ(up->basePoint(), AcGePoint3d(1, 3, 0));
}

TEST(Polyline, SegmentsByKind) {
    const auto contour = polyline({{0, 0, 0}, {2, 0, 1}, {2, 2, 0.5}, {2, 2, 0}, {0, 2, 1e-14}}, true);
    const AcDbPolyline::SegType expected[] = {AcDbPolyline::kLine,       AcDbPolyline::kArc,
                                              AcDbPolyline::kCoincident, AcDbPolyline::kLine,
                                              AcDbPolyline::kLine,       AcDbPolyline::kEmpty};
    for (unsigned int i = 0; i < 6; ++i) EXPECT_EQ(contour->segType(i), expected[i]) << i;
    AcGeCircArc3d arc;
    AcGeLineSeg3d line;
    EXPECT_EQ(contour->getArcSegAt(0, arc), Acad::eNotApplicable);
    EXPECT_EQ(contour->getLineSegAt(1, line), Acad::eNotApplicable);
    EXPECT_EQ(contour->getLineSegAt(9, line), Acad::eInvalidIndex);
    ASSERT_EQ(contour->getArcSegAt(1, arc), Acad::eOk);
    EXPECT_EQ(arc.center(), AcGePoint3d(2, 1, 0));
    EXPECT_EQ(arc.startPoint(), AcGePoint3d(2, 0, 0));
    EXPECT_TRUE(arc.isOn(AcGePoint3d(3, 1, 0)));
    contour->setClosed(false);
    EXPECT_EQ(contour->segType(4), AcDbPolyline::kPoint);
    ASSERT_EQ(contour->setNormal(-AcGeVector3d::kZAxis), Acad::eOk);
    ASSERT_EQ(contour->getArcSegAt(1, arc), Acad::eOk);
    AcGePoint3d vertex;
    contour->getPointAt(1, vertex);
    EXPECT_EQ(vertex, AcGePoint3d(-2, 0, 0));
    EXPECT_EQ(arc.startPoint(), vertex);
    EXPECT_TRUE(arc.isOn(AcGePoint3d(-3, 1, 0)));
}

TEST(Polyline, PartsKeepArcsAndTaperWidths) {
    const auto contour = polyline({{0, 0, 0}, {4, 0, 1}}, true);
    ASSERT_EQ(contour->setWidthsAt(0, 1.0, 3.0), Acad::eOk);
    Pieces pieces;
    ASSERT_EQ(contour->getSplitCurves(numbersOf({0.5, 1.5}), pieces.array), Acad::eOk);
    ASSERT_EQ(pieces.count(), 2);
    const auto* const first = AcDbPolyline::cast(&pieces[0]);
    ASSERT_EQ(first->numVerts(), 3u);
    double startWidth = 0.0;
    double endWidth = 0.0;
    first->getWidthsAt(0, startWidth, endWidth);
    EXPECT_DOUBLE_EQ(startWidth, 2.0);
    EXPECT_DOUBLE_EQ(endWidth, 3.0);
    double bulge = 0.0;
    first->getBulgeAt(1, bulge);
    EXPECT_NEAR(bulge, std::tan(kPi / 8), 1e-15);
    EXPECT_TRUE(endOf(*first).isEqualTo(AcGePoint3d(2, 2, 0)));
}
