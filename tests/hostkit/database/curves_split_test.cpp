#include "curvecases.h"

#include <numbers>

using namespace curvecases;

namespace {

/// Each piece goes on where the one before ended, and all together they are as long as the whole.
void expectChain(const AcDbCurve& whole, const Pieces& pieces) {
    double sum = 0.0;
    for (int i = 0; i < pieces.count(); ++i) {
        sum += lengthOf(pieces[i]);
        EXPECT_FALSE(pieces[i].isClosed()) << i;
        if (i == 0) continue;
        EXPECT_TRUE(isNear(startOf(pieces[i]), endOf(pieces[i - 1]), roundingAt(startOf(pieces[i]))));
    }
    EXPECT_NEAR(sum, lengthOf(whole), 1e-9 * lengthOf(whole));
}

} // namespace

TEST(CurveSplit, GivesThePiecesInOrderWhateverTheOrderOfTheCuts) {
    for (const Case& each : allCurves()) {
        SCOPED_TRACE(each.name);
        const AcDbCurve& curve = *each.curve;
        const double low = paramAt(curve, 0.3);
        const double high = paramAt(curve, 0.8);
        Pieces pieces;
        ASSERT_EQ(curve.getSplitCurves(numbersOf({high, low, high}), pieces.array), Acad::eOk);
        ASSERT_EQ(pieces.count(), curve.isClosed() ? 2 : 3);
        expectChain(curve, pieces);
        const int first = curve.isClosed() ? 0 : 1;
        EXPECT_TRUE(isNear(startOf(pieces[first]), pointAt(curve, low), roundingAt(pointAt(curve, low))));
        EXPECT_TRUE(isNear(endOf(pieces[first]), pointAt(curve, high), roundingAt(pointAt(curve, high))));
        const AcGePoint3d end = curve.isClosed() ? pointAt(curve, low) : endOf(curve);
        EXPECT_TRUE(isNear(endOf(pieces[pieces.count() - 1]), end, roundingAt(end)));
        // Points of the pieces are points of the curve.
        for (int i = 0; i < pieces.count(); ++i)
            for (const double share : {0.0, 0.21, 0.5, 0.83, 1.0}) {
                const AcGePoint3d point = pointAt(pieces[i], paramAt(pieces[i], share));
                AcGePoint3d closest;
                ASSERT_EQ(curve.getClosestPointTo(point, closest), Acad::eOk);
                EXPECT_TRUE(isNear(point, closest, 4.0 * roundingAt(point)));
            }
    }
}

TEST(CurveSplit, TakesTheEndOfAClosedCurveForItsStart) {
    const auto square = polyline({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    for (const double seam : {0.0, 4.0}) {
        Pieces pieces;
        ASSERT_EQ(square->getSplitCurves(numbersOf({1.5, seam}), pieces.array), Acad::eOk);
        ASSERT_EQ(pieces.count(), 2);
        EXPECT_TRUE(startOf(pieces[0]) == AcGePoint3d(0, 0, 0));
        EXPECT_TRUE(endOf(pieces[0]) == AcGePoint3d(4, 2, 0));
        EXPECT_TRUE(endOf(pieces[1]) == AcGePoint3d(0, 0, 0));
    }
    Pieces opened;
    ASSERT_EQ(square->getSplitCurves(numbersOf({1.5}), opened.array), Acad::eOk);
    ASSERT_EQ(opened.count(), 1);
    EXPECT_TRUE(startOf(opened[0]) == AcGePoint3d(4, 2, 0));
    EXPECT_TRUE(endOf(opened[0]) == AcGePoint3d(4, 2, 0));
    EXPECT_NEAR(lengthOf(opened[0]), 16.0, 1e-12);
}

TEST(CurveSplit, LeavesNoSliversAtEndsAndVertices) {
    const auto open = polyline({{0, 0}, {4, 0}, {4, 4}}, false);
    AcGePoint3dArray points = pointsOf({{5e-11, 0, 0}, {4, 5e-11, 0}, {4, 4 - 5e-11, 0}});
    Pieces pieces;
    ASSERT_EQ(open->getSplitCurves(points, pieces.array), Acad::eOk);
    ASSERT_EQ(pieces.count(), 2);
    EXPECT_EQ(AcDbPolyline::cast(&pieces[0])->numVerts(), 2u);
    EXPECT_EQ(AcDbPolyline::cast(&pieces[1])->numVerts(), 2u);
    const AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
    points.setLogicalLength(1);
    Pieces none;
    EXPECT_EQ(line.getSplitCurves(points, none.array), Acad::eInvalidInput);
    EXPECT_EQ(none.count(), 0);
}

TEST(CurveSplit, RefusesNothingToCutAndCutsOutside) {
    for (const Case& each : allCurves()) {
        SCOPED_TRACE(each.name);
        const AcDbCurve& curve = *each.curve;
        Pieces pieces;
        EXPECT_EQ(curve.getSplitCurves(AcGeDoubleArray(), pieces.array), Acad::eInvalidInput);
        EXPECT_EQ(curve.getSplitCurves(numbersOf({NAN}), pieces.array), Acad::eInvalidInput);
        const AcGeDoubleArray ends = numbersOf({startParamOf(curve), endParamOf(curve)});
        if (!curve.isClosed()) {
            EXPECT_EQ(curve.getSplitCurves(ends, pieces.array), Acad::eInvalidInput);
        }
        EXPECT_EQ(curve.getSplitCurves(pointsOf({{-1e3, 1e3, 777.0}}), pieces.array), Acad::eInvalidInput);
        EXPECT_EQ(pieces.count(), 0);
    }
}

// In the order of the segments, where the curve runs, in its look; arcs about the curve's own normal.
TEST(CurveSplit, ExplosionGivesTheSegments) {
    int exploded = 0;
    for (const Case& each : allCurves()) {
        SCOPED_TRACE(each.name);
        auto* const light = AcDbPolyline::cast(each.curve.get());
        auto* const flat = AcDb2dPolyline::cast(each.curve.get());
        if (!light && !flat) continue;
        AcDbCurve& curve = *each.curve;
        (void)curve.setColorIndex(3);
        (void)(light ? light->setThickness(2.5) : flat->setThickness(2.5));
        AcGeMatrix3d plane;
        curve.getEcs(plane);
        const AcGeVector3d normal = plane * AcGeVector3d::kZAxis;
        Pieces parts;
        ASSERT_EQ(curve.explode(parts.array), Acad::eOk);
        double end = 0.0, sum = 0.0, rounding = 0.0;
        ASSERT_EQ(curve.getEndParam(end), Acad::eOk);
        ASSERT_EQ(parts.count(), static_cast<int>(end));
        for (int i = 0; i < parts.count(); ++i) {
            const AcDbCurve& part = parts[i];
            sum += lengthOf(part);
            EXPECT_EQ(part.colorIndex(), 3);
            const auto* arc = AcDbArc::cast(&part);
            // A flat arc is only as exact as its far centre.
            const double own =
                roundingAt(pointAt(curve, i + 0.5)) + (arc ? 8.0 * AcGe::ulpOf(arc->radius()) : 0.0);
            rounding += own;
            EXPECT_TRUE(isNear(pointAt(part, paramAt(part, 0.5)), pointAt(curve, i + 0.5), own));
            const auto* line = AcDbLine::cast(&part);
            ASSERT_TRUE(arc || line);
            EXPECT_EQ(arc ? arc->thickness() : line->thickness(), 2.5);
            EXPECT_TRUE((arc ? arc->normal() : line->normal()).isEqualTo(normal));
        }
        EXPECT_NEAR(sum, lengthOf(curve), 1e-9 * lengthOf(curve) + rounding);
        ++exploded;
    }
    EXPECT_GT(exploded, 2);
    AcDbVoidPtrArray none;
    EXPECT_EQ(polyline({{1, 1}, {1, 1}}, true)->explode(none), Acad::eDegenerateGeometry);
    EXPECT_TRUE(none.isEmpty());
}
