#include "consoletest.h"
#include "jsonfields.h"
#include "linepattern.h"
#include "picturepath.h"
#include "svgpicture.h"

#include "letterface.h"
#include <cmath>

#include <gtest/gtest.h>
#include <numbers>
#include <random>

using hostkit::PicturePath;
using hostkit::PlacedText;
using hostkit::TextRun;

namespace {

using std::numbers::pi;

// Points all along the path: 64 steps of every curve.
std::vector<AcGePoint3d> pointsAlong(const PicturePath& path) {
    std::vector<AcGePoint3d> along;
    const AcGePoint3d* next = path.points().data();
    for (const PicturePath::Step step : path.steps()) {
        if (step == PicturePath::Step::curve) {
            const AcGeVector3d from = along.back().asVector();
            for (int i = 1; i <= 64; ++i) {
                const double t = i / 64.0, s = 1.0 - t;
                along.push_back(AcGePoint3d(0, 0, 0) + from * (s * s * s) +
                                next[0].asVector() * (3 * s * s * t) + next[1].asVector() * (3 * s * t * t) +
                                next[2].asVector() * (t * t * t));
            }
            next += 3;
        } else if (step != PicturePath::Step::close) {
            along.push_back(*next++);
        }
    }
    return along;
}

TEST(PicturePath, ArcsStayOnTheirCircle) {
    const AcGePoint3d center(3, 4, 0);
    for (const double sweep : {0.1, -0.1, pi / 2, -pi, 2 * pi, -2 * pi, 100.0}) {
        PicturePath path;
        path.arc(center, AcGeVector3d(10, 0, 0), AcGeVector3d(0, 10, 0), 0.3, sweep);
        const std::vector<AcGePoint3d> along = pointsAlong(path);
        for (const AcGePoint3d& point : along)
            EXPECT_NEAR(point.distanceTo(center), 10.0, 10 * 5e-6) << sweep;
        const double end = 0.3 + std::clamp(sweep, -2 * pi, 2 * pi);
        const AcGeVector3d toEnd(10 * std::cos(end), 10 * std::sin(end), 0);
        EXPECT_LT(along.back().distanceTo(center + toEnd), 1e-12) << sweep;
    }
}

// A bulge's circle is known from its two ends and the sagitta alone: the path must pass through the apex.
TEST(PicturePath, BulgesPassThroughTheirApex) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-100, 100);
    for (const double bulge : {1e-6, 0.2, -0.2, 1.0, -1.0, 3.0, -50.0})
        for (int i = 0; i < 5; ++i) {
            const AcGePoint3d a(coordinate(random), coordinate(random), 0);
            const AcGePoint3d b(coordinate(random), coordinate(random), 0);
            const AcGeVector3d chord = b - a;
            const AcGePoint3d apex = a + chord * 0.5 + AcGeVector3d(chord.y, -chord.x, 0) * (bulge / 2);
            PicturePath path;
            path.moveTo(a);
            path.bulgeTo(b, bulge);
            EXPECT_LT(path.points().back().distanceTo(b), 1e-9 * (1 + std::abs(1 / bulge)));
            // The pieces are of one size, so the apex is an end of one or its middle, where it is on the arc.
            double nearest = 1e300;
            for (const AcGePoint3d& point : pointsAlong(path))
                nearest = std::min(nearest, point.distanceTo(apex));
            EXPECT_LT(nearest, 1e-9 * chord.length() * (1 + std::abs(1 / bulge))) << bulge;
        }
    PicturePath straight;
    straight.bulgeTo(AcGePoint3d(1, 1, 0), 0.5);
    EXPECT_EQ(straight.points().size(), 1u) << "a bulge without a begin is a begin";
}

TEST(LinePattern, DashesTurnSoThatADrawnOneComesFirst) {
    struct {
        std::vector<double> pattern, wanted;
        double start;
    } const cases[] = {{{12, -3}, {12, 3}, 0},
                       {{-3, 12}, {12, 3}, 12},
                       {{12, -3, 4}, {16, 3}, 4},
                       {{5, 5, -1, -1}, {10, 2}, 0},
                       {{-1, 5, -2}, {5, 3}, 7},
                       {{5, 5}, {}, 0},
                       {{-5}, {}, 0},
                       {{}, {}, 0},
                       {{0}, {}, 0},
                       {{NAN, -1}, {}, 0},
                       {{9.9, 0, -0.1}, {10, 0.1}, 0}};
    for (const auto& each : cases) {
        const DashArray result = dashArray(each.pattern, 2.0);
        ASSERT_EQ(result.dashes.size(), each.wanted.size());
        for (std::size_t i = 0; i < each.wanted.size(); ++i)
            EXPECT_NEAR(result.dashes[i], 2.0 * each.wanted[i], 0.2 + 1e-12);
        EXPECT_DOUBLE_EQ(result.start, 2.0 * each.start);
    }
}

// What the pattern draws at a point must not depend on where its strokes begin.
PicturePath square(double x, double y, double size) {
    PicturePath path;
    path.moveTo(AcGePoint3d(x, y, 0));
    path.lineTo(AcGePoint3d(x + size, y, 0));
    path.lineTo(AcGePoint3d(x + size, y + size, 0));
    path.lineTo(AcGePoint3d(x, y + size, 0));
    path.close();
    return path;
}

TEST(Picture, PageFitsTheDrawingAndTurnsWithIt) {
    PictureExtents flat;
    flat.stroke(square(1e6, 2e6, 100), {});
    flat.dot(AcGePoint3d(1e6 + 400, 2e6, 0), 0);
    const PictureFrame lying = PictureFrame::fitted(flat, 420, 297, false);
    EXPECT_DOUBLE_EQ(lying.scale, 1.0);
    EXPECT_DOUBLE_EQ(lying.width, 420.0);
    EXPECT_DOUBLE_EQ(lying.height, 120.0);
    EXPECT_DOUBLE_EQ(lying.originX, 1e6 - 10);

    PictureExtents tall;
    tall.stroke(square(0, 0, 10), {});
    tall.dot(AcGePoint3d(0, 40, 0), 0);
    const PictureFrame standing = PictureFrame::fitted(tall, 420, 297, false);
    EXPECT_DOUBLE_EQ(standing.height, 420.0);
    EXPECT_DOUBLE_EQ(standing.width, 120.0);
    const PictureFrame exact = PictureFrame::fitted(tall, 200, 100, true);
    EXPECT_DOUBLE_EQ(exact.width, 200.0);
    EXPECT_DOUBLE_EQ(exact.scale, 2.0);
    EXPECT_DOUBLE_EQ(exact.originX + exact.width / exact.scale / 2, 5.0) << "in the middle of the page";

    PictureExtents nothing, point;
    point.dot(AcGePoint3d(7, 7, 0), 0);
    for (const PictureExtents* extents : {&nothing, &point}) {
        const PictureFrame empty = PictureFrame::fitted(*extents, 420, 297, false);
        EXPECT_TRUE(empty.width > 0 && empty.height > 0 && std::isfinite(empty.scale));
    }
}

// The box of a text on the page, by what its anchor says.
TEST(Picture, TextReachesFromItsAnchor) {
    PlacedText text;
    text.origin = AcGePoint3d(100, 50, 0);
    text.along = AcGeVector3d(4, 0, 0); // twice as wide as high
    text.up = AcGeVector3d(0, 2, 0);
    text.runs.push_back({.text = L"A text"});
    const double wide = hostkit::lineWidth(L"A text", hostkit::LetterFace::sans()) * 4;
    ASSERT_GT(wide, 0.0);
    using Anchor = PlacedText::Anchor;
    for (const auto& [anchor, before] :
         {std::pair(Anchor::start, 0.0), std::pair(Anchor::middle, wide / 2), std::pair(Anchor::end, wide)})
        for (const double fit : {0.0, 30.0}) {
            text.anchor = anchor;
            text.fitLength = fit;
            PictureExtents extents;
            extents.text(text);
            const double length = fit > 0.0 ? fit : wide;
            EXPECT_NEAR(extents.minX(), 100.0 - before / wide * length, 1e-9);
            EXPECT_NEAR(extents.maxX() - extents.minX(), length, 1e-9);
        }
}

TEST(Picture, CoordinatesThatMeanNothingWidenNoPage) {
    PictureExtents extents;
    PicturePath broken = square(0, 0, 1);
    broken.lineTo(AcGePoint3d(NAN, 0, 0));
    extents.stroke(broken, {});
    extents.dot(AcGePoint3d(1e300, 0, 0), 0);
    extents.dot(AcGePoint3d(0, -INFINITY, 0), 0);
    EXPECT_TRUE(extents.isEmpty());

    SvgPicture picture(PictureFrame::fitted(extents, 100, 100, true), L"t");
    picture.stroke(broken, {});
    picture.dot(AcGePoint3d(0, NAN, 0), 0);
    const std::string document = picture.finish();
    EXPECT_EQ(document.find("nan"), std::string::npos);
    EXPECT_EQ(document.find("<path"), std::string::npos);
}

TEST(Picture, TextIsEscapedAndStandsUpright) {
    PictureExtents extents;
    extents.stroke(square(0, 0, 100), {});
    SvgPicture picture(PictureFrame::fitted(extents, 120, 120, true), L"a<b>&\"\x01");
    PlacedText text;
    TextRun run;
    run.text = L"5 < 6 & \u2300\x02";
    text.runs = {run};
    text.origin = AcGePoint3d(50, 50, 0);
    text.along = AcGeVector3d(0, 10, 0); // reads upwards
    text.up = AcGeVector3d(-10, 0, 0);
    picture.text(text);
    const std::string document = picture.finish();
    EXPECT_NE(document.find("<title>a&lt;b&gt;&amp;&quot;\xEF\xBF\xBD</title>"), std::string::npos);
    EXPECT_NE(document.find("5 &lt; 6 &amp; \xE2\x8C\x80\xEF\xBF\xBD"), std::string::npos);
    // A quarter turn to the left on a page whose y points down.
    EXPECT_NE(document.find("matrix(0 -1 1 0 60 60)"), std::string::npos) << document;
}

TEST(Picture, ClipsAndGroupsAreClosedInOrder) {
    PictureExtents extents;
    extents.stroke(square(0, 0, 100), {});
    SvgPicture picture(PictureFrame::fitted(extents, 120, 120, true), L"t");
    picture.endClip();
    picture.beginClip(square(0, 0, 50));
    picture.stroke(square(0, 0, 10), {});
    picture.beginClip(square(0, 0, 20));
    picture.fill(square(0, 0, 10), 0xFF0000, 0.5);
    const std::string document = picture.finish();
    EXPECT_EQ(parts(document, "<g ").size(), 4u);
    EXPECT_EQ(parts(document, "</g>").size(), 4u);
}

} // namespace
