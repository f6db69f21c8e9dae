#include "gearc2d.h"

#include "arcmeetings.hpp"
#include "curvekernel.hpp"
#include "geline2d.h"

using AcGeKernel::ArcMeetings;

namespace {

// The vector a quarter turn on from the reference vector in the arc's sense.
AcGeVector2d quarterOn(const AcGeVector2d& refVec, bool clockWise) {
    return clockWise ? -refVec.perpVector() : refVec.perpVector();
}

// Points in common, the ends of the first common run in their place where there is one.
bool giveMeetings(const ArcMeetings& meetings, const AcGeCircArc2d& arc, int& count, AcGePoint2d& p1,
                  AcGePoint2d& p2) {
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

AcGeCircArc2d::AcGeCircArc2d()
    : AcGeCircArc2d(AcGePoint2d::kOrigin, 1.0) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& center, double radius)
    : AcGeCircArc2d(center, radius, 0.0, AcGe::kTwoPi) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                             const AcGeVector2d& refVec, Adesk::Boolean isClockWise)
    : m_center(center)
    , m_radius(std::abs(radius))
    , m_clockWise(isClockWise) {
    setRefVec(refVec);
    setAngles(startAngle, endAngle);
}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& onArc, const AcGePoint2d& end)
    : m_center(start)
    , m_refVec(AcGeVector2d::kXAxis)
    , m_radius(0.0)
    , m_startAngle(0.0)
    , m_endAngle(0.0) {
    const double magnitude =
        std::max({start.largestCoordinate(), onArc.largestCoordinate(), end.largestCoordinate()});
    const double allowed = AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    const double chord = start.distanceTo(end);
    const AcGeKernel::Corner<AcGePoint2d, AcGeVector2d> corner(start, onArc, end);
    const double across = corner.toNext.crossProduct(corner.toPrevious);
    if (!(chord > allowed) || !(std::abs(across) > allowed * chord)) return;
    m_center = corner.at + corner.squareDifference().perpVector() / (2.0 * across);
    // Counted from the centre as it came out rounded, so that its rounding is not felt twice.
    const AcGeVector2d toStart = start - m_center, toEnd = end - m_center;
    m_radius = (toStart.length() + toEnd.length()) / 2.0;
    m_refVec = toStart / toStart.length();
    m_clockWise = across > 0.0 ? Adesk::kFalse : Adesk::kTrue;
    m_endAngle = AcGeKernel::angleFrom(
        0.0, std::atan2(toEnd.dotProduct(quarterOn(m_refVec, m_clockWise)), toEnd.dotProduct(m_refVec)));
}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& end, double bulge,
                             Adesk::Boolean bulgeIsHeight)
    : m_center(start)
    , m_refVec(AcGeVector2d::kXAxis)
    , m_radius(0.0)
    , m_startAngle(0.0)
    , m_endAngle(0.0) {
    const AcGeVector2d chord = end - start;
    const double size = chord.length();
    const double tangent = bulgeIsHeight ? bulge * 2.0 / size : bulge;
    if (tangent == 0.0 || !(size > 0.0) || !std::isfinite(tangent)) return;
    // tan(theta/4) = b gives the centre at (1 - b^2) / (4 b) chords to the left of the chord's middle.
    const double aside = (1.0 - tangent) * (1.0 + tangent) / (4.0 * tangent);
    const AcGeVector2d toCenter = chord / 2.0 + chord.perpVector() * aside;
    m_center = start + toCenter;
    m_radius = size * (1.0 + tangent * tangent) / (4.0 * std::abs(tangent));
    m_refVec = -toCenter / toCenter.length();
    m_clockWise = tangent < 0.0;
    m_endAngle = 4.0 * std::atan(std::abs(tangent));
}

AcGeCircArc2d& AcGeCircArc2d::setCenter(const AcGePoint2d& center) {
    m_center = center;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setRefVec(const AcGeVector2d& refVec) {
    m_refVec = refVec.isZeroLength() ? AcGeVector2d::kXAxis : refVec.normal();
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setIsClockWise(Adesk::Boolean clockWise) {
    m_clockWise = clockWise;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setRadius(double radius) {
    m_radius = std::abs(radius);
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setAngles(double startAngle, double endAngle) {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    AcGeKernel::normalizeAngles(m_startAngle, m_endAngle);
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setToComplement() { return setAngles(m_endAngle, m_startAngle); }

Adesk::Boolean AcGeCircArc2d::isInside(const AcGePoint2d& point, const AcGeTol& tol) const {
    const double magnitude = std::max(coordinateMagnitude(), point.largestCoordinate());
    return point.distanceTo(m_center) <= m_radius + AcGe::pointAllowance(tol, magnitude);
}

Adesk::Boolean AcGeCircArc2d::tangent(const AcGePoint2d& point, AcGeLine2d& line, const AcGeTol& tol) const {
    double param;
    if (!AcGeCurve2d::isOn(point, param, tol) || !(m_radius > 0.0)) return Adesk::kFalse;
    AcGeVector2dArray derivatives;
    const AcGePoint2d onArc = evalPoint(param, 1, derivatives);
    line.set(onArc, derivatives[0] / derivatives[0].length());
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCircArc2d::intersectWith(const AcGeLinearEnt2d& line, int& count, AcGePoint2d& p1,
                                            AcGePoint2d& p2, const AcGeTol& tol) const {
    const ArcMeetings meetings = AcGeKernel::meetLineArc(line, *this, tol);
    return AcGeKernel::giveTwo(meetings.pointCount, meetings.points, count, p1, p2);
}

Adesk::Boolean AcGeCircArc2d::intersectWith(const AcGeCircArc2d& arc, int& count, AcGePoint2d& p1,
                                            AcGePoint2d& p2, const AcGeTol& tol) const {
    return giveMeetings(AcGeKernel::meetArcArc(*this, arc, tol), *this, count, p1, p2);
}

AcGeCircArc2d& AcGeCircArc2d::transformBy(const AcGeMatrix2d& matrix) {
    m_center.transformBy(matrix);
    AcGeVector2d moved = matrix * m_refVec;
    const double scale = moved.length();
    m_radius *= scale;
    if (scale > 0.0) m_refVec = moved / scale;
    if (matrix.det() < 0.0) m_clockWise = !m_clockWise;
    return *this;
}

Adesk::Boolean AcGeCircArc2d::isEqualTo(const AcGeEntity2d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kCircArc2d) return Adesk::kFalse;
    const auto& other = static_cast<const AcGeCircArc2d&>(entity);
    if (m_clockWise != other.m_clockWise) return Adesk::kFalse;
    const double middle = (m_startAngle + m_endAngle) / 2.0,
                 otherMiddle = (other.m_startAngle + other.m_endAngle) / 2.0;
    return m_center.isEqualTo(other.m_center, tol) && startPoint().isEqualTo(other.startPoint(), tol) &&
           endPoint().isEqualTo(other.endPoint(), tol) &&
           evalPoint(middle).isEqualTo(other.evalPoint(otherMiddle), tol);
}

Adesk::Boolean AcGeCircArc2d::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    setAngles(interval.lowerBound(), interval.upperBound());
    return Adesk::kTrue;
}

AcGeCircArc2d& AcGeCircArc2d::reverseParam() {
    m_clockWise = !m_clockWise;
    const double start = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -start;
    return *this;
}

AcGePoint2d AcGeCircArc2d::evalPoint(double param) const {
    const AcGeVector2d quarter = quarterOn(m_refVec, m_clockWise);
    return m_center + (m_refVec * std::cos(param) + quarter * std::sin(param)) * m_radius;
}

AcGePoint2d AcGeCircArc2d::evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const {
    const AcGeVector2d x = m_refVec * (m_radius * std::cos(param)),
                       y = m_refVec * (m_radius * std::sin(param));
    const AcGeVector2d point = x + quarterOn(y, m_clockWise), tangent = quarterOn(x, m_clockWise) - y;
    const AcGeVector2d cycle[4] = {tangent, -point, -tangent, point};
    derivatives.setLogicalLength(std::max(numDeriv, 0));
    for (int i = 0; i < numDeriv; ++i) derivatives[i] = cycle[i % 4];
    return m_center + point;
}

double AcGeCircArc2d::paramOfClosestPoint(const AcGePoint2d& point) const {
    const AcGeVector2d v = point - m_center;
    if (v.x == 0.0 && v.y == 0.0) return m_startAngle;
    return AcGeKernel::clampAngle(
        m_startAngle, m_endAngle,
        std::atan2(v.dotProduct(quarterOn(m_refVec, m_clockWise)), v.dotProduct(m_refVec)));
}

double AcGeCircArc2d::paramOf(const AcGePoint2d& point, const AcGeTol& tol) const {
    const AcGeVector2d v = point - m_center;
    if (v.x == 0.0 && v.y == 0.0) return m_startAngle;
    if (AcGeKernel::isFullTurn(m_startAngle, m_endAngle) && point.isEqualTo(startPoint(), tol))
        return m_startAngle;
    return AcGeKernel::unclampedAngle(
        m_startAngle, m_endAngle,
        std::atan2(v.dotProduct(quarterOn(m_refVec, m_clockWise)), v.dotProduct(m_refVec)));
}

Adesk::Boolean AcGeCircArc2d::isPeriodic(double& period) const {
    if (!AcGeKernel::isFullTurn(m_startAngle, m_endAngle)) return Adesk::kFalse;
    period = AcGe::kTwoPi;
    return Adesk::kTrue;
}

double AcGeCircArc2d::length(double fromParam, double toParam, const AcGeTol&) const {
    return std::abs(toParam - fromParam) * m_radius;
}

double AcGeCircArc2d::paramAtLength(double datumParam, double length, Adesk::Boolean forward,
                                    const AcGeTol&) const {
    if (!(m_radius > 0.0)) return datumParam;
    return forward ? datumParam + length / m_radius : datumParam - length / m_radius;
}

Adesk::Boolean AcGeCircArc2d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    const double sweep = endParam - startParam;
    value = AcGeKernel::segmentArea(sweep) * m_radius * m_radius * (m_clockWise ? -1.0 : 1.0);
    return Adesk::kTrue;
}

AcGeBoundBlock2d AcGeCircArc2d::orthoBoundBlock() const {
    AcGeBoundBlock2d block(startPoint(), endPoint());
    const AcGeVector2d quarter = quarterOn(m_refVec, m_clockWise);
    for (unsigned int i = 0; i < 2; ++i) {
        // The coordinate is extreme where its derivative vanishes, and half a turn on.
        const double extreme = std::atan2(quarter[i], m_refVec[i]);
        for (double angle : {extreme, extreme + AcGe::kPi})
            if (AcGeKernel::angleFrom(m_startAngle, angle) <= m_endAngle) block.extend(evalPoint(angle));
    }
    return block;
}

void AcGeCircArc2d::getSamplePoints(double fromParam, double toParam, double tolerance,
                                    AcGePoint2dArray& points, AcGeDoubleArray& params) const {
    const int count = AcGeKernel::chordCount(std::abs(toParam - fromParam), m_radius, tolerance);
    points.setLogicalLength(count + 1);
    params.setLogicalLength(count + 1);
    for (int i = 0; i <= count; ++i) {
        params[i] = i == count ? toParam : fromParam + (toParam - fromParam) * i / count;
        points[i] = evalPoint(params[i]);
    }
}

void AcGeCircArc2d::getSmoothPieces(AcGeDoubleArray& params) const {
    AcGeKernel::angularPieces(m_startAngle, m_endAngle, params);
}
