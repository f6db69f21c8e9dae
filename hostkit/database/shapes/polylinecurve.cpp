#include "polylinecurve.h"

#include "curveintersection.h"
#include "curvesupport.h"
#include "dbarc.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "entitycoordinates.h"
#include "flatmotion.h"
#include "handover.h"

#include <cmath>
#include <memory>

namespace hostkit {

namespace {

/// How far lengths may differ, relative, and directions be from a right angle, for arcs to stay circular.
constexpr double kShapeTolerance = 1e-10;

} // namespace

Acad::ErrorStatus movePlane(const AcGeVector3d& normal, double elevation, const AcGeMatrix3d& matrix,
                            bool hasArcs, PlaneMove& move) {
    if (!isInvertible(matrix)) return Acad::eInvalidInput;
    if (isShift(matrix)) {
        const AcGeVector3d way = toEntity(normal, matrix.translation());
        move = {AcGeMatrix3d::translation(way), normal, elevation + way.z, 1.0, 1.0, false};
        return Acad::eOk;
    }
    const AcGeMatrix3d toOldWorld = isZAxis(normal) ? AcGeMatrix3d() : arbitraryAxisSystem(normal);
    const AcGeMatrix3d toNewWorld = matrix * toOldWorld;
    const AcGeVector3d x = toNewWorld * AcGeVector3d::kXAxis;
    const AcGeVector3d y = toNewWorld * AcGeVector3d::kYAxis;
    const double scale = x.length();
    const bool keepsAngles = std::abs(scale - y.length()) <= kShapeTolerance * scale &&
                             std::abs(x.dotProduct(y)) <= kShapeTolerance * scale * scale;
    if (hasArcs && !keepsAngles) return Acad::eCannotScaleNonUniformly;
    const AcGeVector3d across = x.crossProduct(y);
    const AcGeVector3d moved = toNewWorld * AcGeVector3d::kZAxis;
    move.isMirror = across.dotProduct(moved) < 0.0;
    // Plain division: a small drawing scaled down has short vectors that are directions all the same.
    move.normal = across / (move.isMirror ? -across.length() : across.length());
    move.map = isZAxis(move.normal) ? toNewWorld : arbitraryAxisSystem(move.normal).transpose() * toNewWorld;
    move.elevation = (move.map * AcGePoint3d(0.0, 0.0, elevation)).z;
    move.scale = scale;
    move.heightScale = moved.dotProduct(move.normal);
    return Acad::eOk;
}

Acad::ErrorStatus PolylineCurve::getStartParam(double& parameter) const {
    VertexBuffer buffer;
    if (shape(buffer).segmentCount() == 0) return Acad::eDegenerateGeometry;
    parameter = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus PolylineCurve::getEndParam(double& parameter) const {
    VertexBuffer buffer;
    const PolylineShape own = shape(buffer);
    if (own.segmentCount() == 0) return Acad::eDegenerateGeometry;
    parameter = own.endParameter();
    return Acad::eOk;
}

Acad::ErrorStatus PolylineCurve::getStartPoint(AcGePoint3d& point) const {
    VertexBuffer buffer;
    const PolylineShape own = shape(buffer);
    if (own.vertexCount() == 0) return Acad::eDegenerateGeometry;
    point = own.worldVertex(0);
    return Acad::eOk;
}

Acad::ErrorStatus PolylineCurve::getEndPoint(AcGePoint3d& point) const {
    VertexBuffer buffer;
    const PolylineShape own = shape(buffer);
    if (own.vertexCount() == 0) return Acad::eDegenerateGeometry;
    point = own.worldVertex(isClosed() ? 0 : own.vertexCount() - 1);
    return Acad::eOk;
}

Acad::ErrorStatus PolylineCurve::getPointAtParam(double parameter, AcGePoint3d& point) const {
    VertexBuffer buffer;
    return shape(buffer).pointAt(parameter, point);
}

Acad::ErrorStatus PolylineCurve::getParamAtPoint(const AcGePoint3d& point, double& parameter) const {
    VertexBuffer buffer;
    return shape(buffer).parameterAt(point, parameter);
}

Acad::ErrorStatus PolylineCurve::getDistAtParam(double parameter, double& distance) const {
    VertexBuffer buffer;
    return shape(buffer).distanceAt(parameter, distance);
}

Acad::ErrorStatus PolylineCurve::getParamAtDist(double distance, double& parameter) const {
    VertexBuffer buffer;
    return shape(buffer).parameterAtDistance(distance, parameter);
}

Acad::ErrorStatus PolylineCurve::getFirstDeriv(double parameter, AcGeVector3d& derivative) const {
    VertexBuffer buffer;
    return shape(buffer).derivative(parameter, 1, derivative);
}

Acad::ErrorStatus PolylineCurve::getSecondDeriv(double parameter, AcGeVector3d& derivative) const {
    VertexBuffer buffer;
    return shape(buffer).derivative(parameter, 2, derivative);
}

Acad::ErrorStatus PolylineCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                                   Adesk::Boolean extend) const {
    VertexBuffer buffer;
    return shape(buffer).closestPoint(given, extend, closest);
}

Acad::ErrorStatus PolylineCurve::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                   AcGePoint3d& closest, Adesk::Boolean) const {
    VertexBuffer buffer;
    return shape(buffer).closestPointAlong(given, direction, closest);
}

Acad::ErrorStatus PolylineCurve::getArea(double& area) const {
    VertexBuffer buffer;
    return shape(buffer).area(area);
}

Acad::ErrorStatus PolylineCurve::getGeomExtents(AcDbExtents& extents) const {
    VertexBuffer buffer;
    return shape(buffer).extents(extents);
}

bool PolylineCurve::pieces(CurvePieces& pieces, bool extend) const {
    VertexBuffer buffer;
    const PolylineShape own = shape(buffer);
    own.addPieces(pieces, extend);
    return own.segmentCount() > 0;
}

namespace {

std::unique_ptr<AcDbArc> arcAbout(const AcGeVector3d& normal, const AcGePoint3d& center,
                                  const AcGePoint3d& start, const AcGePoint3d& end) {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(normal, x, y);
    const auto angleOf = [&](const AcGePoint3d& point) {
        const AcGeVector3d arm = point - center;
        const double angle = std::atan2(arm.dotProduct(y), arm.dotProduct(x));
        return angle < 0.0 ? angle + AcGe::kTwoPi : angle;
    };
    return std::make_unique<AcDbArc>(center, normal, center.distanceTo(start), angleOf(start), angleOf(end));
}

std::unique_ptr<AcDbLine> lineAlong(const AcGeVector3d& normal, const AcGePoint3d& start,
                                    const AcGePoint3d& end) {
    auto line = std::make_unique<AcDbLine>(start, end);
    (void)line->setNormal(normal);
    return line;
}

} // namespace

Acad::ErrorStatus PolylineCurve::explodeFlat(const AcGeVector3d& normal, double thickness,
                                             AcDbVoidPtrArray& parts) const {
    VertexBuffer buffer;
    const PolylineShape own = shape(buffer);
    const int before = parts.length();
    const auto keep = [&](auto part) {
        (void)part->setPropertiesFrom(this);
        (void)part->setThickness(thickness);
        handOver(parts, part);
    };
    for (std::size_t i = 0; i < own.segmentCount(); ++i) {
        const AcGePoint3d from = own.worldVertex(i);
        const AcGePoint3d to = own.worldVertex(i + 1 < own.vertexCount() ? i + 1 : 0);
        AcGeCircArc3d arc;
        if (own.arcSegment(i, arc))
            keep(own.bulge(i) > 0.0 ? arcAbout(normal, arc.center(), from, to)
                                    : arcAbout(normal, arc.center(), to, from));
        else if (from != to)
            keep(lineAlong(normal, from, to));
    }
    return parts.length() > before ? Acad::eOk : Acad::eDegenerateGeometry;
}

namespace {

/// Where an arc turns back when it is seen along a direction of its plane: its points with a tangent along
/// the view, in the arc's order.
void addTurningPoints(const AcGeCircArc3d& arc, const AcGeVector3d& view, AcGePoint3dArray& points) {
    const AcGeVector3d side = arc.normal().crossProduct(arc.refVec());
    const double first = std::atan2(-view.dotProduct(arc.refVec()), view.dotProduct(side));
    for (const double halfTurns : {-1.0, 0.0, 1.0, 2.0}) {
        const double angle = first + halfTurns * AcGe::kPi;
        if (angle > arc.startAng() && angle < arc.endAng()) points.append(arc.evalPoint(angle));
    }
}

} // namespace

Acad::ErrorStatus PolylineCurve::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                   AcDbCurve*& projected) const {
    if (!canProject(plane, direction)) return Acad::eInvalidInput;
    VertexBuffer buffer;
    const PolylineShape own = shape(buffer);
    if (own.segmentCount() == 0) return Acad::eDegenerateGeometry;
    const AcGeVector3d normal = plane.normal();
    auto shadow = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(own.vertexCount()));
    (void)shadow->setNormal(normal);
    (void)shadow->setElevation(toEntity(normal, plane.pointOnPlane()).z);
    bool hasExtent = false;
    const auto add = [&](const AcGePoint3d& point, double bulge) {
        const AcGePoint3d local = toEntity(normal, point.project(plane, direction));
        const AcGePoint2d place(local.x, local.y);
        (void)shadow->addVertexAt(shadow->numVerts(), place, bulge);
        AcGePoint2d first;
        (void)shadow->getPointAt(0, first);
        hasExtent = hasExtent || !place.isEqualTo(first);
    };
    for (std::size_t i = 0; i < own.vertexCount(); ++i) {
        AcGeCircArc3d arc;
        if (i >= own.segmentCount() || !own.arcSegment(i, arc)) {
            add(own.worldVertex(i), 0.0);
            continue;
        }
        const bool fromEdge =
            std::abs(arc.normal().dotProduct(direction.normal())) <= AcGeContext::gTol.equalVector();
        if (!fromEdge && !arc.normal().isParallelTo(normal)) return Acad::eNotApplicable;
        // The arc runs counter-clockwise about its own normal.
        const double facing = arc.normal().dotProduct(normal);
        add(own.worldVertex(i), fromEdge ? 0.0 : std::copysign(own.bulge(i), facing));
        AcGePoint3dArray turning;
        if (fromEdge) addTurningPoints(arc, direction, turning);
        for (const AcGePoint3d& point : turning) add(point, 0.0);
    }
    if (!hasExtent) return Acad::eDegenerateGeometry;
    shadow->setClosed(isClosed());
    (void)shadow->setPropertiesFrom(this);
    projected = shadow.release();
    return Acad::eOk;
}

} // namespace hostkit
