// The common area of two contours and the merging of neighbours, as callers see them: kinds of curves,
// planes, senses, refusals.
#include "vexogeometrytools.h"

#include "areacases.h"
#include "db2dpolyline.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"

#include <gtest/gtest.h>

#include <memory>

using namespace VEXOGeometryTools;
using namespace vexo;
using namespace areacases;

namespace {

/// The polyline that a tool gave, owned here; null when it gave none.
std::unique_ptr<AcDbPolyline> owned(AcDbCurve* curve) {
    return std::unique_ptr<AcDbPolyline>(AcDbPolyline::cast(curve));
}
std::unique_ptr<AcDbPolyline> common(AcDbCurve& first, AcDbCurve& second) {
    return owned(getComonSurfaceFromPolylines(&first, &second));
}
std::unique_ptr<AcDbPolyline> merged(AcDbCurve& first, AcDbCurve& second) {
    return owned(MergeContoursIfTheyHaveOneComonSegment(&first, &second));
}

int arcCountOf(const AcDbPolyline& polyline) {
    int count = 0;
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) count += polyline.segType(i) == AcDbPolyline::kArc;
    return count;
}

/// A place in space that lies in no plane of the axes.
AcGeMatrix3d tilt() {
    return AcGeMatrix3d::translation(AcGeVector3d(300, -200, 50)) *
           AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 0.5));
}

} // namespace

TEST(CommonSurface, OfEveryKindOfCurve) {
    const double disc = AcGe::kPi * 4;
    AcDbCircle circle(AcGePoint3d(5, 5, 3), AcGeVector3d::kZAxis, 2);
    const auto square = polylineOf(corners({0, 0, 5.5, 0, 10, 0, 10, 10, 0, 10}), true);
    AcGePoint3dArray lower = Outline(rectangle(0, 0, 10, 5)).points;
    AcDb2dPolyline old(AcDb::k2dSimplePoly, lower, 0.0, true);
    const auto whole = common(circle, *square);
    ASSERT_TRUE(whole);
    EXPECT_NEAR(areaOf(*whole), disc, 1e-12);
    EXPECT_EQ(arcCountOf(*whole), 2);
    EXPECT_TRUE(whole->isClosed());
    EXPECT_EQ(whole->elevation(), 3.0);
    const auto half = common(old, circle);
    ASSERT_TRUE(half);
    EXPECT_NEAR(areaOf(*half), disc / 2, 1e-12);
    EXPECT_EQ(half->numVerts(), 2u);
    EXPECT_EQ(arcCountOf(*half), 1);
    // The largest of three pieces, the one in the middle.
    const auto comb =
        polylineOf(corners({1, -1, 9, -1, 9, 4, 8, 4, 8, 0, 7, 0, 7, 4, 4, 4, 4, 0, 2, 0, 2, 4, 1, 4}), true);
    const auto piece = common(*square, *comb);
    ASSERT_TRUE(piece);
    EXPECT_NEAR(areaOf(*piece), 12.0, 1e-12);
    EXPECT_EQ(piece->numVerts(), 4u) << "without the square's straight vertex";
}

TEST(CommonSurface, InAnyPlaneAndSense) {
    for (const bool isMirrored : {false, true})
        for (const bool isReversed : {false, true})
            for (const double elevation : {0.0, 7.0}) {
                const auto slab = polylineOf(roundedRectangle(0, 0, 10, 6, 2), true);
                const Vertices shape = capsule(8, 3, 6, 1, false);
                auto opening = polylineOf(isReversed ? reversed(shape) : shape, true);
                (void)slab->setElevation(2.5);
                (void)opening->setElevation(elevation);
                if (isMirrored) // drawn from below
                    (void)opening->transformBy(
                        AcGeMatrix3d::rotation(AcGe::kPi, AcGeVector3d::kXAxis, AcGePoint3d(0, 3, 1)));
                (void)slab->transformBy(tilt());
                (void)opening->transformBy(tilt());
                const auto clipped = common(*slab, *opening);
                ASSERT_TRUE(clipped) << isMirrored << isReversed << elevation;
                EXPECT_NEAR(areaOf(*clipped), 4 + AcGe::kPi / 2, 1e-9);
                EXPECT_EQ(arcCountOf(*clipped), 1);
                EXPECT_TRUE(clipped->normal().isEqualTo(slab->normal()));
                EXPECT_NEAR(clipped->elevation(), slab->elevation(), 1e-12);
                EXPECT_GT(signedArea(vexo::loopOf(*clipped)), 0.0);
                // The other way round it lies in the opening's plane.
                const auto inOpening = common(*opening, *slab);
                ASSERT_TRUE(inOpening);
                EXPECT_NEAR(areaOf(*inOpening), 4 + AcGe::kPi / 2, 1e-9);
                const double rise = (isMirrored ? 2 - elevation : elevation) - 2.5;
                const AcGeVector3d up = tilt() * AcGeVector3d(0, 0, rise);
                const AcDbExtents box = boxOf(*clipped), shifted = boxOf(*inOpening);
                EXPECT_LT(shifted.minPoint().distanceTo(box.minPoint() + up), 1e-9);
                EXPECT_LT(shifted.maxPoint().distanceTo(box.maxPoint() + up), 1e-9);
            }
}

TEST(CommonSurface, NullForWhatBoundsNoCommonArea) {
    const auto square = polylineOf(rectangle(0, 0, 10, 10), true);
    auto tilted = polylineOf(rectangle(0, 0, 10, 10), true);
    (void)tilted->setNormal(AcGeVector3d(0, 0.1, 1).normal());
    const auto closed = [](const Vertices& vertices) { return polylineOf(vertices, true); };
    const auto plane = AcGeVector3d::kZAxis;
    const struct {
        const char* name;
        std::shared_ptr<AcDbCurve> curve;
    } cases[] = {
        {"null", nullptr},
        {"open", polylineOf(rectangle(1, 1, 3, 3), false)},
        {"open, ends meeting", polylineOf(corners({1, 1, 3, 1, 3, 3, 1, 1}), false)},
        {"no vertices", closed({})},
        {"no area", closed(corners({1, 1, 5, 5, 3, 3}))},
        {"side by side", closed(rectangle(10, 0, 5, 10))},
        {"apart", closed(rectangle(20, 0, 5, 10))},
        {"in another plane", std::move(tilted)},
        {"no number", std::make_shared<AcDbCircle>(AcGePoint3d(kNaN, 5, 0), plane, 2)},
        {"an arc", std::make_shared<AcDbArc>(AcGePoint3d(5, 5, 0), 2, 0, AcGe::kTwoPi)},
        {"a line", std::make_shared<AcDbLine>(AcGePoint3d(-1, 5, 0), AcGePoint3d(11, 5, 0))},
        {"an ellipse",
         std::make_shared<AcDbEllipse>(AcGePoint3d(5, 5, 0), plane, AcGeVector3d(2, 0, 0), 0.5)},
    };
    for (const auto& [name, curve] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(getComonSurfaceFromPolylines(square.get(), curve.get()), nullptr);
        EXPECT_EQ(getComonSurfaceFromPolylines(curve.get(), square.get()), nullptr);
        if (std::string(name) == "side by side") continue; // share a side
        EXPECT_EQ(MergeContoursIfTheyHaveOneComonSegment(square.get(), curve.get()), nullptr);
        EXPECT_EQ(MergeContoursIfTheyHaveOneComonSegment(curve.get(), square.get()), nullptr);
    }
}

TEST(MergeContours, WhatIsJoinedAndWhatIsNot) {
    const Vertices square = rectangle(0, 0, 2, 2);
    const Vertices withArc = {{0, 0, 0}, {2, 0, 0.5}, {2, 2, 0}, {0, 2, 0}};
    const Vertices major = {{0, -1, 2}, {0, 1, 0}};
    const Vertices angle = corners({0, 0, 4, 0, 4, 2, 2, 2, 2, 4, 0, 4});
    const Vertices hollow = {{2, 0, 0}, {4, 0, 0}, {4, 2, 0}, {2, 2, -0.5}};
    const struct {
        const char* name;
        Vertices first, second;
        unsigned int vertices; ///< of the result; 0 for none
        int arcs;
    } cases[] = {
        {"a whole side", square, rectangle(2, 0, 3, 2), 4, 0},
        {"a side, one end bent", square, corners({2, 0, 5, 1, 5, 2, 2, 2}), 5, 0},
        {"an arc", withArc, hollow, 4, 0},
        {"halves of a circle", {{-1, 0, 0}, {1, 0, 1}}, {{-1, 0, 1}, {1, 0, 0}}, 2, 2},
        {"more than half a circle", major, corners({0, 1, -5, 2, -5, -2, 0, -1}), 4, 1},
        {"a disc in its notch", major, {{0, 1, -2}, {0, -1, 0}, {9, -15, 0}, {9, 15, 0}}, 4, 0},
        {"touching in a further point", corners({0, 0, 6, 0, 6, 1, 1, 1, 1, 5, 0, 5}),
         corners({1, 5, 1, 1, 3, 3, 6, 1, 6, 5}), 8, 0},
        {"part of a side", square, rectangle(2, 0.5, 3, 1), 0, 0},
        {"a side and part of another", angle, rectangle(2, 2, 2, 1), 0, 0},
        {"two sides", angle, rectangle(2, 2, 2, 2), 0, 0},
        {"all sides", square, square, 0, 0},
        {"a side, the same side of it", square, corners({2, 0, 2, 2, 1, 1}), 0, 0},
        {"a side, overlapping elsewhere", square,
         corners({2, 0, 2, 2, 5, 5, 1, 5, 1, 1.5, 1.5, 1.5, 1.5, 4, 4, 4}), 0, 0},
        {"a side against an arc", square, hollow, 0, 0},
        {"arcs of other heights", withArc, {{2, 0, 0}, {4, 0, 0}, {4, 2, 0}, {2, 2, -0.4}}, 0, 0},
        {"a corner", square, rectangle(2, 2, 2, 2), 0, 0},
        {"apart by a hair", square, rectangle(2 + 1e-8, 0, 3, 2), 0, 0},
    };
    for (const auto& c : cases)
        for (const double offset : {0.0, 1e5})
            for (int senses = 0; senses < 4; ++senses) {
                SCOPED_TRACE(std::string(c.name) + ", senses " + std::to_string(senses));
                const auto first =
                    polylineOf(moved(senses % 2 ? reversed(c.first) : c.first, 0.0, offset, offset), true);
                const auto second =
                    polylineOf(moved(senses / 2 ? reversed(c.second) : c.second, 0.0, offset, offset), true);
                for (const bool isSwapped : {false, true}) {
                    const auto result = isSwapped ? merged(*second, *first) : merged(*first, *second);
                    ASSERT_EQ(result != nullptr, c.vertices > 0);
                    if (!result) continue;
                    EXPECT_TRUE(result->isClosed());
                    EXPECT_EQ(result->numVerts(), c.vertices);
                    EXPECT_EQ(arcCountOf(*result), c.arcs);
                    EXPECT_NEAR(areaOf(*result), areaOf(*first) + areaOf(*second),
                                1e-12 * (1 + 1e5 * offset));
                    const AcDbPolyline& leading = isSwapped ? *second : *first;
                    EXPECT_EQ(signedArea(vexo::loopOf(*result)) > 0.0,
                              signedArea(vexo::loopOf(leading)) > 0.0);
                }
            }
}

TEST(MergeContours, InOnePlaneOnly) {
    const auto first = polylineOf(rectangle(0, 0, 2, 2), true);
    const auto second = polylineOf(rectangle(2, 0, 3, 2), true);
    (void)first->setElevation(4);
    EXPECT_FALSE(merged(*first, *second));
    (void)second->setElevation(4);
    EXPECT_TRUE(merged(*first, *second));
    // Seen from below: normal -Z, the plane of the first.
    (void)second->transformBy(AcGeMatrix3d::rotation(AcGe::kPi, AcGeVector3d::kXAxis, AcGePoint3d(0, 1, 4)));
    ASSERT_LT(second->normal().z, 0.0);
    (void)first->transformBy(tilt());
    (void)second->transformBy(tilt());
    const auto result = merged(*first, *second);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->numVerts(), 4u);
    EXPECT_NEAR(areaOf(*result), 10.0, 1e-9);
    EXPECT_NEAR(result->elevation(), first->elevation(), 1e-12);
    AcDbCircle circle(AcGePoint3d(5, 5, 3), AcGeVector3d::kZAxis, 2);
    EXPECT_FALSE(merged(circle, circle));
}
