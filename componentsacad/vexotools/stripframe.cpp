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
void addArc(const ContourVertex& start, const ContourVertex& end, FrameBox& box) {
    const double chordX = end.x - start.x;
    const double chordY = end.y - start.y;
    const double factor = (1.0 - start.bulge * start.bulge) / (4.0 * start.bulge);
    const double toCenterX = chordX * 0.5 - chordY * factor;
    const double toCenterY = chordY * 0.5 + chordX * factor;
    const double radius = std::hypot(toCenterX, toCenterY);
    // A point of the circle is on the arc when it lies on the arc's side of the chord.
    const auto add = [&](double x, double y) {
        const double side = chordX * (toCenterY + y) - chordY * (toCenterX + x);
        if (side * start.bulge >= 0.0) return;
        box.lowX = std::min(box.lowX, start.x + toCenterX + x);
        box.highX = std::max(box.highX, start.x + toCenterX + x);
        box.lowY = std::min(box.lowY, start.y + toCenterY + y);
        box.highY = std::max(box.highY, start.y + toCenterY + y);
    };
    add(radius, 0.0);
    add(-radius, 0.0);
    add(0.0, radius);
    add(0.0, -radius);
}

} // namespace

FrameBox boxOf(const ContourLoop& loop) {
    const double far = std::numeric_limits<double>::infinity();
    FrameBox box{far, -far, far, -far};
    for (const ContourVertex& vertex : loop.vertices) {
        box.lowX = std::min(box.lowX, vertex.x);
        box.highX = std::max(box.highX, vertex.x);
        box.lowY = std::min(box.lowY, vertex.y);
        box.highY = std::max(box.highY, vertex.y);
    }
    const std::size_t count = loop.vertices.size();
    for (std::size_t i = 0; i < count; ++i)
        if (loop.vertices[i].bulge != 0.0) addArc(loop.vertices[i], loop.vertices[(i + 1) % count], box);
    return box;
}

ContourLoop reversedLoop(const ContourLoop& loop) {
    ContourLoop reversed;
    const std::size_t count = loop.vertices.size();
    reversed.vertices.reserve(count);
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t i = (count - k) % count;
        const ContourVertex& vertex = loop.vertices[i];
        reversed.vertices.push_back({vertex.x, vertex.y, -loop.vertices[(i + count - 1) % count].bulge});
    }
    return reversed;
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
