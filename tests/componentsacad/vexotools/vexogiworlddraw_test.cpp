#include "drawingparts.h"
#include "hosttest.h"
#include "vexogiworlddraw.h"

#include "blockdrawing.h"
#include "dbents.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbpl.h"

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <random>

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d up = AcGeVector3d::kZAxis, right = AcGeVector3d::kXAxis;
using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

Parts partsOf(const VEXOGiWorldDraw& draw) {
    AcArray<void*> entities;
    draw.getAcDbEnts(entities);
    Parts parts;
    for (void* each : entities) parts.emplace_back(static_cast<AcDbEntity*>(each));
    return parts;
}

std::string kindsOf(const Parts& parts) {
    std::string kinds;
    for (const auto& part : parts) kinds += hostkit::utf8FromWide(part->isA()->name()).substr(4) + " ";
    return kinds;
}

class WorldDraw : public hostkit::HostTest {
protected:
    Parts captured(const std::function<void(VEXOGiWorldDraw&)>& drawing) {
        VEXOGiWorldDraw draw(&m_source);
        drawing(draw);
        return partsOf(draw);
    }
    AcDbLine m_source;
};

TEST_F(WorldDraw, EachPrimitiveGivesItsEntities) {
    const AcGePoint3d points[] = {{0, 0, 5}, {10, 0, 5}, {10, 10, 5}};
    const AcGePoint3d flat[] = {{0, 0, 0}, {10, 0, 0}, {20, 0, 0}};
    const Adesk::Int32 faces[] = {3, 0, 1, 2, -4, 3, 0, 1, 2, 3, 0, 1, 9, 3, 2, 1, 0, 0, 4, 0, 1};
    AcGiTextStyle style;
    style.setTextSize(2.5);
    AcDbPolyline run;
    run.addVertexAt(0, {0, 0});
    run.addVertexAt(1, {4, 4}, 0.5);
    const AcGePoint3d ends[] = {{0, 0, 0}, {1, 1, 1}};
    using Geometry = AcGiWorldGeometry;
    struct Case {
        const char* kinds;
        const char* filled;
        std::function<bool(Geometry&)> draw;
    };
    const Case cases[] = {
        {"Circle ", "Circle Hatch ", [&](Geometry& g) { return g.circle(points[0], 3, up); }},
        {"Circle ", "Circle Hatch ", [&](Geometry& g) { return g.circle(points[0], points[1], points[2]); }},
        {"", "", [&](Geometry& g) { return g.circle(flat[0], flat[1], flat[2]); }},
        {"Arc ", "Arc ",
         [&](Geometry& g) { return g.circularArc(points[0], 9, up, right, 1.0, kAcGiArcChord); }},
        {"Circle ", "Circle ", [&](Geometry& g) { return g.circularArc(points[0], 9, up, right, -2 * pi); }},
        {"", "", [&](Geometry& g) { return g.circularArc(flat[0], flat[1], flat[2]); }},
        {"Line Line ", "Line Line ", [&](Geometry& g) { return g.polyline(3, points); }},
        {"", "", [&](Geometry& g) { return g.polyline(1, points) && g.polyline(0, nullptr); }},
        {"Polyline ", "Polyline Hatch ", [&](Geometry& g) { return g.polygon(3, points); }},
        {"Polyline ", "Polyline ", [&](Geometry& g) { return g.polygon(3, flat); }},
        {"Polyline ", "Polyline ", [&](Geometry& g) { return g.pline(run, 1, 1); }},
        {"Hatch Hatch ", "Hatch Hatch ", [&](Geometry& g) { return g.shell(3, points, 21, faces); }},
        {"", "", [&](Geometry& g) { return g.shell(3, points, 0, nullptr); }},
        {"MText ", "MText ", [&](Geometry& g) { return g.text(points[0], up, right, 2, 30, 0.1, L"text"); }},
        {"MText ", "MText ",
         [&](Geometry& g) { return g.text(points[0], up, right, L"text", 2, false, style); }},
        {"Line ", "Line ", [&](Geometry& g) { return g.worldLine(ends); }},
        {"", "",
         [&](Geometry& g) {
             AcGiPolyline told(3, points);
             return g.mesh(1, 3, points) && g.xline(points[0], points[1]) && g.ray(points[0], points[1]) &&
                    g.rowOfDots(3, points[0], right) && g.polyline(told) && g.polyPolyline(1, &told) &&
                    g.pushClipBoundary(nullptr) && g.draw(nullptr);
         }},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i)
        for (const bool fills : {false, true}) {
            const Parts parts = captured([&](VEXOGiWorldDraw& draw) {
                if (fills) draw.subEntityTraits().setFillType(kAcGiFillAlways);
                EXPECT_TRUE(cases[i].draw(draw.geometry())) << i;
            });
            EXPECT_EQ(kindsOf(parts), fills ? cases[i].filled : cases[i].kinds) << i;
        }
}

TEST_F(WorldDraw, WhatIsRecordedStandsWhereItWasDrawn) {
    const AcGePoint3d corners[] = {{0, 0, 5}, {10, 0, 5}, {10, 10, 5}};
    Parts parts = captured([&](VEXOGiWorldDraw& draw) {
        AcGiWorldGeometry& geometry = draw.geometry();
        draw.subEntityTraits().setFillType(kAcGiFillAlways);
        geometry.pushModelTransform(AcGeMatrix3d::translation(AcGeVector3d(100, 100, 100)));
        EXPECT_EQ(geometry.pushPositionTransform(kAcGiWorldPosition, corners[1]), AcGeMatrix3d::kIdentity);
        geometry.polygon(3, corners);
        geometry.popModelTransform();
        AcGiTextStyle style;
        style.setTextSize(2.5);
        geometry.text({1, 2, 3}, up, {0, 2, 0}, 4, 30, 0.1, L"one");
        geometry.text({1, 2, 3}, up, right, L"three", 2, false, style);
    });
    ASSERT_EQ(parts.size(), 4u);
    const auto& outline = static_cast<const AcDbPolyline&>(*parts[0]);
    EXPECT_TRUE(outline.isClosed());
    EXPECT_EQ(outline.elevation(), 5.0);
    double area = 0.0;
    EXPECT_EQ(outline.getArea(area), Acad::eOk);
    EXPECT_EQ(area, 50.0);
    auto& hatch = static_cast<AcDbHatch&>(*parts[1]);
    EXPECT_EQ(hatch.getArea(area), Acad::eOk);
    EXPECT_EQ(area, 50.0);
    EXPECT_EQ(hatch.elevation(), 0.0);
    EXPECT_TRUE(hatch.isSolidFill());
    EXPECT_EQ(hatch.loopTypeAt(0), AcDbHatch::kExternal);
    const auto& boxed = static_cast<const AcDbMText&>(*parts[2]);
    EXPECT_EQ(boxed.location(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(std::pair(boxed.textHeight(), boxed.width()), std::pair(4.0, 30.0));
    EXPECT_NEAR(boxed.rotation(), pi / 2, 1e-12);
    const auto& styled = static_cast<const AcDbMText&>(*parts[3]);
    EXPECT_EQ(styled.rawContents(), L"th");
    EXPECT_EQ(std::pair(styled.textHeight(), styled.width()), std::pair(2.5, 0.0));

    const double none = std::numeric_limits<double>::quiet_NaN();
    parts = captured([&](VEXOGiWorldDraw& draw) {
        EXPECT_FALSE(draw.geometry().text({none, 2, 3}, up, right, 4, 30, 0, L"x"));
        EXPECT_FALSE(draw.geometry().text({1, 2, 3}, up, right, 0, 30, 0, L"x"));
        EXPECT_FALSE(draw.geometry().text({1, 2, 3}, up, {0, 0, 0}, 4, 30, 0, L"x"));
        EXPECT_FALSE(draw.geometry().text({1, 2, 3}, up, right, 4, -1, 0, L"x"));
    });
    EXPECT_TRUE(parts.empty());
}

// An arc draws itself by its centre; what is captured goes through the points of the arc.
TEST_F(WorldDraw, ArcsKeepTheirPoints) {
    std::mt19937 random(9);
    const auto number = [&](double range) {
        return range * (static_cast<double>(random() % 20001) / 10000 - 1);
    };
    for (int round = 0; round < 300; ++round) {
        const AcGeVector3d normal =
            round % 3 ? AcGeVector3d(number(1), number(1), 0.1 + std::abs(number(1))).normal()
                      : (round % 2 ? up : -up);
        const double far = round % 5 ? 0.0 : 1e6;
        AcDbArc arc({far + number(100), number(100), number(100)}, normal, 1 + std::abs(number(50)),
                    number(7), number(7));
        if (arc.totalAngle() < 0.05 || arc.totalAngle() > 6.2) continue;
        const Parts parts = captured([&](VEXOGiWorldDraw& draw) { arc.worldDraw(&draw); });
        ASSERT_EQ(kindsOf(parts), "Arc ") << round;
        const auto& found = static_cast<const AcDbArc&>(*parts[0]);
        double from[2], to[2];
        arc.getStartParam(from[0]);
        arc.getEndParam(to[0]);
        found.getStartParam(from[1]);
        found.getEndParam(to[1]);
        for (const double part : {0.0, 0.3, 1.0}) {
            AcGePoint3d expected, actual;
            arc.getPointAtParam(from[0] + part * (to[0] - from[0]), expected);
            found.getPointAtParam(from[1] + part * (to[1] - from[1]), actual);
            EXPECT_LT(expected.distanceTo(actual), far > 0.0 ? 1e-5 : 1e-9) << round << " " << part;
        }
    }
}

TEST_F(WorldDraw, LooksAreTheSourcesButForWhatTheTraitsSet) {
    const AcDbObjectId layer = drawingtest::addRecord<AcDbLayerTable>(database(), L"Bars");
    const AcDbObjectId dashed = drawingtest::addRecord<AcDbLinetypeTable>(database(), L"Dash");
    m_source.setLayer(layer);
    m_source.setColorIndex(3);
    m_source.setLinetypeScale(2.0);
    m_source.setLineWeight(AcDb::kLnWt050);
    const AcGePoint3d points[] = {{0, 0, 0}, {10, 0, 0}};
    const Parts parts = captured([&](VEXOGiWorldDraw& draw) {
        AcGiSubEntityTraits& traits = draw.subEntityTraits();
        EXPECT_EQ(static_cast<VEXOGiSubEntityTraits&>(traits).getEntityExploding(), &m_source);
        draw.geometry().polyline(2, points);
        traits.setColor(5);
        traits.setLineType(dashed);
        traits.setLineWeight(AcDb::kLnWt013);
        traits.setLineTypeScale(4.0);
        traits.setThickness(7.0);
        traits.setTrueColor(AcCmEntityColor(1, 2, 3));
        traits.setLayer(database().layerZero());
        draw.geometry().polyline(2, points);
        EXPECT_EQ(traits.thickness(), 7.0);
        EXPECT_TRUE(traits.layerId().isNull());
        EXPECT_EQ(traits.trueColor().bits(), 0xC2000000u);
    });
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0]->colorIndex(), 3);
    EXPECT_EQ(parts[0]->lineWeight(), AcDb::kLnWt050);
    EXPECT_EQ(parts[0]->linetypeScale(), 2.0);
    EXPECT_EQ(parts[1]->colorIndex(), 5);
    EXPECT_EQ(parts[1]->lineWeight(), AcDb::kLnWt013);
    EXPECT_EQ(parts[1]->linetypeScale(), 4.0);
    EXPECT_EQ(parts[1]->linetypeId(), dashed);
    EXPECT_EQ(static_cast<const AcDbLine&>(*parts[1]).thickness(), 0.0);
    for (const auto& part : parts) EXPECT_EQ(part->layerId(), layer);
}

// A run in a colour of its own leaves the look as it was to what comes behind it.
TEST_F(WorldDraw, RunsOfTextsHaveTheirColours) {
    m_source.setColorIndex(3);
    AcDbMText text;
    text.setTextHeight(1.0);
    text.setContents(L"ab{\\C1;cd}ef");
    const Parts parts = captured([&](VEXOGiWorldDraw& draw) {
        text.worldDraw(&draw);
        draw.geometry().circle({0, 0, 0}, 1.0, up);
    });
    ASSERT_EQ(kindsOf(parts), "MText MText MText Circle ");
    const int colors[] = {3, 1, 3, 3};
    for (std::size_t i = 0; i < parts.size(); ++i) EXPECT_EQ(parts[i]->colorIndex(), colors[i]) << i;
}

// Tables, arrows and the like draw blocks: each piece stands in its place, by-block ones in the look around.
TEST_F(WorldDraw, BlocksGiveTheirPiecesWhereTheyStand) {
    const AcDbObjectId block = drawingtest::addRecord<AcDbBlockTable>(database(), L"Arrow");
    for (const int color : {0, 2}) {
        auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
        line->setColorIndex(static_cast<Adesk::UInt16>(color));
        drawingtest::append(block, line);
    }
    const Parts parts = captured([&](VEXOGiWorldDraw& draw) {
        draw.subEntityTraits().setColor(5);
        hostkit::drawBlock(draw, block, AcGeMatrix3d::translation({10, 0, 0}));
    });
    ASSERT_EQ(kindsOf(parts), "Line Line ");
    EXPECT_EQ(parts[0]->colorIndex(), 5);
    EXPECT_EQ(parts[1]->colorIndex(), 2);
    EXPECT_EQ(static_cast<const AcDbLine&>(*parts[0]).endPoint(), AcGePoint3d(11, 0, 0));
}

TEST_F(WorldDraw, DrawablesAreHandedOnAndListsAreAppendedTo) {
    VEXOGiWorldDraw draw(&m_source);
    auto circle = std::make_unique<AcDbCircle>(), other = std::make_unique<AcDbCircle>();
    EXPECT_TRUE(draw.geometry().draw(circle.get()));
    draw.appendAcDbEnts(other.get());
    draw.appendAcDbEnts(nullptr);
    AcArray<void*> entities;
    entities.append(nullptr);
    draw.getAcDbEnts(entities);
    ASSERT_EQ(entities.length(), 3);
    EXPECT_EQ(entities[1], static_cast<AcDbEntity*>(circle.get()));
    EXPECT_EQ(entities[2], static_cast<AcDbEntity*>(other.get()));
    EXPECT_EQ(draw.regenType(), 5);
    EXPECT_EQ(draw.deviation(kAcGiMaxDevForCurve, {1, 2, 3}), 0.0001);
    EXPECT_EQ(draw.rawGeometry(), &draw.geometry());
}

} // namespace
