#include "stripframe.h"

#include "contourloopsegment.h"

#include "dbpolyline.h"
#include "geplane.h"

#include <cmath>
#include <utility>

namespace vexo {

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

} // namespace

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

} // namespace vexo
