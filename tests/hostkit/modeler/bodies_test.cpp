// Half-edge bodies: bridges, partners, prisms with arcs, measures and triangles, asked against areas of the
// outlines.
#include "amodeler.h"
#include "gearc3d.h"
#include "placements.h"
#include "polyhedron.h"

#include <gtest/gtest.h>

#include <map>
#include <numeric>
#include <set>

namespace {

using namespace AModeler;
using hostkit::modeler::Polyhedron;
using Ring = std::vector<AcGePoint3d>;

double areaOf(const Ring& ring) {
    double area = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const AcGePoint3d &a = ring[i], &b = ring[(i + 1) % ring.size()];
        area += (a.x * b.y - a.y * b.x) / 2;
    }
    return area;
}

/// Rings seen from above, the outer one first, holes clockwise; points of one place are one point.
Polyhedron prismOf(const std::vector<Ring>& rings, double height) {
    Polyhedron body;
    std::map<std::array<double, 3>, Polyhedron::Index> known;
    const auto numberOf = [&](const AcGePoint3d& p) {
        const auto [at, isNew] =
            known.try_emplace({p.x, p.y, p.z}, static_cast<Polyhedron::Index>(body.points.size()));
        if (isNew) body.points.push_back(p);
        return at->second;
    };
    const auto addLoop = [&](const Ring& ring) {
        for (const AcGePoint3d& p : ring) body.corners.push_back(numberOf(p));
        body.loopStarts.push_back(static_cast<Polyhedron::Index>(body.corners.size()));
        ++body.faces.back().loopCount;
    };
    const auto addFace = [&](const AcGeVector3d& normal, const AcGePoint3d& on) {
        body.faces.push_back(
            {normal.normal(), normal.normal().dotProduct(on.asVector()), body.loopCount(), 0});
    };
    const AcGeVector3d up(0, 0, height);
    addFace(AcGeVector3d::kZAxis, rings[0][0] + up);
    for (Ring ring : rings) {
        for (AcGePoint3d& p : ring) p += up;
        addLoop(ring);
    }
    addFace(-AcGeVector3d::kZAxis, rings[0][0]);
    for (const Ring& ring : rings) addLoop(Ring(ring.rbegin(), ring.rend()));
    for (const Ring& ring : rings)
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const AcGePoint3d &a = ring[i], &b = ring[(i + 1) % ring.size()];
            addFace((b - a).crossProduct(up), a);
            addLoop({a, b, b + up, a + up});
        }
    return body;
}

/// Sums over the triangles: they turn the right way, each side has its reverse, and their fans give the
/// volume.
double volumeOfTriangles(const Body& body) {
    double volume = 0;
    std::map<std::pair<const Vertex*, const Vertex*>, int> sides;
    const Point3d about = body.vertexList()->point();
    for (const Body::Triangle& triangle : body.triangles()) {
        const auto& [a, b, c] = triangle.corners;
        const AcGeVector3d across = (b->point() - a->point()).crossProduct(c->point() - a->point());
        EXPECT_GT(across.dotProduct(triangle.face->plane().normal()), -1e-6);
        volume += (a->point() - about).dotProduct((b->point() - about).crossProduct(c->point() - about)) / 6;
        for (auto [from, to] : {std::pair(a, b), std::pair(b, c), std::pair(c, a)}) {
            ++sides[{from, to}];
            --sides[{to, from}];
        }
    }
    for (const auto& [side, surplus] : sides) EXPECT_EQ(surplus, 0);
    return volume;
}

using Loops = std::multiset<std::vector<std::array<double, 3>>>;
Loops loopsOf(const Polyhedron& body) {
    Loops loops;
    for (Polyhedron::Index i = 0; i < body.loopCount(); ++i) {
        std::vector<std::array<double, 3>> loop;
        for (auto corner = body.loopStarts[i]; corner < body.loopStarts[i + 1]; ++corner) {
            const AcGePoint3d& p = body.points[body.corners[corner]];
            loop.push_back({p.x, p.y, p.z});
        }
        std::rotate(loop.begin(), std::min_element(loop.begin(), loop.end()), loop.end());
        loops.insert(loop);
    }
    return loops;
}

/// A star within 1 of the middle, its points on multiples of 1/8. With `touching` its corners to the left and
/// right reach their neighbours'.
Ring starAt(placements::Random& random, double x, double y, bool touching, int corners) {
    Ring ring;
    for (int i = 0; i < corners; ++i) {
        const bool isSide = touching && (i == 0 || 2 * i == corners);
        const double angle = 2 * AcGe::kPi * i / corners, r = isSide ? 1 : random.between(0.4, 0.9);
        const AcGePoint3d p(x + std::round(8 * r * std::cos(angle)) / 8,
                            y + std::round(8 * r * std::sin(angle)) / 8, 0);
        if (ring.empty() || !(p == ring.back())) ring.push_back(p);
    }
    return ring;
}

TEST(Bodies, holesOfAllKindsAreBridgedAndTakenApartAgain) {
    placements::Random random(15);
    const std::vector<AcGeMatrix3d> moves = placements::ofSpace();
    for (int round = 0; round < 300; ++round) {
        const int cells = 1 + round % 6;
        const double side = 2.0 * cells;
        // In some the holes at the left touch the outer ring, too.
        std::vector<Ring> rings{{{0, 0, 0}, {side + 1, 0, 0}, {side + 1, side, 0}, {-1, side, 0}}};
        for (int row = cells; row-- > 0;)
            if (round % 4 == 1)
                rings[0].insert(rings[0].end(), {{-0.5, 2.0 * row + 1.5, 0}, {0, 2.0 * row + 1, 0}});
        double area = areaOf(rings[0]);
        for (int cell = 0; cell < cells * cells; ++cell) {
            Ring hole =
                starAt(random, cell % cells * 2.0 + 1, cell / cells * 2.0 + 1, round % 2, 4 + round % 9);
            area -= areaOf(hole);
            std::reverse(hole.begin(), hole.end());
            std::rotate(hole.begin(), hole.begin() + round % static_cast<int>(hole.size()), hole.end());
            rings.push_back(hole);
        }
        const Polyhedron given = prismOf(rings, 0.5);
        Body body = Body::fromPolyhedron(given);
        ASSERT_TRUE(body.isValid()) << "round " << round;
        EXPECT_NEAR(body.volume(), area * 0.5, 1e-9);
        EXPECT_EQ(body.faceCount(), static_cast<int>(given.faces.size()));
        EXPECT_TRUE(loopsOf(body.toPolyhedron()) == loopsOf(given)) << "round " << round;
        const AcGeMatrix3d& move = moves[static_cast<std::size_t>(round) % moves.size()];
        body.transform(move);
        ASSERT_TRUE(body.isValid()) << "round " << round;
        const double scaled = area * 0.5 * std::abs(move.det());
        EXPECT_NEAR(body.volume(), scaled, 1e-8 * scaled) << "round " << round;
        EXPECT_NEAR(volumeOfTriangles(body), scaled, 1e-8 * scaled) << "round " << round;
    }
}

/// A contour of bulges as tangents of a quarter of the angle: its arcs as the modeller takes them, through
/// their middles.
struct Contour {
    Ring points;
    std::vector<double> bulges;

    [[nodiscard]] double exactArea() const {
        double area = areaOf(points);
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double chord = points[i].distanceTo(points[(i + 1) % points.size()]), b = bulges[i];
            if (b == 0) continue;
            const double r = chord * (1 + b * b) / (4 * b), angle = 4 * std::atan(b);
            area += r * r * (angle - std::sin(angle)) / 2;
        }
        return area;
    }
    [[nodiscard]] std::vector<PolygonVertexData> arcs(int approximation) const {
        std::vector<PolygonVertexData> data;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const AcGePoint3d &a = points[i], &b = points[(i + 1) % points.size()];
            const AcGeVector3d half = (b - a) / 2;
            const AcGePoint3d middle = a + half + AcGeVector3d(half.y, -half.x, 0) * bulges[i];
            if (bulges[i] == 0) {
                data.emplace_back(PolygonVertexData::kArc3d, Circle3d(), 0);
                continue;
            }
            const AcGeCircArc3d arc(a, middle, b);
            const AcGeVector3d normal = (b - a).crossProduct(middle - a);
            const Circle3d circle(a, b, normal, arc.radius(), std::abs(bulges[i]) < 1);
            EXPECT_TRUE(circle.center().isEqual(arc.center(), 1e-9)) << bulges[i];
            data.emplace_back(PolygonVertexData::kArc3d, circle, approximation);
        }
        return data;
    }
    [[nodiscard]] Body raised(const AcGeVector3d& up, int approximation, double scale = 1) const {
        std::vector<PolygonVertexData> own = arcs(approximation);
        std::vector<PolygonVertexData*> data;
        for (std::size_t i = 0; i < own.size(); ++i) data.push_back(bulges[i] == 0 ? nullptr : &own[i]);
        const std::vector<Point3d> corners(points.begin(), points.end());
        return Body::extrusion(corners.data(), data.data(), static_cast<int>(corners.size()),
                               AcGeVector3d::kZAxis, up, corners[0], scale);
    }
};

TEST(Bodies, prismsFromContoursWithArcsHaveTheirVolume) {
    const std::vector<Contour> contours{{{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}, {0, 0.5, 0, -0.3}},
                                        {{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}, {0, 1.7, 0, 0}},
                                        {{{1, 0, 0}, {-1, 0, 0}}, {1, 1}},
                                        {{{1, 0, 0}, {-1, 0, 0}}, {0.4, 0}},
                                        {{{0, 3, 0}, {4, 3, 0}, {4, 0, 0}, {0, 0, 0}}, {-0.2, 0, 0, 0.25}}};
    for (const Contour& contour : contours)
        for (const AcGeVector3d& up : {AcGeVector3d(0, 0, 2), AcGeVector3d(1, -0.5, -2)}) {
            const Body body = contour.raised(up, 4096);
            const double area = std::abs(contour.exactArea());
            ASSERT_TRUE(body.isValid());
            EXPECT_NEAR(body.volume(), 2 * area, 2e-5 * area);
            EXPECT_NEAR(volumeOfTriangles(body), body.volume(), 1e-9);
            std::set<const Surface*> surfaces;
            for (const Face* face = body.faceList(); face; face = face->next())
                if (face->surface()) surfaces.insert(face->surface());
            const auto arcs =
                std::count_if(contour.bulges.begin(), contour.bulges.end(), [](double b) { return b != 0; });
            EXPECT_EQ(static_cast<std::ptrdiff_t>(surfaces.size()), arcs);
            EXPECT_NEAR(contour.raised(up, 4096, 0.5).volume(), 2 * area * (1 + 0.5 + 0.25) / 3, 2e-5 * area);
        }
    const Body cylinder = Body::cylinder(Line3d({1, 2, 3}, {0, 3, 4}), 2, 12);
    EXPECT_NEAR(cylinder.volume(), 5 * 12 * 2 * std::sin(AcGe::kPi / 6), 1e-9);
    EXPECT_TRUE(cylinder.centerOfGravity().isEqual({1, 3.5, 5}, 1e-9));
    EXPECT_NEAR(cylinder.surfaceArea(),
                2 * 12 * 2 * std::sin(AcGe::kPi / 6) + 5 * 12 * 4 * std::sin(AcGe::kPi / 12), 1e-9);
}

TEST(Bodies, contoursThatMakeNoPrismAreRefusedByCode) {
    const double nan = std::nan("");
    const std::vector<Point3d> square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const auto codeOf = [](const std::vector<Point3d>& points, const AcGeVector3d& normal,
                           const AcGeVector3d& up, double scale = 1, double twist = 0) {
        try {
            static_cast<void>(Body::extrusion(points.data(), nullptr, static_cast<int>(points.size()), normal,
                                              up, points.empty() ? Point3d() : points[0], scale, twist));
        } catch (const Error& error) {
            return error.code();
        }
        return eOk;
    };
    const AcGeVector3d z = AcGeVector3d::kZAxis;
    EXPECT_EQ(codeOf(square, z, z), eOk);
    EXPECT_EQ(codeOf(square, {}, z), eNullNormalVector);
    EXPECT_EQ(codeOf(square, z, {1, 0, 0}), eExtrusionVectorMustNotBeParallelToPolygon);
    EXPECT_EQ(codeOf(square, {1, 0, 1}, z), eNonPlanarPolygon);
    EXPECT_EQ(codeOf(square, z, z, 0), eScaleFactorMustBePositive);
    EXPECT_EQ(codeOf(square, z, z, 1, 0.1), eNotYetImplemented);
    EXPECT_EQ(codeOf({{0, 0, 0}, {1, 0, 0}}, z, z), eBadPolygon);
    EXPECT_EQ(codeOf({{0, 0, 0}, {1, 0, 0}, {nan, 1, 0}}, z, z), eBadPolygon);
    EXPECT_EQ(codeOf({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}}, z, z), ePolygonPointsCoincide);
    EXPECT_EQ(codeOf({{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}, z, z),
              ePolygonIsSelfIntersectingOrTouching);
    EXPECT_EQ(codeOf({{0, 0, 0}, {2, 0, 0}, {1, 0, 0}, {1, 1, 0}}, z, z),
              ePolygonIsSelfIntersectingOrTouching);
    EXPECT_EQ(codeOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, 0, 0}, {0, 2, 0}}, z, z),
              ePolygonIsSelfIntersectingOrTouching);
    EXPECT_THROW(setEpsAbs(nan), Error);
    EXPECT_EQ(gEpsAbs, 1e-6);
    EXPECT_STREQ(Error(eExtrusionVectorMustNotBeParallelToPolygon).what(),
                 "Extrusion vector must not be parallel to polygon");
}

TEST(Bodies, copiesStandForThemselvesAndDamageIsSeen) {
    const Body body = Body::cylinder(Line3d({0, 0, 0}, {0, 0, 1}), 1, 8);
    Body copy = body;
    copy.scale(2, {5, 5, 5});
    EXPECT_NEAR(copy.volume(), 8 * body.volume(), 1e-9);
    EXPECT_EQ(copy.faceList()->next()->next()->surface()->radius(), 2);
    EXPECT_EQ(body.faceList()->next()->next()->surface()->radius(), 1);
    copy.vertexList()->setPoint({9, 9, 9});
    EXPECT_FALSE(copy.isValid());
    EXPECT_TRUE(copy.isValid(0));
    Body cut = body;
    cut.faceList()->edgeLoop()->setPartner(nullptr);
    EXPECT_FALSE(cut.isValid(0));
    EXPECT_TRUE(body.isValid());
    Polyhedron open = body.toPolyhedron();
    open.faces.pop_back();
    const std::array<const Body*, 1> sources{&body};
    EXPECT_THROW(static_cast<void>(Body::fromPolyhedron(open, sources)), Error);
    open.loopStarts.pop_back();
    open.corners.resize(open.loopStarts.back());
    EXPECT_THROW(static_cast<void>(Body::fromPolyhedron(open, sources)), Error);
}

TEST(Bodies, sectionsTakeEachSideAndTheSidesAddUp) {
    placements::Random random(4);
    const Contour contour{{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}, {0, 0.5, 0, -0.3}};
    const Body plain = contour.raised({0, 0, 2}, 32) - Body::cylinder(Line3d({2, 1, -1}, {0, 0, 4}), 0.5, 12);
    for (int round = 0; round < 120; ++round) {
        Body body = plain;
        body.transform(placements::ofSpace()[static_cast<std::size_t>(round) % 2]);
        std::vector<AcGePoint3d> corners;
        for (const Vertex* v = body.vertexList(); v; v = v->next()) corners.push_back(v->point());
        const auto corner = [&] {
            return corners[static_cast<std::size_t>(random.between(0, 0.999) * double(corners.size()))];
        };
        const AcGePoint3d on = round % 3 ? corner() : body.centerOfGravity();
        AcGeVector3d normal(random.between(-1, 1), random.between(-1, 1), random.between(-1, 1));
        if (round % 3 == 2) normal = (corner() - on).crossProduct(corner() - on);
        if (normal.length() < 1e-6) continue;
        const Plane plane(on, normal), opposite(on, -normal);
        Body back = body, front = body;
        back.section(plane);
        front.section(opposite);
        ASSERT_TRUE(back.isValid() && front.isValid()) << "round " << round;
        EXPECT_NEAR(back.volume() + front.volume(), body.volume(), 1e-7) << "round " << round;
        EXPECT_EQ(body.planeIntersectsBody(plane), !back.isNull() && !front.isNull()) << "round " << round;
        for (const Vertex* v = back.vertexList(); v; v = v->next())
            EXPECT_LE(plane.distanceTo(v->point()), 1e-6);
        if (back.isNull()) continue;
        const Interval3d box = back.interval(0.5), plainBox = back.interval();
        EXPECT_NEAR(box.getMax().x - box.getMin().x, plainBox.getMax().x - plainBox.getMin().x + 1, 1e-9);
    }
    Body all = plain;
    EXPECT_THROW(all.section(Plane()), Error);
    EXPECT_NEAR(all.volume(), plain.volume(), 0);
}

TEST(Bodies, operandsThatAreNoBodiesAreRefusedAndStay) {
    const Body box = Contour{{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}, {0, 0, 0, 0}}.raised({0, 0, 2}, 8);
    Body torn = box;
    torn.vertexList()->setPoint({9, 9, 9});
    const auto codeOf = [](const Body& a, const Body& b) {
        try {
            static_cast<void>(a - b);
        } catch (const Error& error) {
            return error.code();
        }
        return eOk;
    };
    EXPECT_EQ(codeOf(torn, box), eBadBodyGeometry);
    EXPECT_EQ(codeOf(box, torn), eBadBodyGeometry);
    EXPECT_EQ(codeOf(box, Body()), eOk);
    EXPECT_TRUE((Body() - box).isNull() && (box * Body()).isNull() && (box - box).isNull());
    EXPECT_NEAR((Body() + box).volume(), 24, 1e-12);
}

} // namespace
