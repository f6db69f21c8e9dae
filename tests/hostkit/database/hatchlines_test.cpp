#include "drawingparts.h"

#include "dbhatch.h"
#include "dbline.h"
#include "dbpoint.h"
#include "entitymotions.h"
#include "hatchpatterns.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

using hostkit::HatchArea;
using hostkit::HatchLoop;
using hostkit::HatchPatternLine;
using hostkit::HatchStroke;
using Polygon = std::vector<AcGePoint2d>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

class Hatching : public testing::Test {
protected:
    double real(double low, double high) { return std::uniform_real_distribution(low, high)(m_engine); }
    int integer(int low, int high) { return std::uniform_int_distribution(low, high)(m_engine); }

    /// A star-shaped ring with bulges, either way round, within [0.7, 1.1] radii of the centre.
    HatchLoop ring(const AcGePoint2d& center, double radius) {
        HatchLoop loop;
        loop.hasBulges = true;
        const int count = integer(5, 12);
        const double sense = integer(0, 1) ? 1.0 : -1.0;
        for (int i = 0; i < count; ++i) {
            const double angle = sense * AcGe::kTwoPi * (i + real(-0.2, 0.2)) / count;
            loop.vertices.push_back(center +
                                    AcGeVector2d(std::cos(angle), std::sin(angle)) * radius * real(0.9, 1.0));
            loop.bulges.push_back(integer(0, 2) ? real(-0.15, 0.15) : 0.0);
        }
        return loop;
    }
    HatchPatternLine family(const AcGePoint2d& center) {
        const double angle = integer(0, 3) ? real(0.0, AcGe::kTwoPi) : AcGe::kPi / 4.0 * integer(0, 7);
        const AcGeVector2d along(std::cos(angle), std::sin(angle));
        HatchPatternLine line{angle,
                              center + AcGeVector2d(real(-90, 90), real(-90, 90)),
                              along * real(-2, 2) + along.perpVector() * real(0.05, 0.2),
                              {}};
        if (integer(0, 1)) line.offset = -line.offset;
        static const std::vector<double> dashes[] = {
            {}, {1.0, -0.5}, {-0.3, 0.8}, {0.4, -0.2, 0.0, -0.3, 0.5}, {0.0, -0.25}, {0.5, 0.5}};
        line.dashes = dashes[integer(0, 5)];
        return line;
    }

    std::mt19937 m_engine{4711};
};

// The oracle: chords of bulges by stepping along circles, parity by crossings of a ray, areas by shoelaces.
Polygon stepped(const HatchLoop& loop) {
    constexpr int steps = 200;
    Polygon polygon;
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        const AcGePoint2d from = loop.vertices[i];
        const AcGePoint2d to = loop.vertices[(i + 1) % loop.vertices.size()];
        const double turn = 4.0 * std::atan(loop.hasBulges ? loop.bulges[i] : 0.0);
        AcGePoint2d place = from;
        const int count = turn == 0.0 ? 1 : steps;
        for (int k = 0; k < count; ++k, polygon.push_back(place)) {
            const double bow = turn * (2.0 * k + 1.0 - count) / (2.0 * count); // from the chord
            const double share = turn == 0.0 ? 1.0 : std::sin(turn / 2.0 / count) / std::sin(turn / 2.0);
            AcGeVector2d step = (to - from) * share;
            place = place + step.rotateBy(bow);
        }
    }
    return polygon;
}

double shoelace(const Polygon& polygon) {
    double sum = 0.0;
    for (std::size_t i = 0; i < polygon.size(); ++i)
        sum += (polygon[i] - polygon[0]).crossProduct(polygon[(i + 1) % polygon.size()] - polygon[0]) / 2.0;
    return std::abs(sum);
}

bool holds(const std::vector<Polygon>& polygons, const AcGePoint2d& point) {
    bool isInside = false;
    for (const Polygon& polygon : polygons)
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const AcGePoint2d &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
            if ((a.y > point.y) != (b.y > point.y) &&
                point.x < a.x + (b.x - a.x) * ((point.y - a.y) / (b.y - a.y)))
                isInside = !isInside;
        }
    return isInside;
}

double drawnShare(const std::vector<double>& dashes) {
    double drawn = 0.0, all = 0.0;
    for (const double dash : dashes) {
        drawn += std::max(dash, 0.0);
        all += std::abs(dash);
    }
    return all > 0.0 ? drawn / all : 1.0;
}

std::vector<HatchStroke> strokesOf(const HatchArea& area, const HatchPatternLine& line) {
    std::vector<HatchStroke> strokes;
    EXPECT_EQ(hostkit::forEachStroke(area, {line}, 1'000'000,
                                     [&](const HatchStroke& stroke) {
                                         strokes.push_back(stroke);
                                         return true;
                                     }),
              Acad::eOk);
    return strokes;
}

double lengthOf(const std::vector<HatchStroke>& strokes) {
    double length = 0.0;
    for (const HatchStroke& stroke : strokes) length += stroke.from.distanceTo(stroke.to);
    return length;
}

/// On a line of the family, where its dashes are drawn.
void expectInPattern(const HatchStroke& stroke, const HatchPatternLine& line, double rounding) {
    const AcGeVector2d along(std::cos(line.angle), std::sin(line.angle));
    const AcGeVector2d way = stroke.from - line.base;
    const double number = way.crossProduct(along) / line.offset.crossProduct(along);
    const double nearest = std::round(number);
    EXPECT_NEAR(number, nearest, rounding / hostkit::spacingOf(line));
    double period = 0.0;
    for (const double dash : line.dashes) period += std::abs(dash);
    if (drawnShare(line.dashes) == 1.0) return;
    const double middle =
        ((stroke.from + (stroke.to - stroke.from) / 2.0) - (line.base + line.offset * nearest))
            .dotProduct(along);
    double place = std::floor(middle / period) * period;
    bool isDrawn = false;
    for (const double dash : line.dashes) {
        isDrawn |= dash >= 0.0 && middle >= place - rounding && middle <= place + dash + rounding;
        place += std::abs(dash);
    }
    EXPECT_TRUE(isDrawn || middle - place > -rounding) << middle;
}

TEST_F(Hatching, StrokesCoverWhatIsFilledAndNothingElse) {
    for (int round = 0; round < 150; ++round) {
        SCOPED_TRACE(round);
        const int style = round % 3;
        const double far = round % 5 ? 100.0 : 1e6;
        const AcGePoint2d center(real(-far, far), real(-far, far));
        std::vector<HatchLoop> loops = {ring(center, 10.0)};
        std::vector<int> depths = {0};
        for (const double side : {-3.4, 3.4}) {
            const AcGePoint2d place = center + AcGeVector2d(side, real(-1, 1));
            for (int depth = 1, last = integer(0, 3); depth <= last; ++depth) {
                loops.push_back(ring(place, 3.0 * std::pow(0.6, depth - 1)));
                depths.push_back(depth);
            }
        }
        std::vector<Polygon> filled;
        double wanted = 0.0;
        for (std::size_t i = 0; i < loops.size(); ++i) {
            if (depths[i] > (style == AcDbHatch::kNormal ? 9 : style == AcDbHatch::kOuter ? 1 : 0)) continue;
            filled.push_back(stepped(loops[i]));
            wanted += (depths[i] % 2 ? -1.0 : 1.0) * shoelace(filled.back());
        }
        std::shuffle(loops.begin(), loops.end(), m_engine);
        const HatchArea area(loops, style);
        ASSERT_NEAR(area.area(), wanted, 1e-3);
        const HatchPatternLine line = family(center);
        const double rounding = 1e-9 + far * 1e-13;
        const std::vector<HatchStroke> strokes = strokesOf(area, line);
        EXPECT_NEAR(lengthOf(strokes) * hostkit::spacingOf(line), wanted * drawnShare(line.dashes),
                    wanted * 0.02);
        const AcGeVector2d along(std::cos(line.angle), std::sin(line.angle));
        for (const HatchStroke& stroke : strokes) {
            const double length = (stroke.to - stroke.from).dotProduct(along);
            ASSERT_GE(length, 0.0);
            expectInPattern(stroke, line, rounding);
            if (length < 1e-3) continue; // as near to the edge as the oracle's chords
            EXPECT_TRUE(holds(filled, stroke.from + (stroke.to - stroke.from) / 2.0));
            if (!line.dashes.empty()) continue;
            EXPECT_FALSE(holds(filled, stroke.from - along * 1e-3));
            EXPECT_FALSE(holds(filled, stroke.to + along * 1e-3));
        }
    }
}

TEST(HatchAreas, OfEdgesAndOddLoops) {
    const auto area = [](std::vector<HatchLoop> loops) {
        const HatchArea filled(loops, AcDbHatch::kNormal);
        const HatchPatternLine line{0.3, {}, AcGeVector2d(0.0, 0.002), {}};
        return lengthOf(strokesOf(filled, line)) * hostkit::spacingOf(line);
    };
    HatchLoop eight; // crosses itself in the middle
    eight.vertices = {{0, 0}, {4, 4}, {4, 0}, {0, 4}};
    EXPECT_NEAR(area({eight}), 8.0, 0.01);
    EXPECT_FALSE(HatchArea({eight}, 0).isEmpty());

    HatchLoop open; // edges against each other, a gap between them, and one at the end
    open.type = AcDbHatch::kNotClosed;
    open.edges.resize(3);
    open.edges[0].start = {4, 0}, open.edges[0].end = {0, 0};
    open.edges[1].start = {4, 0}, open.edges[1].end = {4, 2};
    open.edges[2].start = {0, 3}, open.edges[2].end = {4, 3};
    EXPECT_NEAR(area({open}), 12.0, 0.01);

    HatchLoop half; // of an ellipse by 8 and 4, its chord run the wrong way
    half.edges.resize(2);
    half.edges[0].kind = hostkit::HatchEdge::kEllipArc;
    half.edges[0].majorAxis = {0.0, 8.0};
    half.edges[0].ratio = 0.5;
    half.edges[0].endAngle = AcGe::kPi;
    half.edges[1].start = {0, 8}, half.edges[1].end = {0, -8};
    EXPECT_NEAR(area({half}), 16.0 * AcGe::kPi, 0.02);

    HatchLoop rings; // two circles in one loop, one in the other
    rings.edges.resize(2);
    for (hostkit::HatchEdge& edge : rings.edges) edge.kind = hostkit::HatchEdge::kCircArc;
    rings.edges[0].radius = 3.0, rings.edges[0].endAngle = AcGe::kTwoPi;
    rings.edges[1].radius = 1.0, rings.edges[1].endAngle = AcGe::kTwoPi;
    rings.edges[1].isCounterClockwise = false;
    EXPECT_NEAR(area({rings}), 8.0 * AcGe::kPi, 0.02);
    EXPECT_EQ(HatchArea({rings}, 0).contours().size(), 2U);

    HatchLoop parabola; // of height 2 over a base of 6
    parabola.edges.resize(2);
    parabola.edges[0].kind = hostkit::HatchEdge::kSpline;
    parabola.edges[0].degree = 2;
    parabola.edges[0].knots = {0, 0, 0, 1, 1, 1};
    parabola.edges[0].controlPoints = {{0, 0}, {3, 4}, {6, 0}};
    parabola.edges[1].start = {0, 0}, parabola.edges[1].end = {6, 0};
    EXPECT_NEAR(area({parabola}), 8.0, 0.01);

    HatchLoop flat; // there and back again
    flat.vertices = {{0, 0}, {4, 3}, {8, 6}};
    HatchLoop broken;
    broken.vertices = {{0, 0}, {1, 0}, {kNan, 1}};
    EXPECT_TRUE(HatchArea({flat}, 0).isEmpty());
    EXPECT_TRUE(HatchArea({broken}, 0).isEmpty());
    EXPECT_TRUE(HatchArea({eight, eight}, 0).area() == 0.0);
}

HatchLoop square(double low, double high, int type = 0) {
    HatchLoop loop;
    loop.type = type;
    loop.vertices = {{low, low}, {high, low}, {high, high}, {low, high}};
    return loop;
}

TEST(HatchAreas, TextBoxesAreHolesOfWhatIsFilled) {
    // In squares of 20, 16, 12: texts in the outermost part, in the hole, and beside them all.
    const std::vector<HatchLoop> loops = {square(1, 1.5, AcDbHatch::kTextbox),
                                          square(0, 20),
                                          square(2.5, 3.5, AcDbHatch::kTextbox),
                                          square(2, 18),
                                          square(4, 16),
                                          square(5, 7, AcDbHatch::kTextbox),
                                          square(30, 33, AcDbHatch::kTextbox)};
    EXPECT_NEAR(HatchArea(loops, AcDbHatch::kNormal).area(), 400 - 256 + 144 - 0.25 - 4, 1e-9);
    EXPECT_NEAR(HatchArea(loops, AcDbHatch::kOuter).area(), 400 - 256 - 0.25, 1e-9);
    EXPECT_NEAR(HatchArea(loops, AcDbHatch::kIgnore).area(), 400, 1e-9);
}

TEST_F(Hatching, PolygonsKeepToTheContours) {
    for (const double deviation : {1e-1, 1e-5}) {
        const HatchLoop loop = ring({50.0, -20.0}, 10.0);
        const HatchArea area({loop}, AcDbHatch::kNormal);
        const auto polygons = area.polygons(deviation);
        ASSERT_EQ(polygons.size(), 1U);
        EXPECT_NEAR(shoelace(polygons[0]), shoelace(stepped(loop)), 80.0 * deviation);
        EXPECT_LT(polygons[0].size(), 12.0 * 8.0 / std::sqrt(deviation));
    }
}

TEST(HatchAreas, StrokesAreWholeAcrossPeriodsAndSharedEdges) {
    HatchLoop beside = square(0, 12);
    for (AcGePoint2d& vertex : beside.vertices) vertex.x += 12.0;
    const HatchArea area({square(0, 12), beside}, AcDbHatch::kNormal);
    for (const auto& [dashes, count, longest] :
         {std::tuple(std::vector<double>(), 12U, 24.0), {{1, -2, 3}, 12U * 5U, 4.0}, {{2, 3}, 12U, 24.0}}) {
        const std::vector<HatchStroke> strokes = strokesOf(area, {0.0, {11.5, 0.5}, {0.0, 1.0}, dashes});
        EXPECT_EQ(strokes.size(), count);
        double reach = 0.0;
        for (const HatchStroke& stroke : strokes) reach = std::max(reach, stroke.from.distanceTo(stroke.to));
        EXPECT_NEAR(reach, longest, 1e-12);
    }
}

// A parabola, as such an arc is to the last digit; the centre is 25 million kilometres away.
TEST(HatchAreas, StrokesEndOnFlatArcs) {
    HatchLoop loop;
    loop.vertices = {{0, 0}, {1000, 0}, {1000, 2000}, {0, 2000}};
    loop.bulges = {1e-8, 0, 0, 0};
    const double sagitta = 5e-6;
    int count = 0;
    for (const HatchStroke& stroke :
         strokesOf(HatchArea({loop}, 0), {AcGe::kPi / 4.0, {0.0, 0.0}, {10.0, 0.0}, {}})) {
        const double x = stroke.from.x;
        if (stroke.from.y > 1.0 || x < 1e-3 || x > 999.999) continue;
        ++count;
        EXPECT_NEAR(stroke.from.y, -4.0 * sagitta * (x / 1000.0) * (1.0 - x / 1000.0), 1e-11);
    }
    EXPECT_GT(count, 90);
}

AcDbHatch patterned(const wchar_t* name, double angle = 0.0, double scale = 1.0) {
    AcDbHatch hatch;
    EXPECT_EQ(hatch.setPatternAngle(angle), Acad::eOk);
    EXPECT_EQ(hatch.setPatternScale(scale), Acad::eOk);
    EXPECT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, name), Acad::eOk);
    return hatch;
}

TEST(HatchPatterns, FollowAngleAndScaleAsTheyWouldAMotion) {
    for (const hostkit::PredefinedPattern& pattern : hostkit::predefinedPatterns()) {
        SCOPED_TRACE(pattern.use);
        AcDbHatch moved = patterned(pattern.name);
        ASSERT_EQ(moved.transformBy(AcGeMatrix3d::scaling(25.0) *
                                    AcGeMatrix3d::rotation(0.4, AcGeVector3d::kZAxis)),
                  Acad::eOk);
        const AcDbHatch made = patterned(pattern.name, 0.4, 25.0);
        ASSERT_EQ(made.numPatternDefinitions(), moved.numPatternDefinitions());
        ASSERT_GT(made.numPatternDefinitions(), 0);
        for (std::size_t i = 0; i < made.patternDefinitions().size(); ++i) {
            const HatchPatternLine &a = made.patternDefinitions()[i], &b = moved.patternDefinitions()[i];
            EXPECT_NEAR(a.angle, b.angle, 1e-12);
            EXPECT_LT(a.base.distanceTo(b.base), 1e-10);
            EXPECT_LT((a.offset - b.offset).length(), 1e-10);
            ASSERT_EQ(a.dashes.size(), b.dashes.size());
            for (std::size_t k = 0; k < a.dashes.size(); ++k) EXPECT_NEAR(a.dashes[k], b.dashes[k], 1e-10);
        }
    }
    EXPECT_EQ(hostkit::predefinedPatterns().size(), 10U);
    EXPECT_STREQ(hostkit::predefinedPattern(L"ar-conc")->name, L"AR-CONC");
    EXPECT_EQ(patterned(L"NONE SUCH").numPatternDefinitions(), 0);
}

// Each side of a stone ends where another one does.
TEST(HatchPatterns, StonesOfConcreteAreClosed) {
    const HatchArea area({square(-60, 60)}, AcDbHatch::kNormal);
    std::vector<AcGePoint2d> ends;
    const AcDbHatch hatch = patterned(L"AR-CONC");
    for (const HatchPatternLine& line : hatch.patternDefinitions())
        for (const HatchStroke& stroke : strokesOf(area, line))
            if (!stroke.isDot())
                for (const AcGePoint2d& end : {stroke.from, stroke.to})
                    if (std::abs(end.x) < 54.3 && std::abs(end.y) < 54.3) ends.push_back(end);
    EXPECT_GT(ends.size(), 500U);
    for (const AcGePoint2d& end : ends)
        EXPECT_EQ(std::count_if(ends.begin(), ends.end(),
                                [&](const AcGePoint2d& other) { return end.distanceTo(other) < 1e-9; }),
                  2);
}

TEST(HatchPatterns, StatusesOfWhatCannotBeEvaluated) {
    const HatchPatternLine plain{0.0, {}, {0.0, 0.1}, {}};
    HatchPatternLine broken = plain, dense = plain, dashed = plain, single = plain, hollow = plain;
    broken.dashes = {1.0, kNan};
    dense.offset = {0.0, 1e-7};
    dashed.dashes = {0.01, -0.01};
    single.base.y = 50.0;
    single.offset = {1.0, 0.0};
    hollow.dashes = {1e-9, -1e9};
    hollow.base.x = 1e6;
    const struct {
        const char* name;
        std::vector<HatchPatternLine> lines;
        Acad::ErrorStatus whole;
        Acad::ErrorStatus counted;
        int strokes;
    } cases[] = {{"plain", {plain}, Acad::eOk, Acad::eOk, 10},
                 {"none", {}, Acad::eInvalidInput, Acad::eInvalidInput, 0},
                 {"no numbers", {plain, broken}, Acad::eInvalidInput, Acad::eInvalidInput, 0},
                 {"dense", {dense}, Acad::eOutOfRange, Acad::eOutOfRange, 0},
                 {"dense at last", {plain, dense}, Acad::eOutOfRange, Acad::eOutOfRange, 0},
                 {"dashed", {dashed}, Acad::eOutOfRange, Acad::eOk, 500},
                 {"one line elsewhere", {single}, Acad::eOk, Acad::eOk, 0},
                 {"nothing drawn here", {hollow}, Acad::eOk, Acad::eOk, 0}};
    for (const auto& [name, lines, whole, counted, strokes] : cases) {
        SCOPED_TRACE(name);
        // A square with a sting: the box is much larger than what is filled.
        AcDbHatch hatch;
        const AcGePoint2dArray corners = drawingtest::arrayOf<AcGePoint2d>(
            {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0.57}, {-1e5, 0.56}, {0, 0.55}});
        ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, corners, AcGeDoubleArray()), Acad::eOk);
        ASSERT_EQ(hatch.setPattern(AcDbHatch::kCustomDefined, L"X"), Acad::eOk);
        ASSERT_EQ(hatch.setPatternDefinitions(lines), Acad::eOk);
        EXPECT_EQ(hatch.evaluateHatch(), whole);
        EXPECT_EQ(hatch.evaluateHatch(true), counted);
        AcDbVoidPtrArray parts;
        EXPECT_EQ(hatch.explode(parts), counted);
        EXPECT_EQ(parts.length(), strokes);
        for (void* part : parts) delete static_cast<AcDbEntity*>(part);
        ASSERT_EQ(hatch.removeLoopAt(0), Acad::eOk);
        EXPECT_EQ(hatch.evaluateHatch(), Acad::eDegenerateGeometry);
    }
}

TEST(HatchPatterns, ExplodeToLinesAndPointsInTheirPlane) {
    for (const motions::Motion& motion : motions::all()) {
        if (!motion.keepsShape) continue;
        SCOPED_TRACE(motion.name);
        AcDbHatch hatch = patterned(L"AR-CONC");
        const AcGePoint2dArray corners =
            drawingtest::arrayOf<AcGePoint2d>({{0, 0.5}, {40, 0.5}, {40, 30}, {0, 30}});
        ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, corners, AcGeDoubleArray()), Acad::eOk);
        ASSERT_EQ(hatch.setElevation(7.0), Acad::eOk);
        ASSERT_EQ(hatch.setColorIndex(3), Acad::eOk);
        AcDbVoidPtrArray still, parts;
        ASSERT_EQ(hatch.explode(still), Acad::eOk);
        ASSERT_EQ(hatch.transformBy(motion.matrix), Acad::eOk);
        ASSERT_EQ(hatch.explode(parts), Acad::eOk);
        double stillLength = 0.0, length = 0.0;
        int points = 0;
        const auto measure = [&](AcDbVoidPtrArray& entities, const AcGeMatrix3d& back, double& sum) {
            for (void* entity : entities) {
                const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(entity));
                EXPECT_EQ(part->colorIndex(), 3);
                const auto* const line = AcDbLine::cast(part.get());
                const auto* const point = AcDbPoint::cast(part.get());
                points += point != nullptr;
                ASSERT_TRUE(line || point);
                for (const AcGePoint3d& place : {back * (line ? line->startPoint() : point->position()),
                                                 back * (line ? line->endPoint() : point->position())}) {
                    EXPECT_NEAR(place.z, 7.0, 1e-6);
                    EXPECT_TRUE(place.x > -1e-6 && place.x < 40 + 1e-6 && place.y > -1e-6 &&
                                place.y < 30 + 1e-6);
                }
                if (line) sum += (back * line->startPoint()).distanceTo(back * line->endPoint());
            }
        };
        measure(still, AcGeMatrix3d(), stillLength);
        measure(parts, motion.matrix.inverse(), length);
        EXPECT_GT(points, 0);
        EXPECT_NEAR(length, stillLength, 1e-5);
    }
    AcDbHatch solid = patterned(L"Solid");
    AcDbVoidPtrArray none;
    EXPECT_EQ(solid.explode(none), Acad::eNotApplicable);
}

// As many lines as the space fits into the area across them, and as long as the area is along them.
TEST(HatchPatterns, UserDefinedOnesHaveTheirSpaceAngleAndCross) {
    for (const double degrees : {0.0, 30.0, 75.0})
        for (const bool isDouble : {false, true}) {
            AcDbHatch hatch;
            const double angle = degrees * AcGe::kPi / 180.0, space = 0.25;
            const AcGeVector2d x(20.0 * std::cos(angle), 20.0 * std::sin(angle));
            const AcGeVector2d y = x.perpVector() / 4.0, corner = x * 0.0063 + y * 0.0063;
            const AcGePoint2d low(corner.x, corner.y);
            const auto corners = drawingtest::arrayOf<AcGePoint2d>({low, low + x, low + x + y, low + y});
            ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, corners, AcGeDoubleArray()), Acad::eOk);
            ASSERT_EQ(hatch.setPatternAngle(angle), Acad::eOk);
            ASSERT_EQ(hatch.setPatternSpace(space), Acad::eOk);
            ASSERT_EQ(hatch.setPatternDouble(isDouble), Acad::eOk);
            ASSERT_EQ(hatch.setPattern(AcDbHatch::kUserDefined, L"_USER"), Acad::eOk);
            AcDbVoidPtrArray parts;
            ASSERT_EQ(hatch.explode(parts), Acad::eOk);
            double along = 0.0, across = 0.0;
            for (void* each : parts) {
                const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(each));
                const AcGeVector3d run =
                    AcDbLine::cast(part.get())->endPoint() - AcDbLine::cast(part.get())->startPoint();
                along += std::abs(run.x * x.x + run.y * x.y) / 20.0;
                across += std::abs(run.x * y.x + run.y * y.y) / 5.0;
            }
            EXPECT_NEAR(along, 20.0 * 20, 1e-8) << degrees;
            EXPECT_NEAR(across, isDouble ? 5.0 * 80 : 0.0, 1e-8) << degrees;
        }
}

} // namespace
