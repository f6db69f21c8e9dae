// Layout of dimensions: figures worked out by hand from dimensions that the host wrote, and what holds for
// any.

#include "dimensionlayout.h"
#include "dimensionsizes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using namespace hostkit;
using Form = DimensionPiece::Form;

constexpr double degree = std::numbers::pi / 180.0;

struct Stretch {
    AcGePoint2d from, to;
};

/// A linear dimension along x from the origin, its dimension line on the x axis.
struct Linear {
    DimensionShape shape;
    DimensionVariables variables;
    DimensionArrows arrows;
    DimensionWording wording;
    DimensionLayout layout;

    explicit Linear(double length, double firstOrigin = 0.0, double secondOrigin = 0.0) {
        shape.points[3].set(0.0, firstOrigin);
        shape.points[4].set(length, secondOrigin);
        shape.points[0].set(length, 0.0);
    }
    void text(const wchar_t* contents, double width, double height, double letters) {
        wording = {contents, letters, {width, height}};
    }
    bool layOut() { return layOutDimension(shape, variables, arrows, wording, layout); }
    std::vector<Stretch> lines(PieceLook look) const {
        std::vector<Stretch> found;
        for (const DimensionPiece& piece : layout.pieces)
            if (piece.form == Form::line && piece.look == look) found.push_back({piece.at[0], piece.at[1]});
        return found;
    }
    std::vector<DimensionPiece> ofForm(Form form) const {
        std::vector<DimensionPiece> found;
        for (const DimensionPiece& piece : layout.pieces)
            if (piece.form == form) found.push_back(piece);
        return found;
    }
};

void expectLines(const std::vector<Stretch>& found, const std::vector<Stretch>& wanted, double tolerance) {
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_NEAR(found[i].from.x, wanted[i].from.x, tolerance) << i;
        EXPECT_NEAR(found[i].from.y, wanted[i].from.y, tolerance) << i;
        EXPECT_NEAR(found[i].to.x, wanted[i].to.x, tolerance) << i;
        EXPECT_NEAR(found[i].to.y, wanted[i].to.y, tolerance) << i;
    }
}

void expectText(const DimensionLayout& layout, double x, double y, double rotation, double tolerance) {
    EXPECT_NEAR(layout.textCentre.x, x, tolerance);
    EXPECT_NEAR(layout.textCentre.y, y, tolerance);
    EXPECT_NEAR(std::remainder(layout.textRotation - rotation, 2.0 * std::numbers::pi), 0.0, 1e-9);
}

TEST(DimensionLayout, ImperialDefaultsBreakTheLine) {
    Linear dimension(5.5105235, -1.4963, -1.4963);
    dimension.text(L"5.5105", 0.7486, 0.1838, 0.18);
    ASSERT_TRUE(dimension.layOut());
    expectText(dimension.layout, 2.75526, 0.0, 0.0, 1e-4);
    expectLines(dimension.lines(PieceLook::firstExtension), {{{0.0, -1.4338}, {0.0, 0.18}}}, 1e-4);
    expectLines(dimension.lines(PieceLook::secondExtension), {{{5.5105, -1.4338}, {5.5105, 0.18}}}, 1e-4);
    expectLines(dimension.lines(PieceLook::dimensionLine),
                {{{0.18, 0.0}, {2.2910, 0.0}}, {{5.3305, 0.0}, {3.2195, 0.0}}}, 1e-4);
    const auto solids = dimension.ofForm(Form::triangle);
    ASSERT_EQ(solids.size(), 2u);
    EXPECT_NEAR(solids[0].at[0].x, 0.18, 1e-9);
    EXPECT_NEAR(solids[0].at[0].y, 0.03, 1e-9);
    EXPECT_NEAR(solids[0].at[1].y, -0.03, 1e-9);
    EXPECT_NEAR(solids[0].at[2].x, 0.0, 1e-9);
    EXPECT_NEAR(solids[1].at[2].x, 5.5105235, 1e-9);
}

DimensionVariables sized(double arrow, double extension, double gap, double letters) {
    DimensionVariables variables;
    variables.dimasz = arrow;
    variables.dimexe = extension;
    variables.dimgap = gap;
    variables.dimtxt = letters;
    return variables;
}

DimensionVariables metric() {
    DimensionVariables variables = sized(2.5, 1.25, 0.625, 2.5);
    variables.dimexo = 0.625;
    variables.dimtad = 1;
    variables.dimtih = variables.dimtoh = false;
    variables.dimtofl = true;
    variables.dimcen = 2.5;
    return variables;
}

TEST(DimensionLayout, ANarrowOneHasTextAndArrowsOutside) {
    Linear dimension(0.5);
    DimensionVariables& variables = dimension.variables = sized(0.125, 0.0625, 0.03125, 0.09375);
    variables.dimscale = 2.0;
    variables.dimtad = 1;
    variables.dimtofl = true;
    variables.dimatfit = 0;
    variables.dimtih = variables.dimtoh = false;
    dimension.text(L"1/2", 0.438, 0.375, 0.1875);
    ASSERT_TRUE(dimension.layOut());
    EXPECT_TRUE(dimension.lines(PieceLook::firstExtension).empty());
    expectLines(dimension.lines(PieceLook::dimensionLine),
                {{{-0.25, 0.0}, {-0.5, 0.0}}, {{0.75, 0.0}, {1.438, 0.0}}, {{0.0, 0.0}, {0.5, 0.0}}}, 1e-3);
    expectText(dimension.layout, 1.219, 0.25, 0.0, 1e-3);
}

TEST(DimensionLayout, TicksNeedLessRoom) {
    for (const double length : {37.0, 28.0}) {
        Linear dimension(length);
        dimension.variables = sized(0.15625, 0.18, 0.09375, 0.1875);
        dimension.variables.dimscale = 32.0;
        dimension.variables.dimtix = true;
        for (ArrowTraits& traits : dimension.arrows.traits) traits = {false, true, 0.6};
        dimension.text(L"3'-1\"", length > 30.0 ? 15.946 : 16.1, 7.14, 6.0);
        ASSERT_TRUE(dimension.layOut());
        if (length > 30.0)
            expectLines(dimension.lines(PieceLook::dimensionLine),
                        {{{0.0, 0.0}, {7.527, 0.0}}, {{37.0, 0.0}, {29.473, 0.0}}}, 2e-3);
        else
            expectLines(dimension.lines(PieceLook::dimensionLine),
                        {{{0.0, 0.0}, {-5.0, 0.0}}, {{28.0, 0.0}, {33.0, 0.0}}}, 1e-9);
        expectText(dimension.layout, length / 2.0, 0.0, 0.0, 1e-9);
        const auto arrows = dimension.ofForm(Form::triangle);
        ASSERT_EQ(arrows.size(), 2u);
        EXPECT_EQ(arrows[0].at[0].x > 0.0, length > 30.0)
            << "the first one points outwards where there is room";
    }
}

DimensionVariables fine() {
    DimensionVariables variables = sized(0.118, 0.06, 0.04, 0.115);
    variables.dimexo = 0.1;
    variables.dimatfit = 0;
    return variables;
}

TEST(DimensionLayout, TextOutsideFollowsTheLine) {
    Linear dimension(0.1);
    dimension.variables = fine();
    dimension.text(L"0.100", 0.36417, 0.115, 0.115);
    ASSERT_TRUE(dimension.layOut());
    expectLines(dimension.lines(PieceLook::dimensionLine),
                {{{-0.118, 0.0}, {-0.236, 0.0}}, {{0.218, 0.0}, {0.336, 0.0}}}, 1e-4);
    expectText(dimension.layout, 0.5581, 0.0, 0.0, 1e-4);
}

TEST(DimensionLayout, LevelTextOutsideAnUprightLineHasAHook) {
    Linear dimension(0.0);
    dimension.shape.rotation = 90.0 * degree;
    dimension.shape.points[4].set(0.0, 0.125);
    dimension.shape.points[0].set(0.0, 0.125);
    dimension.variables = fine();
    dimension.text(L"0.125", 0.4026, 0.115, 0.115);
    ASSERT_TRUE(dimension.layOut());
    expectLines(
        dimension.lines(PieceLook::dimensionLine),
        {{{0.0, -0.118}, {0.0, -0.236}}, {{0.0, 0.243}, {0.0, 0.361}}, {{0.0, 0.361}, {0.118, 0.361}}}, 1e-4);
    expectText(dimension.layout, 0.3593, 0.361, 0.0, 1e-4);
}

TEST(DimensionLayout, AFrameLiftsTheTextAndUnequalArrowsShiftIt) {
    Linear dimension(28.55);
    dimension.variables = metric();
    dimension.variables.dimgap = -0.625;
    dimension.arrows.traits[1] = {false, true, 1.0};
    dimension.text(L"28,55", 8.5, 3.004, 2.5);
    ASSERT_TRUE(dimension.layOut());
    expectText(dimension.layout, 15.525, 2.752, 0.0, 1e-3);
    expectLines(dimension.lines(PieceLook::dimensionLine),
                {{{2.5, 0.0}, {28.55, 0.0}},
                 {{10.65, 0.625}, {20.40, 0.625}},
                 {{20.40, 0.625}, {20.40, 4.879}},
                 {{20.40, 4.879}, {10.65, 4.879}},
                 {{10.65, 4.879}, {10.65, 0.625}}},
                1e-2);
}

TEST(DimensionLayout, AnOrdinateUnderlinesItsText) {
    Linear dimension(0.0);
    dimension.shape.kind = DimensionKind::ordinate;
    dimension.shape.points[3].set(660.872, 8.641);
    dimension.shape.points[4].set(700.770, 14.341);
    dimension.variables = metric();
    dimension.text(L"102,59", 10.148, 3.004, 2.5);
    ASSERT_TRUE(dimension.layOut());
    expectLines(dimension.lines(PieceLook::firstExtension),
                {{{661.497, 8.641}, {690.770, 8.641}},
                 {{690.770, 8.641}, {695.770, 14.341}},
                 {{695.770, 14.341}, {711.543, 14.341}}},
                1e-3);
    expectText(dimension.layout, 706.469, 16.468, 0.0, 1e-3);
}

TEST(DimensionLayout, AnArcEndsAtTheChordsOfItsArrows) {
    Linear dimension(0.0);
    dimension.shape.kind = DimensionKind::threePointAngular;
    dimension.shape.points[3].set(1.0, 0.0);
    dimension.shape.points[4].set(0.0, 1.0);
    dimension.shape.points[0] = AcGePoint2d() + directionOf(45.0 * degree) * 1.34348;
    dimension.variables.dimtad = 1;
    dimension.variables.dimtih = false;
    dimension.text(L"90", 0.3, 0.18, 0.18);
    ASSERT_TRUE(dimension.layOut());
    const auto arcs = dimension.ofForm(Form::arc);
    ASSERT_EQ(arcs.size(), 1u);
    EXPECT_NEAR(arcs[0].startAngle, 7.682 * degree, 1e-5);
    EXPECT_NEAR(arcs[0].endAngle, 82.318 * degree, 1e-5);
    const AcGePoint2d text = AcGePoint2d() + directionOf(45.0 * degree) * (1.34348 + 0.18);
    expectText(dimension.layout, text.x, text.y, -45.0 * degree, 1e-9);
}

// Length 40 with arrows of 2.5, gap 0.625, and a text of 9 by 3 above the line; figures by hand.
TEST(DimensionLayout, EachVariableHasItsFigure) {
    struct Case {
        const char* name;
        void (*set)(Linear&);
        PieceLook look;
        std::vector<Stretch> lines;
        AcGePoint2d text;
        std::size_t arrows;
    };
    const PieceLook line = PieceLook::dimensionLine;
    const std::vector<Stretch> whole = {{{2.5, 0}, {37.5, 0}}};
    const std::vector<Stretch> tails = {{{-2.5, 0}, {-5, 0}}, {{42.5, 0}, {45, 0}}, {{0, 0}, {40, 0}}};
    const Case cases[] = {
        {"dimsd1",
         [](Linear& d) { d.variables.dimsd1 = true; },
         line,
         {{{20, 0}, {37.5, 0}}},
         {20, 2.125},
         1},
        {"dimsd2", [](Linear& d) { d.variables.dimsd2 = true; }, line, {{{2.5, 0}, {20, 0}}}, {20, 2.125}, 1},
        {"dimfxl",
         [](Linear& d) { d.variables.dimfxlenOn = true, d.variables.dimfxlen = 3.0; },
         PieceLook::firstExtension,
         {{{0, -3}, {0, 1.25}}},
         {20, 2.125},
         2},
        {"dimtsz",
         [](Linear& d) {
             d.variables.dimtsz = 2.0, d.variables.dimdle = 1.0, d.arrows = dimensionArrows(d.variables);
         },
         line,
         {{{-1, 0}, {41, 0}}, {{1, 1}, {-1, -1}}, {{39, -1}, {41, 1}}},
         {20, 2.125},
         0},
        {"dimjust 1", [](Linear& d) { d.variables.dimjust = 1; }, line, whole, {10.125, 2.125}, 2},
        {"dimjust 2", [](Linear& d) { d.variables.dimjust = 2; }, line, whole, {29.875, 2.125}, 2},
        {"dimjust 3", [](Linear& d) { d.variables.dimjust = 3; }, line, whole, {-2.125, 5.125}, 2},
        {"dimjust 4", [](Linear& d) { d.variables.dimjust = 4; }, line, whole, {37.875, 5.125}, 2},
        {"dimtad 2",
         [](Linear& d) { d.variables.dimtad = 2, d.shape.points[3].y = d.shape.points[4].y = 10.0; },
         line,
         whole,
         {20, -2.125},
         2},
        {"dimtad 4", [](Linear& d) { d.variables.dimtad = 4; }, line, whole, {20, -2.125}, 2},
        {"flipped",
         [](Linear& d) { d.shape.isFlipped[0] = d.shape.isFlipped[1] = true; },
         line,
         tails,
         {20, 2.125},
         2},
        {"dimsoxd",
         [](Linear& d) { d.shape.isFlipped[0] = d.shape.isFlipped[1] = d.variables.dimsoxd = true; },
         line,
         {{{0, 0}, {40, 0}}},
         {20, 2.125},
         0},
        {"parted",
         [](Linear& d) { d.variables.dimtad = 0, d.wording.isParted = true, d.wording.offset = 0.5; },
         line,
         whole,
         {20, 0.5},
         2},
        {"parted, read the other way round",
         [](Linear& d) { d.variables.dimtxtdirection = d.wording.isParted = true, d.wording.offset = 0.5; },
         line,
         whole,
         {20, -0.5},
         2},
        {"dimtmove 1",
         [](Linear& d) {
             d.variables.dimtmove = 1, d.variables.dimtofl = false,
             d.shape.points[0].x = d.shape.points[4].x = 8;
         },
         line,
         {{{-2.5, 0}, {-5, 0}},
          {{10.5, 0}, {13, 0}},
          {{0, 0}, {8, 0}},
          {{4, 0}, {4, 5.675}},
          {{4, 5.675}, {6.5, 5.675}}},
         {11.625, 5.675},
         2},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Linear dimension(40.0, -10.0, -10.0);
        dimension.variables = metric();
        dimension.text(L"text", 9.0, 3.0, 2.5);
        each.set(dimension);
        ASSERT_TRUE(dimension.layOut());
        expectLines(dimension.lines(each.look), each.lines, 1e-9);
        EXPECT_LT(dimension.layout.textCentre.distanceTo(each.text), 1e-9);
        EXPECT_EQ(dimension.ofForm(Form::triangle).size(), each.arrows);
    }
}

TEST(DimensionLayout, TextOutsideAnArcFollowsIt) {
    Linear angle(0.0);
    angle.shape.kind = DimensionKind::threePointAngular;
    angle.shape.points[3].set(5.0, 0.0);
    angle.shape.points[4] = AcGePoint2d() + directionOf(10.0 * degree) * 5.0;
    angle.shape.points[0] = AcGePoint2d() + directionOf(5.0 * degree) * 10.0;
    angle.variables = metric();
    angle.variables.dimtad = 0;
    angle.text(L"10", 9.0, 3.0, 2.5);
    ASSERT_TRUE(angle.layOut());
    // Two arrows, a gap and half of the text beyond the second end.
    const double place = 10.0 * degree + 4.0 * std::asin(0.125) + (0.625 + 4.5) / 10.0;
    const AcGePoint2d text = AcGePoint2d() + directionOf(place) * 10.0;
    expectText(angle.layout, text.x, text.y, place - 90.0 * degree, 1e-9);
}

// A radius with its text outside, and the symbol of an arc's length.
TEST(DimensionLayout, MarksAndSymbolsHaveTheirFigures) {
    Linear radius(0.0);
    radius.shape.kind = DimensionKind::radial;
    radius.shape.points[5].set(10.0, 0.0);
    radius.variables = metric();
    radius.variables.dimcen = -1.0;
    radius.variables.dimtoh = true;
    radius.variables.dimtofl = false;
    radius.text(L"R10", 9.0, 3.0, 2.5);
    for (const bool isParted : {false, true}) {
        radius.wording.isParted = isParted;
        radius.wording.offset = 0.5;
        ASSERT_TRUE(radius.layOut());
        expectLines(radius.lines(PieceLook::centreMark),
                    {{{-1, 0}, {1, 0}},
                     {{0, -1}, {0, 1}},
                     {{2, 0}, {11, 0}},
                     {{-2, 0}, {-11, 0}},
                     {{0, 2}, {0, 11}},
                     {{0, -2}, {0, -11}}},
                    1e-9);
        // The line that parts a text runs on to its end.
        const double landing = isParted ? 27.125 : 17.5;
        expectLines(radius.lines(PieceLook::dimensionLine), {{{12.5, 0}, {15, 0}}, {{15, 0}, {landing, 0}}},
                    1e-9);
        expectText(radius.layout, 22.625, isParted ? 0.5 : 0.0, 0.0, 1e-9);
    }
    Linear arc(0.0);
    arc.shape.kind = DimensionKind::arcLength;
    arc.shape.points[3].set(100.0, 0.0);
    arc.shape.points[4].set(-100.0, 0.0);
    arc.shape.points[0].set(0.0, 110.0);
    arc.variables = metric();
    arc.text(L"314", 9.0, 3.0, 2.5);
    ASSERT_TRUE(arc.layOut());
    const auto arcs = arc.ofForm(Form::arc);
    ASSERT_EQ(arcs.size(), 2u);
    expectText(arc.layout, 0.0, 112.125, 0.0, 1e-9);
    EXPECT_NEAR(arcs[1].size, 2.4, 1e-9);
    EXPECT_LT(arcs[1].at[0].distanceTo({-7.5, 110.925}), 1e-9);
}

// Turned, moved and read the other way round the figure is the same, as long as the text is aligned.
TEST(DimensionLayout, TurnsWithItsPoints) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (int round = 0; round < 200; ++round) {
        Linear dimension(3.0 + 3.0 * any(random), -1.0 + any(random), -1.0 + any(random));
        dimension.variables = metric();
        dimension.variables.dimscale = 0.15 + 0.1 * any(random);
        dimension.variables.dimatfit = static_cast<Adesk::Int16>(round % 4);
        dimension.variables.dimtad = static_cast<Adesk::Int16>(round / 4 % 2);
        dimension.text(L"text", 1.0 + 0.5 * any(random), 0.3, 0.3);
        ASSERT_TRUE(dimension.layOut());
        // Less than a right angle: the reading direction stays.
        const double angle = 1.5 * any(random);
        const AcGeVector2d shift(1e4 * any(random), 1e4 * any(random));
        const AcGeVector2d along = directionOf(angle);
        const auto turned = [&](const AcGePoint2d& point) {
            return AcGePoint2d() + along * point.x + along.perpVector() * point.y + shift;
        };
        Linear other = dimension;
        for (AcGePoint2d& point : other.shape.points) point = turned(point);
        other.shape.rotation = angle;
        other.shape.kind = DimensionKind::rotated;
        ASSERT_TRUE(other.layOut());
        ASSERT_EQ(other.layout.pieces.size(), dimension.layout.pieces.size());
        for (std::size_t i = 0; i < dimension.layout.pieces.size(); ++i)
            for (std::size_t end = 0; end < 2; ++end) {
                const DimensionPiece& piece = dimension.layout.pieces[i];
                if (piece.form != Form::line && piece.form != Form::triangle && end > 0) continue;
                EXPECT_LT((other.layout.pieces[i].at[end] - turned(piece.at[end])).length(), 1e-8)
                    << round << ' ' << i;
            }
    }
}

// Whatever the values: a figure of few pieces, or none.
TEST(DimensionLayout, EveryValueGivesAFigureOrNone) {
    const double values[] = {0.0,
                             1.0,
                             -1.0,
                             1e-300,
                             1e300,
                             1e-9,
                             7e9,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    std::mt19937 random(11);
    const auto any = [&] { return values[random() % std::size(values)]; };
    int figures = 0;
    for (int round = 0; round < 20000; ++round) {
        Linear dimension(0.0);
        dimension.shape.kind = static_cast<DimensionKind>(round % 10);
        for (AcGePoint2d& point : dimension.shape.points)
            if (random() % 2 != 0) point.set(any(), any());
        if (random() % 4 == 0) dimension.shape.rotation = any();
        if (random() % 4 == 0) dimension.shape.oblique = any();
        dimension.shape.isTextPlaced = random() % 3 == 0;
        DimensionVariables& variables = dimension.variables;
        for (double* length : {&variables.dimscale, &variables.dimasz, &variables.dimgap, &variables.dimexe,
                               &variables.dimtsz, &variables.dimtvp, &variables.dimcen})
            if (random() % 6 == 0) *length = any();
        variables.dimtad = static_cast<Adesk::Int16>(random() % 6);
        variables.dimjust = static_cast<Adesk::Int16>(random() % 6);
        variables.dimatfit = static_cast<Adesk::Int16>(random() % 5);
        variables.dimtmove = static_cast<Adesk::Int16>(random() % 3);
        if (random() % 3 != 0) dimension.text(L"x", any(), any(), 1.0);
        const bool isLaidOut = dimension.layOut();
        figures += isLaidOut;
        EXPECT_LE(dimension.layout.pieces.size(), 30u);
        EXPECT_TRUE(isLaidOut || dimension.layout.pieces.empty());
        for (const DimensionPiece& piece : dimension.layout.pieces)
            EXPECT_TRUE(std::isfinite(piece.at[0].x) && std::isfinite(piece.at[1].y) &&
                        std::isfinite(piece.size));
    }
    EXPECT_GT(figures, 1000);
}

} // namespace
