// Body data: what is read and written, in all versions, against volumes that are known in closed form.
#include "bodydata.h"
#include "bodydatainvariants.h"
#include "bodyediting.h"
#include "shape.h"
#include "testshapes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <numbers>
#include <random>

using namespace hostkit::modeler;
using namespace testshapes;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr std::pair<BodyForm, int> kVersions[] = {{BodyForm::text, 106},
                                                  {BodyForm::text, 400},
                                                  {BodyForm::text, 700},
                                                  {BodyForm::text, 20800},
                                                  {BodyForm::binary, 21800}};

/// A tetrahedron with legs of 3, as others write it.
constexpr const char* kTetrahedron = R"(400 0 1 0
5 maker 11 kernel 4.00 24 Sun Nov 22 00:20:00 2026
1 9.9999999999999995e-007 1e-010
body $-1 $1 $-1 $-1 #
lump $-1 $-1 $2 $0 #
shell $-1 $-1 $-1 $3 $-1 $1 #
face $-1 $4 $11 $2 $-1 $7 forward single #
face $-1 $5 $12 $2 $-1 $8 forward single #
face $-1 $6 $13 $2 $-1 $9 forward single #
face $-1 $-1 $14 $2 $-1 $10 forward single #
plane-surface $-1 0 0 0 0 0 -1 0 1 0 forward_v I I I I #
plane-surface $-1 0 0 0 0 -1 0 1 0 0 forward_v I I I I #
plane-surface $-1 0 0 0 -1 0 0 0 0 1 forward_v I I I I #
plane-surface $-1 3 0 0 0.57735026918962573 0.57735026918962573 0.57735026918962573 -0.70710678118654757 0.70710678118654757 0 forward_v I I I I #
loop $-1 $-1 $15 $3 #
loop $-1 $-1 $18 $4 #
loop $-1 $-1 $21 $5 #
loop $-1 $-1 $24 $6 #
coedge $-1 $16 $17 $23 $35 forward $11 $-1 #
coedge $-1 $17 $15 $24 $37 forward $11 $-1 #
coedge $-1 $15 $16 $18 $39 forward $11 $-1 #
coedge $-1 $19 $20 $17 $39 reversed $12 $-1 #
coedge $-1 $20 $18 $26 $41 forward $12 $-1 #
coedge $-1 $18 $19 $21 $43 forward $12 $-1 #
coedge $-1 $22 $23 $20 $43 reversed $13 $-1 #
coedge $-1 $23 $21 $25 $45 forward $13 $-1 #
coedge $-1 $21 $22 $15 $35 reversed $13 $-1 #
coedge $-1 $25 $26 $16 $37 reversed $14 $-1 #
coedge $-1 $26 $24 $22 $45 reversed $14 $-1 #
coedge $-1 $24 $25 $19 $41 reversed $14 $-1 #
vertex $-1 $35 $31 #
vertex $-1 $37 $32 #
vertex $-1 $35 $33 #
vertex $-1 $41 $34 #
point $-1 0 0 0 #
point $-1 3 0 0 #
point $-1 0 3 0 #
point $-1 0 0 3 #
edge $-1 $27 $29 $15 $36 forward #
straight-curve $-1 0 0 0 0 1 0 I I #
edge $-1 $29 $28 $16 $38 forward #
straight-curve $-1 0 3 0 0.70710678118654757 -0.70710678118654757 0 I I #
edge $-1 $28 $27 $17 $40 forward #
straight-curve $-1 3 0 0 -1 0 0 I I #
edge $-1 $28 $30 $19 $42 forward #
straight-curve $-1 3 0 0 -0.70710678118654757 0 0.70710678118654757 I I #
edge $-1 $30 $27 $20 $44 forward #
straight-curve $-1 0 0 3 0 0 -1 I I #
edge $-1 $30 $29 $22 $46 forward #
straight-curve $-1 0 0 3 0 0.70710678118654757 -0.70710678118654757 I I #
End-of-ACIS-data
)";

Facets facetsOf(const Shape& shape) {
    return hostkit::modeler::facetsOf(shape, {}, [](const auto&, const auto&, double) { return nullptr; });
}

/// Volume of the facets, with what is wrong with their edges.
double volumeOf(const Polyhedron& body, std::string& fault) {
    double volume = 0.0;
    std::map<std::pair<unsigned, unsigned>, int> edges;
    for (const Polyhedron::Face& face : body.faces)
        for (unsigned loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop) {
            const unsigned begin = body.loopStarts[loop], end = body.loopStarts[loop + 1];
            AcGeVector3d area;
            for (unsigned place = begin; place < end; ++place) {
                const unsigned a = body.corners[place],
                               b = body.corners[place + 1 == end ? begin : place + 1];
                area += (body.points[a] - body.points[0]).crossProduct(body.points[b] - body.points[0]) / 2.0;
                if (++edges[{a, b}] > 1) fault = "an edge stands twice";
                if (std::abs(face.normal.dotProduct(body.points[a].asVector()) - face.distance) > 1e-7)
                    fault = "a corner off its plane";
            }
            volume += area.dotProduct(face.normal) *
                      face.normal.dotProduct(body.points[body.corners[begin]] - body.points[0]) / 3.0;
        }
    for (const auto& [edge, count] : edges)
        if (!edges.contains({edge.second, edge.first})) fault = "an edge lacks its reverse";
    return volume;
}

TEST(BodyData, theKnownTetrahedronIsReadAndWrittenToTheByte) {
    const ShapeReading reading = readShape(kTetrahedron);
    ASSERT_TRUE(reading.shape) << reading.fault;
    const Facets facets = facetsOf(*reading.shape);
    EXPECT_NEAR(facets.volume, 4.5, 1e-14);
    Polyhedron same = *facets.polyhedron;
    std::swap(same.points[1], same.points[2]); // as they are read and as they stand
    for (Polyhedron::Index& corner : same.corners) corner = corner == 1 ? 2 : corner == 2 ? 1 : corner;
    EXPECT_EQ(writeShape(shapeOf(same), BodyForm::text, 400, {"maker", "Sun Nov 22 00:20:00 2026"}),
              kTetrahedron);
    std::string line = "ABC abc 123 @_~ $-1 #";
    scramble(line);
    EXPECT_EQ(line, "^]\\ >=< nml _@! {rn |");
}

struct Known {
    const char* name;
    Shape shape;
    double volume, area;
};

std::vector<Known> knownShapes() {
    const double slant = std::sqrt(1 + 0.25 * 0.25);
    return {
        {"cylinder", drum(2, 5, 0), kPi * 4 * 5, 2 * kPi * 4 + 2 * kPi * 2 * 5},
        {"tube", drum(2, 5, 0, 0.5), kPi * (4 - 0.25) * 5, 2 * kPi * (4 - 0.25) + 2 * kPi * 2.5 * 5},
        {"frustum", drum(2, 4, -0.25), kPi * 4 / 3 * (4 + 2 + 1), kPi * (4 + 1) + kPi * 3 * 4 * slant},
        {"cone", drum(2, 8, -0.25), kPi * 4 * 8 / 3, kPi * 4 + kPi * 2 * 8 * slant},
        {"ball", whole(sphere(3)), 36 * kPi, 36 * kPi},
        {"cap", cap(3, 1), kPi * 4 / 3 * (9 - 2), kPi * 8 + 2 * kPi * 3 * 2},
        {"octant", octant(3), 36 * kPi / 8, 36 * kPi / 8 + 27 * kPi / 4},
        {"ring", whole(torus(5, 1)), 2 * kPi * kPi * 5, 4 * kPi * kPi * 5},
        {"half ring", halfRing(5, 1), kPi * kPi * 5, 2 * kPi * kPi * 5 + 2 * kPi},
        // Its upper bound is no line of the chart: the measure has the error of its chords.
        {"cut cylinder", cutCylinder(2, 5, 0.5), kPi * 4 * 5, 0},
    };
}

TEST(BodyData, curvedBodiesKeepTheirMeasuresInEveryVersion) {
    for (const Known& known : knownShapes()) {
        const double allowed = std::string_view(known.name) == "cut cylinder" ? 1e-4 : 1e-9;
        for (const auto& [form, version] : kVersions) {
            SCOPED_TRACE(std::string(known.name) + " in " + std::to_string(version));
            const ShapeReading reading = readShape(writeShape(known.shape, form, version));
            ASSERT_TRUE(reading.shape) << reading.fault;
            const Facets facets = facetsOf(*reading.shape);
            ASSERT_TRUE(facets.polyhedron) << facets.fault;
            EXPECT_NEAR(facets.volume, known.volume, allowed * known.volume);
            if (known.area > 0.0) {
                EXPECT_NEAR(facets.area, known.area, 1e-9 * known.area);
            }
            std::string fault;
            const double flat = volumeOf(*facets.polyhedron, fault);
            EXPECT_EQ(fault, "");
            // A chord of 72 sides takes 1.3 parts in a thousand from a circle's area, of a ball and a ring
            // about twice that.
            EXPECT_NEAR(flat, known.volume, 4e-3 * known.volume);
        }
    }
}

/// Motions, scales and mirrors.
AcGeMatrix3d randomSimilarity(std::mt19937& random, double& scale) {
    std::uniform_real_distribution<double> any(-1, 1);
    AcGeMatrix3d matrix, factor;
    matrix.setToRotation(3 * any(random), AcGeVector3d(any(random), any(random), 1.1 + any(random)));
    scale = 1.5 + any(random);
    factor.setToScaling(scale);
    AcGeMatrix3d mirror;
    mirror.setCoordSystem({100 * any(random), 100 * any(random), 7}, {any(random) < 0 ? -1.0 : 1.0, 0, 0},
                          {0, 1, 0}, {0, 0, 1});
    return matrix * mirror * factor;
}

TEST(BodyData, motionsScalesAndMirrorsKeepBodiesClosed) {
    std::mt19937 random(20);
    for (const Known& known : knownShapes())
        for (int turn = 0; turn < 4; ++turn) {
            SCOPED_TRACE(std::string(known.name) + " " + std::to_string(turn));
            Shape shape = known.shape;
            double scale = 1.0;
            const AcGeMatrix3d matrix = randomSimilarity(random, scale);
            const Facets before = facetsOf(shape);
            ASSERT_TRUE(transformShape(shape, matrix));
            const Facets after = facetsOf(shape);
            ASSERT_TRUE(after.polyhedron) << after.fault;
            EXPECT_NEAR(after.volume, before.volume * scale * scale * scale, 1e-7 * after.volume);
            std::string fault;
            (void)volumeOf(*after.polyhedron, fault);
            EXPECT_EQ(fault, "");
        }
    AcGeMatrix3d uneven;
    uneven.setCoordSystem({0, 0, 0}, {2, 0, 0}, {0, 1, 0}, {0, 0, 1});
    Shape shape = drum(1, 1, 0);
    EXPECT_FALSE(transformShape(shape, uneven));
}

// Two boxes that share an edge: four faces meet there, and each box stays one piece.
TEST(BodyData, piecesThatTouchInAnEdgeAreTwoLumpsAndCavitiesBelongToTheirPiece) {
    Polyhedron body;
    const auto addBox = [&](double x, double y, double z, double size, bool isInside) {
        Polyhedron box;
        std::map<std::array<double, 3>, unsigned> known;
        for (unsigned i = 0; i < body.points.size(); ++i)
            known[{body.points[i].x, body.points[i].y, body.points[i].z}] = i;
        for (int axis = 0; axis < 3; ++axis)
            for (int side = 0; side < 2; ++side) {
                double normal[3] = {};
                normal[axis] = (side ? 1.0 : -1.0) * (isInside ? -1.0 : 1.0);
                Polyhedron::Face face;
                face.normal = {normal[0], normal[1], normal[2]};
                face.firstLoop = body.loopCount();
                face.loopCount = 1;
                constexpr int around[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
                for (int corner = 0; corner < 4; ++corner) {
                    const int* const at = around[(side == 1) == !isInside ? corner : 3 - corner];
                    double p[3] = {x, y, z};
                    p[axis] += side * size;
                    p[(axis + 1) % 3] += at[0] * size;
                    p[(axis + 2) % 3] += at[1] * size;
                    const auto [found, isNew] =
                        known.try_emplace({p[0], p[1], p[2]}, static_cast<unsigned>(body.points.size()));
                    if (isNew) body.points.emplace_back(p[0], p[1], p[2]);
                    body.corners.push_back(found->second);
                    face.distance = face.normal.dotProduct({p[0], p[1], p[2]});
                }
                body.loopStarts.push_back(static_cast<unsigned>(body.corners.size()));
                body.faces.push_back(face);
            }
    };
    addBox(0, 0, 0, 4, false);
    addBox(4, 4, 0, 4, false);
    addBox(1, 1, 1, 2, true);
    const Shape shape = shapeOf(body);
    ASSERT_EQ(shape.shellLumps.size(), 3u);
    EXPECT_NE(shape.shellLumps[0], shape.shellLumps[1]);
    EXPECT_EQ(shape.shellLumps[0], shape.shellLumps[2]);
    EXPECT_EQ(shape.edges.size(), 36u);
    for (const auto& [form, version] : kVersions) {
        const ShapeReading reading = readShape(writeShape(shape, form, version));
        ASSERT_TRUE(reading.shape) << reading.fault;
        EXPECT_NEAR(facetsOf(*reading.shape).volume, 64 + 64 - 8, 1e-12) << version;
        EXPECT_EQ(reading.shape->shellLumps, (std::vector<unsigned>{0, 0, 1})) << version; // lump by lump
    }
}

TEST(BodyData, whatIsNotUnderstoodSaysWhyAndCanBeMoved) {
    AcGeMatrix3d motion, turn;
    motion.setToTranslation({1, 2, 3});
    turn.setToRotation(1.0, {0, 1, 1});
    motion = motion * turn;
    for (const auto& [form, version] : kVersions) {
        const std::string data = writeShape(drum(2, 5, 0, 0.5), form, version);
        // Twice, so that a transform is made and then changed.
        const std::optional<std::string> moved = movedBodyData(*movedBodyData(data, motion), motion);
        ASSERT_TRUE(moved) << version;
        Shape expected = drum(2, 5, 0, 0.5);
        ASSERT_TRUE(transformShape(expected, motion) && transformShape(expected, motion));
        const ShapeReading reading = readShape(*moved);
        ASSERT_TRUE(reading.shape) << reading.fault;
        for (const AcGePoint3d& vertex : expected.vertices) {
            double nearest = 1e9;
            for (const AcGePoint3d& found : reading.shape->vertices)
                nearest = std::min(nearest, found.distanceTo(vertex));
            EXPECT_LT(nearest, 1e-12) << version;
        }
        AcGeMatrix3d larger;
        larger.setToScaling(2.0);
        EXPECT_FALSE(movedBodyData(data, larger));
    }
    // With a count the records are read as far as that goes.
    std::string counted = kTetrahedron;
    counted.replace(0, 5, "400 47");
    const std::optional<std::string> moved = movedBodyData(counted, AcGeMatrix3d::translation({5, 0, 0}));
    ASSERT_TRUE(moved && moved->starts_with("400 48 1 0"));
    ASSERT_TRUE(readShape(*moved).shape);
    EXPECT_EQ(readShape(*moved).shape->vertices.front().x, 5.0);
    std::string free = kTetrahedron;
    free.replace(free.find("plane-surface"), 13, "spline-surface");
    EXPECT_EQ(readShape(free).fault, "a face is no plane, cone, sphere or torus: spline-surface");
    struct {
        const char *from, *to, *fault;
    } const damages[] = {
        {"loop $-1 $-1 $15 $3 #", "loop $-1 $-1 $99 $3 #", "a pointer to a coedge leads nowhere"},
        {"loop $-1 $-1 $15 $3 #", "loop $-1 $-1 $18 $3", "edge expected, not straight-curve"},
        {"face $-1 $4 ", "face $-1 $3 ", "a chain of records has no end"},
        {"coedge $-1 $16", "coedge $-1 $17", "the edges of a loop do not follow each other"},
        {"point $-1 3 0 0", "point $-1 nan 0 0", "a record is damaged: point"},
        {"point $-1 3 0 0", "point $-1 3 0 1", "an edge ends away from its curve"},
        {"400 0 1 0", "none", "the first line has no version"},
    };
    for (const auto& [from, to, fault] : damages) {
        std::string data = kTetrahedron;
        data.replace(data.find(from), std::string_view(from).size(), to);
        EXPECT_EQ(readShape(data).fault, fault) << to;
    }
}

// What the fuzzer starts from, with bytes changed, doubled and taken out.
TEST(BodyData, damageGivesAReasonOrABodyThatCanBeWritten) {
    std::mt19937 random(7);
    std::size_t understood = 0;
    for (const auto& entry : std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/fuzz/corpus/bodydata")) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        understood += readShape(bytes).shape.has_value();
        EXPECT_EQ(bodydatainvariants::faultOf(bytes), "") << entry.path();
        for (int turn = 0; turn < 30; ++turn) {
            std::string damaged = bytes;
            const std::size_t place = random() % bytes.size(), other = random() % bytes.size();
            switch (turn % 3) {
            case 0:
                damaged[place] = static_cast<char>(random());
                break;
            case 1:
                damaged.erase(place, 1 + random() % 40);
                break;
            default:
                damaged[place] = bytes[other];
                damaged[other] = bytes[place];
            }
            EXPECT_EQ(bodydatainvariants::faultOf(damaged), "") << entry.path() << turn;
        }
    }
    EXPECT_GE(understood, 7u);
}

} // namespace
