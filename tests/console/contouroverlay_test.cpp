// The areas by which the example module proves its cuts, against figures known in closed form.
#include "contouroverlay.h"

#include "plantext.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

using std::numbers::pi;

AcDbPolyline contour(const std::vector<Vertex>& vertices, const AcGeMatrix3d& motion = AcGeMatrix3d()) {
    AcDbPolyline polyline(*outlineOf(vertices));
    EXPECT_EQ(polyline.transformBy(motion), Acad::eOk);
    return polyline;
}

std::vector<Vertex> disc(double x, double y, double radius) {
    return {{x - radius, y, 1}, {x + radius, y, 1}};
}

TEST(ContourOverlay, AreasAndCommonAreas) {
    const double lens = 2 * std::acos(0.5) - std::sqrt(3.0) / 2; // of unit circles, their centres 1 apart
    const double r = 1.0 / std::sqrt(2.0) / std::sin(1e-5 / 2);  // through (1,0) and (0,1), nearly straight
    const double flat = r * r / 2 * (1e-15 / 6);                 // angle - sine of it, by the series
    const double wide = 4 * std::atan(3.0); // the angle of an arc, far more than half a circle
    const double mostOfCircle = std::pow(0.5 / std::sin(wide / 2), 2) / 2 * (wide - std::sin(wide));
    struct {
        std::vector<Vertex> first, second;
        double area, common;
    } const cases[] = {
        {box(0, 0, 4, 3), box(1, 1, 2, 5), 12, 4},
        {box(0, 0, 4, 3), box(4, 0, 2, 3), 12, 0},
        {box(0, 0, 4, 3), box(0, 0, 4, 3), 12, 12},
        {box(0, 0, 4, 3), {{1, 1, 0}, {1, 2, 0}, {2, 2, 0}, {2, 1, 0}}, 12, 1}, // runs the other way
        {disc(0, 0, 1), disc(1, 0, 1), pi, lens},
        {disc(0, 0, 1), disc(0, 1, 1), pi, lens},
        {disc(0, 0, 1), disc(2, 0, 1), pi, 0},
        {disc(0, 0, 2), disc(1, 0, 1), 4 * pi, pi}, // touches from within
        {disc(0, 0, 2), box(0, -3, 5, 6), 4 * pi, 2 * pi},
        {disc(0, 0, 2), box(-3, 0, 6, 5), 4 * pi, 2 * pi},
        {{{1, 0, 0}, {0, 1, 0}, {0, 0, 0}}, box(-1, -1, 3, 3), 0.5, 0.5},
        {{{1, 0, std::tan(1e-5 / 4)}, {0, 1, 0}, {0, 0, 0}}, box(-1, -1, 3, 3), 0.5 + flat, 0.5 + flat},
        {{{0, 0, -3}, {1, 0, 0}}, box(-5, -5, 10, 10), mostOfCircle, mostOfCircle},
    };
    for (const auto& each : cases)
        for (const double turn : {0.0, 0.3, pi / 2, 2.0, -pi / 6})
            for (const double away : {0.0, 1e6}) {
                const AcGeMatrix3d motion = AcGeMatrix3d::translation(AcGeVector3d(away, -away, 0)) *
                                            AcGeMatrix3d::rotation(turn, AcGeVector3d::kZAxis);
                SCOPED_TRACE(testing::Message() << &each - cases << ", turned " << turn << ", away " << away);
                const double allowed = away > 0.0 ? 1e-8 : 1e-11;
                const AcDbPolyline first = contour(each.first, motion);
                const AcDbPolyline second = contour(each.second, motion);
                EXPECT_NEAR(overlaidArea(first), each.area, allowed);
                EXPECT_NEAR(commonArea(first, second), each.common, allowed);
                EXPECT_NEAR(commonArea(second, first), each.common, allowed);
            }
}

// By the even-odd rule a figure of eight has both its loops, while its signed area is their difference.
TEST(ContourOverlay, CrossingsOfOneContour) {
    EXPECT_NEAR(overlaidArea(contour({{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}})), 2.0, 1e-12);
    EXPECT_EQ(overlaidArea(contour({{0, 0, 0}, {3, 1, 0}})), 0.0);
}

// Three discs around a point: every cell knows which of them it lies in.
TEST(ContourOverlay, CellsKnowTheirContours) {
    ContourOverlay overlay;
    double sums[8] = {};
    for (int i = 0; i < 3; ++i)
        overlay.add(contour(disc(0.5 * std::cos(2.1 * i), 0.5 * std::sin(2.1 * i), 1), AcGeMatrix3d()));
    overlay.forEachCell([&](const ContourOverlay::Cell& cell) {
        int key = 0;
        for (const int each : cell.contours) key |= 1 << each;
        sums[key] += cell.area;
    });
    for (int i = 0; i < 3; ++i) {
        double disc = 0.0;
        for (int key = 0; key < 8; ++key) disc += key >> i & 1 ? sums[key] : 0.0;
        EXPECT_NEAR(disc, pi, 1e-12);
    }
    // Pairs by the lens of two unit circles (https://en.wikipedia.org/wiki/Lens_(geometry)).
    for (int a = 0; a < 3; ++a)
        for (int b = a + 1; b < 3; ++b) {
            const double between = std::sin(2.1 * (b - a) / 2); // the centres' distance
            const double lens = 2 * std::acos(between / 2) - between / 2 * std::sqrt(4 - between * between);
            EXPECT_NEAR(sums[1 << a | 1 << b] + sums[7], lens, 1e-12);
        }
}

} // namespace
