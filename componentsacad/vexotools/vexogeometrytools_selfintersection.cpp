#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "boxchain.h"

#include "cvxlogentry.h"
#include "gearc2d.h"
#include "gelnsg2d.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using VEXOGeometryTools::isArcBulge;

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

/// The axes in which the contour's sides, weighed by their squared lengths, run along x: the boxes of long
/// parallel sides are thin there, whatever way the contour is turned.
AcGeVector2d mainDirection(const std::vector<AcGePoint2d>& points) {
    double cosine = 0.0;
    double sine = 0.0;
    double weight = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const AcGeVector2d side = points[i] - points[i - 1];
        cosine += side.x * side.x - side.y * side.y;
        sine += 2.0 * side.x * side.y;
        weight += side.lengthSqrd();
    }
    constexpr double clearlyOneWay = 0.1;
    const bool isClear = std::isfinite(weight) && std::hypot(cosine, sine) > clearlyOneWay * weight;
    if (!isClear) return AcGeVector2d::kXAxis;
    const double angle = std::atan2(sine, cosine) / 2.0;
    return {std::cos(angle), std::sin(angle)};
}

/// A contour's segments in the plane, and the contract's decision about any two of them.
class ContourSegments {
public:
    ContourSegments(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                    const AcGeVector3d& normal, double scale);

    bool anyCross() const;

private:
    void takeDistinct(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                      const AcGeVector3d& normal);
    void makeArc(std::size_t index, const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                 const AcGeVector3d& normal);
    BoxChain::Box boxOf(std::size_t index, const AcGeVector2d& axis) const;

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
    bool liesAside(std::size_t line, std::size_t other) const;
    bool isEndOf(const AcGePoint2d& point, std::size_t segment) const {
        return point.isEqualTo(startOf(segment), m_tolerance) || point.isEqualTo(endOf(segment), m_tolerance);
    }
    bool haveSameEnds(std::size_t i, std::size_t j) const;

    AcGeTol m_tolerance;
    std::vector<AcGePoint2d> m_points;
    std::size_t m_count = 0;       ///< of segments: points that have a bulge
    std::vector<int> m_arcNumbers; ///< per segment, -1 for a straight one; empty when all are straight
    std::vector<AcGeCircArc2d> m_arcs;
    double m_allowance = 0.0; ///< of the point test at the largest coordinate
};

ContourSegments::ContourSegments(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                 const AcGeVector3d& normal, double scale) {
    m_tolerance.setEqualPoint(scale * kPointShare);
    m_tolerance.setEqualVector(scale * kVectorShare);
    takeDistinct(points, bulges, normal);
    double largest = 0.0;
    for (const AcGePoint2d& point : m_points)
        if (std::isfinite(point.x) && std::isfinite(point.y))
            largest = std::max(largest, point.largestCoordinate());
    m_allowance = AcGe::pointAllowance(AcGeContext::gTol, largest);
}

// A point equal to the one that stays before it goes with its bulge. Points without a bulge always stay.
void ContourSegments::takeDistinct(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                   const AcGeVector3d& normal) {
    const int compared = std::min(points.length(), bulges.length());
    std::vector<int> kept;
    kept.reserve(static_cast<std::size_t>(points.length()));
    for (int i = 0; i < points.length(); ++i)
        if (i == 0 || i >= compared || !points[i].isEqualTo(points[kept.back()], m_tolerance))
            kept.push_back(i);
    m_points.reserve(kept.size());
    for (const int i : kept) {
        m_points.emplace_back(points[i].x, points[i].y);
        if (i < compared) ++m_count;
    }
    for (std::size_t k = 0; k < m_count; ++k) {
        const double bulge = bulges[kept[k]];
        if (!isArcBulge(bulge)) continue;
        makeArc(k, points[kept[k]], points[kept[k + 1 < kept.size() ? k + 1 : 0]], bulge, normal);
    }
}

void ContourSegments::makeArc(std::size_t index, const AcGePoint3d& start, const AcGePoint3d& end,
                              double bulge, const AcGeVector3d& normal) {
    const AcGeVector3d chord = end - start;
    const AcGePoint3d apex = start + chord / 2 - bulge * chord.crossProduct(normal).normal(AcGeContext::gTol);
    const AcGeCircArc2d arc(AcGePoint2d(start.x, start.y), AcGePoint2d(apex.x, apex.y),
                            AcGePoint2d(end.x, end.y));
    // Too flat to be told from its chord: the segment stays straight.
    if (!(arc.radius() > 0.0) || !std::isfinite(arc.radius())) return;
    if (m_arcNumbers.empty()) m_arcNumbers.assign(m_count, -1);
    m_arcNumbers[index] = static_cast<int>(m_arcs.size());
    m_arcs.push_back(arc);
}

// Of an arc the box of its chord and the chord moved to the apex, or of the circle when it is more than half
// of it.
BoxChain::Box ContourSegments::boxOf(std::size_t index, const AcGeVector2d& axis) const {
    const AcGeVector2d across = axis.perpVector();
    const auto turned = [&](const AcGePoint2d& point) {
        return AcGePoint2d(point.asVector().dotProduct(axis), point.asVector().dotProduct(across));
    };
    const auto boxAround = [](const AcGePoint2d& a, const AcGePoint2d& b, double reach) {
        return BoxChain::Box{std::min(a.x, b.x) - reach, std::max(a.x, b.x) + reach,
                             std::min(a.y, b.y) - reach, std::max(a.y, b.y) + reach};
    };
    const AcGePoint2d& start = startOf(index);
    const AcGePoint2d& end = endOf(index);
    if (!std::isfinite(sumOfSides(start.asVector()) + sumOfSides(end.asVector())))
        return BoxChain::emptyBox();
    const AcGeCircArc2d* arc = arcOf(index);
    if (!arc) return boxAround(turned(start), turned(end), kReachAllowances * m_allowance);
    const double reach =
        kReachAllowances *
        std::max(m_allowance, AcGe::pointAllowance(AcGeContext::gTol, arc->coordinateMagnitude()));
    const AcGePoint2d center = turned(arc->center());
    if (arc->endAng() - arc->startAng() > AcGe::kPi) return boxAround(center, center, arc->radius() + reach);
    const AcGePoint2d apex = arc->evalPoint((arc->startAng() + arc->endAng()) / 2);
    const AcGeVector2d rise = apex - (start + (end - start) / 2);
    BoxChain::Box box = boxAround(turned(start), turned(end), reach);
    box.extend(boxAround(turned(start + rise), turned(end + rise), reach));
    return box;
}

bool ContourSegments::anyCross() const {
    const AcGeVector2d axis = mainDirection(m_points);
    std::vector<BoxChain::Box> boxes;
    boxes.reserve(m_count);
    for (std::size_t i = 0; i < m_count; ++i) boxes.push_back(boxOf(i, axis));
    return BoxChain(std::move(boxes)).anyPair([&](std::size_t i, std::size_t j) { return doCross(i, j); });
}

bool ContourSegments::doCross(std::size_t i, std::size_t j) const {
    const AcGeCircArc2d* arc1 = arcOf(i);
    const AcGeCircArc2d* arc2 = arcOf(j);
    return arc1 || arc2 ? doArcsCross(i, j, arc1, arc2) : doLinesCross(i, j);
}

// Neighbours with one end in common that go clearly different ways meet there and nowhere else.
bool ContourSegments::areClearNeighbours(const AcGePoint2d& common, const AcGePoint2d& far1,
                                         const AcGePoint2d& far2) const {
    const double clear = kClearAllowances * m_allowance;
    const AcGeVector2d u = far1 - common;
    const AcGeVector2d v = far2 - common;
    const double length1 = u.lengthSqrd();
    const double length2 = v.lengthSqrd();
    if (!(std::min(length1, length2) > clear * clear) || !(m_tolerance.equalPoint() >= clear)) return false;
    if (u.dotProduct(v) < 0.0) return true;
    const double cross = u.crossProduct(v);
    return cross * cross > kClearSine * kClearSine * length1 * length2;
}

// Do both ends of the other segment lie clearly on one side of this one's line.
bool ContourSegments::liesAside(std::size_t line, std::size_t other) const {
    const AcGeVector2d direction = endOf(line) - startOf(line);
    const AcGeVector2d toStart = startOf(other) - startOf(line);
    const AcGeVector2d toEnd = endOf(other) - startOf(line);
    const double margin =
        sumOfSides(direction) *
        (kReachAllowances * m_allowance + kCrossRounding * std::max(sumOfSides(toStart), sumOfSides(toEnd)));
    const double side1 = direction.crossProduct(toStart);
    const double side2 = direction.crossProduct(toEnd);
    return (side1 > margin && side2 > margin) || (side1 < -margin && side2 < -margin);
}

bool ContourSegments::doLinesCross(std::size_t i, std::size_t j) const {
    const bool followsOn = j == i + 1;
    const bool comesRound = i == 0 && j + 1 == m_points.size();
    if (followsOn && areClearNeighbours(startOf(j), startOf(i), endOf(j))) return false;
    if (comesRound && areClearNeighbours(startOf(i), endOf(i), startOf(j))) return false;
    if (liesAside(i, j) || liesAside(j, i)) return false;
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
