#include "vexoamodelertools.h"

#include "contourcases.h"
#include "dbextents.h"
#include "dbline.h"
#include "temporaryfolder.h"
#include "tracefile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

using namespace contourcases;
using AModeler::Body;
using AModeler::Edge;
using AModeler::Face;
using Tools = VEXOAModelerTools;
using OwnedBody = std::unique_ptr<Body>;

namespace {

struct Arcs {
    AcArray<AcGePoint3d> points;
    AcArray<double> heights;
};

/// Heights positive to the left of the run; the host's bulge has the other sign.
Arcs arcsOf(const Vertices& vertices, double elevation) {
    Arcs arcs;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const auto &a = vertices[i], &b = vertices[(i + 1) % vertices.size()];
        arcs.points.append({a[0], a[1], elevation});
        arcs.heights.append(-a[2] * std::hypot(b[0] - a[0], b[1] - a[1]) / 2);
    }
    return arcs;
}

/// Of the polygon whose arcs are as many chords as their share of a circle's sides, from angles and radii
/// alone.
double facettedArea(const Vertices& vertices, double deflection) {
    double sum = 0.0;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const auto &a = vertices[i], &b = vertices[(i + 1) % vertices.size()];
        sum += (a[0] * b[1] - b[0] * a[1]) / 2;
        if (a[2] == 0.0) continue;
        const double angle = 4 * std::atan(std::abs(a[2]));
        const double radius = std::hypot(b[0] - a[0], b[1] - a[1]) / 2 / std::sin(angle / 2);
        int sides = 5;
        while (sides < 256 && radius * (1 - std::cos(kPi / sides)) > deflection) ++sides;
        const double facets = std::max(1.0, std::ceil(sides * angle / (2 * kPi)));
        const double segment = radius * radius / 2 * (facets * std::sin(angle / facets) - std::sin(angle));
        sum += a[2] > 0.0 ? segment : -segment;
    }
    return sum;
}

OwnedBody prism(const Vertices& vertices, const AcGeVector3d& extrusion, double elevation = 0.0) {
    return OwnedBody(Tools::makeBodyFromPolygonalContour(arcsOf(vertices, elevation).points, extrusion));
}

OwnedBody box(double x, double y, double z, double size) {
    return prism(rectangle(x, y, size, size), {0, 0, size}, z);
}

std::vector<AcGePoint3d> cornersOf(const Body& body) {
    std::vector<AcGePoint3d> points;
    for (const AModeler::Vertex* v = body.vertexList(); v; v = v->next()) points.push_back(v->point());
    return points;
}

bool areSameCorners(const std::vector<AcGePoint3d>& a, const std::vector<AcGePoint3d>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(AcGePoint3d)) == 0;
}

/// A face no longer flat: the modeller refuses it.
OwnedBody bentBox() {
    OwnedBody bent = box(0.5, 0.5, 0.5, 1);
    bent->vertexList()->setPoint({0.4, 0.4, 0.7});
    Tools::evaluateFacePlanes(*bent);
    return bent;
}

/// A slab of 10 x 10 x 1 with that many square openings in a row.
OwnedBody slabWithOpenings(int count) {
    OwnedBody slab = prism(rectangle(0, 0, 10, 10), {0, 0, 1});
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(Tools::subBodys(slab.get(), prism(rectangle(1 + 2 * i, 4, 1, 1), {0, 0, 1}).get()));
    return slab;
}

template <class F>
void forEachEdge(const Face& face, F&& f) {
    Edge* edge = face.edgeLoop();
    do {
        f(*edge);
        edge = edge->next();
    } while (edge != face.edgeLoop());
}

const AcGeVector3d kUp(0, 0, 1);

} // namespace

TEST(ModelerBridge, PrismsHaveTheVolumeOfTheirFacets) {
    std::mt19937 random(151);
    std::uniform_real_distribution<double> any(-1, 1);
    for (int round = 0; round < 150; ++round) {
        SCOPED_TRACE(round);
        const double deflection = std::pow(10.0, -2 - any(random));
        const Vertices contour =
            moved(randomContour(random, 6 + 3 * (round % 6)), round, 1e4 * (round % 3), 30);
        const AcGeVector3d extrusion(any(random), any(random), round % 2 ? 2.5 : -2.5);
        const Vertices given = round % 4 < 2 ? contour : reversed(contour);
        const Arcs arcs = arcsOf(given, 7);
        // Of a reversed contour the closing side is straight only when it was the first one's neighbour.
        if (arcs.heights.last() != 0.0) continue;
        const OwnedBody body(
            Tools::makeBodyFromPolygonalContourWithArcs(arcs.points, arcs.heights, extrusion, deflection, 0));
        ASSERT_TRUE(body);
        const double wanted = std::abs(facettedArea(given, deflection)) * 2.5;
        EXPECT_NEAR(body->volume(), wanted, 1e-9 * wanted);
        EXPECT_TRUE(Tools::isValidBody(*body, 1));
    }
    Arcs warped = arcsOf(rectangle(0, 0, 4, 2), 0);
    warped.points[3].z = 0.01;
    const OwnedBody flat(
        Tools::makeBodyFromPolygonalContourWithArcs(warped.points, warped.heights, kUp, 0.01, 0));
    ASSERT_TRUE(flat);
    EXPECT_NEAR(flat->volume(), 8, 1e-9);
    // The closing arc rises to the other side than its height says: a half disc goes from the square, not on
    // to it.
    const Vertices square = rectangle(0, 0, 2, 2);
    Vertices closing = square;
    closing[3][2] = 1;
    Vertices inward = square;
    inward[3][2] = -1;
    const Arcs arcs = arcsOf(closing, 0);
    const OwnedBody body(
        Tools::makeBodyFromPolygonalContourWithArcs(arcs.points, arcs.heights, kUp, 1e-3, 0));
    ASSERT_TRUE(body);
    EXPECT_NEAR(body->volume(), facettedArea(inward, 1e-3), 1e-9);
}

TEST(ModelerBridge, ContoursThatAreNone) {
    const OwnedBody disc(Tools::makeBodyFromPolygonalContourWithArcs(
        pointsOf({{1, 2, 3}}),
        [] {
            AcArray<double> radius;
            radius.append(2.0);
            return radius;
        }(),
        {0, 0, -4}, 0.01, 0));
    ASSERT_TRUE(disc);
    EXPECT_NEAR(disc->volume(), 32 * 4 * 2 * std::sin(2 * kPi / 32), 1e-9); // 32: sides for 0.01 on 2
    const struct {
        const char* name;
        Vertices vertices;
        AcGeVector3d extrusion;
    } cases[] = {{"nothing", {}, kUp},
                 {"a circle without a radius", {{0, 0, 0}}, kUp},
                 {"two arcs", circle(0, 0, 1), kUp},
                 {"one line", corners({0, 0, 1, 1, 2, 2}), kUp},
                 {"crosses itself", corners({0, 0, 2, 2, 2, 0, 0, 2}), kUp},
                 {"a spike", corners({0, 0, 2, 0, 2, 2, 2, 5, 2, 2, 0, 2}), kUp},
                 {"a point twice", corners({0, 0, 0, 0, 2, 0, 2, 2}), kUp},
                 {"along the extrusion", rectangle(0, 0, 1, 1), {1, 1, 0}},
                 {"no height", rectangle(0, 0, 1, 1), {0, 0, 0}},
                 {"no number", {{0, 0, 0}, {1, kNaN, 0}, {1, 1, 0}}, kUp}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Arcs arcs = arcsOf(c.vertices, 0);
        EXPECT_EQ(Tools::makeBodyFromPolygonalContour(arcs.points, c.extrusion), nullptr);
        EXPECT_EQ(
            Tools::makeBodyFromPolygonalContourWithArcs(arcs.points, arcs.heights, c.extrusion, 0.01, 0),
            nullptr);
        arcs.heights.append(0.0);
        EXPECT_EQ(
            Tools::makeBodyFromPolygonalContourWithArcs(arcs.points, arcs.heights, c.extrusion, 0.01, 0),
            nullptr);
    }
}

TEST(ModelerBridge, SidesAndCirclesOfArcs) {
    const struct {
        double radius, deflection;
        int sides;
    } cases[] = {{9e-11, 0.1, 51}, {1e-9, 1e-9, 5},  {1, 1, 5},   {1, 2, 5},  {1, 0.999, 5}, {1, 0.01, 23},
                 {100, 0.01, 223}, {300, 0.01, 256}, {1, 0, 256}, {1, -1, 5}, {1, kNaN, 5}};
    for (const auto& c : cases)
        EXPECT_EQ(Tools::getArcPointsNumber(AcGeCircArc3d({}, kUp, c.radius), c.deflection), c.sides)
            << c.radius << ' ' << c.deflection;
    for (const double angle : {0.2, kPi / 2, kPi, 4.0, 6.0}) {
        AcGeCircArc3d arc({5, 6, 7}, AcGeVector3d(1, 2, 3).normal(), AcGeVector3d(3, 0, -1), 2.0, 0.5,
                          0.5 + angle);
        int sides = 0;
        const AModeler::Circle3d circle = Tools::makeCircleData(&arc, sides, 0.05);
        EXPECT_TRUE(circle.center().isEqualTo(arc.center(), toleranceOf(1e-9))) << angle;
        EXPECT_NEAR(circle.radius(), 2.0, 1e-9);
        EXPECT_EQ(sides, 15);
    }
}

TEST(ModelerBridge, BooleansLeaveTheResultOrTheBodyAsItWas) {
    using Operation = bool (*)(Body*, const Body*);
    const struct {
        Operation operation;
        double volume, ofItself;
    } cases[] = {{Tools::addBodys, 15, 8},
                 {Tools::subBodys, 7, 0},
                 {Tools::intersectBodys, 1, 8},
                 {Tools::intersectBodysEx, 1, 8}};
    const OwnedBody open = box(1, 1, 1, 2);
    open->setFaceList(open->faceList()->next());
    const double epsilon = AModeler::gEpsAbs;
    for (const auto& c : cases) {
        OwnedBody a = box(0, 0, 0, 2), b = box(1, 1, 1, 2), same = box(0, 0, 0, 2);
        const std::vector<AcGePoint3d> before = cornersOf(*a), other = cornersOf(*b);
        EXPECT_FALSE(c.operation(nullptr, b.get()));
        EXPECT_FALSE(c.operation(a.get(), nullptr));
        EXPECT_FALSE(c.operation(a.get(), open.get()));
        EXPECT_TRUE(areSameCorners(cornersOf(*a), before));
        EXPECT_TRUE(c.operation(same.get(), same.get()));
        EXPECT_NEAR(same->volume(), c.ofItself, 1e-12);
        EXPECT_TRUE(c.operation(a.get(), b.get()));
        EXPECT_NEAR(a->volume(), c.volume, 1e-12);
        EXPECT_TRUE(areSameCorners(cornersOf(*b), other));
        EXPECT_EQ(AModeler::gEpsAbs, epsilon);
    }
}

TEST(ModelerBridge, TriesAreAsManyAsTold) {
    const OwnedBody a = box(0, 0, 0, 2), open = box(1, 1, 1, 2);
    open->setFaceList(open->faceList()->next());
    TemporaryFolder folder;
    hostkit::TraceFile trace(folder / "trace.json");
    EXPECT_FALSE(Tools::intersectBodysEx(a.get(), open.get()));
    EXPECT_FALSE(Tools::section(a.get(), AModeler::Plane()));
    ASSERT_TRUE(trace.close());
    std::map<std::string, int> calls;
    std::ifstream stream(folder / "trace.json");
    for (std::string line; std::getline(stream, line);)
        for (const char* name : {"::intersectBodys\"", "::inflate\""})
            calls[name] += line.find("\"B\"") != line.npos && line.find(name) != line.npos;
    EXPECT_EQ(calls["::intersectBodys\""], 8);
    EXPECT_EQ(calls["::inflate\""], 203);
}

TEST(ModelerBridge, HalvesOfSectionsAddUp) {
    std::mt19937 random(152);
    std::uniform_real_distribution<double> any(-1, 1);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const OwnedBody whole = prism(randomContour(random, 3 + round % 9), {0, 0, 4});
        ASSERT_TRUE(whole);
        const AcGeVector3d normal(any(random), any(random), any(random));
        // Every third plane goes through a corner.
        const AcGePoint3d through =
            round % 3 ? AcGePoint3d(any(random), any(random), 2) : AcGePoint3d(whole->vertexList()->point());
        double parts = 0.0;
        for (const double sense : {1.0, -1.0}) {
            Body half = whole->copy();
            const AModeler::Plane plane(through, normal * sense);
            ASSERT_TRUE(Tools::section(&half, plane));
            for (const AcGePoint3d& corner : cornersOf(half)) EXPECT_LE(plane.distanceTo(corner), 1e-6);
            parts += half.volume();
        }
        EXPECT_NEAR(parts, whole->volume(), 1e-5);
    }
    const OwnedBody body = box(0, 0, 0, 1), bent = bentBox();
    const std::vector<AcGePoint3d> before = cornersOf(*body), ofBent = cornersOf(*bent);
    EXPECT_FALSE(Tools::section(body.get(), AModeler::Plane()));
    EXPECT_FALSE(Tools::section(bent.get(), AModeler::Plane({0.9, 0.9, 0.9}, {1, 1, 1})));
    EXPECT_FALSE(Tools::section(nullptr, AModeler::Plane({0, 0, 0}, kUp)));
    EXPECT_TRUE(areSameCorners(cornersOf(*body), before) && areSameCorners(cornersOf(*bent), ofBent));
    Tools::inflate(body.get(), 3);
    EXPECT_NEAR(body->volume(), 27, 1e-12);
    EXPECT_TRUE(body->centerOfGravity().isEqualTo({0.5, 0.5, 0.5}));
}

TEST(ModelerBridge, EdgesOfBodiesWithOpenings) {
    for (const int openings : {0, 1, 4}) {
        const OwnedBody slab = slabWithOpenings(openings);
        const int loops = 1 + openings;
        AcArray<void*> lines;
        Tools::explodeBody(slab.get(), lines);
        Tools::explodeBody(slab.get(), lines); // marks of the first time do not count
        EXPECT_EQ(lines.length(), 2 * 12 * loops);
        for (void* each : lines) delete static_cast<AcDbCurve*>(each);
        AcGePoint3dArray middles;
        AcDbIntArray markers;
        EXPECT_EQ(
            Tools::getOsnapPoints(slab.get(), AcDb::kOsModeMid, 0, {}, {}, AcGeMatrix3d(), middles, markers),
            Acad::eOk);
        EXPECT_EQ(middles.length(), 12 * loops);

        Face* top = nullptr;
        ASSERT_TRUE(Tools::getFace(*slab, {0, 0, 5}, top));
        int bridges = 0, found = 0;
        forEachEdge(*top, [&](Edge& edge) {
            bridges += edge.isBridge();
            edge.setFlagOff(Edge::bridgeFlag);
        });
        EXPECT_EQ(bridges, 2 * openings);
        EXPECT_EQ(Tools::detectAndSetBridges(top), openings > 0);
        std::map<int, int> outlines; // how many edges are on an outline of that length
        forEachEdge(*top, [&](Edge& edge) {
            found += edge.isBridge();
            if (edge.isBridge()) return;
            int steps = 1;
            for (Edge* next = Tools::getNextSkipBridge(&edge); next != &edge && steps < 100; ++steps)
                next = Tools::getNextSkipBridge(next);
            ++outlines[steps];
        });
        EXPECT_EQ(found, bridges);
        EXPECT_EQ(outlines, (std::map<int, int>{{4, 4 * loops}}));
    }
    AcGePoint3dArray points;
    AcDbIntArray markers;
    EXPECT_EQ(
        static_cast<int>(Tools::getOsnapPoints(nullptr, AcDb::kOsModeEnd, 0, {}, {}, {}, points, markers)),
        93);
}

TEST(ModelerBridge, SnapPointsOfALine) {
    const AcDbLine line({0, 0, 0}, {4, 0, 8});
    const AcGePoint3d pick(1, 1, 0), last(10, 3, 0);
    const std::pair<AcDb::OsnapMode, std::vector<AcGePoint3d>> cases[] = {
        {AcDb::kOsModeEnd, {{0, 0, 0}, {4, 0, 8}}},
        {AcDb::kOsModeMid, {{2, 0, 4}}},
        {AcDb::kOsModeNear, {{1, 0, 2}}},
        {AcDb::kOsModePerp, {{2, 0, 4}}},
        {AcDb::kOsModeCen, {}}};
    for (const auto& [mode, wanted] : cases) {
        AcGePoint3dArray points;
        AcDbIntArray markers;
        EXPECT_EQ(line.getOsnapPoints(mode, 0, pick, last, AcGeMatrix3d(), points, markers), Acad::eOk);
        EXPECT_TRUE(std::equal(points.begin(), points.end(), wanted.begin(), wanted.end())) << mode;
    }
}

TEST(ModelerBridge, ALateralFaceTakenOutCutsTheCornerOff) {
    for (const int count : {4, 5, 9}) {
        for (int turns = 0; turns < 4; ++turns) {
            SCOPED_TRACE(turns);
            Vertices outline;
            for (int i = 0; i < count; ++i)
                outline.push_back({5 * std::cos(2 * kPi * i / count), 5 * std::sin(2 * kPi * i / count), 0});
            const OwnedBody body = prism(outline, {0, 0, 2});
            ASSERT_TRUE(body);
            Face* bottom = nullptr;
            ASSERT_TRUE(Tools::getFace(*body, -kUp, bottom));
            Face* const lateral = bottom->edgeLoop()->partner()->face();
            // Wherever the loops of the neighbours begin.
            for (Face* face = body->faceList(); face; face = face->next())
                for (int turn = 0; turn < turns && face != lateral; ++turn)
                    face->setEdgeLoop(face->edgeLoop()->next());
            EXPECT_FALSE(Tools::deleteLateralFace(*body, nullptr, lateral));
            if (count > 4) {
                EXPECT_FALSE(Tools::deleteLateralFace(*body, bottom, lateral));
            }
            ASSERT_TRUE(Tools::deleteLateralFace(*body, lateral, bottom));
            EXPECT_EQ(body->faceCount(), count + 1);
            EXPECT_EQ(body->vertexCount(), 2 * count - 2);
            EXPECT_TRUE(body->isValid(-1) && Tools::isValidBody(*body, 1));
            // A regular polygon without one of its triangles at the rim.
            const double angle = 2 * kPi / count;
            const double area =
                12.5 * (count * std::sin(angle) - (2 * std::sin(angle) - std::sin(2 * angle)));
            EXPECT_NEAR(body->volume(), 2 * area, 1e-9);
            EXPECT_NEAR(body->copy().volume(), 2 * area, 1e-9);
        }
    }
}

TEST(ModelerBridge, FacetsOfAnArcAreOneSide) {
    Vertices beginsWithAnArc = capsule(0, 0, 3, 1);
    std::rotate(beginsWithAnArc.begin(), beginsWithAnArc.begin() + 1, beginsWithAnArc.end());
    const Arcs arcs = arcsOf(beginsWithAnArc, 0);
    const OwnedBody body(
        Tools::makeBodyFromPolygonalContourWithArcs(arcs.points, arcs.heights, kUp, 0.01, 0));
    ASSERT_TRUE(body);
    Face* top = nullptr;
    ASSERT_TRUE(Tools::getFace(*body, kUp, top));
    std::map<int, std::set<const AModeler::Surface*>> surfaces;
    forEachEdge(*top, [&](Edge& edge) {
        const int side = Tools::getSideIndexInContour(&edge, top);
        EXPECT_EQ(Tools::getSideIndexInContour(edge.partner(), top), side);
        surfaces[side].insert(edge.partner()->surface());
        Face* const facet = edge.partner()->face();
        EXPECT_TRUE(Tools::isHorizontalEdge(&edge) && !Tools::isVerticalEdge(&edge));
        EXPECT_TRUE(Tools::isVerticalEdge(facet->edgeLoop()) !=
                    Tools::isVerticalEdge(facet->edgeLoop()->next()));
        Edge* found = nullptr;
        EXPECT_TRUE(Tools::getEdge(facet, edge.point(), found) && found->vertex() == edge.vertex());
    });
    for (int side = 0; side < 4; ++side) EXPECT_EQ(surfaces[side].size(), 1U) << side;
    EXPECT_EQ(surfaces.begin()->first, 0);
    EXPECT_EQ(surfaces.rbegin()->first, 3);
    EXPECT_TRUE(surfaces[0].count(nullptr)); // the body's loops begin with a straight side
    EXPECT_EQ(Tools::getSideIndexInContour(top->edgeLoop()->partner()->next(), top), -1);
    Edge* none = top->edgeLoop();
    EXPECT_FALSE(Tools::getEdge(top, {9, 9, 9}, none) || none);
    Face* face = nullptr;
    EXPECT_FALSE(Tools::getFace(*body, top->edgeLoop(), -kUp, true, face));
    EXPECT_TRUE(Tools::getFace(*body, top->edgeLoop(), -kUp, false, face) && face == top);
    const OwnedBody cube = box(0, 0, 0, 1);
    ASSERT_TRUE(Tools::getFace(*cube, kUp, top));
    std::vector<Face*> faces;
    Tools::getAllFacesContainingPoint(cube.get(), {50, 60, 1.5}, faces, 0.6);
    EXPECT_EQ(faces, std::vector<Face*>{top}); // however far outside of its outline
    AcDbExtents extents;
    EXPECT_TRUE(Tools::getGeomExtentsOfBody(body.get(), extents));
    EXPECT_NEAR(extents.maxPoint().z, 1.00001, 1e-12);
    EXPECT_FALSE(Tools::getGeomExtentsOfBody(bentBox().get(), extents));
    Body empty;
    EXPECT_FALSE(Tools::getGeomExtentsOfBody(&empty, extents));
    EXPECT_FALSE(Tools::isValidBody(*bentBox(), 1));
    EXPECT_TRUE(Tools::isValidBody(*bentBox(), 2) && Tools::isValidBody(*bentBox(), 0));
}

TEST(ModelerBridge, CodesHaveTheirNamesAndOthersTheModellersText) {
    int rows = 0;
    for (const auto* row = Tools::ErrorMessages; row->code != 0; ++row, ++rows)
        EXPECT_STREQ(Tools::getErrorMsg(row->code), row->text);
    EXPECT_EQ(rows, 129);
    EXPECT_STREQ(Tools::getErrorMsg(AModeler::ErrorCode(128)),
                 L"eArcByRadiusNotAllowedForPathPolygons_UseArc3d");
    for (const auto code : {AModeler::eOk, AModeler::ErrorCode(127)})
        EXPECT_STREQ(Tools::getErrorMsg(code), AModeler::errorString(code));
}
