// Seeded random slabs with openings, by kinds that a user draws.
#pragma once

#include "contourcases.h"
#include "dbpolyline.h"
#include "gemat3d.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace slabcases {

using contourcases::corners;
using contourcases::Vertices;

/// A slab with openings as drawn, its strips meant to run along `dir`.
struct Slab {
    std::unique_ptr<AcDbPolyline> contour;
    std::vector<std::unique_ptr<AcDbPolyline>> openings;
    AcGePoint3d base;
    AcGeVector3d dir;
    double millimetre; ///< in units of the drawing

    AcArray<void*> holes() const {
        AcArray<void*> array;
        for (const auto& opening : openings) array.append(static_cast<AcDbCurve*>(opening.get()));
        return array;
    }
};

enum class Outline { kRectangle, kConvex, kRounded, kStar, kAngle, kComb, kProngs };
enum class Placing { kApart, kAcrossEdge, kTouching, kLevel, kSharedTangent, kOverlapping, kLarge };

inline constexpr const char* kOutlines[] = {
    "rectangle", "convex with arcs", "rounded", "concave with arcs", "angle", "comb", "equal prongs"};
inline constexpr const char* kPlacings[] = {"apart",
                                            "across the edge",
                                            "touching",
                                            "equal in height",
                                            "sharing a tangent",
                                            "overlapping",
                                            "large, in the outline's grid"};

inline constexpr double kWidth = 12000.0;
inline constexpr double kHeight = 8000.0;

inline double between(std::mt19937& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}
inline int upTo(std::mt19937& random, int most) {
    return std::uniform_int_distribution<int>(0, most)(random);
}

/// Two to four prongs that reach equally far to the right, to the left or upwards: with square or pointed
/// ends, ends curved outwards, or curved inwards to two tips.
inline Vertices prongs(std::mt19937& random) {
    const int count = 2 + upTo(random, 2);
    const double step = std::floor(kHeight / 1000.0 / count) * 1000.0;
    const double width = step - 500.0 * (1 + upTo(random, 1));
    const int end = upTo(random, 3);
    const double bulges[] = {0.0, 0.0, 1.0, -0.5};
    Vertices vertices = {{0, 0, 0}};
    double low = 0.0;
    for (int i = 0; i < count; ++i, low += step) {
        if (i > 0) {
            const double root = 1000.0 * (2 + upTo(random, 8));
            vertices.insert(vertices.end(), {{root, low - step + width, 0}, {root, low, 0}});
        }
        vertices.push_back({kWidth, low, bulges[end]});
        if (end == 1) vertices.push_back({kWidth + 500, low + width / 2, 0});
        vertices.push_back({kWidth, low + width, 0});
    }
    vertices.push_back({0, low - step + width, 0});
    constexpr double quarterTurn = AcGe::kPi / 2;
    const int turn = upTo(random, 3);
    if (turn == 1) return contourcases::moved(vertices, quarterTurn, kHeight, 0);
    return turn == 2 ? contourcases::moved(vertices, 2 * quarterTurn, kWidth, kHeight) : vertices;
}

inline Vertices outlineOf(Outline outline, std::mt19937& random) {
    const double w = kWidth;
    const double h = kHeight;
    const double quarter = std::tan(AcGe::kPi / 8);
    Vertices vertices;
    switch (outline) {
    case Outline::kRectangle:
        return contourcases::rectangle(0, 0, w, h);
    case Outline::kConvex: {
        const int count = 3 + upTo(random, 9);
        for (int i = 0; i < count; ++i) {
            const double angle = AcGe::kTwoPi * (i + between(random, 0, 0.6)) / count;
            vertices.push_back({w / 2 * (1 + std::cos(angle)), h / 2 * (1 + std::sin(angle)),
                                upTo(random, 2) ? 0.0 : between(random, 0.0, 0.1)});
        }
        return vertices;
    }
    case Outline::kRounded:
        return contourcases::roundedRectangle(0, 0, w, h, upTo(random, 1) ? 1000.0 : h / 2);
    case Outline::kStar:
        for (const auto& [x, y, bulge] : contourcases::randomContour(random, 5 + upTo(random, 12)))
            vertices.push_back({w / 2 + x * w / 20, h / 2 + y * w / 20, bulge});
        return vertices;
    case Outline::kAngle: {
        const double x = 1000.0 * (2 + upTo(random, 7));
        const double y = 1000.0 * (2 + upTo(random, 3));
        const double bulge = upTo(random, 1) ? 0.0 : -quarter;
        return {{0, 0, 0}, {w, 0, 0}, {w, y, 0}, {x + 500, y, bulge}, {x, y + 500, 0}, {x, h, 0}, {0, h, 0}};
    }
    case Outline::kComb:
        vertices = {{0, 0, 0}, {w, 0, 0}};
        for (int tooth = 3; tooth >= 0; --tooth) {
            const double x = tooth * 3000.0;
            const double root = 1000.0 * (1 + upTo(random, 5));
            vertices.insert(vertices.end(), {{x + 3000, h, 0}, {x + 1500, h, 0}});
            if (tooth > 0) vertices.insert(vertices.end(), {{x + 1500, root, 0}, {x, root, 0}});
        }
        vertices.push_back({0, h, 0});
        return vertices;
    case Outline::kProngs:
        return prongs(random);
    }
    return vertices;
}

/// A side with two to four tips or square ends at x = `reach`, the bays between them of different depths,
/// from -b to b.
inline Vertices teeth(std::mt19937& random, double reach, double b) {
    const int count = 2 + upTo(random, 2);
    const double pitch = 2 * b / (2 * count - 1);
    const bool isSquare = upTo(random, 1) == 0;
    Vertices side;
    for (int i = 0; i < 2 * count - 1; ++i) {
        const double x = i % 2 ? reach * between(random, 0.2, 0.8) : reach;
        const double y = i * pitch - b;
        if (isSquare) side.push_back({x, y, 0});
        side.push_back({x, isSquare ? y + pitch : y + pitch / 2, 0});
    }
    return side;
}

/// Teeth on both sides, or on one.
inline Vertices toothed(std::mt19937& random, double a, double b) {
    Vertices vertices = teeth(random, a, b);
    Vertices left = corners({-a, -b, -a, b});
    if (upTo(random, 1)) left = teeth(random, -a, b);
    vertices.insert(vertices.end(), left.rbegin(), left.rend());
    return vertices;
}

/// Its points stand in pairs equally far to either side, or single ones to the sides.
inline Vertices star(std::mt19937& random, double a, double b) {
    const int points = 4 + upTo(random, 4);
    const double first = upTo(random, 1) ? 0.0 : AcGe::kPi / points;
    Vertices vertices;
    for (int i = 0; i < 2 * points; ++i) {
        const double angle = first + i * AcGe::kPi / points;
        const double size = i % 2 ? 0.4 : 1.0;
        vertices.push_back({a * size * std::cos(angle), b * size * std::sin(angle), 0});
    }
    return vertices;
}

/// Between two arcs about one centre, open to the left.
inline Vertices arcBand(std::mt19937& random, double a, double b) {
    const double half = between(random, 0.4, 2.8);
    const double outer = std::max(a, b);
    const double inner = outer * between(random, 0.4, 0.9);
    const double x = std::cos(half);
    const double y = std::sin(half);
    const double bulge = std::tan(half / 2);
    return {{outer * x, -outer * y, bulge},
            {outer * x, outer * y, 0},
            {inner * x, inner * y, -bulge},
            {inner * x, -inner * y, 0}};
}

/// About the origin with these half sizes: a rectangle, a circle, a capsule, a diamond, an angle with arcs, a
/// swallow tail or one of the above.
inline Vertices openingOf(std::mt19937& random, double a, double b) {
    const double quarter = std::tan(AcGe::kPi / 8);
    switch (upTo(random, 9)) {
    case 0:
        return contourcases::rectangle(-a, -b, 2 * a, 2 * b);
    case 1:
        return contourcases::circle(0, 0, std::min(a, b));
    case 2: {
        const double r = std::min(a, b) / 2;
        return contourcases::capsule(r - a, 0, 2 * (a - r), r);
    }
    case 3:
        return corners({-a, 0, 0, -b, a, 0, 0, b});
    case 4: // two prongs that reach equally far
        return corners({-a, -b, a, -b, a, b, -a, b, -a, b / 2, a / 2, 0, -a, -b / 2});
    case 5: // a swallow tail
        return corners({-a, -b, a, -0.75 * b, a / 3, 0, a, 0.75 * b, -a, b});
    case 6:
        return toothed(random, a, b);
    case 7:
        return star(random, a, b);
    case 8:
        return arcBand(random, a, b);
    default: {
        const double r = std::min(a, b) / 3;
        const double y = -b / 2;
        return {{r - a, -b, 0},       {a, -b, 0}, {a, b, 0},  {0, b, 0},
                {0, y + r, -quarter}, {-r, y, 0}, {-a, y, 0}, {-a, r - b, quarter}};
    }
    }
}

/// A point on a straight or curved side of the outline (its chord), for openings across the edge.
inline AcGePoint2d edgePoint(const Vertices& outline, std::mt19937& random) {
    const std::size_t i = static_cast<std::size_t>(upTo(random, static_cast<int>(outline.size()) - 1));
    const auto& a = outline[i];
    const auto& b = outline[(i + 1) % outline.size()];
    const double t = upTo(random, 2) ? between(random, 0, 1) : upTo(random, 1) * 0.5;
    return {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t};
}

inline std::vector<Vertices> openingsOf(Placing placing, const Vertices& outline, int count,
                                        std::mt19937& random) {
    std::vector<Vertices> openings;
    const int columns = 10;
    const double cellX = kWidth / columns;
    const double cellY = kHeight / 6;
    std::vector<int> cells(60);
    std::iota(cells.begin(), cells.end(), 0);
    std::shuffle(cells.begin(), cells.end(), random);
    for (int i = 0; i < count; ++i) {
        const int cell = cells[static_cast<std::size_t>(i % 60)];
        AcGePoint2d at((cell % columns + 0.5) * cellX, (cell / columns + 0.5) * cellY);
        double a = between(random, 100, 0.35 * cellX);
        double b = between(random, 100, 0.35 * cellY);
        double angle = 0.0;
        switch (placing) {
        case Placing::kApart: // any shape in a cell of its own, turned
            angle = between(random, 0, 6);
            break;
        case Placing::kAcrossEdge:
            at = edgePoint(outline, random);
            angle = upTo(random, 1) ? 0.0 : between(random, 0, 6);
            break;
        case Placing::kTouching: // in the same grid as the outline, sides and corners shared
            at.x = 1000.0 * (upTo(random, 11) + 0.5);
            at.y = 1000.0 * (upTo(random, 7) + 0.5);
            a = b = 500;
            break;
        case Placing::kLevel:
            b = 300;
            break;
        case Placing::kSharedTangent:
            a = 0.3 * cellX;
            break;
        case Placing::kOverlapping:
            at.x = between(random, 0, kWidth);
            at.y = between(random, 0, kHeight);
            a *= 2;
            b *= 2;
            angle = between(random, 0, 6);
            break;
        case Placing::kLarge: // sides and tips level with the outline's, across several of its parts
            at.set(500.0 * upTo(random, 24), 500.0 * upTo(random, 16));
            if (upTo(random, 1)) { // over the end of a prong, say
                const std::size_t side = static_cast<std::size_t>(upTo(random, 100)) % outline.size();
                const auto& end = outline[(side + 1) % outline.size()];
                at.set((outline[side][0] + end[0]) / 2, (outline[side][1] + end[1]) / 2);
            }
            a = 500.0 * (1 + upTo(random, 5));
            b = 500.0 * (1 + upTo(random, 5));
            angle = AcGe::kPi / 2 * upTo(random, 3);
            break;
        }
        openings.push_back(contourcases::moved(openingOf(random, a, b), angle, at.x, at.y));
    }
    // A grid takes one opening a cell; repeated ones are nothing that a user draws.
    std::sort(openings.begin(), openings.end());
    openings.erase(std::unique(openings.begin(), openings.end()), openings.end());
    std::shuffle(openings.begin(), openings.end(), random);
    return openings;
}

/// Every outline with every placing of its openings.
inline constexpr unsigned int kPlacingCount = 7;
inline constexpr unsigned int kKinds = 7 * kPlacingCount;

inline std::string nameOf(unsigned int kind) {
    return std::string(kOutlines[kind / kPlacingCount]) + ", openings " + kPlacings[kind % kPlacingCount];
}

/// A slab of the kind; `seed` also chooses the direction, the place and the sense.
inline Slab slabOf(unsigned int kind, unsigned int seed) {
    std::mt19937 random(seed * kKinds + kind);
    const Vertices vertices = outlineOf(static_cast<Outline>(kind / kPlacingCount), random);
    const auto placing = static_cast<Placing>(kind % kPlacingCount);
    const int most = placing == Placing::kLarge ? 1 + seed % 4 : seed % 4 == 0 ? 50 : seed % 4 == 1 ? 1 : 12;
    const std::vector<Vertices> openings = openingsOf(placing, vertices, upTo(random, most), random);
    constexpr double quarterTurn = AcGe::kPi / 2;
    const double angles[] = {0.0, quarterTurn, between(random, 0, 6), AcGe::kPi};
    const double angle = angles[upTo(random, 3)];
    const bool isMirrored = upTo(random, 3) == 0;
    const bool isReversed = upTo(random, 3) == 0;
    const double offset = upTo(random, 1) ? 1e6 : 0.0;
    const double millimetre = upTo(random, 3) ? 1.0 : 1e-3;
    AcGeMatrix3d place = AcGeMatrix3d::translation(AcGeVector3d(offset, -offset / 3, 0)) *
                         AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis) *
                         AcGeMatrix3d::scaling(millimetre);
    if (isMirrored)
        place = place * AcGeMatrix3d::rotation(AcGe::kPi, AcGeVector3d::kXAxis); // seen from below
    const auto drawn = [&](const Vertices& flat) {
        auto polyline = contourcases::polylineOf(isReversed ? contourcases::reversed(flat) : flat, true);
        (void)polyline->transformBy(place);
        return polyline;
    };
    Slab slab;
    slab.contour = drawn(vertices);
    for (const Vertices& opening : openings) slab.openings.push_back(drawn(opening));
    slab.millimetre = millimetre;
    slab.base = AcGePoint3d(offset, 100.0, 0.0);
    slab.dir = AcGeVector3d(std::cos(angle), std::sin(angle), 0) * between(random, 0.5, 2000);
    return slab;
}

} // namespace slabcases
