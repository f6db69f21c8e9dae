#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "contourpointgrid.h"

#include "cvxlogentry.h"
#include "dbarc.h"
#include "dbpolyline.h"
#include "geline3d.h"

#include <algorithm>
#include <charconv>
#include <numbers>
#include <numeric>
#include <vector>

using namespace vexo;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
/// Square of the distance within which two numbers of an array are the same value.
constexpr double kSameValueSquared = 1e-06;
/// Points of a contour closer than this are one point for ClearDooblons.
constexpr double kSamePlace = 0.001;
/// How close to pi the angle between an arc's height and the chord's left must be to count as opposite.
constexpr double kOppositeAngle = 1e-06;

/// More decimals change nothing: the longest fraction of a double has fewer.
constexpr int kMostDecimals = 1100;

/// The point half-way between an arc's own ends, by their parameters.
AcGePoint3d apexOf(const AcGeCircArc3d& arc) {
    const double first = arc.paramOf(arc.startPoint(), AcGeContext::gTol);
    const double last = arc.paramOf(arc.endPoint(), AcGeContext::gTol);
    return arc.evalPoint((first + last) / 2);
}

AcGePoint3d middleOf(const AcGePoint3d& a, const AcGePoint3d& b) { return a + (b - a) / 2; }

AcGePoint3d apexOf(const AcGePoint3d& a, const AcGePoint3d& b, double bulge, const AcGeVector3d& normal) {
    const AcGeVector3d chord = b - a;
    return a + chord / 2 - bulge * chord.crossProduct(normal).normal(AcGeContext::gTol);
}

double radiusOf(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    const double chord = start.distanceTo(end);
    return std::abs(chord * chord / (bulge * 8) + bulge / 2);
}

AcGePoint3d centerOf(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                     const AcGeVector3d& normal) {
    const AcGePoint3d apex = apexOf(start, end, bulge, normal);
    return apex + radiusOf(start, end, bulge) * (middleOf(start, end) - apex).normal(AcGeContext::gTol);
}

/// Sorts points by their parameters, by exchange: two change places when the later parameter is definitely
/// less. Where all stand clearly apart that is the order of the numbers.
void sortByParameter(AcArray<AcGePoint3d>& points, std::vector<double>& params) {
    std::vector<int> order(params.size());
    std::iota(order.begin(), order.end(), 0);
    const auto at = [&](int i) { return params[static_cast<std::size_t>(i)]; };
    const bool areNumbers =
        std::none_of(params.begin(), params.end(), [](double param) { return std::isnan(param); });
    if (areNumbers) std::sort(order.begin(), order.end(), [&](int a, int b) { return at(a) < at(b); });
    bool areClear = areNumbers;
    for (std::size_t k = 1; k < order.size() && areClear; ++k)
        areClear = isDefinitelyLess(at(order[k - 1]), at(order[k]));
    if (areClear) {
        const AcArray<AcGePoint3d> given(points);
        for (std::size_t k = 0; k < order.size(); ++k) points[static_cast<int>(k)] = given[order[k]];
        return;
    }
    for (std::size_t i = 0; i < params.size(); ++i)
        for (std::size_t j = i + 1; j < params.size(); ++j) {
            if (!isDefinitelyLess(params[j], params[i])) continue;
            points.swap(static_cast<int>(i), static_cast<int>(j));
            std::swap(params[i], params[j]);
        }
}

/// Tangent of a quarter of the arc's included angle, without sign. The apex stands off the chord to the side
/// of kZAxis x direction, so that a chord that rises has an arc lower than its bulge, and one along the axis
/// none.
double hostBulgeSize(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    const AcGeVector3d run = end - start;
    const double chord = run.length();
    const double height = std::abs(bulge) * std::hypot(run.x, run.y) / chord;
    const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate()) + std::abs(bulge);
    // Twice what decides whether three points have an arc at all: there the closed form is the arc's own
    // value.
    const double allowed = 2.0 * AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    if (chord > allowed && height > allowed) return 2.0 * height / chord;
    const AcGeVector3d direction = run.normal(AcGeContext::gTol);
    const AcGePoint3d apex = middleOf(start, end) + bulge * AcGeVector3d::kZAxis.crossProduct(direction);
    const AcGeCircArc3d arc(start, apex, end);
    return std::tan((arc.endAng() - arc.startAng()) / 4);
}

/// Where the ray from the centre through `point` meets the arc; false when the line does not meet it twice or
/// meets it on the other side only.
bool snapToArc(const AcGeCircArc3d& arc, const AcGeVector3d& fromCenter, AcGePoint3d& snapped) {
    AcGeLine3d line;
    line.set(arc.center(), fromCenter);
    int count = 0;
    AcGePoint3d meetings[2];
    arc.intersectWith(line, count, meetings[0], meetings[1], AcGeContext::gTol);
    if (count != 2) return false;
    for (const AcGePoint3d& meeting : meetings) {
        if (!(meeting - arc.center()).isCodirectionalTo(line.direction(), AcGeContext::gTol)) continue;
        snapped = meeting;
        return true;
    }
    return false;
}

/// Signed length along a circle for an angle given about +Z and, where that is beyond `span`, taken about -Z
/// instead.
double signedArcLength(const AcGeVector3d& from, const AcGeVector3d& to, double span, double radius) {
    const double angle = from.angleTo(to, AcGeVector3d::kZAxis);
    const bool beyond = span <= angle + std::abs(angle) * kComparisonTolerance + kComparisonTolerance;
    return beyond ? -from.angleTo(to, -AcGeVector3d::kZAxis) * radius : angle * radius;
}

} // namespace

namespace VEXOGeometryTools {

int findValueInDoubleArray(AcArray<double>& values, double value) {
    CVxLogEntry entry(L"VEXOGeometryTools::findValueInDoubleArray");
    for (int i = 0; i < values.length(); ++i) {
        const double difference = value - values[i];
        if (difference * difference <= kSameValueSquared) return i;
    }
    return -1;
}

// Of the plain loops over all pairs only this remains: an element stays when no earlier one that stays equals
// it.
void ClearDooblons(AcArray<AcGePoint3d>& points, AcArray<AcGeVector3d>& bulges) {
    CVxLogEntry entry(L"VEXOGeometryTools::ClearDooblons");
    const bool withBulges = !bulges.isEmpty();
    if (withBulges && bulges.length() != points.length()) return;
    const AcGeTol tolerance = toleranceOf(kSamePlace);
    double largest = 0.0;
    for (const AcGePoint3d& point : points) largest = std::max(largest, PointGrid::ordinaryCoordinate(point));
    PointGrid grid(tolerance.equalPoint(), largest, points.length());
    int kept = 0;
    for (int j = 0; j < points.length(); ++j) {
        if (j + PointGrid::kAhead < points.length()) grid.announce(points[j + PointGrid::kAhead]);
        const bool repeated = grid.anyNear(points[j], [&](int i) {
            return points[i].isEqualTo(points[j], tolerance) &&
                   (!withBulges || bulges[i].isEqualTo(bulges[j], tolerance));
        });
        if (repeated) continue;
        points[kept] = points[j];
        if (withBulges) bulges[kept] = bulges[j];
        grid.add(points[kept], kept);
        ++kept;
    }
    points.setLogicalLength(kept);
    if (withBulges) bulges.setLogicalLength(kept);
}

AcGePoint3d getMiddleOf(AcGePoint3d a, AcGePoint3d b) {
    CVxLogEntry entry(L"VEXOGeometryTools::getMiddleOf");
    return middleOf(a, b);
}

AcGePoint3d getMiddleOf(AcGePoint3d a, AcGePoint3d b, double bulge, AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getMiddleOf");
    return apexOf(a, b, bulge, normal);
}

bool getMiddleOfArc(AcGeCircArc3d arc, AcGePoint3d& middle) {
    CVxLogEntry entry(L"VEXOGeometryTools::getMiddleOfArc");
    const AcGePoint3d start = arc.startPoint();
    const AcGePoint3d end = arc.endPoint();
    double param = 0.0;
    if (!arc.isOn(start, param, AcGeContext::gTol) || !arc.isOn(end, param, AcGeContext::gTol)) return false;
    const double first = arc.paramOf(start, AcGeContext::gTol);
    const double last = arc.paramOf(end, AcGeContext::gTol);
    middle = arc.evalPoint((first + last) * 0.5);
    return true;
}

double getBulgeFrom3Points(AcGePoint3d start, AcGePoint3d end, AcGePoint3d onArc, AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getBulgeFrom3Points");
    const AcGeTol tolerance;
    const double alpha = (start - onArc).angleTo(end - onArc);
    double bulge = 0.0;
    if (std::abs(alpha - kPi) > tolerance.equalPoint())
        bulge = ((end - start).length() / 2) * std::tan(kPi / 2 - alpha / 2);
    if ((onArc - start).dotProduct(normal.crossProduct(end - start)) < 0) bulge = -bulge;
    return bulge;
}

double getBulgeFromCurve(AcDbCurve* curve) {
    CVxLogEntry entry(L"VEXOGeometryTools::getBulgeFromCurve");
    const AcDbArc* arc = AcDbArc::cast(curve);
    if (!arc) return 0.0;
    AcGePoint3d start;
    AcGePoint3d end;
    AcGePoint3d apex;
    double startParam = 0.0;
    double endParam = 0.0;
    if (arc->getStartPoint(start) != Acad::eOk) return 0.0;
    if (arc->getEndPoint(end) != Acad::eOk) return 0.0;
    if (arc->getStartParam(startParam) != Acad::eOk) return 0.0;
    if (arc->getEndParam(endParam) != Acad::eOk) return 0.0;
    if (arc->getPointAtParam((startParam + endParam) * 0.5, apex) != Acad::eOk) return 0.0;
    const AcGeVector3d height = apex - middleOf(start, end);
    const double size = height.length();
    return height.crossProduct(end - start).dotProduct(AcGeVector3d::kZAxis) >= 0 ? -size : size;
}

double getBulgeFromGeArc(AcGeCircArc3d* arc) {
    CVxLogEntry entry(L"VEXOGeometryTools::getBulgeFromGeArc");
    if (!arc) return 0.0;
    const AcGePoint3d start = arc->startPoint();
    const AcGePoint3d end = arc->endPoint();
    const AcGeVector3d height = apexOf(*arc) - middleOf(start, end);
    const AcGeVector3d left = AcGeVector3d::kZAxis.crossProduct(end - start);
    const double size = height.length();
    return std::abs(height.angleTo(left) - kPi) < kOppositeAngle ? -size : size;
}

AcGeVector3d getBulgeVecFromGeArc(AcGeCircArc3d* arc) {
    CVxLogEntry entry(L"VEXOGeometryTools::getBulgeVecFromGeArc");
    if (!arc) return AcGeVector3d::kIdentity;
    return apexOf(*arc) - middleOf(arc->startPoint(), arc->endPoint());
}

double getNewBulge(const AcGePoint3d& start, const AcGePoint3d& end, const double& bulge,
                   const AcGePoint3d& newPoint, bool keepEndPart) {
    CVxLogEntry entry(L"VEXOGeometryTools::getNewBulge");
    const AcGeTol tolerance;
    if (std::abs(bulge) < tolerance.equalPoint()) return 0.0;
    const AcGeVector3d left = (end - start).perpVector().normal(AcGeContext::gTol);
    const AcGePoint3d apex = middleOf(start, end) + bulge * left;
    return keepEndPart ? getBulgeFrom3Points(newPoint, end, apex, AcGeVector3d::kZAxis)
                       : getBulgeFrom3Points(start, newPoint, apex, AcGeVector3d::kZAxis);
}

double getNewBulge(const AcGeCircArc3d& arc, const AcGePoint3d& newPoint, bool keepEndPart) {
    CVxLogEntry entry(L"VEXOGeometryTools::getNewBulge");
    const AcGePoint3d apex = apexOf(arc);
    return keepEndPart ? getBulgeFrom3Points(newPoint, arc.endPoint(), apex, arc.normal())
                       : getBulgeFrom3Points(arc.startPoint(), newPoint, apex, arc.normal());
}

AcGePoint3d getCenterFromArc(AcGePoint3d start, AcGePoint3d end, double bulge, AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getCenterFromArc");
    return centerOf(start, end, bulge, normal);
}

double getRadiusFromBulge(AcGePoint3d start, AcGePoint3d end, double bulge) {
    CVxLogEntry entry(L"VEXOGeometryTools::getRadiusFromBulge");
    return radiusOf(start, end, bulge);
}

Acad::ErrorStatus getArcFromCurve(AcGePoint3d start, AcGePoint3d end, double bulge, AcGeVector3d normal,
                                  AcDbArc& arc) {
    CVxLogEntry entry(L"VEXOGeometryTools::getArcFromCurve");
    if (!isArcBulge(bulge)) return Acad::eNoArcFromInput;
    const bool negative = bulge < -kComparisonTolerance;
    const AcGePoint3d center = centerOf(start, end, bulge, normal);
    const double toStart = AcGeVector3d::kXAxis.angleTo(start - center, normal);
    const double toEnd = AcGeVector3d::kXAxis.angleTo(end - center, normal);
    arc.setCenter(center);
    arc.setRadius(center.distanceTo(start));
    arc.setStartAngle(negative ? toStart : toEnd);
    arc.setEndAngle(negative ? toEnd : toStart);
    return Acad::eOk;
}

Acad::ErrorStatus getArcFromCurve(AcGePoint3d start, AcGePoint3d end, AcGePoint3d onArc, AcGeVector3d normal,
                                  AcDbArc& arc) {
    CVxLogEntry entry(L"VEXOGeometryTools::getArcFromCurve");
    return getArcFromCurve(start, end, getBulgeFrom3Points(start, end, onArc, normal), normal, arc);
}

double getLengthFromCurve(AcGePoint3d start, AcGePoint3d end, double bulge, AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getLengthFromCurve");
    AcDbArc arc;
    if (getArcFromCurve(start, end, bulge, normal, arc) != Acad::eOk) return (end - start).length();
    const double startAngle = arc.startAngle();
    double endAngle = arc.endAngle();
    if (isDefinitelyLess(endAngle, startAngle)) endAngle += kTwoPi;
    return (endAngle - startAngle) * arc.radius();
}

double getLengthFromCurve(AcGePoint3d start, AcGePoint3d end, AcGePoint3d onArc, AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getLengthFromCurve");
    return getLengthFromCurve(start, end, getBulgeFrom3Points(start, end, onArc, normal), normal);
}

double getAcadBulgeFromArc(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    CVxLogEntry entry(L"VEXOGeometryTools::getAcadBulgeFromArc");
    if (!isArcBulge(bulge)) return 0.0;
    const double size = hostBulgeSize(start, end, bulge);
    return bulge > kComparisonTolerance ? -size : size;
}

double chordToAngle(double chord, double radius) {
    CVxLogEntry entry(L"VEXOGeometryTools::chordToAngle");
    return 2 * std::asin(chord / (2 * radius));
}

double angleToChord(double angle, double radius) {
    CVxLogEntry entry(L"VEXOGeometryTools::angleToChord");
    return 2 * radius * std::sin(angle / 2);
}

void getPointsOnCircle(AcGeCircArc3d arc, AcArray<AcGePoint3d>& points) {
    CVxLogEntry entry(L"VEXOGeometryTools::getPointsOnCircle");
    std::vector<double> params;
    params.reserve(static_cast<std::size_t>(points.length()));
    int kept = 0;
    for (const AcGePoint3d& point : points) {
        const AcGeVector3d fromCenter = point - arc.center();
        if (fromCenter.isZeroLength(AcGeContext::gTol)) continue;
        AcGePoint3d& snapped = points[kept++] = point;
        const bool isOnArc = snapToArc(arc, fromCenter, snapped);
        params.push_back(isOnArc ? arc.paramOf(snapped, AcGeContext::gTol) : 0.0);
    }
    points.setLogicalLength(kept);
    sortByParameter(points, params);
}

bool getArcTangents(AcGeCircArc3d arc, AcGePoint3d from, AcGePoint3d& tangent1, AcGePoint3d& tangent2) {
    CVxLogEntry entry(L"VEXOGeometryTools::getArcTangents");
    const double radius = arc.radius();
    const double distance = from.distanceTo(arc.center());
    if (!isDefinitelyLess(radius, distance)) return false;
    const double angle = std::asin(radius / distance);
    AcGeVector3d first = arc.center() - from;
    AcGeVector3d second = first;
    first.rotateBy(angle, AcGeVector3d::kZAxis);
    second.rotateBy(angle, -AcGeVector3d::kZAxis);
    AcGePoint3d onArc;
    tangent1 = AcGeLine3d(from, first).closestPointTo(arc, onArc, AcGeContext::gTol);
    tangent2 = AcGeLine3d(from, second).closestPointTo(arc, onArc, AcGeContext::gTol);
    return true;
}

void getArcDifferences(AcGeCircArc3d first, AcGeCircArc3d second, double& startDifference,
                       double& endDifference) {
    CVxLogEntry entry(L"VEXOGeometryTools::getArcDifferences");
    const AcGePoint3d center = first.center();
    const AcGeVector3d start1 = first.startPoint() - center;
    const AcGeVector3d end1 = first.endPoint() - center;
    const double span = start1.angleTo(end1, AcGeVector3d::kZAxis);
    startDifference = signedArcLength(start1, second.startPoint() - center, span, first.radius());
    endDifference = signedArcLength(end1, second.endPoint() - center, kTwoPi - span, first.radius());
}

bool setLastBulgeToZero(AcDbCurve* curve) {
    CVxLogEntry entry(L"VEXOGeometryTools::setLastBulgeToZero");
    AcDbPolyline* polyline = AcDbPolyline::cast(curve);
    if (!polyline) return false;
    (void)polyline->setBulgeAt(polyline->numVerts() - 1, 0.0);
    return true;
}

double GetNormalizedAngle(const double& angle) {
    CVxLogEntry entry(L"VEXOGeometryTools::GetNormalizedAngle");
    const AcGeTol tolerance;
    double folded = angle;
    if (folded < 0)
        folded += kTwoPi;
    else if (folded > kTwoPi)
        folded -= kTwoPi;
    const bool atZero = std::abs(folded) <= tolerance.equalPoint();
    const bool atFullTurn = std::abs(folded - kTwoPi) <= tolerance.equalPoint();
    return atZero || atFullTurn ? 0.0 : folded;
}

double truncateDecimals(double value, double step) {
    CVxLogEntry entry(L"VEXOGeometryTools::truncateDecimals");
    const double wanted = std::log10(1 / step);
    if (!(wanted < kMostDecimals) || !std::isfinite(value)) return value;
    const int decimals = wanted > 0 ? static_cast<int>(wanted) : 0;
    char text[1500];
    const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    double result = value;
    if (written.ec == std::errc()) std::from_chars(text, written.ptr, result);
    return result;
}

} // namespace VEXOGeometryTools
