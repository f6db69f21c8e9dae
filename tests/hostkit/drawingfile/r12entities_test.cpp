// What stands for newer kinds in R12: against formulas of the shapes, not against the code that makes them.
#include "drawingfiles.h"
#include "drawinglisting.h"
#include "hatchstrokes.h"
#include "r12entities.h"

#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbellipse.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbmtext.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbsolid.h"
#include "dbspline.h"
#include "dbtext.h"

#include <cmath>
#include <random>

using namespace hostkit;
using namespace drawingtest;

namespace {

std::vector<AcGePoint3d> pointsOf(const AcDbEntity& entity) {
    std::vector<AcGePoint3d> points;
    if (const auto* const flat = AcDb2dPolyline::cast(&entity)) {
        for (std::size_t place = 0; place < flat->vertices().count(); ++place)
            points.push_back(flat->vertexPosition(*AcDb2dVertex::cast(flat->vertices().at(place))));
        if (flat->isClosed()) points.push_back(points.front());
    } else if (const auto* const spatial = AcDb3dPolyline::cast(&entity)) {
        for (std::size_t place = 0; place < spatial->vertices().count(); ++place)
            points.push_back(AcDb3dPolylineVertex::cast(spatial->vertices().at(place))->position());
        if (spatial->isClosed()) points.push_back(points.front());
    }
    return points;
}

double distanceTo(const std::vector<AcGePoint3d>& chain, const AcGePoint3d& point) {
    double best = HUGE_VAL;
    for (std::size_t place = 0; place + 1 < chain.size(); ++place) {
        const AcGeVector3d side = chain[place + 1] - chain[place];
        const double length = side.dotProduct(side);
        const double t =
            length > 0.0 ? std::clamp((point - chain[place]).dotProduct(side) / length, 0.0, 1.0) : 0.0;
        best = std::min(best, (point - (chain[place] + side * t)).length());
    }
    return best;
}

double shoelace(const std::vector<AcGePoint2d>& corners) {
    double sum = 0.0;
    for (std::size_t place = 0; place < corners.size(); ++place) {
        const AcGePoint2d& next = corners[(place + 1) % corners.size()];
        sum += corners[place].x * next.y - next.x * corners[place].y;
    }
    return std::abs(sum) / 2.0;
}

AcGePoint2dArray arrayOf(const std::vector<AcGePoint2d>& points) {
    AcGePoint2dArray array;
    for (const AcGePoint2d& point : points) array.append(point);
    return array;
}

} // namespace

TEST(R12Entities, chordsOfEllipsesAreWithinWhatIsSaid) {
    const AcDbDatabase database(true, true);
    const R12Entities older(database);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-100.0, 100.0);
    for (int round = 0; round < 60; ++round) {
        const AcGePoint3d center(any(random), any(random), any(random));
        const AcGeVector3d normal =
            round % 2 ? AcGeVector3d::kZAxis : AcGeVector3d(any(random), any(random), any(random)).normal();
        const AcGeVector3d major = normal.perpVector() * (5.0 + std::abs(any(random)));
        const double ratio = 0.05 + std::abs(any(random)) / 110.0;
        const double start = round % 3 ? 0.3 : 0.0;
        const double end = round % 3 ? 4.1 : 2.0 * M_PI;
        const AcDbEllipse ellipse(center, normal, major, ratio, start, end);
        const OlderEntities turned = older.turn(ellipse);
        ASSERT_EQ(turned.entities.size(), 1u);
        EXPECT_EQ(turned.kind, L"POLYLINE");
        const bool isFlat = turned.entities[0]->isKindOf(AcDb2dPolyline::desc());
        EXPECT_EQ(isFlat, round % 2 == 1);
        const std::vector<AcGePoint3d> chain = pointsOf(*turned.entities[0]);
        const AcGeVector3d minor = normal.crossProduct(major) * ratio;
        const double tolerance = older.chordTolerance(ellipse);
        EXPECT_LE(tolerance, 2.0 * std::sqrt(3.0) * major.length() * 1e-3);
        for (int step = 0; step <= 400; ++step) {
            const double t =
                ellipse.startParam() + (ellipse.endParam() - ellipse.startParam()) * step / 400.0;
            ASSERT_LE(distanceTo(chain, center + major * std::cos(t) + minor * std::sin(t)), tolerance * 1.01)
                << round;
        }
    }
}

TEST(R12Entities, aPolylineKeepsItsShapeAndLook) {
    const AcDbDatabase database(true, true);
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {1, 2}, 0.5, 0.1, 0.2);
    polyline.addVertexAt(1, {5, 2}, 0.0, 0.3, 0.4);
    polyline.addVertexAt(2, {5, 8}, -1.0);
    polyline.setClosed(true);
    (void)polyline.setElevation(3.5);
    (void)polyline.setThickness(0.25);
    (void)polyline.setNormal({0, 0, -1});
    (void)polyline.setColorIndex(3);
    const OlderEntities turned = R12Entities(database).turn(polyline);
    ASSERT_EQ(turned.entities.size(), 1u);
    const auto* const older = AcDb2dPolyline::cast(turned.entities[0].get());
    ASSERT_TRUE(older);
    EXPECT_TRUE(older->isClosed());
    EXPECT_EQ(older->elevation(), 3.5);
    EXPECT_EQ(older->thickness(), 0.25);
    EXPECT_EQ(older->colorIndex(), 3);
    ASSERT_EQ(older->vertices().count(), 3u);
    for (double t = 0.0; t < 3.0; t += 0.125) {
        AcGePoint3d mine;
        AcGePoint3d its;
        ASSERT_EQ(older->getPointAtParam(t, mine), Acad::eOk);
        ASSERT_EQ(polyline.getPointAtParam(t, its), Acad::eOk);
        EXPECT_LE((mine - its).length(), 1e-12);
    }
    const auto* const first = AcDb2dVertex::cast(older->vertices().at(0));
    EXPECT_EQ(first->startWidth(), 0.1);
    EXPECT_EQ(first->endWidth(), 0.2);
}

// A fill has the area of what it fills, and lines at a distance s a length of about that area divided by s.
TEST(R12Entities, hatchesFillWhatTheirLoopsEnclose) {
    const std::vector<AcGePoint2d> outer = {{0, 0}, {40, 0}, {40, 10}, {15, 10}, {15, 30}, {0, 30}};
    const std::vector<AcGePoint2d> hole = {{3, 3}, {11, 4}, {10, 20}, {4, 22}};
    const std::vector<AcGePoint2d> island = {{5, 6}, {8, 6}, {7, 12}};
    for (const auto style : {AcDbHatch::kNormal, AcDbHatch::kOuter, AcDbHatch::kIgnore}) {
        SCOPED_TRACE(style);
        AcDbHatch hatch;
        for (const auto* loop : {&outer, &hole, &island})
            ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal | AcDbHatch::kPolyline, arrayOf(*loop),
                                       AcGeDoubleArray()),
                      Acad::eOk);
        (void)hatch.setHatchStyle(style);
        const double area = style == AcDbHatch::kNormal  ? shoelace(outer) - shoelace(hole) + shoelace(island)
                            : style == AcDbHatch::kOuter ? shoelace(outer) - shoelace(hole)
                                                         : shoelace(outer);
        double filled = 0.0;
        for (const HatchFigure::Trapezoid& corner : HatchFigure(hatch, 1e-3).trapezoids(1000))
            filled += shoelace({corner[0], corner[1], corner[3], corner[2]});
        EXPECT_NEAR(filled, area, 1e-9);
        for (const double angle : {0.0, 0.7, 2.5}) {
            const double step = 0.05;
            HatchPatternLine family;
            family.angle = angle;
            family.base = {0.013, 0.007};
            family.offset = AcGeVector2d(-std::sin(angle) * step, std::cos(angle) * step);
            ASSERT_EQ(hatch.setPatternDefinitions({family}), Acad::eOk);
            const auto lengthOf = [&] {
                double length = 0.0;
                for (const HatchFigure::Stroke& stroke : HatchFigure(hatch, 1e-3).strokes(100000))
                    length += (stroke.to - stroke.from).length();
                return length;
            };
            EXPECT_NEAR(lengthOf() * step, area, area * 0.01);
            family.dashes = {0.3, -0.1};
            (void)hatch.setPatternDefinitions({family});
            EXPECT_NEAR(lengthOf() * step, area * 0.75, area * 0.01);
        }
        EXPECT_TRUE(HatchFigure(hatch, 1e-3).strokes(10).empty());
    }
}

TEST(R12Entities, aHatchOfATiltedPlaneLiesInIt) {
    const AcDbDatabase database(true, true);
    AcDbHatch hatch;
    (void)hatch.appendLoop(AcDbHatch::kExternal | AcDbHatch::kPolyline, arrayOf({{0, 0}, {4, 0}, {4, 3}}),
                           AcGeDoubleArray());
    (void)hatch.setPattern(AcDbHatch::kPreDefined, L"SOLID");
    (void)hatch.setElevation(5.0);
    (void)hatch.setNormal({0, 1, 0});
    const OlderEntities turned = R12Entities(database).turn(hatch);
    EXPECT_EQ(turned.kind, L"SOLID");
    ASSERT_FALSE(turned.entities.empty());
    for (const auto& entity : turned.entities)
        for (Adesk::UInt16 place = 0; place < 4; ++place) {
            AcGePoint3d point;
            ASSERT_EQ(AcDbSolid::cast(entity.get())->getPointAt(place, point), Acad::eOk);
            EXPECT_NEAR(point.y, 5.0, 1e-12);
        }
}

TEST(R12Entities, paragraphsBecomeLinesAtTheirAnchor) {
    const AcDbDatabase database(true, true);
    AcDbMText text;
    (void)text.setTextHeight(2.5);
    (void)text.setLocation({10, 20, 0});
    (void)text.setRotation(M_PI / 2);
    (void)text.setContents(L"{\\fArial|b1;Dalle} 20\\PA\\S1/2;\\P\\PB");
    const std::pair<AcDbMText::AttachmentPoint, AcDb::TextHorzMode> cases[] = {
        {AcDbMText::kTopLeft, AcDb::kTextLeft},
        {AcDbMText::kMiddleCenter, AcDb::kTextCenter},
        {AcDbMText::kBottomRight, AcDb::kTextRight}};
    for (const auto& [attachment, mode] : cases) {
        SCOPED_TRACE(attachment);
        (void)text.setAttachment(attachment);
        const OlderEntities turned = R12Entities(database).turn(text);
        ASSERT_EQ(turned.entities.size(), 3u) << "a line without letters has none";
        const wchar_t* const shown[] = {L"Dalle 20", L"A1/2", L"B"};
        for (std::size_t place = 0; place < 3; ++place) {
            const auto* const line = AcDbText::cast(turned.entities[place].get());
            ASSERT_TRUE(line);
            EXPECT_EQ(line->text(), shown[place]);
            EXPECT_EQ(line->horizontalMode(), mode);
            const AcGePoint3d anchor = mode == AcDb::kTextLeft ? line->position() : line->alignmentPoint();
            EXPECT_NEAR(anchor.y, 20.0, 1e-9) << "upright: the anchor is at the height of the location";
            if (place == 0) continue;
            EXPECT_GT(anchor.x, AcDbText::cast(turned.entities[0].get())->position().x);
        }
    }
}

// What the codes of a paragraph ask for goes before the box.
TEST(R12Entities, paragraphsAlignThemselvesInTheBox) {
    const AcDbDatabase database(true, true);
    AcDbMText text;
    (void)text.setTextHeight(1.0);
    (void)text.setWidth(30.0);
    (void)text.setContents(L"left\\P\\pxqc;middle\\Pstill\\P\\pi0,qr;right\\P\\pql;left again\\\\P");
    const std::pair<AcDb::TextHorzMode, double> expected[] = {{AcDb::kTextLeft, 0.0},
                                                              {AcDb::kTextCenter, 15.0},
                                                              {AcDb::kTextCenter, 15.0},
                                                              {AcDb::kTextRight, 30.0},
                                                              {AcDb::kTextLeft, 0.0}};
    for (const auto attachment : {AcDbMText::kTopLeft, AcDbMText::kTopCenter, AcDbMText::kTopRight}) {
        SCOPED_TRACE(attachment);
        (void)text.setAttachment(attachment);
        const double left = -15.0 * (attachment - AcDbMText::kTopLeft);
        const OlderEntities turned = R12Entities(database).turn(text);
        ASSERT_EQ(turned.entities.size(), std::size(expected));
        for (std::size_t place = 1; place < std::size(expected); ++place) { // the first follows the box
            const auto* const line = AcDbText::cast(turned.entities[place].get());
            const auto& [mode, offset] = expected[place];
            EXPECT_EQ(line->horizontalMode(), mode) << place;
            const double at = mode == AcDb::kTextLeft ? line->position().x : line->alignmentPoint().x;
            EXPECT_NEAR(at, left + offset, 1e-9) << place;
        }
    }
}

// A form without an alignment asks for none, whatever the text begins with; every line end ends a paragraph.
TEST(R12Entities, paragraphsWithoutAnAlignmentFollowTheBox) {
    const AcDbDatabase database(true, true);
    AcDbMText text;
    (void)text.setContents(L"rest\\pi1;of it\\N\\pqc;middle\nstill");
    const OlderEntities turned = R12Entities(database).turn(text);
    ASSERT_EQ(turned.entities.size(), 3u);
    for (std::size_t place = 0; place < 3; ++place)
        EXPECT_EQ(AcDbText::cast(turned.entities[place].get())->horizontalMode(),
                  place == 0 ? AcDb::kTextLeft : AcDb::kTextCenter)
            << place;
}

TEST(R12Entities, leadersAndWhatABlockDrawsAreKept) {
    const std::string common = group(100, "AcDbEntity") + group(8, "Notes");
    const std::string leader = group(0, "LEADER") + common +
                               groups({{100, "AcDbLeader"},
                                       {3, "STANDARD"},
                                       {71, "1"},
                                       {76, "3"},
                                       {10, "0.0"},
                                       {20, "0.0"},
                                       {30, "0.0"},
                                       {10, "5.0"},
                                       {20, "5.0"},
                                       {30, "0.0"},
                                       {10, "9.0"},
                                       {20, "5.0"},
                                       {30, "0.0"},
                                       {211, "1.0"},
                                       {221, "0.0"},
                                       {231, "0.0"}});
    const std::string table = group(0, "ACAD_TABLE") + common +
                              groups({{100, "AcDbBlockReference"},
                                      {2, "*T1"},
                                      {10, "7.0"},
                                      {20, "8.0"},
                                      {30, "0.0"},
                                      {100, "AcDbTable"},
                                      {11, "1.0"},
                                      {21, "0.0"},
                                      {31, "0.0"}});
    const auto database = openDrawingFromMemory(header("AC1018") + section("BLOCKS", block("*T1", line())) +
                                                    entities(leader + table),
                                                L"old", nullptr, quietReading);
    ASSERT_TRUE(database);
    const std::string older = saved(*database, DrawingVersion::kR12);
    EXPECT_EQ(countOf(older, "SEQEND"), 1u) << "the polyline's";
    EXPECT_EQ(countOf(older, "*T1"), 3u) << "twice with the block, and once with its reference";
    const auto again = openDrawingFromMemory(older, L"again", nullptr, quietReading);
    ASSERT_TRUE(again);
    const auto listed = listDrawing(*again).entities;
    ASSERT_GE(listed.size(), 2u);
    EXPECT_EQ(listed[0].type, L"POLYLINE");
    EXPECT_EQ(listed[0].layer, L"Notes");
    using Vertices = std::vector<std::array<double, 4>>;
    EXPECT_EQ(listed[0].vertices, (Vertices{{0, 0, 0, 0}, {5, 5, 0, 0}, {9, 5, 0, 0}}));
    EXPECT_EQ(listed[1].type, L"INSERT");
    EXPECT_EQ(listed[1].name, L"*T1");
    EXPECT_EQ(listed[1].vertices, (Vertices{{7, 8, 0, 0}}));
}

TEST(R12Entities, unboundedLinesAreCutToTheDrawing) {
    AcDbDatabase database(true, true);
    auto* const space = AcDbBlockTableRecord::cast(DatabaseAccess::object(database.modelSpaceId()));
    for (const auto& [from, to] : {std::pair(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)),
                                   std::pair(AcGePoint3d(10, 0, 0), AcGePoint3d(10, 4, 0))})
        DatabaseAccess::appendToBlock(
            *space, DatabaseAccess::add(database, new AcDbLine(from, to), 0, space->objectId()));
    const R12Entities older(database);
    AcDbRay ray;
    (void)ray.setBasePoint({5, 2, 0});
    (void)ray.setUnitDir({1, 0, 0});
    OlderEntities turned = older.turn(ray);
    ASSERT_EQ(turned.entities.size(), 1u);
    const auto* const line = AcDbLine::cast(turned.entities[0].get());
    EXPECT_EQ(line->startPoint(), AcGePoint3d(5, 2, 0));
    EXPECT_EQ(line->endPoint(), AcGePoint3d(10, 2, 0));
    (void)ray.setBasePoint({11, 2, 0});
    EXPECT_TRUE(older.turn(ray).entities.empty());
}
