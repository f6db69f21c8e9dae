#include "gearc3d.h"

#include "arcmeetings.hpp"
#include "curvekernel.hpp"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "geplane.h"
#include "geray2d.h"
#include "spacearcs.hpp"

using AcGeKernel::SpaceArcMeetings;

namespace {

bool giveMeetings(const SpaceArcMeetings& meetings, const AcGeCircArc3d& arc, int& count, AcGePoint3d& p1,
                  AcGePoint3d& p2) {
    if (meetings.runCount == 0)
        return AcGeKernel::giveTwo(meetings.pointCount, meetings.points, count, p1, p2);
    const AcGeInterval& range = meetings.runs[0].onFirst;
    p1 = arc.evalPoint(range.lowerBound());
    const bool isCircle = AcGeKernel::isFullTurn(range.lowerBound(), range.upperBound());
    if (!isCircle) p2 = arc.evalPoint(range.upperBound());
    count = isCircle ? 1 : 2;
    return true;
}

} // namespace

AcGeCircArc3d::AcGeCircArc3d()
    : m_normal(AcGeVector3d::kZAxis)
    , m_refVec(AcGeVector3d::kXAxis)
    , m_radius(1.0)
    , m_startAngle(0.0)
    , m_endAngle(AcGe::kTwoPi) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : AcGeCircArc3d(center, normal, AcGeVector3d::kIdentity, radius, 0.0, AcGe::kTwoPi) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal,
                             const AcGeVector3d& refVec, double radius, double startAngle, double endAngle)
    : m_center(center)
    , m_radius(std::abs(radius)) {
    setAxes(normal, refVec);
    setAngles(startAngle, endAngle);
}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& start, const AcGePoint3d& onArc, const AcGePoint3d& end)
    : m_center(start)
    , m_normal(AcGeVector3d::kZAxis)
    , m_refVec(AcGeVector3d::kXAxis)
    , m_radius(0.0)
    , m_startAngle(0.0)
    , m_endAngle(0.0) {
    const double magnitude =
        std::max({start.largestCoordinate(), onArc.largestCoordinate(), end.largestCoordinate()});
    const double allowed = AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    const double chord = start.distanceTo(end);
    const AcGeKernel::Corner<AcGePoint3d, AcGeVector3d> corner(start, onArc, end);
    const AcGeVector3d across = corner.toNext.crossProduct(corner.toPrevious);
    const double size = across.length();
    if (!(chord > allowed) || !(size > allowed * chord)) return;
    m_normal = across / size;
    m_center = corner.at + m_normal.crossProduct(corner.squareDifference()) / (2.0 * size);
    // Counted from the centre as it came out rounded, so that its rounding is not felt twice.
    const AcGeVector3d toStart = start - m_center, toEnd = end - m_center;
    m_radius = (toStart.length() + toEnd.length()) / 2.0;
    m_refVec = toStart.orthoProject(m_normal);
    m_refVec /= m_refVec.length();
    m_endAngle = AcGeKernel::angleFrom(
        0.0, std::atan2(toEnd.dotProduct(m_normal.crossProduct(m_refVec)), toEnd.dotProduct(m_refVec)));
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
    return *this = AcGeCircArc3d(center, normal, radius);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                  const AcGeVector3d& refVec, double radius, double startAngle,
                                  double endAngle) {
    return *this = AcGeCircArc3d(center, normal, refVec, radius, startAngle, endAngle);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& start, const AcGePoint3d& onArc,
                                  const AcGePoint3d& end) {
    return *this = AcGeCircArc3d(start, onArc, end);
}

AcGeCircArc3d& AcGeCircArc3d::setCenter(const AcGePoint3d& center) {
    m_center = center;
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec) {
    const double size = normal.length();
    m_normal = size > 0.0 ? normal / size : AcGeVector3d::kZAxis;
    const AcGeVector3d inPlane = refVec.orthoProject(m_normal);
    AcGeVector3d unused;
    if (inPlane.isZeroLength())
        AcGe::arbitraryAxes(m_normal, m_refVec, unused);
    else
        m_refVec = inPlane / inPlane.length();
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setRadius(double radius) {
    m_radius = std::abs(radius);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAngle, double endAngle) {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    AcGeKernel::normalizeAngles(m_startAngle, m_endAngle);
    return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setToComplement() { return setAngles(m_endAngle, m_startAngle); }

void AcGeCircArc3d::getPlane(AcGePlane& plane) const {
    plane.set(m_center, m_refVec, m_normal.crossProduct(m_refVec));
}

Adesk::Boolean AcGeCircArc3d::isInside(const AcGePoint3d& point, const AcGeTol& tol) const {
    const double magnitude = std::max(coordinateMagnitude(), point.largestCoordinate());
    const double allowed = AcGe::pointAllowance(tol, magnitude);
    const AcGeVector3d offset = point - m_center;
    return std::abs(offset.dotProduct(m_normal)) <= allowed && offset.length() <= m_radius + allowed;
}

Adesk::Boolean AcGeCircArc3d::tangent(const AcGePoint3d& point, AcGeLine3d& line, const AcGeTol& tol) const {
    double param;
    if (!AcGeCurve3d::isOn(point, param, tol) || !(m_radius > 0.0)) return Adesk::kFalse;
    AcGeVector3dArray derivatives;
    const AcGePoint3d onArc = evalPoint(param, 1, derivatives);
    line.set(onArc, derivatives[0] / derivatives[0].length());
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGeLinearEnt3d& line, int& count, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    return giveMeetings(AcGeKernel::meetLineArc(line, *this, tol), *this, count, p1, p2);
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGeCircArc3d& arc, int& count, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    return giveMeetings(AcGeKernel::meetArcArc(*this, arc, tol), *this, count, p1, p2);
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGePlanarEnt& plane, int& count, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    count = 0;
    AcGePlane own;
    getPlane(own);
    AcGeLine3d line;
    if (!own.intersectWith(AcGePlane(plane.pointOnPlane(), plane.normal()), line, tol)) return Adesk::kFalse;
    return intersectWith(line, count, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc3d::projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction,
                                                int& count, AcGePoint3d& onArc1, AcGePoint3d& onArc2,
                                                AcGePoint3d& onLine1, AcGePoint3d& onLine2,
                                                const AcGeTol& tol) const {
    count = 0;
    const AcGeVector3d view = direction.normal(tol);
    const double across = view.dotProduct(m_normal);
    if (direction.isZeroLength(tol) || !(std::abs(across) > tol.equalVector())) return Adesk::kFalse;
    // The line is moved along the view into the arc's plane and met there; what it meets is moved back.
    const auto intoPlane = [&](const AcGePoint3d& p) {
        return p - view * ((p - m_center).dotProduct(m_normal) / across);
    };
    AcGeLine3d seen(intoPlane(line.pointOnLine()), line.paramStep().project(m_normal, view));
    if (seen.direction().isZeroLength(tol)) return Adesk::kFalse;
    AcGePoint3d meetings[2];
    int found = 0;
    intersectWith(seen, found, meetings[0], meetings[1], tol);
    for (int i = 0; i < found; ++i) {
        const AcGePoint3d onLine = line.projClosestPointTo(meetings[i], view, tol);
        if (!intoPlane(onLine).isEqualTo(meetings[i], tol)) continue;
        (count == 0 ? onArc1 : onArc2) = meetings[i];
        (count == 0 ? onLine1 : onLine2) = onLine;
        ++count;
    }
    return count > 0;
}

AcGeCircArc3d& AcGeCircArc3d::transformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d quarter = matrix * m_normal.crossProduct(m_refVec), moved = matrix * m_refVec;
    const double scale = moved.length();
    m_center.transformBy(matrix);
    m_radius *= scale;
    // The normal is that of the moved axes, so that equal parameters stay corresponding points under a
    // mirror.
    if (!(scale > 0.0) || !(moved.crossProduct(quarter).length() > 0.0)) return *this;
    return setAxes(moved.crossProduct(quarter), moved / scale);
}

Adesk::Boolean AcGeCircArc3d::isEqualTo(const AcGeEntity3d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kCircArc3d) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeCircArc3d&>(entity);
    if (!m_normal.isEqualTo(other.m_normal, tol)) return Adesk::kFalse;
    const double middle = (m_startAngle + m_endAngle) / 2.0,
                 otherMiddle = (other.m_startAngle + other.m_endAngle) / 2.0;
    return m_center.isEqualTo(other.m_center, tol) && startPoint().isEqualTo(other.startPoint(), tol) &&
           endPoint().isEqualTo(other.endPoint(), tol) &&
           evalPoint(middle).isEqualTo(other.evalPoint(otherMiddle), tol);
}

Adesk::Boolean AcGeCircArc3d::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    setAngles(interval.lowerBound(), interval.upperBound());
    return Adesk::kTrue;
}

AcGeCircArc3d& AcGeCircArc3d::reverseParam() {
    m_normal.negate();
    const double start = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -start;
    return *this;
}

AcGePoint3d AcGeCircArc3d::evalPoint(double param) const {
    const AcGeVector3d quarter = m_normal.crossProduct(m_refVec);
    return m_center + (m_refVec * std::cos(param) + quarter * std::sin(param)) * m_radius;
}

AcGePoint3d AcGeCircArc3d::evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const {
    const AcGeVector3d quarter = m_normal.crossProduct(m_refVec);
    const double c = m_radius * std::cos(param), s = m_radius * std::sin(param);
    const AcGeVector3d point = m_refVec * c + quarter * s, tangent = quarter * c - m_refVec * s;
    const AcGeVector3d cycle[4] = {tangent, -point, -tangent, point};
    derivatives.setLogicalLength(std::max(numDeriv, 0));
    for (int i = 0; i < numDeriv; ++i) derivatives[i] = cycle[i % 4];
    return m_center + point;
}

double AcGeCircArc3d::paramOfClosestPoint(const AcGePoint3d& point) const {
    const AcGeVector3d v = point - m_center;
    const double x = v.dotProduct(m_refVec), y = v.dotProduct(m_normal.crossProduct(m_refVec));
    if (x == 0.0 && y == 0.0) return m_startAngle;
    return AcGeKernel::clampAngle(m_startAngle, m_endAngle, std::atan2(y, x));
}

double AcGeCircArc3d::paramOf(const AcGePoint3d& point, const AcGeTol& tol) const {
    const AcGeVector3d v = point - m_center;
    const double x = v.dotProduct(m_refVec), y = v.dotProduct(m_normal.crossProduct(m_refVec));
    if (x == 0.0 && y == 0.0) return m_startAngle;
    if (AcGeKernel::isFullTurn(m_startAngle, m_endAngle) && point.isEqualTo(startPoint(), tol))
        return m_startAngle;
    return AcGeKernel::unclampedAngle(m_startAngle, m_endAngle, std::atan2(y, x));
}

Adesk::Boolean AcGeCircArc3d::isPeriodic(double& period) const {
    if (!AcGeKernel::isFullTurn(m_startAngle, m_endAngle)) return Adesk::kFalse;
    period = AcGe::kTwoPi;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCircArc3d::isPlanar(AcGePlane& plane, const AcGeTol&) const {
    getPlane(plane);
    return Adesk::kTrue;
}

double AcGeCircArc3d::length(double fromParam, double toParam, const AcGeTol&) const {
    return std::abs(toParam - fromParam) * m_radius;
}

double AcGeCircArc3d::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                    const AcGeTol&) const {
    if (!(m_radius > 0.0)) return datumParam;
    return forward ? datumParam + length / m_radius : datumParam - length / m_radius;
}

Adesk::Boolean AcGeCircArc3d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    value = AcGeKernel::segmentArea(std::abs(endParam - startParam)) * m_radius * m_radius;
    return Adesk::kTrue;
}

AcGeBoundBlock3d AcGeCircArc3d::orthoBoundBlock() const {
    AcGeBoundBlock3d block(startPoint(), endPoint());
    const AcGeVector3d quarter = m_normal.crossProduct(m_refVec);
    for (unsigned int i = 0; i < 3; ++i) {
        // The coordinate is extreme where its derivative vanishes, and half a turn on.
        const double extreme = std::atan2(quarter[i], m_refVec[i]);
        for (double angle : {extreme, extreme + AcGe::kPi})
            if (AcGeKernel::angleFrom(m_startAngle, angle) <= m_endAngle) block.extend(evalPoint(angle));
    }
    return block;
}

void AcGeCircArc3d::getSamplePoints(double fromParam, double toParam, double tolerance,
                                    AcGePoint3dArray& points, AcGeDoubleArray& params) const {
    const int count = AcGeKernel::chordCount(std::abs(toParam - fromParam), m_radius, tolerance);
    points.setLogicalLength(count + 1);
    params.setLogicalLength(count + 1);
    for (int i = 0; i <= count; ++i) {
        params[i] = i == count ? toParam : fromParam + (toParam - fromParam) * i / count;
        points[i] = evalPoint(params[i]);
    }
}

void AcGeCircArc3d::getSmoothPieces(AcGeDoubleArray& params) const {
    AcGeKernel::angularPieces(m_startAngle, m_endAngle, params);
}
