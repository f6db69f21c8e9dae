#include "hatcharea.h"

#include "loopcontours.h"
#include "monotonepiece.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hostkit {

namespace {

constexpr int kOuterStyle = 1;
constexpr int kIgnoreStyle = 2;
constexpr int kTextboxBit = 8;

/// A loop and what tells where it lies.
struct NestedLoop {
    std::size_t index = 0; ///< in the given loops
    std::vector<HatchContour> contours;
    bool isTextbox = false;
    double area = 0.0;
    double low = 0.0;
    double high = 0.0;
    AcGePoint2d inside; ///< a point within, in sweep coordinates
    int depth = 0;
};

/// A piece of a loop in the sweep.
struct LoopPiece {
    MonotonePiece piece;
    std::size_t loop = 0;
};

// Twice what lies between an arc and its chord, for a unit circle.
double beyondChord(double sweep) {
    constexpr double seriesBelow = 0.1; // beyond, the difference has digits enough
    if (std::abs(sweep) > seriesBelow) return sweep - std::sin(sweep);
    const double square = sweep * sweep;
    return sweep * square / 6.0 * (1.0 - square / 20.0 * (1.0 - square / 42.0 * (1.0 - square / 72.0)));
}

void setHeights(NestedLoop& loop, const std::vector<LoopPiece>& pieces, std::size_t from) {
    loop.low = std::numeric_limits<double>::infinity();
    loop.high = -loop.low;
    for (std::size_t i = from; i < pieces.size(); ++i) {
        loop.low = std::min(loop.low, pieces[i].piece.low);
        loop.high = std::max(loop.high, pieces[i].piece.high);
    }
}

// The middle of the widest part of a line across the loop: as far as can be from other loops that touch it.
// Lines through the middle of simple figures hit corners; these fractions do not.
void findInside(NestedLoop& loop, const std::vector<LoopPiece>& pieces, std::size_t from) {
    double widest = -1.0;
    std::vector<double> crossings;
    for (const double fraction : {0.5069, 0.2713, 0.8317}) {
        const double height = loop.low + (loop.high - loop.low) * fraction;
        crossings.clear();
        for (std::size_t i = from; i < pieces.size(); ++i)
            if (pieces[i].piece.low <= height && height < pieces[i].piece.high)
                crossings.push_back(pieces[i].piece.abscissaAt(height));
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const double width = crossings[i + 1] - crossings[i];
            if (width <= widest) continue;
            widest = width;
            loop.inside.set(crossings[i] + width / 2.0, height);
        }
    }
}

/// Counts, for a point of each loop, how many others it lies in: one sweep from below.
class NestingSweep {
public:
    NestingSweep(std::vector<NestedLoop>& loops, std::vector<LoopPiece>& pieces)
        : m_loops(loops)
        , m_pieces(pieces)
        , m_isInside(loops.size(), false) {}

    void run() {
        std::sort(m_pieces.begin(), m_pieces.end(),
                  [](const LoopPiece& a, const LoopPiece& b) { return a.piece.low < b.piece.low; });
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < m_loops.size(); ++i)
            if (m_loops[i].low < m_loops[i].high) order.push_back(i);
        std::sort(order.begin(), order.end(),
                  [&](std::size_t a, std::size_t b) { return m_loops[a].inside.y < m_loops[b].inside.y; });
        for (const std::size_t index : order) {
            advanceTo(m_loops[index].inside.y);
            m_loops[index].depth = depthOf(index);
        }
    }

private:
    void advanceTo(double height) {
        std::erase_if(m_active, [&](std::size_t i) { return m_pieces[i].piece.high <= height; });
        for (; m_next < m_pieces.size() && m_pieces[m_next].piece.low <= height; ++m_next)
            if (m_pieces[m_next].piece.high > height) m_active.push_back(m_next);
    }
    // Of two loops with the same area, the first counts as the outer one.
    bool mayHold(std::size_t outer, std::size_t inner) const {
        if (m_loops[outer].isTextbox || outer == inner) return false;
        return m_loops[outer].area > m_loops[inner].area ||
               (m_loops[outer].area == m_loops[inner].area && outer < inner);
    }
    int depthOf(std::size_t index) {
        const AcGePoint2d& point = m_loops[index].inside;
        int depth = 0;
        std::vector<std::size_t> seen;
        for (const std::size_t i : m_active) {
            const std::size_t other = m_pieces[i].loop;
            if (!mayHold(other, index) || m_pieces[i].piece.abscissaAt(point.y) <= point.x) continue;
            depth += m_isInside[other] ? -1 : 1;
            m_isInside[other] = !m_isInside[other];
            seen.push_back(other);
        }
        for (const std::size_t other : seen) m_isInside[other] = false;
        return depth;
    }

    std::vector<NestedLoop>& m_loops;
    std::vector<LoopPiece>& m_pieces;
    std::vector<bool> m_isInside;
    std::vector<std::size_t> m_active;
    std::size_t m_next = 0;
};

void findDepths(std::vector<NestedLoop>& loops) {
    if (loops.empty()) return;
    const SweepAxes axes{loops.front().contours.front().front().start, AcGeVector2d(1.0, 0.0)};
    std::vector<LoopPiece> pieces;
    std::vector<MonotonePiece> own;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const std::size_t from = pieces.size();
        own.clear();
        for (const HatchContour& contour : loops[i].contours) {
            loops[i].area += std::abs(signedArea(contour));
            appendMonotonePieces(contour, axes, own);
        }
        for (const MonotonePiece& piece : own) pieces.push_back({piece, i});
        setHeights(loops[i], pieces, from);
        findInside(loops[i], pieces, from);
    }
    NestingSweep(loops, pieces).run();
}

bool isContour(const NestedLoop& loop, int style) {
    if (loop.isTextbox && loop.depth % 2 == 0) return false;
    if (style == kIgnoreStyle) return loop.depth == 0;
    return style != kOuterStyle || loop.depth <= 1;
}

int chordCount(const ContourPiece& arc, double deviation) {
    constexpr double longestChord = 0.78539816339744830962; // an eighth of a turn
    constexpr double mostChords = 1e4;
    const double radius = std::max(arc.u.length(), arc.v.length());
    const double share = radius > 0.0 ? std::clamp(deviation / radius, 0.0, 1.0) : 1.0;
    const double step = std::min(longestChord, 4.0 * std::asin(std::sqrt(share / 2.0)));
    const double count = std::ceil(std::abs(arc.sweep) / step * (1.0 - 1e-12));
    return static_cast<int>(std::clamp(count, 1.0, mostChords)); // infinite for a deviation of 0
}

double reachOf(const HatchContour& contour) {
    double reach = 0.0;
    for (const ContourPiece& piece : contour) {
        reach = std::max(reach, piece.end.distanceTo(contour.front().start));
        if (piece.isArc) reach = std::max(reach, std::min(piece.u.length(), piece.v.length()));
    }
    return reach;
}

// Whether lines across the contours find anything within them. Contours that cross themselves may enclose as
// much to the left as to the right.
bool isCrossed(const std::vector<HatchContour>& contours) {
    constexpr int lineCount = 61;
    constexpr double nothing = 1e-10; // of the widest contour's reach
    double reach = 0.0;
    for (const HatchContour& contour : contours) reach = std::max(reach, reachOf(contour));
    const SweepAxes axes{contours.front().front().start, AcGeVector2d(0.8, 0.6)};
    std::vector<MonotonePiece> pieces;
    for (const HatchContour& contour : contours) appendMonotonePieces(contour, axes, pieces);
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const MonotonePiece& piece : pieces) {
        low = std::min(low, piece.low);
        high = std::max(high, piece.high);
    }
    if (high - low <= nothing * reach) return false;
    std::vector<double> crossings;
    for (int line = 0; line < lineCount; ++line) {
        const double height = low + (high - low) * (line + 0.5) / lineCount;
        crossings.clear();
        for (const MonotonePiece& piece : pieces)
            if (piece.low <= height && height < piece.high) crossings.push_back(piece.abscissaAt(height));
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
            if (crossings[i + 1] - crossings[i] > nothing * reach) return true;
    }
    return false;
}

} // namespace

HatchArea::HatchArea(const std::vector<HatchLoop>& loops, int style, double deviation) {
    std::vector<NestedLoop> nested;
    bool hasTextbox = false;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        NestedLoop made;
        made.index = i;
        made.contours = contoursOf(loops[i], deviation);
        made.isTextbox = (loops[i].type & kTextboxBit) != 0;
        hasTextbox |= made.isTextbox;
        if (!made.contours.empty()) nested.push_back(std::move(made));
    }
    if (hasTextbox || style == kOuterStyle || style == kIgnoreStyle) findDepths(nested);
    for (NestedLoop& loop : nested) {
        if (!isContour(loop, style)) continue;
        for (HatchContour& contour : loop.contours) {
            m_contours.push_back(std::move(contour));
            m_loops.push_back(loop.index);
        }
    }
}

std::vector<std::vector<AcGePoint2d>> HatchArea::polygons(double deviation) const {
    std::vector<std::vector<AcGePoint2d>> polygons;
    for (const HatchContour& contour : m_contours) {
        std::vector<AcGePoint2d>& polygon = polygons.emplace_back();
        for (const ContourPiece& piece : contour) {
            polygon.push_back(piece.start);
            const int count = piece.isArc ? chordCount(piece, deviation) : 1;
            for (int i = 1; i < count; ++i) {
                const double angle = piece.startAngle + piece.sweep * i / count;
                polygon.push_back(piece.center + piece.u * std::cos(angle) + piece.v * std::sin(angle));
            }
        }
    }
    return polygons;
}

bool HatchArea::isEmpty() const {
    constexpr double nothing = 1e-12; // of the square of the contour's reach
    for (const HatchContour& contour : m_contours) {
        const double reach = reachOf(contour);
        if (std::abs(signedArea(contour)) > nothing * reach * reach) return false;
    }
    return m_contours.empty() || !isCrossed(m_contours);
}

double HatchArea::area() const {
    std::vector<NestedLoop> nested;
    for (std::size_t i = 0; i < m_contours.size(); ++i) {
        if (i == 0 || m_loops[i] != m_loops[i - 1]) nested.emplace_back();
        nested.back().contours.push_back(m_contours[i]);
    }
    findDepths(nested);
    double sum = 0.0;
    for (const NestedLoop& loop : nested) sum += loop.depth % 2 == 0 ? loop.area : -loop.area;
    return sum;
}

double signedArea(const HatchContour& contour) {
    if (contour.empty()) return 0.0;
    const AcGePoint2d origin = contour.front().start;
    double sum = 0.0;
    for (const ContourPiece& piece : contour) {
        sum += (piece.start - origin).crossProduct(piece.end - origin) / 2.0 + piece.besideChords;
        if (piece.isArc) sum += piece.u.crossProduct(piece.v) / 2.0 * beyondChord(piece.sweep);
    }
    return sum;
}

} // namespace hostkit
