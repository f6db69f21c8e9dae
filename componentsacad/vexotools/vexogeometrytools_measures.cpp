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
