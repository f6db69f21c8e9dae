#include "stripframe.h"

#include "dbpolyline.h"
#include "geplane.h"

#include <algorithm>
#include <cmath>

namespace VEXOGeometryTools {

namespace {

bool liesFlat(const AcDbPolyline& polyline) {
    return polyline.normal().isParallelTo(AcGeVector3d::kZAxis, AcGeContext::gTol);
}

/// A polyline with the normal -Z counts its x to the left. The same change leads there and back.
void mirrorX(ContourLoop& loop) {
    for (ContourVertex& vertex : loop.vertices) {
        vertex.x = -vertex.x;
        vertex.bulge = -vertex.bulge;
    }
}

/// Adds the points of the arc's circle farthest along the axes, as far as the arc runs over them.
void addArc(const LoopSegment& arc, PlaneBox& box) {
    const double chordX = arc.end.x - arc.start.x;
    const double chordY = arc.end.y - arc.start.y;
    const ArcCircle circle = circleOf(arc);
    // A point of the circle is on the arc when it lies on the arc's side of the chord.
    const auto add = [&](double x, double y) {
        const double side = chordX * (y - arc.start.y) - chordY * (x - arc.start.x);
        if (side * arc.start.bulge < 0.0) box.extend({x, x, y, y});
    };
    add(circle.x + circle.radius, circle.y);
    add(circle.x - circle.radius, circle.y);
    add(circle.x, circle.y + circle.radius);
    add(circle.x, circle.y - circle.radius);
}

} // namespace

PlaneBox LoopSegment::box(double margin) const {
    if (!isArc())
        return PlaneBox{std::min(start.x, end.x), std::max(start.x, end.x), std::min(start.y, end.y),
                        std::max(start.y, end.y)}
            .widened(margin);
    const double reach = 0.5 * chord() * std::max(1.0, std::abs(start.bulge)) + margin;
    const double x = 0.5 * (start.x + end.x);
    const double y = 0.5 * (start.y + end.y);
    return {x - reach, x + reach, y - reach, y + reach};
}

ArcCircle circleOf(const LoopSegment& arc) {
    const double bulge = arc.start.bulge;
    const double chordX = arc.end.x - arc.start.x;
    const double chordY = arc.end.y - arc.start.y;
    const double factor = (1.0 - bulge * bulge) / (4.0 * bulge);
    const double toX = chordX * 0.5 - chordY * factor;
    const double toY = chordY * 0.5 + chordX * factor;
    return {arc.start.x + toX, arc.start.y + toY, std::hypot(toX, toY)};
}

PlaneBox boxOf(const ContourLoop& loop) {
    PlaneBox box = BoxChain::emptyBox();
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        const LoopSegment segment(loop, i);
        box.extend({segment.start.x, segment.start.x, segment.start.y, segment.start.y});
        if (segment.isArc()) addArc(segment, box);
    }
    return box;
}

ContourLoop reversedLoop(const ContourLoop& loop) {
    ContourLoop result = reversed(loop);
    if (!result.vertices.empty())
        std::rotate(result.vertices.begin(), result.vertices.end() - 1, result.vertices.end());
    return result;
}

StripFrame::StripFrame(const AcDbPolyline& contour, const AcGeVector3d& dir) {
    const double length = std::hypot(dir.x, dir.y);
    if (!std::isfinite(length) || length <= AcGeContext::gTol.equalVector()) return;
    AcGePoint3d origin;
    if (contour.getPointAt(0, origin) != Acad::eOk) return;
    m_originX = origin.x;
    m_originY = origin.y;
    m_cosine = dir.x / length;
    m_sine = dir.y / length;
    m_isClockwise = signedArea(loopOf(contour)) < 0.0;
    m_isValid = take(contour, m_loop);
}

bool StripFrame::take(const AcDbPolyline& polyline, ContourLoop& loop) const {
    if (!polyline.isClosed() || !liesFlat(polyline)) return false;
    ContourLoop taken = loopOf(polyline);
    if (polyline.normal().z < 0.0) mirrorX(taken);
    for (ContourVertex& vertex : taken.vertices) {
        const double x = vertex.x - m_originX;
        const double y = vertex.y - m_originY;
        vertex.x = m_cosine * x + m_sine * y;
        vertex.y = m_cosine * y - m_sine * x;
    }
    const double area = signedArea(taken);
    const double tolerance = areaTolerance({taken}, {});
    if (!(std::abs(area) > tolerance * tolerance)) return false;
    loop = area < 0.0 ? reversedLoop(taken) : std::move(taken);
    return true;
}

std::unique_ptr<AcDbPolyline> StripFrame::give(const ContourLoop& loop, const AcDbPolyline& contour) const {
    ContourLoop given = loop;
    for (ContourVertex& vertex : given.vertices) {
        const double x = m_cosine * vertex.x - m_sine * vertex.y;
        const double y = m_sine * vertex.x + m_cosine * vertex.y;
        vertex.x = x + m_originX;
        vertex.y = y + m_originY;
    }
    const bool isMirrored = contour.normal().z < 0.0;
    if (isMirrored) mirrorX(given);
    // A loop of the frame runs counter-clockwise; mirrored it runs clockwise.
    if (isMirrored != m_isClockwise) given = reversedLoop(given);
    std::unique_ptr<AcDbPolyline> polyline = polylineOf(given, contour.normal(), contour.elevation());
    (void)polyline->setPropertiesFrom(&contour);
    (void)polyline->setThickness(contour.thickness());
    return polyline;
}

} // namespace VEXOGeometryTools
