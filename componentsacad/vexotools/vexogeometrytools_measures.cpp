#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "dbpolyline.h"
#include "geline3d.h"
#include "geplane.h"

#include <algorithm>
#include <memory>
#include <numbers>

using namespace vexo;

namespace {

constexpr double kPi = std::numbers::pi;
/// How near to 1 the sine of a turn must be to count as a right angle.
constexpr double kRightAngleSine = 2e-10;

/// Sum of the cross products of neighbouring points around the polygon, in the order of the points: twice the
/// area.
template <typename Point>
double crossProductSum(const AcArray<Point>& points) {
    double sum = 0.0;
    const int count = points.length();
    for (int i = 0; i < count; ++i) {
        const Point& next = points[i + 1 < count ? i + 1 : 0];
        sum += points[i].x * next.y - next.x * points[i].y;
    }
    return sum;
}

/// The directions in which a contour enters and leaves a segment; an arc's are those of its two half chords.
struct SegmentDirections {
    bool known = false;
    AcGeVector3d leaving;  ///< at the segment's start
    AcGeVector3d arriving; ///< at its end
};

SegmentDirections directionsOf(const AcDbPolyline& polyline, unsigned int index, const AcGeTol& tolerance) {
    const AcDbPolyline::SegType type = polyline.segType(index);
    if (type == AcDbPolyline::kLine) {
        AcGeLineSeg3d line;
        if (polyline.getLineSegAt(index, line) != Acad::eOk) return {};
        const AcGeVector3d direction = line.endPoint() - line.startPoint();
        return {true, direction, direction};
    }
    AcGeCircArc3d arc;
    if (type != AcDbPolyline::kArc || polyline.getArcSegAt(index, arc) != Acad::eOk) return {};
    const AcGePoint3d start = arc.startPoint();
    const AcGePoint3d end = arc.endPoint();
    const AcGePoint3d apex = arc.evalPoint((arc.paramOf(start, tolerance) + arc.paramOf(end, tolerance)) / 2);
    return {true, apex - start, end - apex};
}

/// The turn from one direction to the next, -pi to pi, positive to the left seen from +Z.
double turnBetween(const AcGeVector3d& incoming, const AcGeVector3d& outgoing) {
    const AcGeVector3d before = incoming.normal(AcGeContext::gTol);
    const AcGeVector3d after = outgoing.normal(AcGeContext::gTol);
    const double sine = before.crossProduct(after).z;
    if (sine >= 1 - kRightAngleSine) return kPi / 2;
    if (sine <= -1 + kRightAngleSine) return -kPi / 2;
    const double turn = std::asin(sine);
    if (!(before.dotProduct(after) < 0)) return turn;
    return turn > 0 ? kPi - turn : -kPi - turn;
}

/// The sum of a contour's turns at its vertices, of one that lies parallel to the XY plane, without an angle
/// for each: with the turns from half chord to half chord within the arcs it makes full turns, as many as the
/// direction comes round past the x axis. Turns of nearly a right angle count as one in the contract's sum,
/// which moves that a little at each vertex; where that could matter, and where the signs do not tell, the
/// sum is not known.
class FullTurns {
public:
    /// 0 when it is not known.
    static double sumOf(const AcDbPolyline& polyline) {
        const unsigned int count = polyline.numVerts();
        const double facing = polyline.normal().z;
        const bool isParallel = polyline.normal().x == 0.0 && polyline.normal().y == 0.0 && facing != 0.0;
        if (!isParallel) return 0.0;
        FullTurns turns;
        AcGePoint2d start;
        AcGePoint2d end;
        (void)polyline.getPointAt(0, start);
        for (unsigned int i = 0; i < count && turns.m_isClear; ++i, start = end) {
            double bulge = 0.0;
            (void)polyline.getPointAt(i + 1 < count ? i + 1 : 0, end);
            (void)polyline.getBulgeAt(i, bulge);
            turns.addSegment(start, end, bulge);
        }
        turns.close();
        const double sum = 2.0 * kPi * turns.m_count - turns.m_withinArcs;
        const bool isKnown = turns.m_isClear && std::abs(sum) > kMostOff * (1.0 + count);
        if (!isKnown) return 0.0;
        return facing > 0.0 ? sum : -sum;
    }

private:
    /// An angle whose sine is within 2e-10 of 1 is no farther from a right one, and all rounding is less.
    static constexpr double kMostOff = 3e-5;
    /// Segments and heights beyond this many point allowances are what they look like.
    static constexpr double kClearAllowances = 16.0;
    /// The square of the least sine of a turn that is told from a straight way or a way back.
    static constexpr double kClearSineSquared = 1e-12;

    void addSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
        const AcGeVector2d chord = end - start;
        const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
        const double clear = kClearAllowances * AcGe::pointAllowance(AcGeContext::gTol, magnitude);
        const double square = chord.lengthSqrd();
        if (!(square > clear * clear)) {
            m_isClear = false;
        } else if (bulge == 0.0) {
            goOn(chord);
        } else if (0.25 * bulge * bulge * square > clear * clear) {
            const AcGeVector2d height = chord.perpVector() * (-0.5 * bulge);
            goOn(chord * 0.5 + height);
            goOn(chord * 0.5 - height);
            m_withinArcs += 2.0 * std::atan(bulge);
        } else {
            m_isClear = false;
        }
    }
    void goOn(const AcGeVector2d& direction) {
        if (m_hasDirection)
            turn(m_last, direction);
        else
            m_first = direction;
        m_hasDirection = true;
        m_last = direction;
    }
    void close() {
        if (m_hasDirection && m_isClear) turn(m_last, m_first);
    }
    /// Past the x axis, the short way.
    void turn(const AcGeVector2d& from, const AcGeVector2d& to) {
        const double sine = from.crossProduct(to);
        if (from.dotProduct(to) < 0.0 &&
            !(sine * sine > kClearSineSquared * from.lengthSqrd() * to.lengthSqrd()))
            m_isClear = false;
        const bool wasAbove = from.y >= 0.0;
        const bool isAbove = to.y >= 0.0;
        if (!wasAbove && isAbove && sine > 0.0) ++m_count;
        if (wasAbove && !isAbove && sine < 0.0) --m_count;
    }

    AcGeVector2d m_first;
    AcGeVector2d m_last;
    bool m_hasDirection = false;
    bool m_isClear = true;
    int m_count = 0;
    double m_withinArcs = 0.0;
};

/// How far, in drawing units, GetGravityCenter shifts beyond the apex along the arc's axis: a ratio, three
/// times the height of the circular segment's centroid above the chord over the bulge.
double centroidShift(double bulge, double chord) {
    const double radius = bulge / 2 + chord * chord / (bulge * 8);
    // Rounding may bring the sine of a half circle's half angle above 1, which has no angle.
    const double sine = std::clamp(chord / (radius * 2), -1.0, 1.0);
    const double cosine = (radius - bulge) / radius;
    const double angle = std::asin(sine);
    return (2 / bulge) * ((radius * sine * sine * sine) / (angle - sine * cosine)) -
           ((radius - bulge) * 3) / bulge;
}

} // namespace

namespace VEXOGeometryTools {

double getSignedArea(AcArray<AcGePoint2d> points) {
    CVxLogEntry entry(L"VEXOGeometryTools::getSignedArea");
    return crossProductSum(points) / 2;
}

double getSignedArea(AcArray<AcGePoint3d> points) {
    CVxLogEntry entry(L"VEXOGeometryTools::getSignedArea");
    return crossProductSum(points) / 2;
}

double getArea(AcArray<AcGePoint2d> points) {
    CVxLogEntry entry(L"VEXOGeometryTools::getArea");
    return std::abs(crossProductSum(points) / 2);
}

double getArea(AcArray<AcGePoint3d> points) {
    CVxLogEntry entry(L"VEXOGeometryTools::getArea");
    return std::abs(crossProductSum(points) / 2);
}

Acad::ErrorStatus calculateSurface(const AcArray<AcGePoint3d>& points, double& surface) {
    CVxLogEntry entry(L"VEXOGeometryTools::calculateSurface");
    if (points.isEmpty()) return Acad::eInvalidInput;
    surface = std::abs(crossProductSum(points) / 2);
    return Acad::eOk;
}

AcGePoint3d GetGravityCenter(AcArray<AcGePoint3d> points, AcArray<AcGeVector3d> bulges) {
    CVxLogEntry entry(L"VEXOGeometryTools::GetGravityCenter");
    const int length = points.length();
    if (length != bulges.length() || length == 0) return AcGePoint3d::kOrigin;
    AcGeVector3d sum;
    int count = length;
    for (int i = 0; i < length; ++i) {
        const AcGePoint3d& p = points[i];
        const AcGePoint3d& q = points[i + 1 < length ? i + 1 : 0];
        sum += p.asVector();
        double height = bulges[i].length();
        if (!bulges[i].crossProduct(p - q).isCodirectionalTo(AcGeVector3d::kZAxis, AcGeContext::gTol))
            height = -height;
        const double chord = p.distanceTo(q);
        if (!isArcBulge(height) || chord == 0.0) continue;
        const AcGePoint3d apex = getMiddleOf(p, q, height, AcGeVector3d::kZAxis);
        sum += apex.asVector();
        sum += centroidShift(height, chord) * (apex - getMiddleOf(p, q)).normal(AcGeContext::gTol);
        ++count;
    }
    const AcGeVector3d average = sum / count;
    return {average.x, average.y, average.z};
}

int IsCCW(const AcArray<AcGePoint3d>& points, const AcArray<AcGeVector3d>& bulges) {
    CVxLogEntry entry(L"VEXOGeometryTools::IsCCW");
    const int length = points.length();
    if (length != bulges.length() || length == 0) return 0;
    double sum = 0.0;
    const AcGePoint3d* last = &points[0];
    AcGePoint3d apex;
    const auto goTo = [&](const AcGePoint3d& next) {
        sum += last->x * next.y - next.x * last->y;
        last = &next;
    };
    for (int i = 0; i < length; ++i) {
        const AcGePoint3d& next = points[i + 1 < length ? i + 1 : 0];
        if (isArcBulge(bulges[i])) {
            apex = points[i] + (next - points[i]) / 2 + bulges[i];
            goTo(apex);
        }
        goTo(next);
    }
    return sum < -kComparisonTolerance ? 1 : 0;
}

bool isContourClockWise(AcDbCurve* curve) {
    CVxLogEntry entry(L"VEXOGeometryTools::isContourClockWise");
    const AcDbPolyline* light = AcDbPolyline::cast(curve);
    if (const double sum = light ? FullTurns::sumOf(*light) : 0.0; sum != 0.0) return sum < 0.0;
    const std::unique_ptr<AcDbPolyline> polyline(ConvertToPolyline(curve));
    if (!polyline) return false;
    const AcGeTol tolerance = pointToleranceOf(kComparisonTolerance);
    const unsigned int count = polyline->numVerts();
    if (count == 0) return false;
    // The turn from the last vertex to the first counts whether the polyline is closed or not.
    polyline->setClosed(Adesk::kTrue);
    double sum = 0.0;
    SegmentDirections incoming = directionsOf(*polyline, count - 1, tolerance);
    for (unsigned int i = 0; i < count; ++i) {
        const SegmentDirections outgoing = directionsOf(*polyline, i, tolerance);
        if (incoming.known && outgoing.known) sum += turnBetween(incoming.arriving, outgoing.leaving);
        incoming = outgoing;
    }
    return sum < -kComparisonTolerance;
}

AcGeVector3d getNormalFromPoints(const AcArray<AcGePoint3d>& points) {
    CVxLogEntry entry(L"VEXOGeometryTools::getNormalFromPoints");
    if (points.length() < 3) return AcGeVector3d::kIdentity;
    const AcGePoint3d& a = points[0];
    int other = 1;
    while (other < points.length() && points[other].isEqualTo(a, AcGeContext::gTol)) ++other;
    if (other == points.length()) return AcGeVector3d::kIdentity;
    const AcGePoint3d& b = points[other];
    const AcGeLine3d line(a, b);
    for (int i = 2; i < points.length(); ++i)
        if (!line.isOn(points[i], AcGeContext::gTol)) return AcGePlane(a, b, points[i]).normal();
    return AcGeVector3d::kIdentity;
}

void MakePlanarPolygon(AcArray<AcGePoint3d>& points, const AcGePlane& plane, const AcGeVector3d& direction) {
    CVxLogEntry entry(L"VEXOGeometryTools::MakePlanarPolygon");
    if (points.length() < 3) return;
    for (AcGePoint3d& point : points) {
        AcGePoint3d onPlane;
        if (plane.intersectWith(AcGeLine3d(point, direction), onPlane, AcGeContext::gTol)) point = onPlane;
    }
}

} // namespace VEXOGeometryTools
