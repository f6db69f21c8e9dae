// Booleans of polyhedra against closed forms, counted cells of a grid, winding numbers of points, and laws.
#include "combination.h"

#include "orientation.h"
#include "randombodies.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

using namespace polyhedra;
using hostkit::modeler::combine;
using hostkit::modeler::orientation;
using hostkit::modeler::Planar;

std::vector<const Polyhedron*> pointersTo(const std::vector<Polyhedron>& bodies) {
    std::vector<const Polyhedron*> pointers;
    for (const Polyhedron& body : bodies) pointers.push_back(&body);
    return pointers;
}

const AcGeMatrix3d genericTurn = AcGeMatrix3d::rotation(0.7, AcGeVector3d(0.3, 0.5, 0.8).normal()) *
                                 AcGeMatrix3d::rotation(0.4, AcGeVector3d(1, 0.2, 0.1).normal());

struct Expected {
    double content;
    std::size_t faces;
    long characteristic;
};

struct Case {
    const char* name;
    Polyhedron a;
    Polyhedron b;
    Expected sum;
    Expected rest;
    Expected common;
};

std::optional<Polyhedron> apply(Operation operation, const Polyhedron& a, const Polyhedron& b) {
    const std::array<const Polyhedron*, 1> others{&b};
    return combine(operation, a, others, 1e-6);
}

// Among them what once went wrong elsewhere: splits not exchanged between collinear edges, a cut that dangles
// inside a face, faces of one body that come to lie in one plane, a cut that is an edge, a ray from where
// another body touches, pieces turned against their plane.
std::vector<Case> cases() {
    const Polyhedron unit = box(0, 0, 0, 1, 1, 1);
    const Polyhedron ring = *apply(Operation::subtract, box(0, 0, 0, 3, 3, 1), box(1, 1, 0, 2, 2, 1));
    const Polyhedron plate = box(-2, -2, -1, 2, 2, 0);
    const Polyhedron ridge = moved(prism({{0, 0}, {1, -1}, {1, 1}}, -1, 1),
                                   AcGeMatrix3d::rotation(-std::numbers::pi / 2, AcGeVector3d(0, 1, 0)));
    const AcGeMatrix3d onCorner = AcGeMatrix3d::rotation(0.6, AcGeVector3d(1, -1, 0).normal());
    const Expected whole{1, 6, 2};
    const Expected nothing{0, 0, 0};
    const Expected solidPlate{16, 6, 2};
    return {
        {"apart", unit, box(2, 0, 0, 3, 1, 1), {2, 12, 4}, whole, nothing},
        {"a face", unit, box(1, 0, 0, 2, 1, 1), {2, 6, 2}, whole, nothing},
        {"part of a face", unit, box(1, 0.25, 0.25, 2, 0.75, 0.75), {1.25, 11, 2}, whole, nothing},
        {"overlapping parts of faces", unit, box(1, 0.5, 0.5, 2, 1.5, 1.5), {2, 12, 2}, whole, nothing},
        {"an edge", unit, box(1, 1, 0, 2, 2, 1), {2, 12, 4}, whole, nothing},
        {"part of an edge", unit, box(1, 1, 0.5, 2, 2, 1.5), {2, 12, 4}, whole, nothing},
        {"a point", unit, box(1, 1, 1, 2, 2, 2), {2, 12, 4}, whole, nothing},
        {"a corner on a face", plate, moved(unit, onCorner), {17, 12, 4}, solidPlate, nothing},
        {"an edge on a face", plate, ridge, {18, 11, 4}, solidPlate, nothing},
        {"equal", unit, unit, whole, nothing, whole},
        {"inside", unit, box(0.25, 0.25, 0.25, 0.75, 0.75, 0.75), whole, {0.875, 12, 4}, {0.125, 6, 2}},
        {"through", unit, box(0.25, 0.25, 0, 0.75, 0.75, 1), whole, {0.75, 10, 0}, {0.25, 6, 2}},
        {"half", unit, box(0.5, 0, 0, 1.5, 1, 1), {1.5, 6, 2}, {0.5, 6, 2}, {0.5, 6, 2}},
        {"a corner cut", unit, box(0.5, 0.5, 0, 1, 1, 1), whole, {0.75, 8, 2}, {0.25, 6, 2}},
        {"overlap", unit, box(0.5, 0.5, 0.5, 1.5, 1.5, 1.5), {1.875, 12, 2}, {0.875, 9, 2}, {0.125, 6, 2}},
        {"a bar into a side in two halves",
         prism({{0, 0}, {0.5, 0}, {1, 0}, {1, 1}, {0, 1}}, 0, 1),
         box(0.25, -1, 0.25, 0.75, 0.5, 0.75),
         {1.25, 11, 2},
         {0.875, 11, 2},
         {0.125, 6, 2}},
        {"a plug", ring, box(1, 1, 0, 2, 2, 1), {9, 6, 2}, {8, 10, 0}, nothing},
        {"half a plug", ring, box(1, 1, 0, 2, 2, 0.5), {8.5, 11, 2}, {8, 10, 0}, nothing},
        {"a wedge in a top",
         unit,
         prism({{0.5, 0.5}, {2, 0.25}, {2, 0.75}}, 0.5, 1),
         {1.1875 - 1. / 48, 10, 2},
         {1 - 1. / 48, 9, 2},
         {1. / 48, 5, 2}},
    };
}

// A point of the result that is one of an input is that one to the bit.
void expectPointsOf(const Polyhedron& a, const Polyhedron& b, const Polyhedron& result) {
    for (const AcGePoint3d& p : result.points) {
        double nearest = 1;
        for (const Polyhedron* body : {&a, &b})
            for (const AcGePoint3d& q : body->points) nearest = std::min(nearest, p.distanceTo(q));
        EXPECT_TRUE(nearest == 0 || nearest > 1e-6) << nearest;
    }
}

// As they stand, turned, and far away.
TEST(Combination, givesTheBodiesThatAreKnown) {
    for (const AcGeMatrix3d& placed :
         {AcGeMatrix3d(), genericTurn, AcGeMatrix3d::translation(AcGeVector3d(1e6 / 3, -2e6 / 7, 0))})
        for (const Case& c : cases()) {
            const Polyhedron a = moved(c.a, placed);
            const Polyhedron b = moved(c.b, placed);
            for (const auto& [operation, expected] :
                 {std::pair(Operation::unite, c.sum), std::pair(Operation::subtract, c.rest),
                  std::pair(Operation::intersect, c.common)}) {
                SCOPED_TRACE(testing::Message() << c.name << ", operation " << static_cast<int>(operation));
                const auto result = apply(operation, a, b);
                ASSERT_TRUE(result.has_value());
                EXPECT_NEAR(content(*result), expected.content, 1e-8);
                EXPECT_EQ(result->faces.size(), expected.faces);
                EXPECT_EQ(eulerCharacteristic(*result), expected.characteristic);
                expectPointsOf(a, b, *result);
            }
        }
}

// Openings of 16 sides flush with top and bottom, at once and one by one.
TEST(Combination, slabsHaveTheFacesAndHandlesOfTheirOpenings) {
    constexpr int rows = 3;
    for (const AcGeMatrix3d& placed : {AcGeMatrix3d(), genericTurn}) {
        std::vector<Polyhedron> openings;
        for (int i = 0; i < rows * rows; ++i)
            openings.push_back(
                moved(prism(circle(2 + 3 * (i % rows), 2 + 3 * (i / rows), 1, 16), 0, 0.2), placed));
        const Polyhedron slab = moved(box(0, 0, 0, 10, 10, 0.2), placed);
        std::vector<Polyhedron> results{*combine(Operation::subtract, slab, pointersTo(openings), 1e-6),
                                        slab};
        for (const Polyhedron& opening : openings)
            results[1] = *apply(Operation::subtract, results[1], opening);
        for (const Polyhedron& result : results) {
            EXPECT_EQ(result.faces.size(), 6 + 16 * openings.size());
            EXPECT_EQ(eulerCharacteristic(result), 2 - 2 * rows * rows);
            EXPECT_NEAR(content(result), content(slab) - rows * rows * content(openings[0]), 1e-10);
        }
    }
}

// At each height the common body of two equal cylinders that cross is a square as wide as the polygon there.
TEST(Combination, crossingCylindersHaveTheVolumeOfTheirSquares) {
    for (const int facets : {8, 20, 64}) {
        const Polyhedron a = prism(circle(0, 0, 1, facets), -2, 2);
        const Polyhedron b = moved(a, AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d(1, 0, 0)));
        double expected = 0;
        for (int i = 0; i < facets / 2; ++i) {
            const double upper = 2 * std::numbers::pi * i / facets;
            const double lower = 2 * std::numbers::pi * (i + 1) / facets;
            const double first = 2 * std::sin(upper);
            const double second = 2 * std::sin(lower);
            expected +=
                (std::cos(upper) - std::cos(lower)) * (first * first + first * second + second * second) / 3;
        }
        const auto common = apply(Operation::intersect, a, b);
        ASSERT_TRUE(common.has_value());
        EXPECT_NEAR(content(*common), expected, 1e-12);
        EXPECT_EQ(common->faces.size(), 2u * facets);
        EXPECT_EQ(apply(Operation::unite, a, b)->faces.size(), 4u * facets + 4);
        EXPECT_EQ(apply(Operation::subtract, a, b)->faces.size(), 3u * facets + 2);
    }
}

// Whole boxes as sets of unit cells: volume and surface are counted.
class CellGrid {
public:
    bool& at(int x, int y, int z) { return m_cells[static_cast<std::size_t>((x * side + y) * side + z)]; }
    void add(const std::array<int, 6>& b) {
        for (int x = b[0]; x < b[3]; ++x)
            for (int y = b[1]; y < b[4]; ++y)
                for (int z = b[2]; z < b[5]; ++z) at(x, y, z) = true;
    }
    void combineWith(Operation operation, CellGrid& other) {
        for (std::size_t i = 0; i < m_cells.size(); ++i) {
            const bool there = other.m_cells[i];
            m_cells[i] = operation == Operation::unite
                             ? m_cells[i] || there
                             : m_cells[i] && (there == (operation == Operation::intersect));
        }
    }
    int count() const { return static_cast<int>(std::count(m_cells.begin(), m_cells.end(), true)); }
    int surface() {
        int sides = 0;
        for (int x = 0; x + 1 < side; ++x)
            for (int y = 0; y + 1 < side; ++y)
                for (int z = 0; z + 1 < side; ++z)
                    sides += (at(x, y, z) != at(x + 1, y, z)) + (at(x, y, z) != at(x, y + 1, z)) +
                             (at(x, y, z) != at(x, y, z + 1));
        return sides;
    }

private:
    static constexpr int side = 9; ///< boxes lie between 1 and 8
    std::array<bool, side * side * side> m_cells{};
};

double surfaceOf(const Polyhedron& body) {
    double sum = 0;
    for (const Polyhedron::Face& f : body.faces)
        for (Index loop = f.firstLoop; loop < f.firstLoop + f.loopCount; ++loop)
            for (Index i = body.loopStarts[loop]; i < body.loopStarts[loop + 1]; ++i) {
                const AcGeVector3d p = body.points[body.corners[i]] - body.points[0];
                const Index next = i + 1 < body.loopStarts[loop + 1] ? i + 1 : body.loopStarts[loop];
                sum +=
                    p.crossProduct(body.points[body.corners[next]] - body.points[0]).dotProduct(f.normal) / 2;
            }
    return sum;
}

// The others overlap and touch each other as they like.
TEST(Combination, batchesOfBoxesCoverTheCellsTheyCount) {
    RandomBodies random(3);
    for (int round = 0; round < 300; ++round) {
        std::vector<Polyhedron> bodies;
        CellGrid first;
        CellGrid others;
        const int count = random.whole(2, 8);
        for (int i = 0; i < count; ++i) {
            std::array<int, 6> b;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                b[axis] = random.whole(1, 6);
                b[axis + 3] = random.whole(b[axis] + 1, 8);
            }
            (i == 0 ? first : others).add(b);
            bodies.push_back(box(b[0], b[1], b[2], b[3], b[4], b[5]));
        }
        const std::vector<const Polyhedron*> all = pointersTo(bodies);
        const auto operation = static_cast<Operation>(round % 3);
        const auto result = combine(operation, bodies[0], std::span(all).subspan(1), 1e-6);
        ASSERT_TRUE(result.has_value()) << round;
        first.combineWith(operation, others);
        EXPECT_NEAR(content(*result), first.count(), 1e-9) << round;
        EXPECT_NEAR(surfaceOf(*result), first.surface(), 1e-9) << round;
    }
}

TEST(Combination, chainsOfRandomOperationsKeepTheLaws) {
    ChainReport report;
    for (std::uint64_t seed = 0; report.operations < 20000; ++seed) {
        Chain(seed, report).run();
        ASSERT_EQ(report.wrong, "");
    }
    EXPECT_EQ(report.refused, 0);
}

// Facets keep what they share; what lies in one plane but on different surfaces stays apart, what shares one
// becomes one face.
TEST(Combination, facetsKeepTheirSurface) {
    const std::array<char, 2> marks{};
    const auto* first = reinterpret_cast<const AModeler::Surface*>(&marks[0]);
    const auto* second = reinterpret_cast<const AModeler::Surface*>(&marks[1]);
    for (const auto* above : {first, second}) {
        const Polyhedron a = prism(circle(0, 0, 1, 12), 0, 1, 0, first);
        const Polyhedron b = prism(circle(0, 0, 1, 12), 1, 2, 0, above);
        const auto sum = apply(Operation::unite, a, b);
        ASSERT_TRUE(sum.has_value());
        const auto with = [&](const AModeler::Surface* wanted) {
            return std::count_if(sum->faces.begin(), sum->faces.end(),
                                 [&](const auto& f) { return f.surface == wanted; });
        };
        EXPECT_EQ(with(nullptr), 2);
        EXPECT_EQ(with(first), 12);
        EXPECT_EQ(with(second), above == first ? 0 : 12);
    }
}

TEST(Combination, refusesWhatIsNoClosedBody) {
    const Polyhedron good = box(0, 0, 0, 1, 1, 1);
    const auto spoilt = [&](auto&& change) {
        Polyhedron bad = good;
        change(bad);
        return bad;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Polyhedron> bad{
        spoilt([&](Polyhedron& p) { p.points[3].y = nan; }),
        spoilt([&](Polyhedron& p) { p.points[3].y = std::numeric_limits<double>::infinity(); }),
        spoilt([&](Polyhedron& p) { p.faces[2].normal.x = nan; }),
        spoilt([&](Polyhedron& p) { p.faces[2].normal *= 2; }),
        spoilt([&](Polyhedron& p) { p.faces[2].normal = p.faces[3].normal; }),
        spoilt([&](Polyhedron& p) { p.corners[5] = 8; }),
        spoilt([&](Polyhedron& p) { std::swap(p.corners[4], p.corners[5]); }),
        spoilt([&](Polyhedron& p) { p.faces.pop_back(); }),
        spoilt([&](Polyhedron& p) { p.faces[1].loopCount = 2; }),
        spoilt([&](Polyhedron& p) { p.loopStarts[2] = 3; }),
        spoilt([&](Polyhedron& p) { std::reverse(p.corners.begin(), p.corners.end()); }),
        spoilt([&](Polyhedron& p) { p.points[6].z = 1.5; }),
        spoilt([&](Polyhedron& p) {
            std::reverse(p.corners.begin(), p.corners.end());
            std::reverse(p.faces.begin(), p.faces.end());
            for (std::size_t i = 0; i < p.faces.size(); ++i) {
                p.faces[i].firstLoop = static_cast<Index>(i);
                p.faces[i].normal = -p.faces[i].normal;
            }
        }),
    };
    const Polyhedron other = box(0.5, 0.5, 0.5, 2, 2, 2);
    for (std::size_t i = 0; i < bad.size(); ++i) {
        EXPECT_FALSE(apply(Operation::unite, bad[i], other).has_value()) << i;
        EXPECT_FALSE(apply(Operation::subtract, other, bad[i]).has_value()) << i;
    }
    for (const double tolerance : {nan, -1.0, std::numeric_limits<double>::infinity()}) {
        const std::array<const Polyhedron*, 1> others{&other};
        EXPECT_FALSE(combine(Operation::unite, good, others, tolerance).has_value()) << tolerance;
    }
}

// Bodies that are moved and turned by about the tolerance, or a tolerance of nothing or of the size of the
// bodies: points are right, or the operation is refused.
TEST(Combination, isRightOrRefusesNearTheTolerance) {
    int refused = 0;
    for (int round = 0; round < 500; ++round) {
        RandomBodies random(static_cast<std::uint64_t>(round) + 100);
        const std::array tolerances{1e-6, 1e-6, 1e-6, 0.0, 1.0};
        const double tolerance = tolerances[static_cast<std::size_t>(round % 5)];
        std::vector<Polyhedron> bodies;
        for (int i = random.whole(3, 7); i > 0; --i) {
            const double size = std::pow(10, random.real(-9, -4));
            const AcGeVector3d axis = random.place(-1, 1).asVector().normal();
            const AcGeMatrix3d nudge =
                round % 2 == 0 ? AcGeMatrix3d::rotation(size, axis) : AcGeMatrix3d::translation(axis * size);
            bodies.push_back(moved(random.body(), nudge));
        }
        const std::vector<const Polyhedron*> all = pointersTo(bodies);
        for (const Operation operation : {Operation::unite, Operation::subtract, Operation::intersect}) {
            const auto result = combine(operation, bodies[0], std::span(all).subspan(1), tolerance);
            if (tolerance > 0 && tolerance < 1) refused += !result;
            for (int i = 0; result && tolerance < 1 && i < 20; ++i) {
                const AcGePoint3d p = random.place(-1, 9);
                const bool first = windings(bodies[0], p) > 0.5;
                const bool others = std::any_of(bodies.begin() + 1, bodies.end(),
                                                [&](const auto& b) { return windings(b, p) > 0.5; });
                const bool expected = operation == Operation::unite
                                          ? first || others
                                          : first && others == (operation == Operation::intersect);
                EXPECT_EQ(std::lround(windings(*result, p)), expected) << round;
            }
        }
    }
    EXPECT_LE(refused, 20);
}

// Planes a few tolerances apart are two: what lies between is outside, also where it is asked by a ray.
TEST(Combination, gapsOfSomeTolerancesAreGaps) {
    for (const double gap : {1.5e-6, 2.5e-6, 3.5e-6, 6e-6}) {
        const Polyhedron a = box(0, 0, 0, 1, 1, 1);
        const Polyhedron above = box(-1, -1, 1 + gap, 2, 2, 2);
        const Polyhedron far = box(5, 0, 0, 6, 1, 1);
        const std::array<const Polyhedron*, 2> others{&above, &far};
        const auto sum = combine(Operation::unite, a, others, 1e-6);
        EXPECT_TRUE(!sum || std::abs(content(*sum) - 11) < 1e-4) << gap;
        const auto rest = combine(Operation::subtract, a, others, 1e-6);
        EXPECT_TRUE(!rest || std::abs(content(*rest) - 1) < 1e-4) << gap;
    }
}

// Against whole numbers of 128 bits: points some units in the last place about a line, where the rounded
// determinant errs.
TEST(Orientation, isThatOfWholeNumbers) {
    __extension__ using Wide = __int128;
    RandomBodies random(7);
    const auto scaled = [](double v) { return static_cast<Wide>(std::llround(v * 0x1p53)); };
    for (int round = 0; round < 20000; ++round) {
        const Planar a{0.5 + random.whole(0, 64) * 0x1p-53, 0.5 + random.whole(0, 64) * 0x1p-53};
        const Planar b{12, 12 + random.whole(-1, 1) * 0x1p-49};
        const Planar c{24 + random.whole(-1, 1) * 0x1p-48, 24};
        const Wide exact = (scaled(b.x) - scaled(a.x)) * (scaled(c.y) - scaled(a.y)) -
                           (scaled(b.y) - scaled(a.y)) * (scaled(c.x) - scaled(a.x));
        ASSERT_EQ(orientation(a, b, c), (exact > 0) - (exact < 0));
    }
}

} // namespace
