#include "drawingparts.h"

#include "curvecases.h"
#include "entitypicking.h"

#include "acgi.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbopaque.h"
#include "dbpoint.h"
#include "dbsolid.h"
#include "dbtext.h"
#include "gearc2d.h"

#include <limits>
#include <string>

namespace {

using curvecases::polyline;
using hostkit::isPicked;
using hostkit::PickMode;
using hostkit::PickRegion;

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

struct Asked {
    std::string name;
    PickRegion region;
    bool touching;
    bool inside;
};

void check(const AcDbEntity& entity, const std::vector<Asked>& questions,
           const AcGeMatrix3d& view = AcGeMatrix3d()) {
    for (const Asked& asked : questions) {
        EXPECT_EQ(isPicked(entity, {view}, asked.region, PickMode::touching), asked.touching)
            << asked.name << ", touching";
        EXPECT_EQ(isPicked(entity, {view}, asked.region, PickMode::inside), asked.inside)
            << asked.name << ", inside";
    }
}

PickRegion box(double left, double bottom, double right, double top) {
    return PickRegion::box({left, bottom}, {right, top});
}
PickRegion dot(double x, double y) { return PickRegion::box({x, y}, {x, y}); }

TEST(PickingCases, EdgesCount) {
    const AcDbCircle circle({5.0, 5.0, 0.0}, AcGeVector3d::kZAxis, 5.0);
    check(circle,
          {{"the box around it", box(0, 0, 10, 10), true, true},
           {"a box with its top right of it", box(10, 2, 12, 8), true, false},
           {"a box beside it", box(10.001, 2, 12, 8), false, false},
           {"a box within it", box(4, 4, 6, 6), false, false},
           {"a corner on it", PickRegion::box({8.0, 9.0}, {12.0, 12.0}), true, false},
           {"a polygon around it", PickRegion::polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}}), true, true},
           {"a fence across it", PickRegion::fence({{-1, 5}, {5, 5}}), true, false},
           {"a fence within it", PickRegion::fence({{2, 5}, {5, 5}, {5, 8}}), false, false}});
    check(AcDbLine({0, 0, 0}, {4, 0, 0}), {{"along the edge", box(0, 0, 4, 3), true, true},
                                           {"a little beyond", box(0, 0, 3.999, 3), true, false},
                                           {"end on the edge", box(4, -1, 5, 1), true, false},
                                           {"end at a corner", box(4, 0, 5, 1), true, false},
                                           {"above", box(0, 1e-9, 4, 3), false, false}});
}

TEST(PickingCases, RegionsWithoutASize) {
    const AcDbCircle circle({0.0, 0.0, 0.0}, AcGeVector3d::kZAxis, 5.0);
    const AcDbLine line({0, 0, 0}, {4, 0, 0});
    check(circle, {{"a point on it", dot(3, 4), true, false},
                   {"its right end", dot(5, 0), true, false},
                   {"its middle", dot(0, 0), false, false},
                   {"a segment to it", box(0, 4, 3, 4), true, false},
                   {"a segment within", box(0, 1, 3, 1), false, false},
                   {"a polygon of two", PickRegion::polygon({{0, 0}, {6, 8}}), true, false},
                   {"a polygon of one", PickRegion::polygon({{-3, 4}}), true, false},
                   {"a polygon of none", PickRegion::polygon({}), false, false},
                   {"a fence of one", PickRegion::fence({{3, -4}}), true, false},
                   {"a fence of none", PickRegion::fence({}), false, false},
                   {"no number", box(-9, -9, noNumber, 9), false, false},
                   {"endless", box(-9, -9, HUGE_VAL, 9), false, false}});
    check(line, {{"its own segment", box(0, 0, 4, 0), true, true},
                 {"a longer one", box(-1, 0, 9, 0), true, true},
                 {"a shorter one", box(0, 0, 3, 0), true, false},
                 {"one across", box(2, -1, 2, 1), true, false},
                 {"one that goes on from it", box(5, 0, 9, 0), false, false}});
    check(AcDbPoint({1, 2, 3}), {{"itself", dot(1, 2), true, true}, {"another", dot(1, 3), false, false}});
}

TEST(PickingCases, SelfCrossingPolygonsAreWithinByOddTurns) {
    const PickRegion star = PickRegion::polygon({{0, 10}, {6, -8}, {-9.5, 3}, {9.5, 3}, {-6, -8}});
    check(AcDbPoint({0, 0, 0}), {{"its middle", star, false, false}});
    check(AcDbPoint({0, 6, 0}), {{"a tip", star, true, true}});
    check(AcDbLine({0, 6, 0}, {-6, 2, 0}), {{"from tip to tip", star, true, false}});
    const PickRegion ring = PickRegion::polygon(
        {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {4, 4}, {6, 4}, {6, 6}, {4, 6}, {4, 4}});
    check(AcDbFace({3, 3, 0}, {7, 3, 0}, {7, 7, 0}, {3, 7, 0}), {{"over the hole", ring, true, false}});
    check(AcDbFace({1, 1, 0}, {3, 1, 0}, {3, 3, 0}, {1, 3, 0}), {{"beside the hole", ring, true, true}});
}

TEST(PickingCases, WhatHasNoEndIsTouchedAndNeverInside) {
    const auto line = curvecases::throughPoint<AcDbXline>({1e7, 1e7, 0}, {1, 1, 0});
    const auto ray = curvecases::throughPoint<AcDbRay>({0, 0, 0}, {0.6, 0.8, 0});
    const auto upright = curvecases::throughPoint<AcDbXline>({3, 4, 0}, {0, 0, 1});
    check(*line, {{"near the origin", box(-1, -1, 1, 1), true, false},
                  {"on it by a point", dot(-500, -500), true, false},
                  {"beside it", box(0, 1, 1, 2.1), true, false},
                  {"clear of it", box(0, 1.1, 1, 2.1), false, false}});
    check(*ray, {{"at its start", box(-1, -1, 0, 0), true, false},
                 {"before its start", box(-9, -9, -1, -1), false, false},
                 {"far along it", dot(6e6, 8e6), true, false}});
    check(*upright, {{"seen from its end", dot(3, 4), true, false}, {"beside", dot(3, 5), false, false}});
}

TEST(PickingCases, WidthsCountForTouchingAlone) {
    auto wide = polyline({{0, 0}, {10, 0}}, false);
    ASSERT_EQ(wide->setConstantWidth(2.0), Acad::eOk);
    check(*wide, {{"within the width", box(4, 0.5, 5, 0.6), true, false},
                  {"at its side", box(4, 1, 5, 2), true, false},
                  {"beyond it", box(4, 1.1, 5, 2), false, false},
                  {"behind its end", box(10.1, -1, 11, 1), false, false},
                  {"around the line", box(0, -0.1, 10, 0.1), true, true}});
    auto tapering = std::make_unique<AcDbPolyline>();
    (void)tapering->addVertexAt(0, {10, 0}, 1.0, 4.0, 0.0);
    (void)tapering->addVertexAt(1, {-10, 0}, 0.0, 0.0, 0.0);
    check(*tapering, {{"wide at its start", dot(11.9, 0.01), true, false},
                      {"half as wide half way", dot(0, 10.9), true, false},
                      {"no wider there", dot(0, 11.1), false, false},
                      {"inner side", dot(0, 9.1), true, false},
                      {"thin at its end", dot(-10.3, 0.1), false, false}});
    AcDb2dPolyline old(AcDb::k2dSimplePoly, drawingtest::pointsOf({{0, 0, 0}, {0, 8, 0}}), 0.0, false, 3.0,
                       3.0);
    check(old, {{"old style", dot(1.4, 5), true, false}, {"beside", dot(1.6, 5), false, false}});
}

AcGePoint2dArray square(double half) {
    AcGePoint2dArray corners;
    for (const AcGePoint2d& corner : {AcGePoint2d(-half, -half), AcGePoint2d(half, -half),
                                      AcGePoint2d(half, half), AcGePoint2d(-half, half)})
        corners.append(corner);
    return corners;
}

TEST(PickingCases, HatchesFillByTheirStyle) {
    struct Style {
        AcDbHatch::HatchStyle style;
        bool atHole, atIsland;
    };
    for (const auto& [style, atHole, atIsland] : {Style{AcDbHatch::kNormal, false, true},
                                                  {AcDbHatch::kOuter, false, false},
                                                  {AcDbHatch::kIgnore, true, true}}) {
        AcDbHatch hatch;
        for (const double half : {10.0, 6.0, 3.0})
            ASSERT_EQ(hatch.appendLoop(AcDbHatch::kDefault, square(half), AcGeDoubleArray()), Acad::eOk);
        ASSERT_EQ(hatch.setHatchStyle(style), Acad::eOk);
        check(hatch, {{"between", box(-9, -1, -8, 1), true, false},
                      {"in the hole", box(4, -1, 5, 1), atHole, false},
                      {"in the island", box(-1, -1, 1, 1), atIsland, false},
                      {"outside", box(11, 11, 12, 12), false, false},
                      {"a window", box(-10, -10, 10, 10), true, true},
                      {"a window in it", box(-7, -7, 7, 7), true, false}});
    }
}

/// A loop of edges as other programs file it: in any order of their ends, with a gap that rounding left.
TEST(PickingCases, HatchEdgesMayRunEitherWay) {
    AcGeLineSeg2d bottom(AcGePoint2d(-5, 0), AcGePoint2d(5, 1e-13));
    AcGeCircArc2d top(AcGePoint2d(0, 0), 5.0, 0.0, AcGe::kPi);
    AcGeLineSeg2d turned(AcGePoint2d(5, 0), AcGePoint2d(-5, 0));
    for (AcGeLineSeg2d* line : {&bottom, &turned}) {
        AcDbHatch hatch;
        AcGeVoidPointerArray edges;
        edges.append(line);
        edges.append(&top);
        AcArray<int> types;
        types.append(AcDbHatch::kLine);
        types.append(AcDbHatch::kCirArc);
        ASSERT_EQ(hatch.appendLoop(AcDbHatch::kDefault, edges, types), Acad::eOk);
        check(hatch, {{"within", box(-0.1, 2, 0.1, 2.1), true, false},
                      {"at the height of the ends", box(-0.1, 0.0, 0.1, 0.1), true, false},
                      {"beside at that height", box(6, 0.0, 7, 0.1), false, false},
                      {"left of it", box(-9, 0.0, -8, 0.1), false, false},
                      {"over the corner of its box", box(4.5, 4.5, 5, 5), false, false},
                      {"around", box(-5, 0, 5, 5), true, true}});
    }
    AcDbHatch ring;
    AcGeCircArc2d outer(AcGePoint2d(0, 0), 5.0);
    AcGeCircArc2d inner(AcGePoint2d(0, 0), 2.0);
    for (AcGeCircArc2d* circle : {&outer, &inner}) {
        AcGeVoidPointerArray edges;
        edges.append(circle);
        AcArray<int> types;
        types.append(AcDbHatch::kCirArc);
        ASSERT_EQ(ring.appendLoop(AcDbHatch::kDefault, edges, types), Acad::eOk);
    }
    check(ring, {{"in the ring", dot(-3, 0), true, false}, {"in its hole", dot(1, 0), false, false}});
}

TEST(PickingCases, TextsAreTheirTurnedBoxes) {
    // Five letters, one of them narrow: 26 sixths of 5 long, 5 high, turned by a quarter.
    const AcDbText text({0, 0, 0}, L"Beam1", AcDbObjectId::kNull, 5.0, AcGe::kPi / 2.0);
    check(text, {{"between its letters", dot(-2, 7), true, false},
                 {"where a text that is not turned stands", dot(7, 2), false, false},
                 {"around", box(-5, 0, 1e-9, 21.7), true, true},
                 {"around all but its end", box(-5, 0, 1e-9, 21.6), true, false}});
    AcDbMText paragraph;
    ASSERT_EQ(paragraph.setContents(L"{\\C1;ab}\\Pabcdefgh"), Acad::eOk);
    ASSERT_EQ(paragraph.setTextHeight(3.0), Acad::eOk);
    // Eight letters in the second line: 46 sixths of 3 long, and one with a tail of 2 sixths.
    check(paragraph, {{"its second line", dot(22.9, -8.9), true, false},
                      {"beside the longer line", dot(23.1, -7.9), false, false},
                      {"under it", dot(1.0, -9.1), false, false}});
    const AcDbText blank({0, 0, 0}, L"", AcDbObjectId::kNull, 5.0);
    check(blank, {{"around nothing", box(-50, -50, 50, 50), false, false}});
}

/// A class of an application: a box is all that is known.
class Crate : public AcDbEntity {
public:
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override {
        return extents.set({1, 2, 3}, {4, 6, 9});
    }
};

/// One that draws an endless line and a stroke.
class Sight : public AcDbEntity {
public:
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override {
        const AcGePoint3d ends[] = {{0, 0, 0}, {0, 5, 0}};
        draw->geometry().polyline(2, ends);
        draw->geometry().xline({0, 0, 0}, {1, 1, 0});
        return Adesk::kTrue;
    }
};

TEST(PickingCases, WhatIsDrawnWithoutEndHasNoBox) {
    const Sight sight;
    AcDbExtents box;
    EXPECT_EQ(sight.getGeomExtents(box), Acad::eInvalidExtents);
    check(sight, {{"far out on the line", dot(1e5, 1e5), true, false},
                  {"on the stroke", dot(0, 4), true, false},
                  {"around the stroke", PickRegion::box({-1, -1}, {1, 6}), true, false},
                  {"beside both", dot(9, 4), false, false}});
}

TEST(PickingCases, OtherClassesAreTheirBox) {
    const Crate crate;
    check(crate, {{"in the middle", dot(2, 3), true, false},
                  {"around", box(1, 2, 4, 6), true, true},
                  {"beside", box(5, 2, 6, 6), false, false}});
    // Looked at along y, the box is as wide and as high as x and z say.
    check(crate, {{"from the front", box(1, 3, 4, 9), true, true}, {"above it", dot(2, 10), false, false}},
          AcGeMatrix3d::rotation(-AcGe::kPi / 2.0, AcGeVector3d::kXAxis));
    const AcDbOpaqueEntity opaque(L"ACAD_TABLE");
    check(opaque, {{"without extents", box(-1e9, -1e9, 1e9, 1e9), false, false}});
    check(AcDbPolyline(), {{"without vertices", box(-1e9, -1e9, 1e9, 1e9), false, false}});
    check(AcDbSpline(), {{"without points", box(-1e9, -1e9, 1e9, 1e9), false, false}});
    check(AcDbLine({0, 0, 0}, {noNumber, 1, 0}), {{"no number", box(-9, -9, 9, 9), false, false}});
}

TEST(PickingCases, FlatArcsFarOutAreAsExactAsTheirEnds) {
    const double far = 1e7;
    // A chord of 100 whose arc is 2.5e-5 high: its centre is 5e7 away.
    const auto flat = polyline({{far, far, 5e-7}, {far + 100.0, far}}, false);
    const auto at = [&](double x, double y) { return dot(far + x, far + y); };
    check(*flat, {{"the arc's lowest point", at(50, -2.5e-5), true, false},
                  {"the chord's middle", at(50, 0), false, false},
                  {"as much below", at(50, -5e-5), false, false},
                  {"its end", at(100, 0), true, false}});
    AcDbCircle wheel({far, -far, 0.0}, AcGeVector3d::kZAxis, 0.25);
    check(wheel, {{"its top", dot(far, -far + 0.25), true, false},
                  {"around", box(far - 0.25, -far - 0.25, far + 0.25, -far + 0.25), true, true},
                  {"within", box(far - 0.1, -far - 0.1, far + 0.1, -far + 0.1), false, false}});
}

} // namespace
