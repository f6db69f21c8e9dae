#include "contourplanesegment.h"

#include <algorithm>

namespace vexo {

namespace {

/// Curves that meet at a flatter angle than this are left where the closed form puts their crossing.
constexpr double kSmallestSineToRefine = 1e-7;

AcGePoint2d middleOf(const AcGePoint2d& a, const AcGePoint2d& b) {
    return {0.5 * (a.x + b.x), 0.5 * (a.y + b.y)};
}

} // namespace

PlaneBox boxOfSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
    PlaneBox box{std::min(start.x, end.x), std::max(start.x, end.x), std::min(start.y, end.y),
                 std::max(start.y, end.y)};
    if (bulge != 0.0) {
        const double asideX = 0.5 * bulge * (end.y - start.y);
        const double asideY = -0.5 * bulge * (end.x - start.x);
        box.extend({box.lowX + asideX, box.highX + asideX, box.lowY + asideY, box.highY + asideY});
    }
    return box;
}

PlaneSegment::PlaneSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge)
    : m_start(start)
    , m_end(end)
    , m_bulge(bulge) {
    const AcGeVector2d chord = end - start;
    m_chord = chord.length();
    m_along = chord / m_chord;
    const double square = 1.0 + bulge * bulge;
    m_sine = 2.0 * bulge / square;
    m_cosine = (1.0 - bulge * bulge) / square;
}

AcGePoint2d PlaneSegment::middle() const {
    return middleOf(m_start, m_end) + m_along.perpVector() * -height();
}

double PlaneSegment::distanceLeft(const AcGePoint2d& point) const {
    const AcGeVector2d offset = point - m_start;
    const double v = m_along.crossProduct(offset);
    if (m_sine == 0.0) return v;
    const double u = m_along.dotProduct(offset);
    const double value = m_cosine * m_chord * v - m_sine * (u * (u - m_chord) + v * v);
    const double half = 0.5 * m_chord;
    return value / (half + std::sqrt(std::max(0.0, half * half - m_sine * value)));
}

bool PlaneSegment::isBeside(const AcGePoint2d& point) const {
    const AcGeVector2d offset = point - m_start;
    const double u = m_along.dotProduct(offset);
    if (m_sine == 0.0) return u > 0.0 && u < m_chord;
    const double v = m_along.crossProduct(offset);
    return m_cosine * u - m_sine * v > 0.0 && m_cosine * (u - m_chord) + m_sine * v < 0.0;
}

double PlaneSegment::fractionAt(const AcGePoint2d& pointOnIt) const {
    const double before = pointOnIt.distanceTo(m_start);
    return before / (before + pointOnIt.distanceTo(m_end));
}

/// Half the angle from the start to a point of the arc, which the chord is seen under from an end. Seen from
/// the farther end: a point a little off the arc turns the direction least there.
double PlaneSegment::halfAngleAt(const AcGePoint2d& pointOnIt) const {
    const AcGeVector2d offset = pointOnIt - m_start;
    const double u = m_along.dotProduct(offset);
    const double v = m_along.crossProduct(offset);
    if (2.0 * u < m_chord) return std::atan2(-v, m_chord - u);
    return 2.0 * std::atan(m_bulge) - std::atan2(-v, u);
}

double PlaneSegment::bulgeBetween(const AcGePoint2d& from, const AcGePoint2d& to) const {
    return m_sine == 0.0 ? 0.0 : std::tan(0.5 * (halfAngleAt(to) - halfAngleAt(from)));
}

AcGeVector2d PlaneSegment::directionAt(double distance) const {
    if (m_sine == 0.0) return m_along;
    // The curve leaves half the included angle to the right of its chord (bulge above 0) and has turned by
    // half the angle over `distance` there.
    const double sine = m_sine * std::min(1.0, distance / m_chord);
    const double cosine = std::sqrt(1.0 - sine * sine);
    const double turnSine = sine * m_cosine - cosine * m_sine;
    const double turnCosine = cosine * m_cosine + sine * m_sine;
    return m_along * turnCosine + m_along.perpVector() * turnSine;
}

bool PlaneSegment::isClearOf(const PlaneSegment& other, double margin) const {
    const AcGeVector2d toStart = other.m_start - m_start;
    const AcGeVector2d toEnd = other.m_end - m_start;
    const double reach = margin + std::abs(other.height());
    const double v1 = m_along.crossProduct(toStart);
    const double v2 = m_along.crossProduct(toEnd);
    const double apex = -height();
    if (std::min(v1, v2) > std::max(0.0, apex) + reach || std::max(v1, v2) < std::min(0.0, apex) - reach)
        return true;
    const double u1 = m_along.dotProduct(toStart);
    const double u2 = m_along.dotProduct(toEnd);
    return std::min(u1, u2) > m_chord + reach || std::max(u1, u2) < -reach;
}

bool PlaneSegment::hasBehindChord(const PlaneSegment& other, double margin) const {
    const double sense = m_bulge < 0.0 ? -1.0 : 1.0;
    const double v1 = sense * m_along.crossProduct(other.m_start - m_start);
    const double v2 = sense * m_along.crossProduct(other.m_end - m_start);
    const double toArc = std::abs(other.height()); // how far it may reach toward the arc
    return std::min(v1, v2) - toArc >= -margin;
}

AcGeVector2d PlaneSegment::normalAt(const AcGePoint2d& point) const {
    if (m_sine == 0.0) return m_along.perpVector();
    const AcGeVector2d offset = point - m_start;
    const double u = m_along.dotProduct(offset);
    const double v = m_along.crossProduct(offset);
    const AcGeVector2d gradient = m_along * (-m_sine * (2.0 * u - m_chord)) +
                                  m_along.perpVector() * (m_cosine * m_chord - 2.0 * m_sine * v);
    return gradient / gradient.length();
}

struct SegmentCrossings {
    const PlaneSegment& a;
    const PlaneSegment& b;
    double tolerance;
    AcGePoint2d* points;
    int count = 0;

    void add(AcGePoint2d point) {
        refine(point);
        if (a.isBeside(point) && b.isBeside(point)) points[count++] = point;
    }

    /// One step of Newton's method: the closed form of two arcs loses digits when they are nearly alike.
    void refine(AcGePoint2d& point) const {
        if (a.isStraight() && b.isStraight()) return;
        const AcGeVector2d normalA = a.normalAt(point);
        const AcGeVector2d normalB = b.normalAt(point);
        const double sine = normalA.crossProduct(normalB);
        if (!(std::abs(sine) > kSmallestSineToRefine)) return;
        const double fromA = a.distanceLeft(point);
        const double fromB = b.distanceLeft(point);
        point += (normalB.perpVector() * fromA - normalA.perpVector() * fromB) * (1.0 / sine);
    }

    void crossLines() {
        const double sine = a.m_along.crossProduct(b.m_along);
        if (sine == 0.0) return;
        add(a.m_start + a.m_along * ((b.m_start - a.m_start).crossProduct(b.m_along) / sine));
    }

    /// A line against the circle of an arc that is b or a.
    void crossLine(AcGePoint2d origin, const AcGeVector2d& direction, const PlaneSegment& arc) {
        origin += direction * direction.dotProduct(arc.m_start - origin);
        const AcGeVector2d offset = origin - arc.m_start;
        const double u = arc.m_along.dotProduct(offset);
        const double v = arc.m_along.crossProduct(offset);
        const double du = arc.m_along.dotProduct(direction);
        const double dv = arc.m_along.crossProduct(direction);
        const double square = -arc.m_sine;
        const double linear =
            arc.m_cosine * arc.m_chord * dv - arc.m_sine * (2.0 * u * du - arc.m_chord * du + 2.0 * v * dv);
        const double constant = arc.m_cosine * arc.m_chord * v - arc.m_sine * (u * (u - arc.m_chord) + v * v);
        const double discriminant = linear * linear - 4.0 * square * constant;
        if (!(discriminant > 0.0)) {
            const AcGePoint2d nearest = origin + direction * (-linear / (2.0 * square));
            if (std::abs(a.distanceLeft(nearest)) <= tolerance &&
                std::abs(b.distanceLeft(nearest)) <= tolerance && a.isBeside(nearest) && b.isBeside(nearest))
                points[count++] = nearest;
            return;
        }
        const double root = -0.5 * (linear + std::copysign(std::sqrt(discriminant), linear));
        add(origin + direction * (root / square));
        if (root != 0.0) add(origin + direction * (constant / root));
    }

    /// Two circles cross on the line on which their equations differ by a multiple.
    void crossArcs() {
        const AcGeVector2d offset = b.m_start - a.m_start;
        const AcGeVector2d slopeA =
            a.m_along.perpVector() * (a.m_cosine * a.m_chord) + a.m_along * (a.m_sine * a.m_chord);
        const AcGeVector2d slopeB =
            b.m_along.perpVector() * (b.m_cosine * b.m_chord) + b.m_along * (b.m_sine * b.m_chord);
        const AcGeVector2d across = slopeA * b.m_sine - (slopeB + offset * (2.0 * b.m_sine)) * a.m_sine;
        const double size = across.length();
        if (size == 0.0) return;
        const double shift =
            a.m_sine * (slopeB.dotProduct(offset) + b.m_sine * offset.lengthSqrd()) / (size * size);
        const AcGePoint2d origin = a.m_start + across * -shift;
        const bool isASmaller = a.m_chord * std::abs(b.m_sine) < b.m_chord * std::abs(a.m_sine);
        crossLine(origin, across.perpVector() / size, isASmaller ? a : b);
    }
};

int crossingsOf(const PlaneSegment& a, const PlaneSegment& b, double tolerance, AcGePoint2d points[2]) {
    SegmentCrossings crossings{a, b, tolerance, points};
    if (a.isStraight() && b.isStraight())
        crossings.crossLines();
    else if (a.isStraight())
        crossings.crossLine(a.m_start, a.m_along, b);
    else if (b.isStraight())
        crossings.crossLine(b.m_start, b.m_along, a);
    else
        crossings.crossArcs();
    return crossings.count;
}

} // namespace vexo
