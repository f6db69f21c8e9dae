#include "polylineshape.h"

#include "curveintersection.h"
#include "entitycoordinates.h"

#include "gebndblock3d.h"
#include "geline3d.h"
#include "gelnsg3d.h"
#include "geplane.h"

namespace hostkit {

namespace {

double lengthOf(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    const double chord = start.distanceTo(end);
    // The sine of half the sweep is 2 b / (1 + b^2).
    return bulge == 0.0 ? chord : chord * (std::atan(bulge) / bulge) * (1.0 + bulge * bulge);
}

AcGeVector3d turned(const AcGeVector3d& v, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {v.x * c - v.y * s, v.x * s + v.y * c, v.z};
}

/// The point at a fraction of a segment's sweep. The chord to it is the whole chord turned and shortened,
/// which holds for the flattest arcs too, where a centre would be too far to compute with.
AcGePoint3d pointOn(const AcGePoint3d& start, const AcGePoint3d& end, double bulge, double fraction) {
    if (fraction <= 0.0) return start;
    if (fraction >= 1.0) return end;
    const AcGeVector3d chord = end - start;
    const double half = 2.0 * std::atan(bulge);
    if (half == 0.0) return start + chord * fraction;
    return start + turned(chord, (fraction - 1.0) * half) * (std::sin(fraction * half) / std::sin(half));
}

double radiusOf(double chord, double bulge) {
    const double size = std::abs(bulge);
    return chord * (1.0 / size + size) / 4.0;
}

double clampFraction(double fraction) { return fraction >= 0.0 ? std::min(fraction, 1.0) : 0.0; }

double closestOnLine(const AcGePoint3d& start, const AcGePoint3d& end, const AcGePoint3d& point) {
    const AcGeVector3d chord = end - start;
    const double square = chord.lengthSqrd();
    return square > 0.0 ? clampFraction((point - start).dotProduct(chord) / square) : 0.0;
}

/// Fraction of the arc's point nearest to a point, both in the chain's plane; the nearer end where the
/// point's direction from the centre lies outside the sweep. Worked in differences from the start along the
/// tangent and the radius there, since a flat arc's centre is too far away to count angles from.
double closestOnArc(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                    const AcGePoint3d& point) {
    const double sweep = 4.0 * std::atan(bulge);
    const AcGeVector3d chord = end - start;
    const double length = chord.length();
    const AcGeVector3d tangent = turned(chord / length, -sweep / 2.0);
    const AcGeVector3d offset = point - start;
    const double along = offset.x * tangent.x + offset.y * tangent.y;
    const double across = std::copysign(1.0, bulge) * (tangent.x * offset.y - tangent.y * offset.x);
    double angle = std::atan2(along, radiusOf(length, bulge) - across);
    const double whole = std::abs(sweep);
    const double beyond = (AcGe::kTwoPi - whole) / 2.0;
    if (angle < -beyond) angle += AcGe::kTwoPi;
    return clampFraction(angle / whole);
}

/// Fraction of the segment's point nearest to `point`, which is given in the chain's coordinates.
double closestOn(const AcGePoint3d& start, const AcGePoint3d& end, double bulge, const AcGePoint3d& point) {
    const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
    if (bulge != 0.0 && isArcSegment(start.distanceTo(end), bulge, magnitude))
        return closestOnArc(start, end, bulge, point);
    return closestOnLine(start, end, point);
}

/// How far points of the segment may be off it: what the point test allows at its coordinates, on an arc at
/// its radius too, since whoever computes points by way of the centre cannot do better.
double allowanceOn(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
    const double chord = start.distanceTo(end);
    if (bulge != 0.0 && isArcSegment(chord, bulge, magnitude))
        magnitude = std::max(magnitude, radiusOf(chord, bulge));
    return AcGe::pointAllowance(AcGeContext::gTol, magnitude);
}

/// A segment lies within this distance of its chord's middle.
double reachOf(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    return start.distanceTo(end) * 0.5 * std::max(1.0, std::abs(bulge));
}

/// Area between an arc and its chord as a share of the chord's square, positive for a positive bulge:
/// (t - sin t) / (8 sin^2(t/2)) for the sweep t, with sin(t/2) = 2 b / (1 + b^2). By its series where the
/// difference would cancel.
double shareAboveChord(double bulge) {
    constexpr double seriesLimit = 0.05;
    const double square = bulge * bulge;
    if (std::abs(bulge) < seriesLimit)
        return bulge *
               (1.0 / 3.0 +
                square * (1.0 / 15.0 - square * (1.0 / 105.0 - square * (1.0 / 315.0 - square / 693.0))));
    const double sum = 1.0 + square;
    return (sum * sum * std::atan(bulge) - bulge * (1.0 - square)) / (8.0 * square);
}

} // namespace

PolylineShape::PolylineShape(const AcGePoint2d* points, const double* bulges, std::size_t count, bool closed,
                             const AcGeVector3d& normal, double elevation)
    : m_points2d(points)
    , m_bulges(bulges)
    , m_count(count)
    , m_closed(closed)
    , m_isFlat(isZAxis(normal))
    , m_normal(normal)
    , m_elevation(elevation) {}

PolylineShape::PolylineShape(const AcGePoint3d* points, std::size_t count, bool closed)
    : m_points3d(points)
    , m_count(count)
    , m_closed(closed)
    , m_isFlat(true) {}

AcGePoint3d PolylineShape::toWorld(const AcGePoint3d& local) const {
    return m_isFlat ? local : hostkit::toWorld(m_normal, local);
}

AcGePoint3d PolylineShape::toLocal(const AcGePoint3d& world) const {
    return m_isFlat ? world : hostkit::toEntity(m_normal, world);
}

bool PolylineShape::locate(double parameter, std::size_t& index, double& fraction) const {
    const double end = endParameter();
    const double slack = kParameterTolerance * std::max(1.0, end);
    if (!(parameter >= -slack && parameter <= end + slack)) return false;
    const double inside = std::min(std::max(parameter, 0.0), end);
    index = std::min(static_cast<std::size_t>(inside), segmentCount() - 1);
    fraction = inside - static_cast<double>(index);
    return true;
}

Acad::ErrorStatus PolylineShape::pointAt(double parameter, AcGePoint3d& point) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    std::size_t index = 0;
    double fraction = 0.0;
    if (!locate(parameter, index, fraction)) return Acad::eInvalidInput;
    const Ends ends = segment(index);
    point = toWorld(pointOn(ends.start, ends.end, ends.bulge, fraction));
    return Acad::eOk;
}

Acad::ErrorStatus PolylineShape::parameterAt(const AcGePoint3d& point, double& parameter) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    const AcGePoint3d local = toLocal(point);
    for (std::size_t i = 0; i < segmentCount(); ++i) {
        const Ends ends = segment(i);
        const double allowed = allowanceOn(ends.start, ends.end, ends.bulge);
        const double reach = reachOf(ends.start, ends.end, ends.bulge) * (1.0 + 1e-12) + 2.0 * allowed;
        const AcGePoint3d middle = ends.start + (ends.end - ends.start) * 0.5;
        if (!(local.distanceSqrdTo(middle) <= reach * reach)) continue;
        const double fraction = closestOn(ends.start, ends.end, ends.bulge, local);
        if (!(pointOn(ends.start, ends.end, ends.bulge, fraction).distanceTo(local) <= allowed)) continue;
        // Vertices have whole numbers, so that cuts there leave no slivers; a closed chain's seam has 0.
        const std::size_t next = m_closed && i + 1 == m_count ? 0 : i + 1;
        if (local.isEqualTo(ends.start))
            parameter = static_cast<double>(i);
        else if (local.isEqualTo(ends.end))
            parameter = static_cast<double>(next);
        else
            parameter = static_cast<double>(i) + fraction;
        return Acad::eOk;
    }
    return Acad::eInvalidInput;
}

Acad::ErrorStatus PolylineShape::distanceAt(double parameter, double& distance) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    std::size_t index = 0;
    double fraction = 0.0;
    if (!locate(parameter, index, fraction)) return Acad::eInvalidInput;
    double sum = 0.0;
    for (std::size_t i = 0; i <= index; ++i) {
        const Ends ends = segment(i);
        sum += lengthOf(ends.start, ends.end, ends.bulge) * (i < index ? 1.0 : fraction);
    }
    distance = sum;
    return Acad::eOk;
}

Acad::ErrorStatus PolylineShape::parameterAtDistance(double distance, double& parameter) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    const double slack = kParameterTolerance * std::max(1.0, std::abs(distance));
    if (!(distance >= -slack)) return Acad::eInvalidInput;
    double rest = std::max(distance, 0.0);
    for (std::size_t i = 0; i < segmentCount(); ++i) {
        const Ends ends = segment(i);
        const double length = lengthOf(ends.start, ends.end, ends.bulge);
        if (rest < length) {
            parameter = static_cast<double>(i) + rest / length;
            return Acad::eOk;
        }
        rest -= length;
    }
    if (rest > slack) return Acad::eInvalidInput;
    parameter = endParameter();
    return Acad::eOk;
}

Acad::ErrorStatus PolylineShape::derivative(double parameter, int order, AcGeVector3d& result) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    std::size_t index = 0;
    double fraction = 0.0;
    if (!locate(parameter, index, fraction)) return Acad::eInvalidInput;
    const Ends ends = segment(index);
    const double sweep = 4.0 * std::atan(ends.bulge);
    AcGeVector3d local = ends.end - ends.start;
    if (sweep == 0.0)
        local = order == 1 ? local : AcGeVector3d::kIdentity;
    else {
        local = turned(local, (fraction - 0.5) * sweep) * (sweep / (2.0 * std::sin(sweep / 2.0)));
        if (order == 2) local = AcGeVector3d(-local.y, local.x, 0.0) * sweep;
    }
    result = m_isFlat ? local : hostkit::toWorld(m_normal, local);
    return Acad::eOk;
}

bool PolylineShape::extendedClosest(const AcGePoint3d& given, std::size_t index, bool atStart,
                                    AcGePoint3d& closest) const {
    AcGeCircArc3d arc;
    if (arcSegment(index, arc)) {
        arc.setAngles(0.0, AcGe::kTwoPi);
        closest = arc.closestPointTo(given);
        return true;
    }
    const Ends ends = segment(index);
    const AcGePoint3d base = toWorld(atStart ? ends.start : ends.end);
    const AcGeVector3d outward = base - toWorld(atStart ? ends.end : ends.start);
    if (outward.isZeroLength()) return false;
    closest = base + outward * std::max(0.0, (given - base).dotProduct(outward) / outward.lengthSqrd());
    return true;
}

Acad::ErrorStatus PolylineShape::closestPoint(const AcGePoint3d& given, bool extend,
                                              AcGePoint3d& closest) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    if (!isFinite(given)) return Acad::eInvalidInput;
    const AcGePoint3d local = toLocal(given);
    double best = std::numeric_limits<double>::infinity();
    AcGePoint3d found = vertex(0);
    for (std::size_t i = 0; i < segmentCount(); ++i) {
        const Ends ends = segment(i);
        const AcGePoint3d middle = ends.start + (ends.end - ends.start) * 0.5;
        const double reach = reachOf(ends.start, ends.end, ends.bulge);
        const double nearest = local.distanceTo(middle) - reach;
        if (nearest > 0.0 && nearest * nearest > best) continue;
        const double fraction = closestOn(ends.start, ends.end, ends.bulge, local);
        const AcGePoint3d candidate = pointOn(ends.start, ends.end, ends.bulge, fraction);
        const double square = candidate.distanceSqrdTo(local);
        if (!(square < best)) continue;
        best = square;
        found = candidate;
    }
    closest = toWorld(found);
    if (!extend || m_closed) return Acad::eOk;
    for (const bool atStart : {true, false}) {
        AcGePoint3d beyond;
        if (!extendedClosest(given, atStart ? 0 : segmentCount() - 1, atStart, beyond)) continue;
        if (beyond.distanceSqrdTo(given) < closest.distanceSqrdTo(given)) closest = beyond;
    }
    return Acad::eOk;
}

Acad::ErrorStatus PolylineShape::closestPointAlong(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                   AcGePoint3d& closest) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    if (!isFinite(given) || direction.isZeroLength()) return Acad::eInvalidInput;
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < segmentCount(); ++i) {
        AcGeCircArc3d arc;
        const Ends ends = segment(i);
        const AcGePoint3d candidate =
            arcSegment(i, arc)
                ? arc.projClosestPointTo(given, direction)
                : AcGeLineSeg3d(toWorld(ends.start), toWorld(ends.end)).projClosestPointTo(given, direction);
        const double square = (candidate - given).orthoProject(direction).lengthSqrd();
        if (!(square < best)) continue;
        best = square;
        closest = candidate;
    }
    return Acad::eOk;
}

Acad::ErrorStatus PolylineShape::area(double& area) const {
    if (segmentCount() == 0) return Acad::eDegenerateGeometry;
    // Differences from the first vertex: a chain far from the origin loses nothing.
    const AcGePoint3d origin = vertex(0);
    AcGeVector3d twice;
    double arcs = 0.0;
    for (std::size_t i = 0; i < segmentCount(); ++i) {
        const Ends ends = segment(i);
        twice += (ends.start - origin).crossProduct(ends.end - origin);
        if (ends.bulge != 0.0) arcs += ends.start.distanceSqrdTo(ends.end) * shareAboveChord(ends.bulge);
    }
    if (m_points2d) {
        area = std::abs(twice.z / 2.0 + arcs);
        return Acad::eOk;
    }
    const AcGePlane plane(origin, twice);
    for (std::size_t i = 0; i < m_count; ++i)
        if (twice.length() > 0.0 && !plane.isOn(vertex(i))) return Acad::eNotApplicable;
    area = twice.length() / 2.0;
    return Acad::eOk;
}

namespace {

/// Does the arc surely lie in the box, seen along z: between its chord and the chord moved to its apex, or,
/// of more than half a circle, within half its height of the chord's middle. Most arcs of a contour do, and
/// their own extremes, which take sines and cosines, need not be known.
bool liesArcWithin(const AcDbExtents& box, const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    const double size = std::abs(bulge);
    const double chordX = end.x - start.x;
    const double chordY = end.y - start.y;
    // Half the chord, or a little more: no root.
    const double half = (std::abs(chordX) + std::abs(chordY)) * 0.5;
    const double radius = half * (size + 1.0 / size) * 0.5;
    const double magnitude = std::max({start.largestCoordinate(), end.largestCoordinate(), radius});
    const double slack = AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    const double riseX = size <= 1.0 ? 0.5 * bulge * chordY : 0.0;
    const double riseY = size <= 1.0 ? -0.5 * bulge * chordX : 0.0;
    const double reach = size <= 1.0 ? slack : half * size + slack;
    const double lowX = std::min(start.x, end.x) + std::min(riseX, 0.0);
    const double highX = std::max(start.x, end.x) + std::max(riseX, 0.0);
    const double lowY = std::min(start.y, end.y) + std::min(riseY, 0.0);
    const double highY = std::max(start.y, end.y) + std::max(riseY, 0.0);
    return box.minPoint().x <= lowX - reach && highX + reach <= box.maxPoint().x &&
           box.minPoint().y <= lowY - reach && highY + reach <= box.maxPoint().y;
}

} // namespace

AcDbExtents PolylineShape::boxOfVertices() const {
    AcDbExtents box;
    if (!m_points2d || !m_isFlat) {
        for (std::size_t i = 0; i < m_count; ++i) box.addPoint(worldVertex(i));
        return box;
    }
    if (m_count == 0) return box;
    AcGePoint2d low = m_points2d[0];
    AcGePoint2d high = low;
    for (std::size_t i = 1; i < m_count; ++i) {
        const AcGePoint2d& point = m_points2d[i];
        low.set(std::min(low.x, point.x), std::min(low.y, point.y));
        high.set(std::max(high.x, point.x), std::max(high.y, point.y));
    }
    box.addPoint({low.x, low.y, m_elevation});
    box.addPoint({high.x, high.y, m_elevation});
    return box;
}

Acad::ErrorStatus PolylineShape::extents(AcDbExtents& extents) const {
    AcDbExtents box = boxOfVertices();
    for (std::size_t i = 0; m_bulges && i < segmentCount(); ++i) {
        AcGeCircArc3d arc;
        if (m_bulges[i] == 0.0) continue;
        const Ends ends = segment(i);
        if (m_isFlat && liesArcWithin(box, ends.start, ends.end, ends.bulge)) continue;
        if (!arcSegment(i, arc)) continue;
        const AcGeBoundBlock3d block = arc.orthoBoundBlock();
        box.addPoint(block.minPoint());
        box.addPoint(block.maxPoint());
    }
    if (box.isEmpty()) return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

std::vector<PartVertex> PolylineShape::part(double from, double to) const {
    std::vector<PartVertex> vertices;
    const double count = endParameter();
    double at = from;
    while (at < to && !isSameParameter(at, to)) {
        const double whole = std::floor(at);
        double fraction = at - whole;
        const bool atVertex = isSameParameter(at, whole + 1.0);
        const double base = atVertex ? whole + 1.0 : whole;
        if (atVertex) fraction = 0.0;
        const auto index = static_cast<unsigned int>(base >= count ? base - count : base);
        const double last = std::min(to, base + 1.0);
        const double toFraction = isSameParameter(last, base + 1.0) ? 1.0 : last - base;
        const Ends ends = segment(index);
        const double share = toFraction - fraction;
        const double bulge = share == 1.0 ? ends.bulge : std::tan(share * std::atan(ends.bulge));
        vertices.push_back(
            {pointOn(ends.start, ends.end, ends.bulge, fraction), bulge, index, fraction, toFraction});
        at = base + 1.0;
        if (at < to && !isSameParameter(at, to)) continue;
        vertices.push_back(
            {pointOn(ends.start, ends.end, ends.bulge, toFraction), 0.0, index, toFraction, toFraction});
    }
    return vertices;
}

void PolylineShape::addPieces(CurvePieces& pieces, bool extend) const {
    pieces.reserve(segmentCount() + 2);
    for (std::size_t i = 0; i < segmentCount(); ++i) {
        const Ends ends = segment(i);
        pieces.addSegment(toWorld(ends.start), toWorld(ends.end), ends.bulge, m_normal,
                          static_cast<double>(i));
    }
    pieces.setClosed(m_closed);
    pieces.setRange(0.0, endParameter());
    if (!extend || m_closed || segmentCount() == 0) return;
    for (const bool atStart : {true, false}) {
        const std::size_t index = atStart ? 0 : segmentCount() - 1;
        const Ends ends = segment(index);
        const AcGePoint3d base = toWorld(atStart ? ends.start : ends.end);
        const AcGePoint3d other = toWorld(atStart ? ends.end : ends.start);
        AcGeCircArc3d arc;
        CurveGeometry beyond;
        if (arcSegment(index, arc))
            beyond.set(arc.setToComplement());
        else if (!(base - other).isZeroLength())
            beyond.set(AcGeRay3d(base, base - other), atStart ? -1.0 : 1.0);
        else
            continue;
        pieces.add(beyond, atStart ? (beyond.straight() ? 0.0 : -2.0 * AcGe::kTwoPi) : endParameter());
    }
}

bool PolylineShape::arcSegment(std::size_t index, AcGeCircArc3d& arc) const {
    const Ends ends = segment(index);
    return ends.bulge != 0.0 &&
           arcOfSegment(toWorld(ends.start), toWorld(ends.end), ends.bulge, m_normal, arc);
}

} // namespace hostkit
