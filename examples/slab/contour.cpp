#include "contour.h"

#include "vexogeometrytools.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double squareEqual = 1e-9; // of lengths and angles, for a plane that is scaled evenly
constexpr double smallAngle = 1e-2;  // below it the series are exact to the last place
constexpr double upright = 1e-9;     // of the area, seen from above

struct Segment {
    AcGePoint2d start;
    AcGePoint2d end;
    double bulge; ///< the host's
};

// Area and length of a contour in its own plane, near its first vertex.
struct PlaneMeasures {
    double area = 0.0; ///< counter-clockwise above 0
    double length = 0.0;
    AcGeVector2d moment{0.0, 0.0}; ///< area times centroid
};

std::vector<Segment> segmentsOf(const AcDbPolyline& polyline) {
    const unsigned count = polyline.numVerts() - (endsMeet(polyline) ? 1 : 0);
    std::vector<Segment> segments(count);
    for (unsigned i = 0; i < count; ++i) {
        polyline.getPointAt(i, segments[i].start);
        polyline.getBulgeAt(i, segments[i].bulge);
    }
    for (unsigned i = 0; i < count; ++i) segments[i].end = segments[(i + 1) % count].start;
    return segments;
}

// Between an arc and its chord (https://en.wikipedia.org/wiki/Circular_segment): its area above 0 where the
// arc turns counter-clockwise, and its own centroid.
void addSegmentOfCircle(PlaneMeasures& sum, const Segment& segment, const AcGePoint2d& origin) {
    const double angle = 4.0 * std::atan(segment.bulge);
    const AcGeVector2d chord = segment.end - segment.start;
    const double size = chord.length();
    if (size == 0.0) return;
    const double halfSine = std::sin(angle / 2.0);
    const double radius = size / 2.0 / std::abs(halfSine);
    const double area = radius * radius / 2.0 * angleMinusSine(angle);
    const AcGeVector2d outward = AcGeVector2d(chord.y, -chord.x) * ((angle > 0.0 ? 1.0 : -1.0) / size);
    const double height = std::abs(segment.bulge) * size / 2.0;
    // The centroid over the chord: that of a parabola's segment where the arc is so flat that its centre is
    // far off.
    double over = 0.4 * height;
    if (std::abs(angle) > smallAngle)
        over = 2.0 * radius * std::pow(std::abs(halfSine), 3) / (1.5 * std::abs(angleMinusSine(angle))) -
               radius * std::cos(angle / 2.0);
    const AcGeVector2d middle = (segment.start - origin) + chord * 0.5;
    sum.area += area;
    sum.moment += (middle + outward * over) * area;
    sum.length += radius * std::abs(angle);
}

PlaneMeasures measureInPlane(const std::vector<Segment>& segments) {
    PlaneMeasures sum;
    if (segments.empty()) return sum;
    const AcGePoint2d origin = segments.front().start;
    for (const Segment& segment : segments) {
        const AcGeVector2d a = segment.start - origin;
        const AcGeVector2d b = segment.end - origin;
        const double area = (a.x * b.y - b.x * a.y) / 2.0;
        sum.area += area;
        sum.moment += (a + b) * (area / 3.0);
        if (segment.bulge != 0.0)
            addSegmentOfCircle(sum, segment, origin);
        else
            sum.length += (b - a).length();
    }
    return sum;
}

// The length of an arc that uneven scales have made a piece of an ellipse, by Gauss-Legendre quadrature with
// five points over pieces of an eighth of a turn and less.
double stretchedArcLength(const Segment& segment, const AcGeMatrix3d& plane) {
    constexpr double points[] = {0.0, 0.5384693101056831, -0.5384693101056831, 0.9061798459386640,
                                 -0.9061798459386640};
    constexpr double weights[] = {0.5688888888888889, 0.4786286704993665, 0.4786286704993665,
                                  0.2369268850561891, 0.2369268850561891};
    constexpr int pieces = 64;
    const double angle = 4.0 * std::atan(segment.bulge);
    const AcGeVector2d chord = segment.end - segment.start;
    const double radius = chord.length() / 2.0 / std::abs(std::sin(angle / 2.0));
    const double chordDirection = std::atan2(chord.y, chord.x);
    double length = 0.0;
    for (int piece = 0; piece < pieces; ++piece)
        for (int i = 0; i < 5; ++i) {
            const double share = (piece + 0.5 + points[i] / 2.0) / pieces;
            const double direction = chordDirection + angle * (share - 0.5);
            const AcGeVector3d tangent = plane * AcGeVector3d(std::cos(direction), std::sin(direction), 0.0);
            length += weights[i] / 2.0 / pieces * tangent.length() * radius * std::abs(angle);
        }
    return length;
}

double lengthInWorld(const std::vector<Segment>& segments, const PlaneMeasures& measures,
                     const AcGeMatrix3d& plane) {
    const AcGeVector3d x = plane * AcGeVector3d::kXAxis;
    const AcGeVector3d y = plane * AcGeVector3d::kYAxis;
    const double scale = x.length();
    const bool isEven = std::abs(y.length() - scale) <= squareEqual * scale &&
                        std::abs(x.dotProduct(y)) <= squareEqual * scale * scale;
    if (isEven) return measures.length * scale;
    double length = 0.0;
    for (const Segment& segment : segments) {
        const AcGeVector2d chord = segment.end - segment.start;
        if (chord.isZeroLength()) continue;
        length += segment.bulge != 0.0 ? stretchedArcLength(segment, plane)
                                       : (plane * AcGeVector3d(chord.x, chord.y, 0.0)).length();
    }
    return length;
}

bool enclosesNothing(const std::vector<Segment>& segments) {
    std::vector<AcGePoint2d> distinct;
    for (const Segment& segment : segments) {
        if (segment.bulge != 0.0 && !segment.start.isEqualTo(segment.end)) return false;
        const bool isKnown = std::any_of(distinct.begin(), distinct.end(), [&](const AcGePoint2d& each) {
            return each.isEqualTo(segment.start);
        });
        if (!isKnown) distinct.push_back(segment.start);
        if (distinct.size() == 3) return false;
    }
    return true;
}

unsigned arcsIn(const std::vector<Segment>& segments) {
    return static_cast<unsigned>(std::count_if(segments.begin(), segments.end(), [](const Segment& each) {
        return each.bulge != 0.0 && !each.start.isEqualTo(each.end);
    }));
}

// The library's form of a contour: points and a vector from each chord's middle to its arc's apex, in the
// world.
void worldForm(const Contour& contour, const std::vector<Segment>& segments, AcArray<AcGePoint3d>& points,
               AcArray<AcGeVector3d>& bulges) {
    for (unsigned i = 0; i < segments.size(); ++i) {
        AcGePoint3d point;
        AcGeCircArc3d arc;
        AcGeVector3d bulge;
        contour.polyline->getPointAt(i, point);
        const bool isArc = contour.polyline->segType(i) == AcDbPolyline::kArc &&
                           contour.polyline->getArcSegAt(i, arc) == Acad::eOk;
        if (isArc) bulge = VEXOGeometryTools::getBulgeVecFromGeArc(&arc);
        points.append(contour.toWorld * point);
        bulges.append(contour.toWorld * bulge);
    }
}

// The sense by area, checked with the sense by turning: they part where a contour crosses itself.
void judgeSense(const Contour& contour, const AcArray<AcGePoint3d>& points,
                const AcArray<AcGeVector3d>& bulges, ContourMeasures& measures) {
    if (std::abs(measures.normal.z) < upright) {
        measures.sense = L"-";
        measures.note = L"stands upright: no area is seen from above";
        return;
    }
    const bool isClockWise = VEXOGeometryTools::IsCCW(points, bulges) == 1;
    measures.sense = isClockWise ? L"cw" : L"ccw";
    const std::unique_ptr<AcDbPolyline> moved = copyOf(*contour.polyline);
    if (moved->transformBy(contour.toWorld) != Acad::eOk)
        return; // unevenly scaled: its arcs are no arcs any more
    if (VEXOGeometryTools::isContourClockWise(moved.get()) != isClockWise)
        measures.note = L"turns the other way than its area: it may cross itself";
}

} // namespace

ContourMeasures measuresOf(const Contour& contour) {
    ContourMeasures measures;
    const std::vector<Segment> segments = segmentsOf(*contour.polyline);
    measures.vertices = static_cast<unsigned>(segments.size());
    measures.arcs = arcsIn(segments);

    AcGeMatrix3d plane;
    contour.polyline->getEcs(plane);
    plane.preMultBy(contour.toWorld);
    const PlaneMeasures inPlane = measureInPlane(segments);
    measures.length = lengthInWorld(segments, inPlane, plane);
    const AcGeVector3d across = (plane * AcGeVector3d::kXAxis).crossProduct(plane * AcGeVector3d::kYAxis);
    measures.normal = across.normal();
    if (enclosesNothing(segments)) {
        measures.note = L"degenerate: encloses nothing";
        return measures;
    }
    measures.hasArea = true;
    measures.trueArea = std::abs(inPlane.area) * across.length();

    AcArray<AcGePoint3d> points;
    AcArray<AcGeVector3d> bulges;
    worldForm(contour, segments, points, bulges);
    measures.signedArea = VEXOGeometryTools::getSignedArea(points);
    measures.gravityCenter = VEXOGeometryTools::GetGravityCenter(points, bulges);
    if (inPlane.area == 0.0) {
        measures.hasArea = false;
        measures.note = L"its parts cancel: it encloses no area";
        return measures;
    }
    const AcGePoint2d middle = segments.front().start + inPlane.moment / inPlane.area;
    measures.centroid = plane * AcGePoint3d(middle.x, middle.y, contour.polyline->elevation());
    judgeSense(contour, points, bulges, measures);
    return measures;
}

std::unique_ptr<AcDbPolyline> copyOf(const AcDbPolyline& polyline) {
    return std::unique_ptr<AcDbPolyline>(static_cast<AcDbPolyline*>(polyline.clone()));
}

bool endsMeet(const AcDbPolyline& polyline) {
    const unsigned count = polyline.numVerts();
    AcGePoint2d first, last;
    return count > 1 && polyline.getPointAt(0, first) == Acad::eOk &&
           polyline.getPointAt(count - 1, last) == Acad::eOk && first.isEqualTo(last);
}

double angleMinusSine(double angle) {
    if (std::abs(angle) > smallAngle) return angle - std::sin(angle);
    const double square = angle * angle;
    return angle * square / 6.0 * (1.0 - square / 20.0 * (1.0 - square / 42.0));
}

double signedAreaInPlane(const AcDbPolyline& contour) { return measureInPlane(segmentsOf(contour)).area; }

unsigned arcCount(const AcDbPolyline& contour) { return arcsIn(segmentsOf(contour)); }
