// The quick merge of neighbours against the one by areas: what it is sure of must be that one's answer.
#include "contourarrangement.h"
#include "contourcleanmerge.h"
#include "contourloopsegment.h"
#include "stripmerge.h"
#include "vexogeometrytools.h"

#include "dbpolyline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <random>

using namespace VEXOGeometryTools;
using namespace vexo;

namespace {

/// Two neighbours above each other, 6 wide, with the steps of one line from left to right between them.
/// Arcs of the steps are the same in both, or straight in the upper one. `shift` moves the upper one along x.
struct Neighbours {
    ContourLoop lower, upper;

    Neighbours(std::mt19937& random, double shift) {
        std::vector<ContourVertex> line{{0.0, 4.0 + pick(random, 2)}};
        while (line.back().x < 6.0) {
            // One step in three bends; a step up or down comes only behind one to the right.
            if (pick(random, 3) == 0) line.back().bulge = pick(random, 2) == 0 ? 0.25 : -0.25;
            line.push_back({std::min(6.0, line.back().x + 1.0 + pick(random, 6)), line.back().y});
            if (line.back().x < 6.0 && pick(random, 3) == 0)
                line.push_back({line.back().x, 4.0 + pick(random, 2)});
        }
        lower.vertices = {{0.0, 0.0}, {6.0, 0.0}};
        for (std::size_t i = line.size(); i-- > 0;)
            lower.vertices.push_back({line[i].x, line[i].y, i > 0 ? -line[i - 1].bulge : 0.0});
        upper.vertices = line;
        upper.vertices.push_back({6.0, 8.0});
        upper.vertices.push_back({0.0, 8.0});
        for (ContourVertex& vertex : upper.vertices) {
            vertex.x += shift;
            if (pick(random, 4) == 0) vertex.bulge = 0.0;
        }
        std::rotate(upper.vertices.begin(), upper.vertices.begin() + pick(random, 3), upper.vertices.end());
    }
    static int pick(std::mt19937& random, int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    }
};

std::vector<std::array<double, 3>> sorted(const ContourLoop& loop) {
    std::vector<std::array<double, 3>> corners;
    for (const ContourVertex& vertex : loop.vertices) corners.push_back({vertex.x, vertex.y, vertex.bulge});
    std::sort(corners.begin(), corners.end());
    return corners;
}

TEST(CleanMerge, IsSureOnlyOfWhatTheMergeByAreasSays) {
    std::mt19937 random(20);
    std::array<int, 3> counts{};
    for (int round = 0; round < 3000; ++round) {
        const double shift =
            std::array{0.0, 0.0, 1.0, 7.0}[static_cast<std::size_t>(Neighbours::pick(random, 4))];
        const Neighbours pair(random, shift);
        if (!commonArea(pair.lower, pair.upper).empty()) continue; // moved steps may overlap
        ContourLoop merged;
        const CleanMerge answer = mergeCleanly(pair.lower, pair.upper, merged);
        ++counts[static_cast<std::size_t>(answer)];
        if (answer == CleanMerge::kUnclear) continue;
        const auto one = polylineOf(pair.lower, AcGeVector3d::kZAxis, 0.0);
        const auto two = polylineOf(pair.upper, AcGeVector3d::kZAxis, 0.0);
        const std::unique_ptr<AcDbCurve> both(MergeContoursIfTheyHaveOneComonSegment(one.get(), two.get()));
        ASSERT_EQ(both != nullptr, answer == CleanMerge::kMerged) << "round " << round;
        if (!both) continue;
        EXPECT_EQ(sorted(merged), sorted(loopOf(*AcDbPolyline::cast(both.get())))) << "round " << round;
    }
    for (const int count : counts) EXPECT_GT(count, 200);
}

TEST(CleanMerge, ClearNeighboursHaveOneSegmentInCommonAndNothingElse) {
    std::mt19937 random(22);
    int clear = 0, unclear = 0;
    for (int round = 0; round < 3000; ++round) {
        Neighbours pair(random, Neighbours::pick(random, 3) == 0 ? 1.0 : 0.0);
        // One side of the upper one's stays where it is, the rest may reach into the lower one.
        const std::size_t kept = static_cast<std::size_t>(Neighbours::pick(random, 5));
        for (std::size_t k = 0; k < pair.upper.vertices.size() && round % 3; ++k)
            if (k != kept && k != kept + 1) pair.upper.vertices[k].y += Neighbours::pick(random, 7) - 3;
        const std::optional<PlaneBox> box = boxOf({pair.lower}, {pair.upper});
        const ContourArrangement both({pair.lower}, {pair.upper}, box, areaTolerance(box));
        const bool areNeighbours = both.sharedEdgeCount() == 1 && commonArea(pair.lower, pair.upper).empty();
        for (std::size_t i = 0; i < pair.lower.vertices.size(); ++i)
            for (std::size_t j = 0; j < pair.upper.vertices.size(); ++j) {
                const LoopSegment a(pair.lower, i), b(pair.upper, j);
                const bool isShared = a.start.x == b.end.x && a.start.y == b.end.y && a.end.x == b.start.x &&
                                      a.end.y == b.start.y && a.start.bulge == -b.start.bulge;
                if (!isShared || a.chord() == 0.0) continue;
                const bool isClear = areClearNeighbours(pair.lower, i, pair.upper, j, areaTolerance(box));
                ASSERT_TRUE(areNeighbours || !isClear) << "round " << round;
                ++(isClear ? clear : unclear);
            }
    }
    EXPECT_GT(clear, 100);
    EXPECT_GT(unclear, 500);
}

/// A rectangle cut in two again and again, some cuts in the same places, corners shaken by less than the
/// tolerance.
std::vector<ContourLoop> randomStrips(std::mt19937& random, double offset) {
    struct Box {
        double x1, y1, x2, y2;
    };
    std::vector<Box> boxes = {{0, 0, 12, 8}};
    for (int cuts = Neighbours::pick(random, 12); cuts > 0; --cuts) {
        Box& box = boxes[static_cast<std::size_t>(Neighbours::pick(random, static_cast<int>(boxes.size())))];
        Box other = box;
        const bool isUpright = Neighbours::pick(random, 2) == 0;
        const double low = isUpright ? box.x1 : box.y1;
        const double high = isUpright ? box.x2 : box.y2;
        if (high - low < 2) continue;
        const double at = low + 1 + Neighbours::pick(random, static_cast<int>(high - low) - 1);
        (isUpright ? box.x2 : box.y2) = at;
        (isUpright ? other.x1 : other.y1) = at;
        boxes.push_back(other);
    }
    std::vector<ContourLoop> strips;
    for (const Box& box : boxes) {
        ContourLoop strip{{{box.x1, box.y1}, {box.x2, box.y1}, {box.x2, box.y2}, {box.x1, box.y2}}};
        for (ContourVertex& vertex : strip.vertices) {
            vertex.x += offset + Neighbours::pick(random, 3) * 1e-10;
            vertex.y += offset;
        }
        strips.push_back(strip);
    }
    std::shuffle(strips.begin(), strips.end(), random);
    return strips;
}

TEST(MergeStrips, TakesThePairsOfThePlainLoopsInTheirOrder) {
    std::mt19937 random(21);
    int merges = 0;
    for (int round = 0; round < 600; ++round) {
        std::vector<ContourLoop> strips = randomStrips(random, round % 3 ? 0.0 : 1000.0);
        std::vector<ContourLoop> plain = strips;
        for (std::size_t a = 0; a < plain.size(); ++a)
            for (std::size_t b = a + 1; b < plain.size(); ++b) {
                const auto one = polylineOf(plain[a], AcGeVector3d::kZAxis, 0.0);
                const auto two = polylineOf(plain[b], AcGeVector3d::kZAxis, 0.0);
                const std::unique_ptr<AcDbCurve> both(
                    MergeContoursIfTheyHaveOneComonSegment(one.get(), two.get()));
                if (!both) continue;
                plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(b));
                plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(a));
                plain.push_back(loopOf(*AcDbPolyline::cast(both.get())));
                ++merges;
                a = 0;
                b = 0;
            }
        mergeStrips(strips);
        ASSERT_EQ(strips.size(), plain.size()) << round;
        for (std::size_t i = 0; i < strips.size(); ++i)
            ASSERT_EQ(sorted(strips[i]), sorted(plain[i])) << "round " << round << " strip " << i;
    }
    EXPECT_GT(merges, 800);
}

} // namespace
