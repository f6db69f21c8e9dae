#include "arcmeetings.hpp"

#include "circlekernel.hpp"

#include <utility>

namespace AcGeKernel {
namespace {

double allowanceOf(const AcGeCircArc2d& arc, const AcGePoint2d& point, const AcGeTol& tol) {
    return AcGe::pointAllowance(tol, std::max(arc.coordinateMagnitude(), point.largestCoordinate()));
}

void addOnce(ArcMeetings<Plane>& meetings, const AcGePoint2d& point, double allowance) {
    for (int i = 0; i < meetings.pointCount; ++i)
        if (meetings.points[i].distanceTo(point) <= allowance) return;
    meetings.points[meetings.pointCount++] = point;
}

template <class CurveA>
void addSettled(ArcMeetings<Plane>& meetings, const CurveA& a, const AcGeCircArc2d& b, AcGePoint2d candidate,
                const AcGeTol& tol) {
    if (settleOnBoth(a, b, candidate, tol)) addOnce(meetings, candidate, allowanceOf(b, candidate, tol));
}

// Where two curves touch, they stay within the tolerance of each other for a stretch. An end of one that lies
// in it on the other is the point that callers know: contours have their vertices there.
template <class CurveA>
AcGePoint2d endInStretch(const CurveA& a, const AcGeCircArc2d& b, const AcGePoint2d& touch, double stretch,
                         const AcGeTol& tol) {
    AcGePoint2d best = touch, end;
    double nearest = stretch;
    const auto consider = [&](bool isThere, const AcGeCurve2d& other) {
        if (!isThere || !(end.distanceTo(touch) <= nearest) || !other.isOn(end, tol)) return;
        nearest = end.distanceTo(touch);
        best = end;
    };
    consider(a.hasStartPoint(end), b);
    consider(a.hasEndPoint(end), b);
    if (isFullTurn(b.startAng(), b.endAng())) return best;
    consider(b.hasStartPoint(end), a);
    consider(b.hasEndPoint(end), a);
    return best;
}

template <class CurveA>
void addTouch(ArcMeetings<Plane>& meetings, const CurveA& a, const AcGeCircArc2d& b, AcGePoint2d touch,
              double stretch, const AcGeTol& tol) {
    if (!settleOnBoth(a, b, touch, tol)) return;
    meetings.points[meetings.pointCount++] = endInStretch(a, b, touch, stretch, tol);
}

// The degenerate arc is a point.
template <class Curve>
ArcMeetings<Plane> meetPoint(const Curve& curve, const AcGePoint2d& point, const AcGeTol& tol) {
    ArcMeetings<Plane> meetings;
    if (curve.isOn(point, tol)) meetings.points[meetings.pointCount++] = point;
    return meetings;
}

bool isSmall(const AcGeCircArc2d& arc, const AcGeTol& tol) {
    return arc.radius() <= AcGe::pointAllowance(tol, arc.center().largestCoordinate());
}

// Twice the area of a triangle by its sides, stable for needles (Kahan, "Miscalculating area and angles of a
// needle-like triangle"); 0 when the sides do not close.
double twiceArea(double a, double b, double c) {
    if (a < b) std::swap(a, b);
    if (b < c) std::swap(b, c);
    if (a < b) std::swap(a, b);
    const double product = (a + (b + c)) * (c - (a - b)) * (c + (a - b)) * (a + (b - c));
    return product > 0.0 ? std::sqrt(product) / 2.0 : 0.0;
}

double angleAt(const AcGeCircArc2d& arc, const AcGePoint2d& point) {
    return unclampedAngle(arc.startAng(), arc.endAng(), arc.paramOf(point, AcGeContext::gTol));
}

// Two arcs of one circle. The first carries the parameters; the second's range is carried over to it by the
// angle of its start (its end, when it runs the other way) and its sweep.
struct OneCircle {
    OneCircle(const AcGeCircArc2d& a, const AcGeCircArc2d& b)
        : first(a)
        , second(b)
        , sameSense(a.isClockWise() == b.isClockWise())
        , sweep(b.endAng() - b.startAng())
        , from(angleFrom(a.startAng(), angleAt(a, sameSense ? b.startPoint() : b.endPoint()))) {}

    double onSecond(double angle) const {
        return sameSense ? second.startAng() + (angle - from) : second.endAng() - (angle - from);
    }
    void addRun(ArcMeetings<Plane>& meetings, double lo, double hi) const {
        ArcMeetings<Plane>::Run& run = meetings.runs[meetings.runCount++];
        run.onFirst.set(lo, hi);
        const double a = onSecond(lo), b = onSecond(hi);
        run.onSecond.set(std::min(a, b), std::max(a, b));
    }

    const AcGeCircArc2d &first, &second;
    bool sameSense;
    double sweep;
    double from;
};

ArcMeetings<Plane> meetOnOneCircle(const AcGeCircArc2d& first, const AcGeCircArc2d& second,
                                   const AcGeTol& tol) {
    ArcMeetings<Plane> meetings;
    const OneCircle both(first, second);
    const double allowed = allowanceOf(first, second.center(), tol);
    // A full circle has the other arc whole, whatever lies at its seam.
    if (isFullTurn(second.startAng(), second.endAng())) {
        both.addRun(meetings, first.startAng(), first.endAng());
        return meetings;
    }
    if (isFullTurn(first.startAng(), first.endAng())) {
        both.addRun(meetings, both.from, both.from + both.sweep);
        return meetings;
    }
    for (double turn : {-AcGe::kTwoPi, 0.0}) {
        const double lo = std::max(both.from + turn, first.startAng()),
                     hi = std::min(both.from + turn + both.sweep, first.endAng());
        const double size = (hi - lo) * first.radius();
        if (size > allowed) {
            // A range a whole turn before is the same arc: the second's parameters are counted from there.
            both.addRun(meetings, lo - turn, hi - turn);
            meetings.runs[meetings.runCount - 1].onFirst.set(lo, hi);
        } else if (size >= -allowed) {
            addOnce(meetings, first.evalPoint(lo), allowed);
        }
    }
    return meetings;
}

void orderAlong(const AcGeCircArc2d& arc, ArcMeetings<Plane>& meetings) {
    if (meetings.pointCount == 2 && angleAt(arc, meetings.points[1]) < angleAt(arc, meetings.points[0]))
        std::swap(meetings.points[0], meetings.points[1]);
}

// Where two circles touch, outside or one in the other; `unit` points from the first centre to the second.
void addTouchOfArcs(ArcMeetings<Plane>& meetings, const AcGeCircArc2d& first, const AcGeCircArc2d& second,
                    const AcGeVector2d& unit, bool outside, double allowed, const AcGeTol& tol) {
    const double r1 = first.radius(), r2 = second.radius();
    // The touching point is counted from the smaller circle, whose radius carries fewer digits away.
    const bool fromFirst = r1 <= r2;
    const double sign = outside ? (fromFirst ? 1.0 : -1.0) : (fromFirst ? -1.0 : 1.0);
    const AcGePoint2d center = fromFirst ? first.center() : second.center();
    // The circles part as a line and a circle of their difference in curvature do.
    const double smaller = std::min(r1, r2), apart = outside ? r1 + r2 : std::abs(r1 - r2);
    const double stretch =
        apart > 0.0 ? 2.0 * std::sqrt(smaller * (std::max(r1, r2) / apart) * allowed) : smaller;
    addTouch(meetings, first, second, center + unit * (sign * smaller), std::min(stretch, smaller), tol);
}

} // namespace

ArcMeetings<Plane> meetLineArc(const AcGeLinearEnt2d& line, const AcGeCircArc2d& arc, const AcGeTol& tol) {
    if (isSmall(arc, tol)) return meetPoint(line, arc.center(), tol);
    const AcGeVector2d direction = line.direction();
    if (line.paramStep().length() <= tol.equalPoint()) return meetPoint(arc, line.pointOnLine(), tol);
    ArcMeetings<Plane> meetings;
    const AcGeVector2d offset = line.pointOnLine() - arc.center();
    const AcGeVector2d foot = offset - direction * offset.dotProduct(direction);
    const double height = std::abs(offset.crossProduct(direction)), radius = arc.radius();
    const double allowed = allowanceOf(arc, line.pointOnLine(), tol);
    if (height > radius + allowed) return meetings;
    if (height >= radius - allowed) {
        // Within this of the foot the line is no farther from the circle than twice the allowance.
        addTouch(meetings, line, arc, arc.center() + foot, 2.0 * std::sqrt(radius * allowed), tol);
        return meetings;
    }
    const double half = std::sqrt((radius - height) * (radius + height));
    for (double along : {-half, half})
        addSettled(meetings, line, arc, arc.center() + (foot + direction * along), tol);
    return meetings;
}

ArcMeetings<Plane> meetArcArc(const AcGeCircArc2d& first, const AcGeCircArc2d& second, const AcGeTol& tol) {
    if (isSmall(first, tol)) return meetPoint(second, first.center(), tol);
    if (isSmall(second, tol)) return meetPoint(first, second.center(), tol);
    ArcMeetings<Plane> meetings;
    const AcGeVector2d between = second.center() - first.center();
    const double distance = between.length(), r1 = first.radius(), r2 = second.radius();
    const double allowed =
        std::max(allowanceOf(first, second.center(), tol), allowanceOf(second, first.center(), tol));
    if (distance <= allowed && std::abs(r1 - r2) <= allowed) return meetOnOneCircle(first, second, tol);
    if (distance > r1 + r2 + allowed || distance < std::abs(r1 - r2) - allowed || !(distance > 0.0))
        return meetings;
    const AcGeVector2d unit = between / distance;
    const bool touchOutside = distance >= r1 + r2 - allowed,
               touchInside = distance <= std::abs(r1 - r2) + allowed;
    if (touchOutside || touchInside) {
        addTouchOfArcs(meetings, first, second, unit, touchOutside, allowed, tol);
        return meetings;
    }
    const double along = (distance + (r1 - r2) * ((r1 + r2) / distance)) / 2.0;
    const double half = twiceArea(distance, r1, r2) / distance;
    for (double across : {-half, half})
        addSettled(meetings, first, second, first.center() + (unit * along + unit.perpVector() * across),
                   tol);
    orderAlong(first, meetings);
    return meetings;
}

} // namespace AcGeKernel
