#include "hatchpatterns.h"

#include "casefold.h"

#include <cmath>

namespace hostkit {

namespace {

constexpr double kRoot2 = 1.41421356237309504880;

constexpr double dashedThree[] = {3.0, -3.0};
constexpr double dotEachThree[] = {0.0, -3.0};
constexpr double brickHeads[] = {6.0, -6.0};
constexpr double earthStrokes[] = {4.0, -4.0};

constexpr PatternFamily line[] = {{0.0, 0.0, 0.0, 0.0, 3.0, {}}};
constexpr PatternFamily net[] = {{0.0, 0.0, 0.0, 0.0, 3.0, {}}, {90.0, 0.0, 0.0, 0.0, 3.0, {}}};
constexpr PatternFamily dash[] = {{0.0, 0.0, 0.0, 3.0, 3.0, dashedThree}};
constexpr PatternFamily dots[] = {{0.0, 0.0, 0.0, 1.5, 1.5, dotEachThree}};
constexpr PatternFamily ansi31[] = {{45.0, 0.0, 0.0, 0.0, 3.0, {}}};
constexpr PatternFamily ansi32[] = {{45.0, 0.0, 0.0, 0.0, 9.0, {}}, {45.0, 4.0, 0.0, 0.0, 9.0, {}}};
constexpr PatternFamily ansi37[] = {{45.0, 0.0, 0.0, 0.0, 3.0, {}}, {135.0, 0.0, 0.0, 0.0, 3.0, {}}};

// Bricks of 12 by 6, each course half a brick beside the one below.
constexpr PatternFamily brick[] = {{0.0, 0.0, 0.0, 0.0, 6.0, {}}, {90.0, 0.0, 0.0, 6.0, 6.0, brickHeads}};

// Squares of 4, in turn with three strokes across and three upright.
constexpr PatternFamily earth[] = {
    {0.0, 0.0, 1.0, 4.0, 4.0, earthStrokes},  {0.0, 0.0, 2.0, 4.0, 4.0, earthStrokes},
    {0.0, 0.0, 3.0, 4.0, 4.0, earthStrokes},  {90.0, 5.0, 0.0, 4.0, 4.0, earthStrokes},
    {90.0, 6.0, 0.0, 4.0, 4.0, earthStrokes}, {90.0, 7.0, 0.0, 4.0, 4.0, earthStrokes},
};

// Stones and grains that repeat along (12, 0) and (4, 8). Along 45 degrees this lattice has a point each
// (24, 24), along 135 degrees each (-8, 8), so that the three sides of a stone stay together.
constexpr double stoneBottom[] = {3.0, -9.0};
constexpr double stoneLeft[] = {1.5 * kRoot2, -22.5 * kRoot2};
constexpr double stoneRight[] = {1.5 * kRoot2, -6.5 * kRoot2};
constexpr double grains[] = {0.0, -12.0};
constexpr PatternFamily concrete[] = {
    {0.0, 0.0, 0.0, 4.0, 8.0, stoneBottom},
    {45.0, 0.0, 0.0, 6.0 * kRoot2, 2.0 * kRoot2, stoneLeft},
    {135.0, 3.0, 0.0, 6.0 * kRoot2, 6.0 * kRoot2, stoneRight},
    {0.0, 6.0, 1.0, 4.0, 8.0, grains},
    {0.0, 10.0, 3.0, 4.0, 8.0, grains},
    {0.0, 3.0, 5.0, 4.0, 8.0, grains},
    {0.0, 8.0, 6.0, 4.0, 8.0, grains},
};

constexpr PredefinedPattern patterns[] = {
    {L"LINE", "anything, by lines", line},
    {L"NET", "mesh reinforcement", net},
    {L"DASH", "water, and what lies behind", dash},
    {L"DOTS", "plaster, sand and screed", dots},
    {L"ANSI31", "reinforced concrete, cut", ansi31},
    {L"ANSI32", "steel, cut", ansi32},
    {L"ANSI37", "insulation and lead", ansi37},
    {L"BRICK", "masonry", brick},
    {L"EARTH", "soil", earth},
    {L"AR-CONC", "plain concrete", concrete},
};

} // namespace

std::span<const PredefinedPattern> predefinedPatterns() { return patterns; }

const PredefinedPattern* predefinedPattern(const wchar_t* name) {
    for (const PredefinedPattern& pattern : patterns)
        if (equalFolded(pattern.name, name)) return &pattern;
    return nullptr;
}

std::vector<HatchPatternLine> definitionLines(const PredefinedPattern& pattern, double angle, double scale) {
    constexpr double radian = 0.01745329251994329577;
    const AcGeVector2d turnedX(std::cos(angle), std::sin(angle));
    std::vector<HatchPatternLine> lines;
    for (const PatternFamily& family : pattern.families) {
        HatchPatternLine made;
        made.angle = family.degrees * radian + angle;
        const AcGeVector2d along(std::cos(made.angle), std::sin(made.angle));
        const AcGeVector2d base = (turnedX * family.x + turnedX.perpVector() * family.y) * scale;
        made.base.set(base.x, base.y);
        made.offset = (along * family.along + along.perpVector() * family.across) * scale;
        for (const double dash : family.dashes) made.dashes.push_back(dash * scale);
        lines.push_back(std::move(made));
    }
    return lines;
}

std::vector<HatchPatternLine> userDefinedLines(double angle, double space, bool isDouble) {
    constexpr PatternFamily families[] = {{0.0, 0.0, 0.0, 0.0, 1.0, {}}, {90.0, 0.0, 0.0, 0.0, 1.0, {}}};
    const std::span<const PatternFamily> used(families, isDouble ? 2 : 1);
    return definitionLines({L"", "", used}, angle, space);
}

} // namespace hostkit
