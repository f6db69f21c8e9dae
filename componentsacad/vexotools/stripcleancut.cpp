#include "stripcleancut.h"

#include "vexogeometrytools_internal.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

namespace vexo {

namespace {

/// Nearer to each other than this share of the piece's and the opening's size, things are unclear.
constexpr double kMarginShare = 1e-7;
/// The least sine of the angle at which boundaries cross clearly.
constexpr double kClearSine = 1e-2;
/// A corner within this share of the margin, or of the nudge if that is less, is on a line: coordinates are
/// rounded, far out by more than the size of the piece tells. With the margin's share the areas' tolerance.
constexpr double kRoundingShare = 1e-3;
constexpr double kRoundingPerNudge = 0.25;

/// A place on a loop: on the segment that starts at a vertex, at a share of its run.
struct Place {
    std::size_t segment = 0;
    double share = 0.0;
    double x = 0.0;
    double y = 0.0;
};

/// A segment of a loop, with the circle of an arc.
struct Side : LoopSegment {
    ArcCircle circle;
    PlaneBox bounds;

    Side(const ContourLoop& loop, std::size_t i)
        : LoopSegment(loop, i)
        , circle(isArc() ? circleOf(*this) : ArcCircle())
        , bounds(box(0.0)) {}
    /// Length along an arc.
    double run() const { return std::abs(4.0 * std::atan(start.bulge)) * circle.radius; }
    bool isNear(const PlaneBox& other, double margin) const { return bounds.widened(margin).meets(other); }
    /// Share of the run at a point of the circle; below 0 or above 1 off the arc.
    double shareAt(double x, double y) const {
        const double sweep = 4.0 * std::atan(start.bulge);
        const double fromX = start.x - circle.x;
        const double fromY = start.y - circle.y;
        const double toX = x - circle.x;
        const double toY = y - circle.y;
        // Counted from the arc's middle, so that both ends are equally far from where angles jump.
        const double angle = std::atan2(fromX * toY - fromY * toX, fromX * toX + fromY * toY);
        double turn = angle - sweep / 2;
        if (turn > std::numbers::pi) turn -= 2 * std::numbers::pi;
        if (turn < -std::numbers::pi) turn += 2 * std::numbers::pi;
        return 0.5 + turn / sweep;
    }
};

std::vector<Side> sidesOf(const ContourLoop& loop) {
    std::vector<Side> sides;
    sides.reserve(loop.vertices.size());
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) sides.emplace_back(loop, i);
    return sides;
}

/// A crossing of the piece's boundary, run counter-clockwise, with the opening's, run clockwise.
struct Crossing {
    Place onPiece;
    Place onHole;
    bool isExit = false; ///< the walk along the piece comes out of the opening here
};

/// Is a share clearly inside a run (1), clearly outside (0), or near an end (-1).
int clearlyWithin(double share, double length, double margin) {
    const double slack = margin / length;
    if (share > slack && share < 1.0 - slack) return 1;
    return share < -slack || share > 1.0 + slack ? 0 : -1;
}

/// Crossings of a segment of the piece with one of the opening.
class SideCrossings {
public:
    explicit SideCrossings(double margin)
        : m_margin(margin) {}

    /// False when unclear.
    bool add(const Side& a, std::size_t i, const Side& b, std::size_t j, std::vector<Crossing>& found) const {
        if (!a.isNear(b.bounds, m_margin)) return true;
        if (a.isArc() && b.isArc()) return areCirclesApart(a, b);
        if (a.isArc()) return addLineArc(b, j, a, i, false, found);
        if (b.isArc()) return addLineArc(a, i, b, j, true, found);
        return addLines(a, i, b, j, found);
    }

private:
    bool areCirclesApart(const Side& a, const Side& b) const {
        const double apart = std::hypot(b.circle.x - a.circle.x, b.circle.y - a.circle.y);
        return apart > a.circle.radius + b.circle.radius + m_margin ||
               apart < std::abs(a.circle.radius - b.circle.radius) - m_margin;
    }
    bool addLines(const Side& a, std::size_t i, const Side& b, std::size_t j,
                  std::vector<Crossing>& found) const {
        const double ux = a.end.x - a.start.x;
        const double uy = a.end.y - a.start.y;
        const double vx = b.end.x - b.start.x;
        const double vy = b.end.y - b.start.y;
        const double lengthA = a.chord();
        const double lengthB = b.chord();
        const double wx = b.start.x - a.start.x;
        const double wy = b.start.y - a.start.y;
        const double across = ux * vy - uy * vx;
        if (!(lengthA > m_margin && lengthB > m_margin)) return false;
        // Both ends of one clearly on one side of the other's line: apart, however flat the angle.
        const double start = ux * wy - uy * wx;
        const double end = start + across;
        if (std::min(std::abs(start), std::abs(end)) > m_margin * lengthA && (start > 0.0) == (end > 0.0))
            return true;
        if (std::abs(across) < kClearSine * lengthA * lengthB) return false;
        const double s = (wx * vy - wy * vx) / across;
        const double t = (wx * uy - wy * ux) / across;
        const int onA = clearlyWithin(s, lengthA, m_margin / kClearSine);
        const int onB = clearlyWithin(t, lengthB, m_margin / kClearSine);
        if (onA == 0 || onB == 0) return true;
        if (onA < 0 || onB < 0) return false;
        const double x = b.start.x + vx * t;
        const double y = b.start.y + vy * t;
        found.push_back({{i, s, x, y}, {j, t, x, y}, across < 0.0});
        return true;
    }
    bool addLineArc(const Side& line, std::size_t i, const Side& arc, std::size_t j, bool isLineOfPiece,
                    std::vector<Crossing>& found) const {
        const double length = line.chord();
        if (!(length > m_margin)) return false;
        const double ux = (line.end.x - line.start.x) / length;
        const double uy = (line.end.y - line.start.y) / length;
        const double wx = arc.circle.x - line.start.x;
        const double wy = arc.circle.y - line.start.y;
        const double off = ux * wy - uy * wx;
        if (std::abs(off) > arc.circle.radius + m_margin) return true;
        const double square = (arc.circle.radius - std::abs(off)) * (arc.circle.radius + std::abs(off));
        if (square < kClearSine * kClearSine * arc.circle.radius * arc.circle.radius) return false;
        const double half = std::sqrt(square);
        for (const double side : {-half, half}) {
            const double along = ux * wx + uy * wy + side;
            const double x = line.start.x + ux * along;
            const double y = line.start.y + uy * along;
            const double share = arc.shareAt(x, y);
            const int onLine = clearlyWithin(along / length, length, m_margin / kClearSine);
            const int onArc = clearlyWithin(share, arc.run(), m_margin / kClearSine);
            if (onLine == 0 || onArc == 0) continue;
            if (onLine < 0 || onArc < 0) return false;
            const Place placeOnLine{i, along / length, x, y};
            const Place placeOnArc{j, share, x, y};
            // The line leaves the circle at the farther point, which a counter-clockwise arc passes from the
            // line's right to its left.
            const bool fromRight = (side > 0.0) == (arc.start.bulge > 0.0);
            if (isLineOfPiece)
                found.push_back({placeOnLine, placeOnArc, !fromRight});
            else
                found.push_back({placeOnArc, placeOnLine, fromRight});
        }
        return true;
    }

    double m_margin;
};

void sortUpwards(std::vector<Place>& meetings) {
    std::sort(meetings.begin(), meetings.end(), [](const Place& a, const Place& b) { return a.y < b.y; });
}

void addLineMeeting(const Side& side, std::size_t i, double x, std::vector<Place>& meetings) {
    if ((side.start.x < x) == (side.end.x < x)) return;
    const double share = (x - side.start.x) / (side.end.x - side.start.x);
    meetings.push_back({i, share, x, side.start.y + (side.end.y - side.start.y) * share});
}

/// Where a line along y crosses a loop, upwards. False unless it crosses at clear angles away from vertices.
bool clearMeetings(const std::vector<Side>& sides, double x, double margin, std::vector<Place>& meetings) {
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const Side& side = sides[i];
        if (x < side.bounds.lowX - margin || x > side.bounds.highX + margin) continue;
        if (std::abs(x - side.start.x) <= margin || std::abs(x - side.end.x) <= margin) return false;
        if (!side.isArc()) {
            if (std::abs(side.end.x - side.start.x) < kClearSine * side.chord()) return false;
            addLineMeeting(side, i, x, meetings);
            continue;
        }
        const double off = x - side.circle.x;
        const double square = (side.circle.radius - off) * (side.circle.radius + off);
        if (std::abs(square) < kClearSine * kClearSine * side.circle.radius * side.circle.radius)
            return false;
        if (square < 0.0) continue;
        for (const double half : {-std::sqrt(square), std::sqrt(square)}) {
            const double share = side.shareAt(x, side.circle.y + half);
            const int within = clearlyWithin(share, side.run(), margin / kClearSine);
            if (within < 0) return false;
            if (within > 0) meetings.push_back({i, share, x, side.circle.y + half});
        }
    }
    sortUpwards(meetings);
    return true;
}

/// Where the line along y at a loop's outermost points, or a nudge inside, meets the loop, upwards: corners
/// on the line, both ends of a segment along it, an arc close to its outermost point on either side.
std::vector<Place> outermostMeetings(const std::vector<Side>& sides, double x, double margin) {
    const double rounding = std::min(kRoundingShare * margin, kExtentsNudge * kRoundingPerNudge);
    const auto isOnLine = [&](const ContourVertex& vertex) { return std::abs(vertex.x - x) <= rounding; };
    std::vector<Place> meetings;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const Side& side = sides[i];
        if (x < side.bounds.lowX - margin || x > side.bounds.highX + margin) continue;
        // A corner counts where it starts a segment.
        if (isOnLine(side.start)) meetings.push_back({i, 0.0, x, side.start.y});
        if (!side.isArc()) {
            if (!isOnLine(side.start) && !isOnLine(side.end)) addLineMeeting(side, i, x, meetings);
            continue;
        }
        const double off = x - side.circle.x;
        const double square = (side.circle.radius - off) * (side.circle.radius + off);
        if (square < 0.0) continue;
        for (const double half : {-std::sqrt(square), std::sqrt(square)}) {
            const double y = side.circle.y + half;
            const double share = side.shareAt(x, y);
            const bool isAtCorner = (isOnLine(side.start) && std::abs(y - side.start.y) <= margin) ||
                                    (isOnLine(side.end) && std::abs(y - side.end.y) <= margin);
            if (share > 0.0 && share < 1.0 && !isAtCorner) meetings.push_back({i, share, x, y});
        }
    }
    sortUpwards(meetings);
    return meetings;
}

bool isBefore(const Place& a, const Place& b) {
    return a.segment != b.segment ? a.segment < b.segment : a.share < b.share;
}

/// Puts together a loop from runs of other loops.
class Splice {
public:
    /// From one place to another in the sense of the loop. The last point is the next run's first.
    void run(const ContourLoop& loop, const Place& from, const Place& to) {
        const std::size_t count = loop.vertices.size();
        Place at = from;
        bool isFirst = true;
        while (at.segment != to.segment || (isFirst && isBefore(to, from))) {
            add(loop, at, 1.0);
            at.segment = at.segment + 1 < count ? at.segment + 1 : 0;
            at.share = 0.0;
            at.x = loop.vertices[at.segment].x;
            at.y = loop.vertices[at.segment].y;
            isFirst = false;
        }
        if (to.share > at.share) add(loop, at, to.share);
        m_endX = to.x;
        m_endY = to.y;
    }
    /// A straight step from the last run's end to the next one's start, or to the loop's. Its index.
    std::size_t step() {
        m_result.vertices.push_back({m_endX, m_endY, 0.0});
        return m_result.vertices.size() - 1;
    }
    ContourLoop take() { return std::move(m_result); }

private:
    void add(const ContourLoop& loop, const Place& at, double toShare) {
        const double bulge = loop.vertices[at.segment].bulge;
        const double share = toShare - at.share;
        const double part = share == 1.0 || bulge == 0.0 ? bulge : std::tan(share * std::atan(bulge));
        m_result.vertices.push_back({at.x, at.y, part});
    }

    ContourLoop m_result;
    double m_endX = 0.0;
    double m_endY = 0.0;
};

/// Does an opening, run clockwise, leave a bay between two of its points on the line along y that it does not
/// cross: its run from the one to the other turns back from the line, not beyond it.
bool leavesBay(const ContourLoop& clockwiseHole, const Place& from, const Place& to, double sliver) {
    Splice splice;
    splice.run(clockwiseHole, from, to);
    (void)splice.step();
    return signedArea(splice.take()) > sliver;
}

/// A cut along y: where it meets the piece and the opening, run clockwise, each from below.
struct LineCut {
    Place pieceLow;
    Place pieceHigh;
    Place holeLow;
    Place holeHigh;
};

std::optional<LineCut> lineCut(const std::vector<Side>& piece, const std::vector<Side>& hole, double x,
                               double margin) {
    std::vector<Place> onPiece;
    if (!clearMeetings(piece, x, margin, onPiece) || onPiece.size() != 2) return std::nullopt;
    const std::vector<Place> onHole = outermostMeetings(hole, x, margin);
    if (onHole.empty() || onHole.size() > 2) return std::nullopt;
    if (onPiece[0].y > onHole.front().y - margin || onPiece[1].y < onHole.back().y + margin)
        return std::nullopt;
    return LineCut{onPiece[0], onPiece[1], onHole.front(), onHole.back()};
}

/// Is the point clearly inside the loop (1), clearly outside (0), or neither (-1).
int clearlyInside(const std::vector<Side>& sides, const ContourVertex& point, double margin) {
    std::vector<Place> meetings;
    if (!clearMeetings(sides, point.x, margin, meetings)) return -1;
    int above = 0;
    for (const Place& meeting : meetings) {
        if (std::abs(meeting.y - point.y) <= margin) return -1;
        above += meeting.y > point.y;
    }
    return above % 2;
}

/// The part of the piece between the cuts, with the crossings of its boundary and the opening's.
class Middle {
public:
    Middle(const ContourLoop& piece, const std::optional<LineCut>& left,
           const std::optional<LineCut>& right) {
        Splice splice;
        if (!left && !right) {
            m_loop = piece;
            return;
        }
        if (left && right) {
            splice.run(piece, left->pieceLow, right->pieceLow);
            addRightCut(splice, *right);
            splice.run(piece, right->pieceHigh, left->pieceHigh);
            addLeftCut(splice, *left);
        } else if (left) {
            splice.run(piece, left->pieceLow, left->pieceHigh);
            addLeftCut(splice, *left);
        } else {
            splice.run(piece, right->pieceHigh, right->pieceLow);
            addRightCut(splice, *right);
        }
        m_loop = splice.take();
    }
    /// False when a crossing is unclear.
    bool findCrossings(const std::vector<Side>& hole, const PlaneBox& holeBox, double margin) {
        const SideCrossings pairs(margin);
        for (std::size_t i = 0; i < m_loop.vertices.size(); ++i) {
            if (i == m_leftIndex || i == m_rightIndex) continue;
            const Side side(m_loop, i);
            if (!side.isNear(holeBox, margin)) continue;
            for (std::size_t j = 0; j < hole.size(); ++j)
                if (!pairs.add(side, i, hole[j], j, m_crossings)) return false;
        }
        return true;
    }
    bool hasCrossings() const { return !m_crossings.empty(); }
    /// What the opening leaves, by walks that change from the piece to the opening and back at the crossings.
    /// False when these do not alternate, or when there is more than one strip on a side.
    bool appendStrips(const ContourLoop& clockwiseHole, double sliver, std::vector<ContourLoop>& parts);

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // Down along the left cut the walk enters the opening at its upper point there, up along the right one at
    // the lower point.
    void addLeftCut(Splice& splice, const LineCut& cut) {
        m_leftIndex = splice.step();
        const double span = cut.pieceHigh.y - cut.pieceLow.y;
        const auto add = [&](const Place& place, bool isExit) {
            m_crossings.push_back(
                {{m_leftIndex, (cut.pieceHigh.y - place.y) / span, place.x, place.y}, place, isExit});
        };
        add(cut.holeHigh, false);
        add(cut.holeLow, true);
    }
    void addRightCut(Splice& splice, const LineCut& cut) {
        m_rightIndex = splice.step();
        const double span = cut.pieceHigh.y - cut.pieceLow.y;
        const auto add = [&](const Place& place, bool isExit) {
            m_crossings.push_back(
                {{m_rightIndex, (place.y - cut.pieceLow.y) / span, place.x, place.y}, place, isExit});
        };
        add(cut.holeLow, false);
        add(cut.holeHigh, true);
    }
    /// For each crossing the next one along the opening. Where a cut meets a corner of the opening, its exit
    /// comes first: between both lies what the cut takes off.
    std::vector<std::size_t> nextOnHole() const;

    ContourLoop m_loop;
    std::size_t m_leftIndex = kNone;
    std::size_t m_rightIndex = kNone;
    std::vector<Crossing> m_crossings;
};

std::vector<std::size_t> Middle::nextOnHole() const {
    std::vector<std::size_t> order(m_crossings.size());
    for (std::size_t k = 0; k < order.size(); ++k) order[k] = k;
    std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        const Crossing& first = m_crossings[a];
        const Crossing& second = m_crossings[b];
        if (isBefore(first.onHole, second.onHole)) return true;
        if (isBefore(second.onHole, first.onHole)) return false;
        return first.isExit && !second.isExit;
    });
    std::vector<std::size_t> next(order.size());
    for (std::size_t k = 0; k < order.size(); ++k) next[order[k]] = order[(k + 1) % order.size()];
    return next;
}

bool Middle::appendStrips(const ContourLoop& clockwiseHole, double sliver, std::vector<ContourLoop>& parts) {
    std::sort(m_crossings.begin(), m_crossings.end(), [](const Crossing& a, const Crossing& b) {
        if (isBefore(a.onPiece, b.onPiece)) return true;
        return !isBefore(b.onPiece, a.onPiece) && !a.isExit && b.isExit;
    });
    const std::size_t count = m_crossings.size();
    const std::vector<std::size_t> next = nextOnHole();
    std::vector<char> isUsed(count, 0);
    std::optional<ContourLoop> strips[2]; // upper, lower
    for (std::size_t first = 0; first < count; ++first) {
        if (!m_crossings[first].isExit || isUsed[first]) continue;
        Splice splice;
        double toRight = 0.0; // clockwise, the opening's upper side runs to the right
        std::size_t exit = first;
        do {
            const std::size_t enter = (exit + 1) % count;
            const std::size_t back = next[enter];
            if (m_crossings[enter].isExit || !m_crossings[back].isExit || isUsed[exit]) return false;
            isUsed[exit] = 1;
            splice.run(m_loop, m_crossings[exit].onPiece, m_crossings[enter].onPiece);
            splice.run(clockwiseHole, m_crossings[enter].onHole, m_crossings[back].onHole);
            toRight += m_crossings[back].onHole.x - m_crossings[enter].onHole.x;
            exit = back;
        } while (exit != first);
        std::optional<ContourLoop>& strip = strips[toRight > 0.0 ? 0 : 1];
        if (strip) return false;
        strip = splice.take();
        if (signedArea(*strip) <= sliver) return false;
    }
    for (std::optional<ContourLoop>& strip : strips)
        if (strip) parts.push_back(std::move(*strip));
    return true;
}

/// Without crossings one lies inside the other, or they are apart.
CleanCut relationOf(const std::vector<Side>& piece, const ContourLoop& pieceLoop,
                    const std::vector<Side>& hole, double margin) {
    const int pieceInHole = clearlyInside(hole, pieceLoop.vertices[0], margin);
    const int holeInPiece = clearlyInside(piece, hole[0].start, margin);
    if (pieceInHole < 0 || holeInPiece < 0) return CleanCut::kUnclear;
    if (pieceInHole > 0) return CleanCut::kCut;
    return holeInPiece > 0 ? CleanCut::kUnclear : CleanCut::kApart;
}

} // namespace

CleanCut cutCleanly(const ContourLoop& piece, const PlaneBox& pieceBox, const Opening& hole, double sliver,
                    std::vector<ContourLoop>& parts) {
    const double margin = kMarginShare * std::max(pieceBox.largerSide(), hole.box.largerSide());
    const std::vector<Side> sides = sidesOf(piece);
    const std::vector<Side> holeSides = sidesOf(hole.clockwise);
    const bool cutsLeft = hole.left > pieceBox.lowX + margin;
    const bool cutsRight = hole.right < pieceBox.highX - margin;
    if ((!cutsLeft && hole.left > pieceBox.lowX - margin) ||
        (!cutsRight && hole.right < pieceBox.highX + margin))
        return CleanCut::kUnclear;
    std::optional<LineCut> left;
    std::optional<LineCut> right;
    if (cutsLeft && !(left = lineCut(sides, holeSides, hole.left, margin))) return CleanCut::kUnclear;
    if (cutsRight && !(right = lineCut(sides, holeSides, hole.right, margin))) return CleanCut::kUnclear;
    if ((left && leavesBay(hole.clockwise, left->holeLow, left->holeHigh, sliver)) ||
        (right && leavesBay(hole.clockwise, right->holeHigh, right->holeLow, sliver)))
        return CleanCut::kUnclear;
    Middle middle(piece, left, right);
    if (!middle.findCrossings(holeSides, hole.box, margin)) return CleanCut::kUnclear;
    if (!middle.hasCrossings()) return relationOf(sides, piece, holeSides, margin);
    std::vector<ContourLoop> strips;
    if (!middle.appendStrips(hole.clockwise, sliver, strips)) return CleanCut::kUnclear;
    const auto addBeside = [&](const Place& from, const Place& to) {
        Splice splice;
        splice.run(piece, from, to);
        (void)splice.step();
        parts.push_back(splice.take());
    };
    if (left) addBeside(left->pieceHigh, left->pieceLow);
    if (right) addBeside(right->pieceLow, right->pieceHigh);
    for (ContourLoop& strip : strips) parts.push_back(std::move(strip));
    return CleanCut::kCut;
}

} // namespace vexo
