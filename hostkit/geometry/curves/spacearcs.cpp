#include "spacearcs.hpp"

#include "arcmeetings.hpp"
#include "curvekernel.hpp"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "geplane.h"
#include "geray2d.h"

#include <memory>

namespace AcGeKernel {
namespace {

// The arc's plane with its centre as origin: coordinates stay small however far out the arc lies.
struct Frame {
    explicit Frame(const AcGeCircArc3d& arc)
        : origin(arc.center())
        , x(arc.refVec())
        , y(arc.normal().crossProduct(arc.refVec()))
        , normal(arc.normal()) {}
    AcGeVector2d flat(const AcGeVector3d& v) const { return {v.dotProduct(x), v.dotProduct(y)}; }
    AcGePoint2d flat(const AcGePoint3d& p) const { return AcGePoint2d::kOrigin + flat(p - origin); }
    AcGePoint3d lift(const AcGePoint2d& p) const { return origin + (x * p.x + y * p.y); }
    AcGePoint3d origin;
    AcGeVector3d x, y, normal;
};

// The tolerance of the local frame keeps the allowance that the coordinates in space ask for.
AcGeTol localTolerance(const AcGeTol& tol, double magnitude) {
    AcGeTol local = tol;
    local.setEqualPoint(AcGe::pointAllowance(tol, magnitude));
    return local;
}

std::unique_ptr<AcGeLinearEnt2d> flatten(const AcGeLinearEnt3d& line, const Frame& frame) {
    AcGeInterval range;
    line.getInterval(range);
    const AcGePoint2d origin = frame.flat(line.pointOnLine());
    if (range.isBounded()) return std::make_unique<AcGeLineSeg2d>(origin, frame.flat(line.evalPoint(1.0)));
    const AcGeVector2d direction = frame.flat(line.paramStep());
    if (range.isBoundedBelow()) return std::make_unique<AcGeRay2d>(origin, direction);
    return std::make_unique<AcGeLine2d>(origin, direction);
}

AcGeCircArc2d flatten(const AcGeCircArc3d& arc, const Frame& frame) {
    AcGeCircArc2d flat(frame.flat(arc.center()), arc.radius(), arc.startAng(), arc.endAng(),
                       frame.flat(arc.refVec()), arc.normal().dotProduct(frame.normal) < 0.0);
    return flat;
}

// Points in the plane lifted to space. Those that do not hold there (a line that leaves the plane a little)
// go.
template <class Other>
ArcMeetings<Space> lift(const ArcMeetings<Plane>& flat, const Frame& frame, const AcGeCircArc3d& arc,
                        const Other& other, const AcGeTol& tol) {
    ArcMeetings<Space> meetings;
    for (int i = 0; i < flat.pointCount; ++i) {
        AcGePoint3d point = frame.lift(flat.points[i]);
        if (settleOnBoth(other, arc, point, tol)) meetings.points[meetings.pointCount++] = point;
    }
    meetings.runCount = flat.runCount;
    for (int i = 0; i < flat.runCount; ++i) meetings.runs[i] = {flat.runs[i].onFirst, flat.runs[i].onSecond};
    return meetings;
}

bool runsInPlane(const AcGeLinearEnt3d& line, const AcGeCircArc3d& arc, double allowed, const AcGeTol& tol) {
    const AcGeVector3d offset = line.pointOnLine() - arc.center();
    AcGeInterval range;
    line.getInterval(range);
    const double height = std::abs(offset.dotProduct(arc.normal()));
    if (range.isBounded())
        return height <= allowed &&
               std::abs((line.evalPoint(1.0) - arc.center()).dotProduct(arc.normal())) <= allowed;
    return std::abs(line.direction().dotProduct(arc.normal())) <= tol.equalVector();
}

double magnitudeOfBoth(const AcGeCircArc3d& arc, double other) {
    return std::max(arc.coordinateMagnitude(), other);
}

// Circles in planes that cross: what both have lies on the planes' common line.
ArcMeetings<Space> meetAcrossPlanes(const AcGeCircArc3d& first, const AcGeCircArc3d& second,
                                    const AcGeTol& tol) {
    ArcMeetings<Space> meetings;
    AcGePlane plane1, plane2;
    first.getPlane(plane1);
    second.getPlane(plane2);
    AcGeLine3d common;
    if (!plane1.intersectWith(plane2, common, tol)) return meetings;
    const AcGeCircArc3d circle(first.center(), first.normal(), first.refVec(), first.radius(), 0.0,
                               AcGe::kTwoPi);
    const ArcMeetings<Space> candidates = meetLineArc(common, circle, tol);
    for (int i = 0; i < candidates.pointCount; ++i) {
        AcGePoint3d point = candidates.points[i];
        if (settleOnBoth(first, second, point, tol)) meetings.points[meetings.pointCount++] = point;
    }
    const bool same = meetings.pointCount == 2 && meetings.points[0].isEqualTo(meetings.points[1], tol);
    if (same) meetings.pointCount = 1;
    if (meetings.pointCount == 2 &&
        first.paramOf(meetings.points[1], tol) < first.paramOf(meetings.points[0], tol))
        std::swap(meetings.points[0], meetings.points[1]);
    return meetings;
}

} // namespace

ArcMeetings<Space> meetLineArc(const AcGeLinearEnt3d& line, const AcGeCircArc3d& arc, const AcGeTol& tol) {
    ArcMeetings<Space> meetings;
    const double magnitude = magnitudeOfBoth(arc, line.pointOnLine().largestCoordinate());
    const double allowed = AcGe::pointAllowance(tol, magnitude);
    const Frame frame(arc);
    if (runsInPlane(line, arc, allowed, tol))
        return lift(meetLineArc(*flatten(line, frame), flatten(arc, frame), localTolerance(tol, magnitude)),
                    frame, arc, line, tol);
    const double slope = line.paramStep().dotProduct(arc.normal());
    if (slope == 0.0) return meetings;
    AcGePoint3d point = line.evalPoint((arc.center() - line.pointOnLine()).dotProduct(arc.normal()) / slope);
    if (settleOnBoth(line, arc, point, tol)) meetings.points[meetings.pointCount++] = point;
    return meetings;
}

ArcMeetings<Space> meetArcArc(const AcGeCircArc3d& first, const AcGeCircArc3d& second, const AcGeTol& tol) {
    const double magnitude = magnitudeOfBoth(first, second.coordinateMagnitude());
    const double allowed = AcGe::pointAllowance(tol, magnitude);
    // How far the second circle leaves the first one's plane at most.
    const double leaves = std::abs((second.center() - first.center()).dotProduct(first.normal())) +
                          second.radius() * first.normal().crossProduct(second.normal()).length();
    if (!(leaves <= allowed)) return meetAcrossPlanes(first, second, tol);
    const Frame frame(first);
    return lift(meetArcArc(flatten(first, frame), flatten(second, frame), localTolerance(tol, magnitude)),
                frame, first, second, tol);
}

} // namespace AcGeKernel
