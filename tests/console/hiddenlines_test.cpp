#include "hiddenlines.h"

#include <gtest/gtest.h>

#include <random>

namespace {

/// How far the point is behind the triangle, and how far within its sides; less than 0: it is not.
std::pair<double, double> behindAndWithin(const std::array<AcGePoint3d, 3>& t, const AcGePoint3d& p) {
    const auto turn = [](const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
        return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    };
    const double all = turn(t[0], t[1], t[2]);
    if (all <= 0.0) return {-1.0, -1.0};
    const double a = turn(t[1], t[2], p) / all, b = turn(t[2], t[0], p) / all, c = turn(t[0], t[1], p) / all;
    return {a * t[0].z + b * t[1].z + c * t[2].z - p.z, std::min({a, b, c})};
}

} // namespace

TEST(HiddenLines, ArePointByPointBehindATriangle) {
    std::mt19937 random(154);
    std::size_t hiddenPoints = 0, seenPoints = 0;
    for (int round = 0; round < 60; ++round) {
        // On a lattice, lines run upright, along the borders of cells and through corners.
        const bool isLattice = round % 2 == 0;
        const auto place = [&] {
            const auto any = [&] {
                return isLattice ? static_cast<double>(random() % 9)
                                 : std::uniform_real_distribution<>(0, 8)(random);
            };
            return AcGePoint3d(any(), any(), any());
        };
        HiddenLines lines;
        std::vector<std::array<AcGePoint3d, 3>> triangles;
        for (int i = 0; i < 4 + round; ++i) {
            const AcGePoint3d corner = place();
            triangles.push_back({corner, corner + (place() - corner) / (1 + round % 4), place()});
            lines.add(triangles[i][0], triangles[i][1], triangles[i][2]);
        }
        lines.makeIndex();
        for (int i = 0; i < 60; ++i) {
            AcGePoint3d from = place(), to = place();
            if (i % 3 == 0) to.x = from.x;
            if (i % 3 == 1) to.y = from.y;
            const auto parts = lines.seenParts(from, to);
            for (int k = 0; k < 40; ++k) {
                const double t = (k + 0.37) / 40;
                const AcGePoint3d p = from + (to - from) * t;
                bool isHidden = false, isClose = false;
                for (const auto& triangle : triangles) {
                    const auto [behind, within] = behindAndWithin(triangle, p);
                    isHidden = isHidden || (behind > 1e-4 && within > 1e-6);
                    isClose =
                        isClose || (std::abs(behind) <= 1e-4 && within > -1e-6) || std::abs(within) <= 1e-6;
                }
                if (isClose && !isHidden) continue;
                const bool isSeen =
                    std::any_of(parts.begin(), parts.end(), [&](const HiddenLines::Part& part) {
                        return part.first <= t && t <= part.second;
                    });
                ASSERT_EQ(isSeen, !isHidden) << round << ' ' << i << ' ' << k;
                ++(isHidden ? hiddenPoints : seenPoints);
            }
        }
    }
    EXPECT_GT(std::min(hiddenPoints, seenPoints), 20000U);
}
