#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "contourpiecepairs.h"

#include "cvxlogentry.h"
#include "gearc2d.h"
#include "gelnsg2d.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace vexo;

namespace {

/// The contract's tolerances as shares of the caller's scale.
constexpr double kPointShare = 1e-05;
constexpr double kVectorShare = 1e-07;

/// The kit lets curves meet that are a few point allowances apart. Boxes and distances are widened by this
/// many of them, so that what is left out is beyond its reach.
constexpr double kReachAllowances = 8.0;
/// Two straight neighbours are told apart without the kit when all lengths concerned are this many
/// allowances long and the angle between them has at least this sine.
constexpr double kClearAllowances = 1000.0;
constexpr double kClearSine = 0.01;
/// Bound for the rounding of a cross product, relative to the product of the lengths.
constexpr double kCrossRounding = 1e-14;

double sumOfSides(const AcGeVector2d& vector) { return std::abs(vector.x) + std::abs(vector.y); }

/// What the point test can call equal lies no farther apart than this, among the points seen so far: most
/// neighbours need not be put to the test.
class WidestReach {
public:
    explicit WidestReach(const AcGeTol& tolerance)
        : m_tolerance(std::abs(tolerance.equalPoint()))
        , m_reach(m_tolerance) {}

    void see(const AcGePoint3d& point) {
        const double own = point.largestCoordinate();
        if (!(own > m_largest) || !std::isfinite(own)) return;
        m_largest = own;
        m_reach = std::max(m_tolerance, AcGe::kPointUlps * AcGe::ulpOf(own));
    }
    bool areFar(const AcGePoint3d& a, const AcGePoint3d& b) const {
        return std::abs(a.x - b.x) > m_reach || std::abs(a.y - b.y) > m_reach;
    }
    /// Without its sign, of those that are finite.
    double largestCoordinate() const { return m_largest; }

private:
    double m_tolerance;
    double m_largest = 0.0;
    double m_reach;
};

bool isFinite(const AcGePoint2d& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

PiecePairs::Box boxAround(const PiecePairs::Hull& hull) {
    const AcGePoint2d start = hull.start + hull.rise;
    const AcGePoint2d end = hull.end + hull.rise;
    return {std::min({hull.start.x, hull.end.x, start.x, end.x}) - hull.reach,
            std::max({hull.start.x, hull.end.x, start.x, end.x}) + hull.reach,
            std::min({hull.start.y, hull.end.y, start.y, end.y}) - hull.reach,
            std::max({hull.start.y, hull.end.y, start.y, end.y}) + hull.reach};
}

/// Does the other hull lie clearly on one side of this one, seen along its chord.
bool liesAside(const PiecePairs::Hull& own, const PiecePairs::Hull& other) {
    const AcGeVector2d along = own.end - own.start;
    const AcGeVector2d toStart = other.start - own.start;
    const AcGeVector2d toEnd = other.end - own.start;
    const double top = along.crossProduct(own.rise);
    const double start = along.crossProduct(toStart);
    const double end = along.crossProduct(toEnd);
    const double rise = along.crossProduct(other.rise);
    const double sizes =
        sumOfSides(toStart) + sumOfSides(toEnd) + sumOfSides(other.rise) + sumOfSides(own.rise);
    const double margin = sumOfSides(along) * (own.reach + other.reach + kCrossRounding * sizes);
    const double low = std::min(start, end) + std::min(rise, 0.0);
    const double high = std::max(start, end) + std::max(rise, 0.0);
    return low > std::max(top, 0.0) + margin || high < std::min(top, 0.0) - margin;
}

/// A contour's segments in the plane, and the contract's decision about any two of them.
class ContourSegments {
public:
    ContourSegments(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                    const AcGeVector3d& normal, double scale);

    bool anyCross() const {
        return PiecePairs::any(*this, [this](std::size_t i, std::size_t j) { return doCross(i, j); });
    }

    // What PiecePairs wants of the segments.
    std::size_t count() const { return m_count; }
    PiecePairs::Box boxOf(std::size_t i) const;
    PiecePairs::Run runOf(std::size_t first, std::size_t end) const;
    PiecePairs::Hull hullOf(std::size_t i) const;

private:
    void takeDistinct(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                      const AcGeVector3d& normal);
    void makeArc(std::size_t index, const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                 const AcGeVector3d& normal);
    PiecePairs::Hull hullOf(const AcGeCircArc2d& arc, const AcGePoint2d& start, const AcGePoint2d& end) const;
    PiecePairs::Run straightRunOf(std::size_t first, std::size_t end) const;

    const AcGePoint2d& startOf(std::size_t i) const { return m_points[i]; }
    const AcGePoint2d& endOf(std::size_t i) const { return m_points[i + 1 < m_points.size() ? i + 1 : 0]; }
    const AcGeCircArc2d* arcOf(std::size_t i) const {
        return m_arcNumbers.empty() || m_arcNumbers[i] < 0
                   ? nullptr
                   : &m_arcs[static_cast<std::size_t>(m_arcNumbers[i])];
    }

    bool doCross(std::size_t i, std::size_t j) const;
    bool doLinesCross(std::size_t i, std::size_t j) const;
    bool doArcsCross(std::size_t i, std::size_t j, const AcGeCircArc2d* arc1,
                     const AcGeCircArc2d* arc2) const;
    bool areClearNeighbours(const AcGePoint2d& common, const AcGePoint2d& far1,
                            const AcGePoint2d& far2) const;
    bool lieApart(std::size_t i, std::size_t j) const {
        const PiecePairs::Hull hull1 = hullOf(i);
        const PiecePairs::Hull hull2 = hullOf(j);
        return liesAside(hull1, hull2) || liesAside(hull2, hull1);
    }
    bool isEndOf(const AcGePoint2d& point, std::size_t segment) const {
        return point.isEqualTo(startOf(segment), m_tolerance) || point.isEqualTo(endOf(segment), m_tolerance);
    }
    bool haveSameEnds(std::size_t i, std::size_t j) const;

    AcGeTol m_tolerance;
    std::vector<AcGePoint2d> m_points;
    std::size_t m_count = 0;       ///< of segments: points that have a bulge
    std::vector<int> m_arcNumbers; ///< per segment, -1 for a straight one; empty when all are straight
    std::vector<AcGeCircArc2d> m_arcs;
    std::vector<PiecePairs::Hull> m_arcHulls;
    double m_allowance = 0.0;         ///< of the point test at the largest coordinate
    double m_clear = 0.0;             ///< lengths beyond this are clear of the point test
    bool m_hasClearTolerance = false; ///< so is the distance at which a crossing is a vertex
};

ContourSegments::ContourSegments(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                 const AcGeVector3d& normal, double scale) {
    m_tolerance.setEqualPoint(scale * kPointShare);
    m_tolerance.setEqualVector(scale * kVectorShare);
    takeDistinct(points, bulges, normal);
    m_clear = kClearAllowances * m_allowance;
    m_hasClearTolerance = m_tolerance.equalPoint() >= m_clear;
    m_arcHulls.reserve(m_arcs.size());
    for (std::size_t i = 0; i < m_count && !m_arcs.empty(); ++i)
        if (const AcGeCircArc2d* arc = arcOf(i)) m_arcHulls.push_back(hullOf(*arc, startOf(i), endOf(i)));
}

// A point equal to the one that stays before it goes with its bulge. Points without a bulge always stay. One
// walk over the input, for the whole question takes few walks more.
void ContourSegments::takeDistinct(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                   const AcGeVector3d& normal) {
    const int length = points.length();
    const int compared = std::min(length, bulges.length());
    WidestReach widest(m_tolerance);
    int last = -1; // point that stays
    m_points.reserve(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) {
        const AcGePoint3d& point = points[i];
        widest.see(point);
        if (last >= 0 && i < compared && !widest.areFar(point, points[last]) &&
            point.isEqualTo(points[last], m_tolerance))
            continue;
        if (last >= 0 && last < compared && isArcBulge(bulges[last]))
            makeArc(m_points.size() - 1, points[last], point, bulges[last], normal);
        last = i;
        m_points.emplace_back(point.x, point.y);
    }
    const std::size_t withoutBulge = static_cast<std::size_t>(length - compared);
    m_count = m_points.size() - withoutBulge;
    if (withoutBulge == 0 && isArcBulge(bulges[last]))
        makeArc(m_count - 1, points[last], points[0], bulges[last], normal);
    m_allowance = AcGe::pointAllowance(AcGeContext::gTol, widest.largestCoordinate());
}

void ContourSegments::makeArc(std::size_t index, const AcGePoint3d& start, const AcGePoint3d& end,
                              double bulge, const AcGeVector3d& normal) {
    const AcGeVector3d chord = end - start;
    const AcGePoint3d apex = start + chord / 2 - bulge * chord.crossProduct(normal).normal(AcGeContext::gTol);
    const AcGeCircArc2d arc(AcGePoint2d(start.x, start.y), AcGePoint2d(apex.x, apex.y),
                            AcGePoint2d(end.x, end.y));
    // Too flat to be told from its chord: the segment stays straight.
    if (!(arc.radius() > 0.0) || !std::isfinite(arc.radius())) return;
    if (m_arcNumbers.empty()) m_arcNumbers.assign(m_points.capacity(), -1);
    m_arcNumbers[index] = static_cast<int>(m_arcs.size());
    m_arcs.push_back(arc);
}

// An arc of up to half a circle lies between its chord and the chord moved to the apex; a longer one is held
// by the circle's square.
PiecePairs::Hull ContourSegments::hullOf(const AcGeCircArc2d& arc, const AcGePoint2d& start,
                                         const AcGePoint2d& end) const {
    const double own = AcGe::pointAllowance(AcGeContext::gTol, arc.coordinateMagnitude());
    const double reach = kReachAllowances * std::max(m_allowance, own);
    if (arc.endAng() - arc.startAng() > AcGe::kPi) {
        const AcGeVector2d half(arc.radius(), arc.radius());
        const AcGePoint2d corner = arc.center() - half;
        return {corner, {corner.x + 2.0 * half.x, corner.y}, {0.0, 2.0 * half.y}, reach};
    }
    const AcGePoint2d apex = arc.evalPoint((arc.startAng() + arc.endAng()) / 2);
    return {start, end, apex - (start + (end - start) / 2), reach};
}

PiecePairs::Hull ContourSegments::hullOf(std::size_t i) const {
    if (arcOf(i)) return m_arcHulls[static_cast<std::size_t>(m_arcNumbers[i])];
    return {startOf(i), endOf(i), {}, kReachAllowances * m_allowance};
}

PiecePairs::Box ContourSegments::boxOf(std::size_t i) const {
    if (arcOf(i)) return boxAround(m_arcHulls[static_cast<std::size_t>(m_arcNumbers[i])]);
    const AcGePoint2d& start = startOf(i);
    const AcGePoint2d& end = endOf(i);
    const double reach = kReachAllowances * m_allowance;
    return {std::min(start.x, end.x) - reach, std::max(start.x, end.x) + reach,
            std::min(start.y, end.y) - reach, std::max(start.y, end.y) + reach};
}

PiecePairs::Run ContourSegments::runOf(std::size_t first, std::size_t end) const {
    bool isStraight = true;
    for (std::size_t i = first; i < end && !m_arcs.empty(); ++i) isStraight = isStraight && !arcOf(i);
    if (isStraight) return straightRunOf(first, end);
    PiecePairs::Run run{BoxChain::emptyBox(), PiecePairs::kNone};
    for (std::size_t i = first; i < end; ++i) run.box.extend(boxOf(i));
    return run;
}

// Segments that follow on each other within a quarter turn, each long enough to be clear of the point test,
// meet nowhere but where they follow on. All comparisons are such that a NaN does not count, but for the
// length, where it does.
PiecePairs::Run ContourSegments::straightRunOf(std::size_t first, std::size_t end) const {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    AcGePoint2d at = startOf(first);
    double lowX = std::min(infinity, at.x), highX = std::max(-infinity, at.x);
    double lowY = std::min(infinity, at.y), highY = std::max(-infinity, at.y);
    double leastX = infinity, mostX = -infinity, leastY = infinity, mostY = -infinity;
    bool areClear = m_hasClearTolerance;
    for (std::size_t i = first; i < end; ++i) {
        const AcGePoint2d next = endOf(i);
        const AcGeVector2d step = next - at;
        lowX = std::min(lowX, next.x);
        highX = std::max(highX, next.x);
        lowY = std::min(lowY, next.y);
        highY = std::max(highY, next.y);
        leastX = std::min(leastX, step.x);
        mostX = std::max(mostX, step.x);
        leastY = std::min(leastY, step.y);
        mostY = std::max(mostY, step.y);
        areClear &= sumOfSides(step) > 2.0 * m_clear;
        at = next;
    }
    const double reach = kReachAllowances * m_allowance;
    const unsigned int headings = PiecePairs::headingsOf(leastX, mostX, leastY, mostY);
    return {{lowX - reach, highX + reach, lowY - reach, highY + reach},
            static_cast<std::uint8_t>(areClear ? headings : 0)};
}

bool ContourSegments::doCross(std::size_t i, std::size_t j) const {
    for (const AcGePoint2d& point : {startOf(i), endOf(i), startOf(j), endOf(j)})
        if (!isFinite(point)) return false;
    const AcGeCircArc2d* arc1 = arcOf(i);
    const AcGeCircArc2d* arc2 = arcOf(j);
    return arc1 || arc2 ? doArcsCross(i, j, arc1, arc2) : doLinesCross(i, j);
}

// Neighbours with one end in common that go clearly different ways meet there and nowhere else.
bool ContourSegments::areClearNeighbours(const AcGePoint2d& common, const AcGePoint2d& far1,
                                         const AcGePoint2d& far2) const {
    const AcGeVector2d u = far1 - common;
    const AcGeVector2d v = far2 - common;
    const double length1 = u.lengthSqrd();
    const double length2 = v.lengthSqrd();
    if (!m_hasClearTolerance || !(std::min(length1, length2) > m_clear * m_clear)) return false;
    if (u.dotProduct(v) < 0.0) return true;
    const double cross = u.crossProduct(v);
    return cross * cross > kClearSine * kClearSine * length1 * length2;
}

bool ContourSegments::doLinesCross(std::size_t i, std::size_t j) const {
    const bool followsOn = j == i + 1;
    const bool comesRound = i == 0 && j + 1 == m_points.size();
    if (followsOn && areClearNeighbours(startOf(j), startOf(i), endOf(j))) return false;
    if (comesRound && areClearNeighbours(startOf(i), endOf(i), startOf(j))) return false;
    if (lieApart(i, j)) return false;
    const AcGeLineSeg2d first(startOf(i), endOf(i));
    const AcGeLineSeg2d second(startOf(j), endOf(j));
    AcGePoint2d point;
    if (first.intersectWith(second, point, AcGeContext::gTol)) return !isEndOf(point, j);
    return first.isOn(endOf(j), AcGeContext::gTol) || second.isOn(startOf(i), AcGeContext::gTol);
}

bool ContourSegments::haveSameEnds(std::size_t i, std::size_t j) const {
    const auto isSame = [&](const AcGePoint2d& a, const AcGePoint2d& b) {
        return a.isEqualTo(b, m_tolerance);
    };
    return (isSame(startOf(i), startOf(j)) && isSame(endOf(i), endOf(j))) ||
           (isSame(startOf(i), endOf(j)) && isSame(endOf(i), startOf(j)));
}

bool ContourSegments::doArcsCross(std::size_t i, std::size_t j, const AcGeCircArc2d* arc1,
                                  const AcGeCircArc2d* arc2) const {
    if (lieApart(i, j)) return false;
    int count = 0;
    AcGePoint2d point;
    AcGePoint2d other;
    if (arc1 && arc2)
        arc1->intersectWith(*arc2, count, point, other, AcGeContext::gTol);
    else if (arc1)
        arc1->intersectWith(AcGeLineSeg2d(startOf(j), endOf(j)), count, point, other, AcGeContext::gTol);
    else
        arc2->intersectWith(AcGeLineSeg2d(startOf(i), endOf(i)), count, point, other, AcGeContext::gTol);
    if (count == 2) return !haveSameEnds(i, j);
    if (count == 1) return !isEndOf(point, j);
    if (!arc1 || !arc2) return false;
    return arc1->isOn(endOf(j), AcGeContext::gTol) || arc2->isOn(startOf(i), AcGeContext::gTol);
}

} // namespace

namespace VEXOGeometryTools {

bool isSelfIntersecting(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                        const AcGeVector3d& normal, double scale) {
    CVxLogEntry entry(L"VEXOGeometryTools::isSelfIntersecting");
    if (points.isEmpty() || bulges.isEmpty()) return false;
    return ContourSegments(points, bulges, normal, scale).anyCross();
}

} // namespace VEXOGeometryTools
