// Hatch loops as curves, areas, boxes and moves; dimensions' measurements.

#include "dbdim.h"
#include "dbhatch.h"
#include "gearc2d.h"
#include "geell2d.h"
#include "gelnsg2d.h"
#include "genurb2d.h"
#include "geplane.h"
#include "hatchcurves.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>

namespace {

constexpr double kTolerance = 1e-9;
const double kPi = AcGe::kPi;

AcGePoint2dArray rectangle(double x, double y, double width, double height) {
    AcGePoint2dArray points;
    points.append(AcGePoint2d(x, y));
    points.append(AcGePoint2d(x + width, y));
    points.append(AcGePoint2d(x + width, y + height));
    points.append(AcGePoint2d(x, y + height));
    return points;
}

/// A loop's edges as the hatch hands them out; freed with it.
struct Edges {
    AcGeVoidPointerArray curves;
    AcArray<int> types;
    Adesk::Int32 type = -1;
    Acad::ErrorStatus status;

    Edges(const AcDbHatch& hatch, int index)
        : status(hatch.getLoopAt(index, type, curves, types)) {}
    ~Edges() {
        for (int i = 0; i < curves.length(); ++i) delete &curve(i);
    }
    AcGeCurve2d& curve(int i) const { return *static_cast<AcGeCurve2d*>(curves[i]); }
};

/// Half a disc of that radius about the point, closed by its diameter, as edges; some clockwise.
void appendHalfDisc(AcDbHatch& hatch, const AcGePoint2d& center, double radius, bool clockWise) {
    AcGeCircArc2d arc(center, radius, 0.0, kPi, AcGeVector2d::kXAxis, clockWise);
    AcGeLineSeg2d chord(arc.endPoint(), arc.startPoint());
    AcGeVoidPointerArray curves;
    AcArray<int> types;
    curves.append(static_cast<AcGeCurve2d*>(&arc));
    curves.append(static_cast<AcGeCurve2d*>(&chord));
    types.append(AcDbHatch::kCirArc);
    types.append(AcDbHatch::kLine);
    ASSERT_EQ(Acad::eOk, hatch.appendLoop(AcDbHatch::kExternal, curves, types));
}

TEST(Hatch, PolylineLoopsComeBackInBothForms) {
    AcDbHatch hatch;
    AcGePoint2dArray points = rectangle(0, 0, 4, 2);
    points.append(points[0]);
    AcGeDoubleArray bulges;
    for (const double bulge : {0.0, 1.0, 0.0, 0.0, 0.0}) bulges.append(bulge);
    ASSERT_EQ(Acad::eOk, hatch.appendLoop(AcDbHatch::kExternal, points, bulges));
    Adesk::Int32 type = 0;
    AcGePoint2dArray vertices;
    AcGeDoubleArray found;
    ASSERT_EQ(Acad::eOk, hatch.getLoopAt(0, type, vertices, found));
    EXPECT_EQ(AcDbHatch::kExternal | AcDbHatch::kPolyline, type);
    EXPECT_EQ(4, vertices.length()) << "the closing vertex is dropped";
    EXPECT_EQ(1.0, found[1]);
    const Edges edges(hatch, 0);
    ASSERT_EQ(4, edges.curves.length());
    const int expected[] = {AcDbHatch::kLine, AcDbHatch::kCirArc, AcDbHatch::kLine, AcDbHatch::kLine};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(expected[i], edges.types[i]);
    EXPECT_NEAR(1.0, static_cast<AcGeCircArc2d&>(edges.curve(1)).radius(), kTolerance);
    double area = 0.0;
    ASSERT_EQ(Acad::eOk, hatch.getArea(area));
    EXPECT_NEAR(8.0 + kPi / 2.0, area, kTolerance);
}

TEST(Hatch, BadLoopsAreRefused) {
    AcDbHatch hatch;
    AcGePoint2dArray points = rectangle(0, 0, 1, 1);
    AcGeDoubleArray bulges;
    bulges.append(1.0);
    EXPECT_EQ(Acad::eInvalidInput, hatch.appendLoop(0, points, bulges));
    points[2].x = std::nan("");
    EXPECT_EQ(Acad::eInvalidInput, hatch.appendLoop(0, points, AcGeDoubleArray()));
    EXPECT_EQ(Acad::eInvalidInput, hatch.appendLoop(0, AcGePoint2dArray(), AcGeDoubleArray()));
    AcGeLineSeg2d line(AcGePoint2d(0, 0), AcGePoint2d(1, 0));
    AcGeVoidPointerArray curves;
    AcArray<int> types;
    curves.append(static_cast<AcGeCurve2d*>(&line));
    types.append(AcDbHatch::kCirArc);
    EXPECT_EQ(Acad::eInvalidInput, hatch.appendLoop(0, curves, types));
    types[0] = AcDbHatch::kLine;
    curves[0] = nullptr;
    EXPECT_EQ(Acad::eInvalidInput, hatch.appendLoop(0, curves, types));
    EXPECT_EQ(0, hatch.numLoops());
    EXPECT_EQ(Acad::eInvalidIndex, hatch.removeLoopAt(0));
    EXPECT_EQ(Acad::eInvalidIndex, Edges(hatch, 0).status);
    AcDbExtents untouched({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(Acad::eInvalidExtents, hatch.getGeomExtents(untouched));
    EXPECT_EQ(AcGePoint3d(1, 2, 3), untouched.minPoint());
    EXPECT_EQ(Acad::eInvalidInput, hatch.setPattern(AcDbHatch::kPreDefined, L""));
    EXPECT_EQ(Acad::eInvalidInput, hatch.setPatternScale(0.0));
}

TEST(Hatch, EveryKindOfEdgeSurvivesTheWayThroughCurves) {
    const AcGeVector2d tilted(0.6, 0.8);
    AcGeDoubleArray knots;
    for (const double knot : {0, 0, 0, 1, 2, 2, 2}) knots.append(knot);
    AcGePoint2dArray points;
    for (const AcGePoint2d point :
         {AcGePoint2d(0, 0), AcGePoint2d(1, 2), AcGePoint2d(3, 2), AcGePoint2d(4, 0)})
        points.append(point);
    AcGeDoubleArray weights;
    for (const double weight : {1.0, 0.5, 2.0, 1.0}) weights.append(weight);
    const std::unique_ptr<AcGeCurve2d> curves[] = {
        std::make_unique<AcGeLineSeg2d>(AcGePoint2d(1, 2), AcGePoint2d(3, 4)),
        std::make_unique<AcGeCircArc2d>(AcGePoint2d(1, 2), 3.0, 0.25, 2.0, tilted, false),
        std::make_unique<AcGeCircArc2d>(AcGePoint2d(1, 2), 3.0, 0.25, 6.0, tilted, true),
        std::make_unique<AcGeEllipArc2d>(AcGePoint2d(1, 2), tilted, tilted.perpVector(), 5.0, 2.0, 0.5, 4.0),
        std::make_unique<AcGeEllipArc2d>(AcGePoint2d(1, 2), tilted, -tilted.perpVector(), 5.0, 2.0, 0.5, 4.0),
        std::make_unique<AcGeEllipArc2d>(AcGePoint2d(1, 2), tilted, tilted.perpVector(), 2.0, 5.0, 0.5, 4.0),
        std::make_unique<AcGeNurbCurve2d>(2, AcGeKnotVector(knots), points),
        std::make_unique<AcGeNurbCurve2d>(2, AcGeKnotVector(knots), points, weights)};
    for (const auto& curve : curves) {
        SCOPED_TRACE(&curve - curves);
        hostkit::HatchEdge edge;
        ASSERT_TRUE(hostkit::edgeOf(*curve, edge));
        const std::unique_ptr<AcGeCurve2d> back = hostkit::curveOf(edge);
        ASSERT_NE(nullptr, back);
        AcGeInterval before, after;
        curve->getInterval(before);
        back->getInterval(after);
        for (const double share : {0.0, 0.125, 0.5, 0.875, 1.0}) {
            const AcGePoint2d expected = curve->evalPoint(before.lowerBound() + share * before.length());
            const AcGePoint2d found = back->evalPoint(after.lowerBound() + share * after.length());
            EXPECT_NEAR(0.0, expected.distanceTo(found), kTolerance) << share;
        }
    }
}

TEST(Hatch, SplinesWhoseCountsDoNotFitAreLeftOut) {
    hostkit::HatchEdge edge;
    edge.kind = hostkit::HatchEdge::kSpline;
    edge.degree = 3;
    edge.controlPoints.resize(4);
    edge.knots = {0, 0, 0, 1, 1, 1};
    EXPECT_EQ(nullptr, hostkit::curveOf(edge));
    edge.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    edge.isRational = true;
    EXPECT_EQ(nullptr, hostkit::curveOf(edge));
    edge.degree = -1;
    EXPECT_EQ(nullptr, hostkit::curveOf(edge));
}

TEST(Hatch, AreaFollowsNestingAndStyle) {
    AcDbHatch hatch;
    const AcGeDoubleArray none;
    hatch.appendLoop(AcDbHatch::kExternal, rectangle(0, 0, 10, 10), none);
    AcGePoint2dArray reversed = rectangle(1, 1, 8, 8);
    reversed.reverse();
    hatch.appendLoop(AcDbHatch::kDefault, reversed, none);
    hatch.appendLoop(AcDbHatch::kDefault, rectangle(2, 2, 6, 6), none);
    hatch.appendLoop(AcDbHatch::kExternal, rectangle(20, 0, 1, 1), none);
    const std::pair<AcDbHatch::HatchStyle, double> expected[] = {{AcDbHatch::kNormal, 100 - 64 + 36 + 1},
                                                                 {AcDbHatch::kOuter, 100 - 64 + 1},
                                                                 {AcDbHatch::kIgnore, 101}};
    for (const auto& [style, value] : expected) {
        ASSERT_EQ(Acad::eOk, hatch.setHatchStyle(style));
        double area = 0.0;
        ASSERT_EQ(Acad::eOk, hatch.getArea(area));
        EXPECT_NEAR(value, area, kTolerance);
    }
    hatch.appendLoop(AcDbHatch::kNotClosed, rectangle(0, 0, 1, 1), none);
    double untouched = -1.0;
    EXPECT_EQ(Acad::eNotApplicable, hatch.getArea(untouched));
    EXPECT_EQ(-1.0, untouched);
}

TEST(Hatch, TheBoxIsThatOfTheCurvesInAnyPlane) {
    AcDbHatch hatch;
    appendHalfDisc(hatch, {3, 4}, 2.0, false);
    AcDbExtents box;
    ASSERT_EQ(Acad::eOk, hatch.getGeomExtents(box));
    EXPECT_TRUE(box.minPoint().isEqualTo({1, 4, 0}) && box.maxPoint().isEqualTo({5, 6, 0}));
    const AcGeVector3d normal = AcGeVector3d(1, 2, 3).normal();
    ASSERT_EQ(Acad::eOk, hatch.setNormal(normal));
    ASSERT_EQ(Acad::eOk, hatch.setElevation(7.0));
    ASSERT_EQ(Acad::eOk, hatch.getGeomExtents(box));
    AcGeVector3d xAxis, yAxis;
    AcGe::arbitraryAxes(normal, xAxis, yAxis);
    AcDbExtents sampled;
    constexpr int steps = 200000;
    for (int i = 0; i <= steps; ++i) {
        const double angle = kPi * i / steps;
        sampled.addPoint(AcGePoint3d::kOrigin + xAxis * (3 + 2 * std::cos(angle)) +
                         yAxis * (4 + 2 * std::sin(angle)) + normal * 7.0);
    }
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_NEAR(sampled.minPoint()[i], box.minPoint()[i], 1e-8);
        EXPECT_NEAR(sampled.maxPoint()[i], box.maxPoint()[i], 1e-8);
        EXPECT_LE(box.minPoint()[i], sampled.minPoint()[i] + 1e-12);
    }
}

TEST(Hatch, MovesTurnsAndMirrorsTakeEveryPointAlong) {
    for (const bool clockWise : {false, true}) {
        AcDbHatch original;
        appendHalfDisc(original, {3, 4}, 2.0, clockWise);
        AcGeDoubleArray bulges;
        for (const double bulge : {0.5, -0.25, 0.0, 1.0}) bulges.append(bulge);
        ASSERT_EQ(Acad::eOk, original.appendLoop(0, rectangle(10, 10, 3, 2), bulges));
        const AcGeMatrix3d matrices[] = {
            AcGeMatrix3d::translation({5, -3, 2}),
            AcGeMatrix3d::rotation(1.0, AcGeVector3d::kZAxis, {1, 1, 0}),
            AcGeMatrix3d::scaling(2.5, {1, 2, 3}),
            AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(1, 0, 0), AcGeVector3d(1, 2, 0))),
            AcGeMatrix3d::rotation(2.0, AcGeVector3d(1, 1, 1), {4, 5, 6}),
            AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 0, 5), AcGeVector3d::kZAxis))};
        for (const AcGeMatrix3d& matrix : matrices) {
            SCOPED_TRACE(&matrix - matrices);
            AcDbHatch moved(original);
            ASSERT_EQ(Acad::eOk, moved.transformBy(matrix));
            AcGeMatrix3d before, after;
            original.getEcs(before);
            moved.getEcs(after);
            for (int loop = 0; loop < 2; ++loop) {
                const Edges expected(original, loop), found(moved, loop);
                ASSERT_EQ(expected.curves.length(), found.curves.length());
                for (int i = 0; i < expected.curves.length(); ++i) {
                    AcGeInterval from, to;
                    expected.curve(i).getInterval(from);
                    found.curve(i).getInterval(to);
                    for (const double share : {0.0, 0.3, 1.0}) {
                        const AcGePoint2d a =
                            expected.curve(i).evalPoint(from.lowerBound() + share * from.length());
                        const AcGePoint2d b = found.curve(i).evalPoint(to.lowerBound() + share * to.length());
                        const AcGePoint3d world =
                            matrix * (before * AcGePoint3d(a.x, a.y, original.elevation()));
                        EXPECT_NEAR(0.0, world.distanceTo(after * AcGePoint3d(b.x, b.y, moved.elevation())),
                                    kTolerance);
                    }
                }
            }
        }
    }
}

TEST(Hatch, UnequalScalesAreRefusedWhereSomethingIsRound) {
    AcGeMatrix3d stretch;
    stretch(0, 0) = 2.0;
    AcDbHatch round, straight;
    appendHalfDisc(round, {0, 0}, 1.0, false);
    EXPECT_EQ(Acad::eCannotScaleNonUniformly, round.transformBy(stretch));
    straight.appendLoop(0, rectangle(0, 0, 1, 1), AcGeDoubleArray());
    ASSERT_EQ(Acad::eOk, straight.transformBy(stretch));
    double area = 0.0;
    straight.getArea(area);
    EXPECT_NEAR(2.0, area, kTolerance);
    AcGeMatrix3d singular;
    singular(2, 2) = 0.0;
    EXPECT_EQ(Acad::eInvalidInput, straight.transformBy(singular));
}

TEST(Dimension, MeasuresItsPoints) {
    const std::pair<AcDbDimension::Type, double> expected[] = {
        {AcDbDimension::kRotated, 4.0}, {AcDbDimension::kAligned, 5.0}, {AcDbDimension::kRadial, 13.0}};
    for (const auto& [type, value] : expected) {
        AcDbDimension dimension(type);
        dimension.setPointOf(13, {1, 1, 0});
        dimension.setPointOf(14, {4, 5, 0});
        dimension.setPointOf(10, {0, 0, 0});
        dimension.setPointOf(15, {5, 12, 0});
        dimension.setRotation(kPi / 2.0);
        double measured = 0.0;
        ASSERT_EQ(Acad::eOk, dimension.measurement(measured));
        EXPECT_NEAR(value, measured, kTolerance);
        ASSERT_EQ(Acad::eOk, dimension.transformBy(AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 3)) *
                                                   AcGeMatrix3d::scaling(2.0)));
        ASSERT_EQ(Acad::eOk, dimension.measurement(measured));
        EXPECT_NEAR(2.0 * value, measured, kTolerance);
    }
    AcDbDimension ordinate(AcDbDimension::kOrdinate);
    double untouched = 1.0;
    EXPECT_EQ(Acad::eNotApplicable, ordinate.measurement(untouched));
    EXPECT_EQ(Acad::eInvalidInput, ordinate.setPointOf(17, {0, 0, 0}));
    EXPECT_EQ(Acad::eInvalidInput, ordinate.setPointOf(10, {std::nan(""), 0, 0}));
    AcDbExtents box;
    EXPECT_EQ(Acad::eInvalidExtents, ordinate.getGeomExtents(box));
}

} // namespace
