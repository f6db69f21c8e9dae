#include "drawingparts.h"

#include "dbhatch.h"
#include "entitymotions.h"

#include "gearc2d.h"
#include "geell2d.h"
#include "gelnsg2d.h"
#include "genurb2d.h"
#include "hatchcurves.h"

#include <cmath>
#include <limits>

namespace {

using drawingtest::numbersOf;
using motions::boxOf;
using motions::isNear;
using Curves = std::vector<std::unique_ptr<AcGeCurve2d>>;

AcGePoint2dArray polygon(std::initializer_list<AcGePoint2d> points) { return drawingtest::arrayOf(points); }

AcGePoint2dArray square(double low, double high) {
    return polygon({{low, low}, {high, low}, {high, high}, {low, high}});
}

const AcGeDoubleArray straight;

Acad::ErrorStatus appendEdges(AcDbHatch& hatch, const Curves& curves,
                              Adesk::Int32 type = AcDbHatch::kExternal) {
    AcGeVoidPointerArray edges;
    AcArray<int> types;
    for (const auto& curve : curves) {
        edges.append(curve.get());
        const AcGe::EntityId kind = curve->type();
        types.append(kind == AcGe::kLineSeg2d    ? AcDbHatch::kLine
                     : kind == AcGe::kCircArc2d  ? AcDbHatch::kCirArc
                     : kind == AcGe::kEllipArc2d ? AcDbHatch::kEllArc
                                                 : AcDbHatch::kSpline);
    }
    return hatch.appendLoop(type, edges, types);
}

Curves loopOf(const AcDbHatch& hatch, int index) {
    Adesk::Int32 type = -1;
    AcGeVoidPointerArray edges;
    AcArray<int> types;
    EXPECT_EQ(hatch.getLoopAt(index, type, edges, types), Acad::eOk);
    EXPECT_EQ(type, hatch.loopTypeAt(index));
    Curves curves;
    for (void* edge : edges) curves.emplace_back(static_cast<AcGeCurve2d*>(edge));
    return curves;
}

/// Each of the four kinds, both senses, whole and part.
Curves everyKind() {
    const AcGePoint2d from(4.0, 1.0), to(6.0, 3.0), middle(1.0, 1.0), center(2.0, 5.0);
    const AcGeVector2d along(3.0, 1.0), across(-1.0, 3.0);
    const double knotValues[] = {0, 0, 0, 0, 2, 5, 5, 5, 5};
    const AcGeKnotVector knots(9, knotValues);
    const AcGePoint2dArray control = polygon({{0, 0}, {1, 4}, {3, -2}, {6, 2}, {7, 0}});
    Curves curves;
    for (AcGeCurve2d* const curve : std::initializer_list<AcGeCurve2d*>{
             new AcGeLineSeg2d({0.0, 0.0}, from), new AcGeCircArc2d(from, to, 0.6),
             new AcGeCircArc2d(from, to, -2.5), new AcGeCircArc2d(middle, 2.0),
             new AcGeCircArc2d(middle, 2.0, 0.3, 5.0, {-1.0, 2.0}, Adesk::kTrue),
             new AcGeEllipArc2d(center, along, across, 5.0, 2.0),
             new AcGeEllipArc2d(center, along, across, 5.0, 2.0, 0.7, 4.0),
             new AcGeEllipArc2d(center, along, -across, 5.0, 2.0, 0.7, 4.0),
             new AcGeEllipArc2d(center, along, across, 2.0, 5.0, -0.2, 2.0),
             new AcGeEllipArc2d(center, along, -across, 2.0, 5.0, 1.0, 6.9),
             new AcGeNurbCurve2d(3, knots, control),
             new AcGeNurbCurve2d(3, knots, control, numbersOf({1.0, 0.5, 2.0, 1.0, 3.0}))})
        curves.emplace_back(curve);
    return curves;
}

/// Points of a curve, in order, at equal steps of its parameter.
std::vector<AcGePoint2d> walk(const AcGeCurve2d& curve, int steps) {
    AcGePoint2dArray points;
    curve.getSamplePoints(steps + 1, points);
    return {points.begin(), points.end()};
}

AcGePoint3d inWorld(const AcDbHatch& hatch, const AcGePoint2d& point) {
    return AcGeMatrix3d::planeToWorld(hatch.normal()) * AcGePoint3d(point.x, point.y, hatch.elevation());
}

TEST(Hatches, EdgesComeBackAsTheCurvesTheyWere) {
    const Curves given = everyKind();
    AcDbHatch hatch;
    ASSERT_EQ(appendEdges(hatch, given), Acad::eOk);
    const Curves found = loopOf(*motions::copyOf(hatch), 0);
    ASSERT_EQ(found.size(), given.size());
    for (std::size_t i = 0; i < given.size(); ++i) {
        EXPECT_EQ(found[i]->type(), given[i]->type());
        const auto wanted = walk(*given[i], 16), points = walk(*found[i], 16);
        for (std::size_t k = 0; k < wanted.size(); ++k)
            EXPECT_LT(points[k].distanceTo(wanted[k]), 1e-13) << "curve " << i << " at " << k;
    }
}

TEST(Hatches, PolylineLoopsAreVerticesOrSegments) {
    AcDbHatch hatch;
    const AcGePoint2dArray closed = polygon({{0, 0}, {4, 0}, {4, 4}, {0, 0}});
    ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, closed, numbersOf({0.0, 0.5, 0.0, 0.0})), Acad::eOk);
    Adesk::Int32 type = 0;
    AcGePoint2dArray vertices;
    AcGeDoubleArray found;
    ASSERT_EQ(hatch.getLoopAt(0, type, vertices, found), Acad::eOk);
    EXPECT_EQ(type, AcDbHatch::kExternal | AcDbHatch::kPolyline);
    EXPECT_EQ(vertices.length(), 3) << "the closing vertex is the first one";
    EXPECT_EQ(found, numbersOf({0.0, 0.5, 0.0}));
    const Curves segments = loopOf(hatch, 0);
    ASSERT_EQ(segments.size(), 3U);
    EXPECT_EQ(segments[0]->type(), AcGe::kLineSeg2d);
    EXPECT_EQ(segments[1]->type(), AcGe::kCircArc2d);
    EXPECT_LT(walk(*segments[1], 2)[1].distanceTo({5.0, 2.0}), 1e-14) << "a bulge of 0.5 swells by a quarter";
    EXPECT_LT(walk(*segments[2], 1)[1].distanceTo({0.0, 0.0}), 1e-15);
}

TEST(Hatches, RefuseLoopsThatAreNone) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    AcDbHatch hatch;
    EXPECT_EQ(hatch.appendLoop(0, polygon({{1, 1}}), straight), Acad::eInvalidInput);
    EXPECT_EQ(hatch.appendLoop(0, AcGePoint2dArray(), straight), Acad::eInvalidInput);
    EXPECT_EQ(hatch.appendLoop(0, square(0, 1), numbersOf({1.0})), Acad::eInvalidInput);
    EXPECT_EQ(hatch.appendLoop(0, polygon({{0, 0}, {nan, 1}}), straight), Acad::eInvalidInput);
    EXPECT_EQ(hatch.appendLoop(0, polygon({{0, 0}, {1, 1}}), numbersOf({nan, 0.0})), Acad::eInvalidInput);
    AcGeVoidPointerArray edges;
    AcArray<int> types;
    AcGeLineSeg2d segment(AcGePoint2d(0.0, 0.0), AcGePoint2d(1.0, 0.0));
    edges.append(&segment);
    EXPECT_EQ(hatch.appendLoop(0, edges, types), Acad::eInvalidInput);
    types.append(AcDbHatch::kSpline);
    EXPECT_EQ(hatch.appendLoop(0, edges, types), Acad::eInvalidInput) << "a line is no spline";
    EXPECT_EQ(hatch.numLoops(), 0);

    ASSERT_EQ(hatch.appendLoop(AcDbHatch::kOutermost, square(0, 1), straight), Acad::eOk);
    Curves line;
    line.push_back(std::make_unique<AcGeLineSeg2d>(segment));
    ASSERT_EQ(appendEdges(hatch, line), Acad::eOk);
    Adesk::Int32 type = -7;
    AcGePoint2dArray vertices = square(5, 6);
    AcGeDoubleArray values;
    EXPECT_EQ(hatch.getLoopAt(1, type, vertices, values), Acad::eNotApplicable);
    for (const int none : {-1, 2}) {
        EXPECT_EQ(hatch.getLoopAt(none, type, vertices, values), Acad::eInvalidIndex);
        EXPECT_EQ(hatch.getLoopAt(none, type, edges, types), Acad::eInvalidIndex);
        EXPECT_EQ(hatch.removeLoopAt(none), Acad::eInvalidIndex);
        EXPECT_EQ(hatch.loopTypeAt(none), 0);
    }
    EXPECT_EQ(type, -7);
    EXPECT_EQ(vertices.length(), 4);
    EXPECT_EQ(edges.length(), 1);
    ASSERT_EQ(hatch.removeLoopAt(0), Acad::eOk);
    EXPECT_EQ(hatch.loopTypeAt(0), AcDbHatch::kExternal);
}

TEST(Hatches, SplinesWhoseCountsDoNotFitAreLeftOut) {
    hostkit::HatchEdge edge;
    edge.kind = hostkit::HatchEdge::kSpline;
    edge.degree = 3;
    edge.controlPoints.resize(4);
    edge.knots = {0, 0, 0, 1, 1, 1};
    EXPECT_EQ(hostkit::curveOf(edge), nullptr);
    edge.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    edge.isRational = true;
    EXPECT_EQ(hostkit::curveOf(edge), nullptr);
    edge.degree = -1;
    EXPECT_EQ(hostkit::curveOf(edge), nullptr);
}

TEST(Hatches, AreaByNestingAndStyle) {
    AcDbHatch hatch;
    // Squares of 10, 8, 6 in each other, a round hole with a bulge of 1 apart from them, in no order, either
    // way round.
    ASSERT_EQ(hatch.appendLoop(0, square(1, 9), straight), Acad::eOk);
    ASSERT_EQ(hatch.appendLoop(0, polygon({{0, 0}, {0, 10}, {10, 10}, {10, 0}}), straight), Acad::eOk);
    ASSERT_EQ(hatch.appendLoop(0, square(2, 8), straight), Acad::eOk);
    ASSERT_EQ(hatch.appendLoop(0, polygon({{20, 0}, {22, 0}}), numbersOf({1.0, 1.0})), Acad::eOk);
    const double disc = AcGe::kPi;
    for (const auto& [style, expected] : {std::pair(AcDbHatch::kNormal, 100.0 - 64.0 + 36.0 + disc),
                                          {AcDbHatch::kOuter, 100.0 - 64.0 + disc},
                                          {AcDbHatch::kIgnore, 100.0 + disc}}) {
        ASSERT_EQ(hatch.setHatchStyle(style), Acad::eOk);
        double area = -1.0;
        ASSERT_EQ(hatch.getArea(area), Acad::eOk);
        EXPECT_NEAR(area, expected, 1e-12) << style;
    }
    ASSERT_EQ(hatch.appendLoop(AcDbHatch::kNotClosed, square(30, 31), straight), Acad::eOk);
    double kept = -1.0;
    EXPECT_EQ(hatch.getArea(kept), Acad::eNotApplicable);
    EXPECT_EQ(kept, -1.0);
}

TEST(Hatches, AreaOfEllipsesAndSplines) {
    Curves ellipse;
    ellipse.push_back(std::make_unique<AcGeEllipArc2d>(AcGePoint2d(2.0e5, 5.0e5), AcGeVector2d(3.0, 1.0),
                                                       AcGeVector2d(-1.0, 3.0), 5.0, 2.0));
    AcDbHatch hatch;
    ASSERT_EQ(appendEdges(hatch, ellipse), Acad::eOk);
    double area = 0.0;
    ASSERT_EQ(hatch.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 10.0 * AcGe::kPi, 1e-10);

    // Under a parabola of height 2 over a base of 6, and back along the base.
    const double knots[] = {0, 0, 0, 1, 1, 1};
    Curves segment;
    segment.push_back(
        std::make_unique<AcGeNurbCurve2d>(2, AcGeKnotVector(6, knots), polygon({{0, 0}, {3, 4}, {6, 0}})));
    segment.push_back(std::make_unique<AcGeLineSeg2d>(AcGePoint2d(6, 0), AcGePoint2d(0, 0)));
    AcDbHatch parabola;
    ASSERT_EQ(appendEdges(parabola, segment), Acad::eOk);
    ASSERT_EQ(parabola.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 8.0, 1e-11);
}

/// The box holds every point of the loops, and on each side one of them comes as near as the steps allow.
void expectTightBox(const AcDbHatch& hatch, const std::string& name) {
    constexpr int steps = 240;
    AcDbExtents walked;
    double longest = 0.0;
    for (int i = 0; i < hatch.numLoops(); ++i) {
        for (const auto& curve : loopOf(hatch, i)) {
            const auto points = walk(*curve, steps);
            AcGePoint3d last = inWorld(hatch, points.front());
            for (const AcGePoint2d& point : points) {
                const AcGePoint3d place = inWorld(hatch, point);
                longest = std::max(longest, place.distanceTo(last));
                last = place;
                walked.addPoint(place);
            }
        }
    }
    const AcDbExtents box = boxOf(hatch);
    for (unsigned int i = 0; i < 3; ++i) {
        const double rounding = 1e-14 * std::max(100.0, box.maxPoint().largestCoordinate() * 4.0);
        EXPECT_LE(box.minPoint()[i], walked.minPoint()[i] + rounding) << name;
        EXPECT_GE(box.maxPoint()[i], walked.maxPoint()[i] - rounding) << name;
        EXPECT_GE(box.minPoint()[i], walked.minPoint()[i] - longest) << name;
        EXPECT_LE(box.maxPoint()[i], walked.maxPoint()[i] + longest) << name;
    }
}

AcDbHatch hatchOfEverything() {
    AcDbHatch hatch;
    EXPECT_EQ(appendEdges(hatch, everyKind()), Acad::eOk);
    EXPECT_EQ(hatch.appendLoop(AcDbHatch::kDefault, square(-3, 2), numbersOf({0.4, 0.0, -0.7, 0.1})),
              Acad::eOk);
    hatch.setElevation(12.0);
    return hatch;
}

TEST(Hatches, MoveWithTheirPlaneAndComeBack) {
    for (const motions::Motion& first : motions::all()) {
        for (const motions::Motion& second : motions::all()) {
            AcDbHatch hatch = hatchOfEverything();
            AcGeMatrix3d whole;
            double reach = 1.0;
            for (const motions::Motion* motion : {&first, &second}) {
                ASSERT_EQ(hatch.transformBy(motion->matrix),
                          motion->keepsShape ? Acad::eOk : Acad::eCannotScaleNonUniformly);
                if (!motion->keepsShape) continue;
                whole = motion->matrix * whole;
                reach = std::max(reach, 300.0 * motion->reach());
            }
            const std::string name = first.name + ", " + second.name;
            expectTightBox(hatch, name);
            const AcDbHatch still = hatchOfEverything();
            for (int i = 0; i < hatch.numLoops(); ++i) {
                const Curves before = loopOf(still, i), after = loopOf(hatch, i);
                ASSERT_EQ(before.size(), after.size());
                for (std::size_t k = 0; k < before.size(); ++k) {
                    const auto from = walk(*before[k], 8), to = walk(*after[k], 8);
                    for (std::size_t n = 0; n < from.size(); ++n)
                        EXPECT_TRUE(isNear(inWorld(hatch, to[n]), whole * inWorld(still, from[n]), reach))
                            << name << ": loop " << i << ", curve " << k;
                }
            }
        }
    }
}

TEST(Hatches, StraightLoopsFollowEveryMatrix) {
    for (const motions::Motion& motion : motions::all()) {
        AcDbHatch hatch;
        ASSERT_EQ(hatch.appendLoop(0, square(1, 5), straight), Acad::eOk);
        ASSERT_EQ(hatch.transformBy(motion.matrix), Acad::eOk) << motion.name;
        const std::vector<AcGePoint3d> corners = {{1, 1, 0}, {5, 1, 0}, {5, 5, 0}, {1, 5, 0}};
        EXPECT_TRUE(isNear(boxOf(hatch), boxOf(corners, motion.matrix), motion.reach())) << motion.name;
    }
    AcDbHatch empty;
    AcDbExtents kept({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(empty.getGeomExtents(kept), Acad::eInvalidExtents);
    EXPECT_EQ(kept.maxPoint(), AcGePoint3d(1, 1, 1));
    EXPECT_EQ(empty.transformBy(motions::stretch(0.0, 1.0, 1.0)), Acad::eInvalidInput);
}

TEST(Hatches, PatternLinesMoveAlong) {
    AcDbHatch hatch;
    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"BRICK"), Acad::eOk);
    ASSERT_EQ(hatch.setPatternDefinitions({{0.5, {1.0, 2.0}, {-3.0, 4.0}, {6.0, -2.0}}}), Acad::eOk);
    ASSERT_EQ(hatch.setPatternScale(3.0), Acad::eOk);
    const AcGeMatrix3d motion = AcGeMatrix3d::translation({10.0, 0.0, 0.0}) * AcGeMatrix3d::scaling(2.0) *
                                AcGeMatrix3d::rotation(AcGe::kPi / 2.0, AcGeVector3d::kZAxis);
    ASSERT_EQ(hatch.transformBy(motion), Acad::eOk);
    double angle = 0.0;
    AcGePoint2d base;
    AcGeVector2d offset;
    AcGeDoubleArray dashes;
    ASSERT_EQ(hatch.getPatternDefinitionAt(0, angle, base.x, base.y, offset.x, offset.y, dashes), Acad::eOk);
    EXPECT_NEAR(angle, 0.5 + AcGe::kPi / 2.0, 1e-14);
    EXPECT_LT(base.distanceTo({6.0, 2.0}), 1e-14);
    EXPECT_LT((offset - AcGeVector2d(-8.0, -6.0)).length(), 1e-14);
    EXPECT_NEAR(dashes[0], 12.0, 1e-14);
    EXPECT_NEAR(dashes[1], -4.0, 1e-14);
    EXPECT_NEAR(hatch.patternScale(), 6.0, 1e-14);
    EXPECT_NEAR(hatch.patternAngle(), AcGe::kPi / 2.0, 1e-14);
    EXPECT_EQ(hatch.getPatternDefinitionAt(1, angle, base.x, base.y, offset.x, offset.y, dashes),
              Acad::eInvalidIndex);
    EXPECT_EQ(dashes.length(), 2);

    ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"Solid"), Acad::eOk);
    EXPECT_TRUE(hatch.isSolidFill());
    EXPECT_EQ(hatch.numPatternDefinitions(), 0);
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L""), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setPatternScale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setHatchStyle(static_cast<AcDbHatch::HatchStyle>(3)), Acad::eInvalidInput);
    EXPECT_EQ(hatch.setNormal({0.0, 0.0, 0.0}), Acad::eInvalidInput);
    EXPECT_STREQ(hatch.patternName(), L"Solid");
}

} // namespace
