#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "db2dpolyline.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "gearc2d.h"
#include "gelent2d.h"
#include "geplane.h"

#include <memory>
#include <numbers>

using namespace vexo;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
/// Widths below 0 stand for the polyline's constant width.
constexpr double kNoWidth = -1.0;
/// Beyond this many samples an arc is finer than any use of it, and memory would go to a slip in the
/// tolerance.
constexpr int kMostSamples = 1000000;

/// A plane whose coordinates are those of polylines with this normal.
AcGePlane planeOfNormal(const AcGeVector3d& normal) { return {AcGePoint3d::kOrigin, normal}; }

void appendVertex(AcDbPolyline& polyline, const AcGePoint2d& point, double bulge) {
    (void)polyline.addVertexAt(polyline.numVerts(), point, bulge, kNoWidth, kNoWidth);
}

/// Calls use(vertex) for each vertex on the curve, from the iterator itself or opened by its id.
template <typename Use>
void forEachVertex(const AcDb2dPolyline& polyline, AcDbObjectIterator& iterator, Use&& use) {
    const bool resident = !polyline.objectId().isNull();
    for (iterator.start(); !iterator.done(); iterator.step()) {
        AcDb2dVertex* vertex = nullptr;
        if (!resident)
            vertex = AcDb2dVertex::cast(iterator.entity());
        else if (polyline.openVertex(vertex, iterator.objectId(), AcDb::kForRead) != Acad::eOk)
            continue;
        if (!vertex) continue;
        if (vertex->vertexType() != AcDb::k2dSplineCtlVertex) use(*vertex);
        if (resident) vertex->close();
    }
}

void addVerticesOf(const AcDb2dPolyline& source, AcDbPolyline& target) {
    const std::unique_ptr<AcDbObjectIterator> iterator(source.vertexIterator());
    if (!iterator) return;
    (void)target.setNormal(source.normal());
    forEachVertex(source, *iterator, [&](const AcDb2dVertex& vertex) {
        appendVertex(target, {vertex.position().x, vertex.position().y}, vertex.bulge());
    });
    target.setClosed(source.isClosed());
}

void addVerticesOf(const AcDbLine& line, AcDbPolyline& target) {
    appendVertex(target, {line.startPoint().x, line.startPoint().y}, 0.0);
    appendVertex(target, {line.endPoint().x, line.endPoint().y}, 0.0);
}

void addVerticesOf(const AcDbCircle& circle, AcDbPolyline& target) {
    constexpr double halfCircle = 1.0;
    AcGePoint3d start;
    if (circle.getStartPoint(start) != Acad::eOk) start = circle.center();
    const AcGePoint3d opposite = start + 2 * (circle.center() - start);
    const AcGePlane plane = planeOfNormal(circle.normal());
    (void)target.setNormal(circle.normal());
    appendVertex(target, start.convert2d(plane), halfCircle);
    appendVertex(target, opposite.convert2d(plane), halfCircle);
    target.setClosed(Adesk::kTrue);
}

void addVerticesOf(const AcDbArc& arc, AcDbPolyline& target) {
    AcGePoint3d start = arc.center();
    AcGePoint3d end = arc.center();
    (void)arc.getStartPoint(start);
    (void)arc.getEndPoint(end);
    double endAngle = arc.endAngle();
    if (endAngle <= arc.startAngle()) endAngle += kTwoPi;
    const AcGePlane plane = planeOfNormal(arc.normal());
    (void)target.setNormal(arc.normal());
    appendVertex(target, start.convert2d(plane), std::tan((endAngle - arc.startAngle()) / 4));
    appendVertex(target, end.convert2d(plane), 0.0);
}

/// How many samples an arc of this height gets for a chord tolerance; the height stands in for the radius.
int sampleCount(double bulge, double tolerance) {
    const double height = std::abs(bulge);
    double cosine = (height - tolerance) / height;
    if (cosine < AcGeTol().equalPoint()) cosine = 0.0;
    const double steps = kPi / (2 * std::acos(cosine));
    if (std::isnan(steps)) return 2;
    return steps < kMostSamples - 1 ? static_cast<int>(steps) + 1 : kMostSamples;
}

/// The arc of a segment with this bulge; false when it is straight, or too flat to have a centre.
bool arcOf(const AcGePoint3d& start, const AcGePoint3d& end, double bulge, const AcGeVector3d& normal,
           AcGeCircArc3d& arc) {
    if (!(std::abs(bulge) >= AcGeTol().equalPoint())) return false;
    arc.set(start, VEXOGeometryTools::getMiddleOf(start, end, bulge, normal), end);
    return arc.radius() > 0.0;
}

void appendSamples(const AcGeCircArc3d& arc, int count, AcArray<AcGePoint3d>& points,
                   AcArray<AcArray<AcGePoint3d>>& arcSamples) {
    AcArray<AcGePoint3d> samples;
    arc.getSamplePoints(count, samples);
    points.append(samples);
    arcSamples.append(samples);
}

} // namespace

namespace VEXOGeometryTools {

AcDbPolyline* ConvertToPolyline(const AcDbEntity* entity) {
    CVxLogEntry entry(L"VEXOGeometryTools::ConvertToPolyline");
    auto polyline = std::make_unique<AcDbPolyline>();
    if (const auto* light = AcDbPolyline::cast(entity))
        copyAcDbPolyline(light, polyline.get());
    else if (const auto* old = AcDb2dPolyline::cast(entity))
        addVerticesOf(*old, *polyline);
    else if (const auto* line = AcDbLine::cast(entity))
        addVerticesOf(*line, *polyline);
    else if (const auto* circle = AcDbCircle::cast(entity))
        addVerticesOf(*circle, *polyline);
    else if (const auto* arc = AcDbArc::cast(entity))
        addVerticesOf(*arc, *polyline);
    else
        return nullptr;
    return polyline.release();
}

Acad::ErrorStatus ConvertPointsToPolyline(AcArray<AcGePoint3d> points, AcArray<AcGePoint3d> middles,
                                          AcGeVector3d normal, AcDbPolyline& polyline) {
    CVxLogEntry entry(L"VEXOGeometryTools::ConvertPointsToPolyline");
    if (points.length() != middles.length() + 1) return Acad::eInvalidInput;
    const AcGePlane plane = planeOfNormal(normal);
    for (int i = 0; i < middles.length(); ++i) {
        const double bulge = getBulgeFrom3Points(points[i], points[i + 1], middles[i], normal);
        const Acad::ErrorStatus status =
            polyline.addVertexAt(polyline.numVerts(), points[i].convert2d(plane), bulge, kNoWidth, kNoWidth);
        if (status != Acad::eOk) return status;
    }
    return polyline.addVertexAt(polyline.numVerts(), points.last().convert2d(plane), 0.0, kNoWidth, kNoWidth);
}

Acad::ErrorStatus convert2DbPolyline(AcDb2dPolyline* source, AcDbPolyline* target) {
    CVxLogEntry entry(L"VEXOGeometryTools::convert2DbPolyline");
    if (!source || !target) return Acad::eInvalidInput;
    const std::unique_ptr<AcDbObjectIterator> iterator(source->vertexIterator());
    if (!iterator) return Acad::eInvalidInput;
    (void)target->setNormal(source->normal());
    forEachVertex(*source, *iterator, [&](const AcDb2dVertex& vertex) {
        (void)target->addVertexAt(target->numVerts(), {vertex.position().x, vertex.position().y},
                                  vertex.bulge(), vertex.startWidth(), vertex.endWidth());
    });
    (void)target->setElevation(source->elevation());
    if (source->isClosed()) target->setClosed(Adesk::kTrue);
    return Acad::eOk;
}

Acad::ErrorStatus convertPolyline(AcDbPolyline* polyline, AcArray<AcGePoint3d>& points,
                                  AcArray<double>& bulges) {
    CVxLogEntry entry(L"VEXOGeometryTools::convertPolyline");
    if (!polyline) return Acad::eInvalidInput;
    points.removeAll();
    bulges.removeAll();
    const unsigned int count = polyline->numVerts();
    if (count == 0) return Acad::eOk;
    points.setPhysicalLength(static_cast<int>(count) + 1);
    bulges.setPhysicalLength(static_cast<int>(count));
    for (unsigned int i = 0; i < count; ++i) {
        AcGePoint3d point;
        (void)polyline->getPointAt(i, point);
        points.append(point);
    }
    if (polyline->isClosed()) points.append(AcGePoint3d(points[0]));
    for (int i = 0; i + 1 < points.length(); ++i) {
        double bulge = 0.0;
        (void)polyline->getBulgeAt(static_cast<unsigned int>(i), bulge);
        bulges.append(bulge * -0.5 * points[i].distanceTo(points[i + 1]));
    }
    return Acad::eOk;
}

void copyAcDbPolyline(const AcDbPolyline* source, AcDbPolyline* target) {
    CVxLogEntry entry(L"VEXOGeometryTools::copyAcDbPolyline");
    if (!source || !target || source == target) return;
    target->reset(Adesk::kFalse, 0);
    for (unsigned int i = 0; i < source->numVerts(); ++i) {
        AcGePoint2d point;
        double bulge = 0.0;
        double startWidth = 0.0;
        double endWidth = 0.0;
        (void)source->getPointAt(i, point);
        (void)source->getBulgeAt(i, bulge);
        (void)source->getWidthsAt(i, startWidth, endWidth);
        (void)target->addVertexAt(i, point, bulge, startWidth, endWidth);
    }
    target->setClosed(source->isClosed());
    (void)target->setNormal(source->normal());
}

bool getSegmentFromPolyline(AcDbPolyline* polyline, int index, AcGeLineSeg3d& line, AcGeCircArc3d& arc,
                            bool& isArc) {
    CVxLogEntry entry(L"VEXOGeometryTools::getSegmentFromPolyline");
    if (!polyline) return false;
    isArc = false;
    if (index < 0 || static_cast<unsigned int>(index) >= polyline->numVerts()) return false;
    const auto vertex = static_cast<unsigned int>(index);
    switch (polyline->segType(vertex)) {
    case AcDbPolyline::kLine:
        return polyline->getLineSegAt(vertex, line) == Acad::eOk;
    case AcDbPolyline::kArc:
        isArc = true;
        return polyline->getArcSegAt(vertex, arc) == Acad::eOk;
    default:
        return false;
    }
}

Acad::ErrorStatus getTessellatedPoly(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                     AcArray<AcGePoint3d>& tessellated,
                                     AcArray<AcArray<AcGePoint3d>>& arcSamples, double tolerance,
                                     AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getTessellatedPoly");
    if (points.length() != bulges.length()) return Acad::eInvalidInput;
    AcArray<AcGePoint3d> result; // the output may be the input
    AcArray<AcArray<AcGePoint3d>> resultSamples;
    if (std::abs(tolerance) < AcGeTol().equalPoint()) {
        result = points;
        tessellated.swap(result);
        arcSamples.removeAll();
        return Acad::eOk;
    }
    bool lastWasArc = false;
    const int count = points.length();
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d& start = points[i];
        const AcGePoint3d& end = points[i + 1 < count ? i + 1 : 0];
        AcGeCircArc3d arc;
        if (arcOf(start, end, bulges[i], normal, arc)) {
            appendSamples(arc, sampleCount(bulges[i], tolerance), result, resultSamples);
            lastWasArc = true;
            continue;
        }
        if (!lastWasArc) result.append(start);
        lastWasArc = false;
    }
    tessellated.swap(result);
    arcSamples.swap(resultSamples);
    return Acad::eOk;
}

Acad::ErrorStatus getTessellatedPoly(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                     AcArray<AcGePoint3d>& tessellated,
                                     AcArray<AcArray<AcGePoint3d>>& arcSamples, int samplesPerArc,
                                     AcGeVector3d normal) {
    CVxLogEntry entry(L"VEXOGeometryTools::getTessellatedPoly");
    AcArray<AcGePoint3d> result; // the output may be the input
    AcArray<AcArray<AcGePoint3d>> resultSamples;
    const auto isLastAdded = [&](const AcGePoint3d& point) {
        return !result.isEmpty() && point.isEqualTo(result.last(), AcGeContext::gTol);
    };
    bool lastWasArc = false;
    for (int i = 0; i + 1 < points.length(); ++i) {
        AcGeCircArc3d arc;
        const double bulge = i < bulges.length() ? bulges[i] : 0.0;
        lastWasArc = arcOf(points[i], points[i + 1], bulge, normal, arc);
        if (lastWasArc)
            appendSamples(arc, std::min(samplesPerArc, kMostSamples), result, resultSamples);
        else if (!isLastAdded(points[i]))
            result.append(points[i]);
    }
    if (!points.isEmpty() && !(lastWasArc && isLastAdded(points.last()))) result.append(points.last());
    tessellated.swap(result);
    arcSamples.swap(resultSamples);
    return Acad::eOk;
}

AcDbCurve* TransformGe2Db(AcGeCurve3d* curve) {
    CVxLogEntry entry(L"VEXOGeometryTools::TransformGe2Db");
    if (!curve) return nullptr;
    if (curve->isKindOf(AcGe::kCircArc3d)) {
        // The kit measures from its reference vector, the host from the axis of the arc's plane.
        const auto& arc = static_cast<const AcGeCircArc3d&>(*curve);
        const double offset = arc.refVec().angleOnPlane(AcGePlane(arc.center(), arc.normal()));
        return new AcDbArc(arc.center(), arc.normal(), arc.radius(), arc.startAng() + offset,
                           arc.endAng() + offset);
    }
    AcGePoint3d start;
    AcGePoint3d end;
    const bool isBoundedLine =
        curve->isKindOf(AcGe::kLinearEnt3d) && curve->hasStartPoint(start) && curve->hasEndPoint(end);
    return isBoundedLine ? new AcDbLine(start, end) : nullptr;
}

AcDbCurve* TransformGe2Db(AcGeCurve2d* curve) {
    CVxLogEntry entry(L"VEXOGeometryTools::TransformGe2Db");
    if (!curve) return nullptr;
    if (curve->isKindOf(AcGe::kCircArc2d)) {
        const auto& arc = static_cast<const AcGeCircArc2d&>(*curve);
        AcGeCircArc3d circle(AcGePoint3d(arc.center().x, arc.center().y, 0.0), AcGeVector3d::kZAxis,
                             arc.radius());
        return TransformGe2Db(&circle);
    }
    AcGePoint2d start;
    AcGePoint2d end;
    const bool isBoundedLine =
        curve->isKindOf(AcGe::kLinearEnt2d) && curve->hasStartPoint(start) && curve->hasEndPoint(end);
    if (!isBoundedLine) return nullptr;
    return new AcDbLine(AcGePoint3d(start.x, start.y, 0.0), AcGePoint3d(end.x, end.y, 0.0));
}

AcGeCurve3d* TransformDb2Ge(AcDbCurve* curve) {
    CVxLogEntry entry(L"VEXOGeometryTools::TransformDb2Ge");
    if (const auto* line = AcDbLine::cast(curve))
        return new AcGeLineSeg3d(line->startPoint(), line->endPoint());
    const auto* arc = AcDbArc::cast(curve);
    if (!arc) return nullptr;
    AcGePoint3d start;
    AcGePoint3d middle;
    AcGePoint3d end;
    double startParam = 0.0;
    double endParam = 0.0;
    const bool readable = arc->getStartPoint(start) == Acad::eOk && arc->getEndPoint(end) == Acad::eOk &&
                          arc->getStartParam(startParam) == Acad::eOk &&
                          arc->getEndParam(endParam) == Acad::eOk &&
                          arc->getPointAtParam((startParam + endParam) / 2, middle) == Acad::eOk;
    return readable ? new AcGeCircArc3d(start, middle, end) : nullptr;
}

bool removeCoLinearPoints(AcArray<AcGePoint3d>& points) {
    CVxLogEntry entry(L"VEXOGeometryTools::removeCoLinearPoints");
    const int length = points.length();
    if (length < 3) return false;
    const auto runsStraight = [](const AcGePoint3d& before, const AcGePoint3d& at, const AcGePoint3d& after) {
        const AcGeVector3d incoming = (at - before).normal(AcGeContext::gTol);
        return incoming.isEqualTo((after - at).normal(AcGeContext::gTol), AcGeContext::gTol);
    };
    // Removing leaves the same point before the next one to be looked at: kept points are moved down as the
    // walk goes.
    int kept = 1;
    for (int i = 1; i < length; ++i) {
        const AcGePoint3d& after = points[i + 1 < length ? i + 1 : 0];
        if (!runsStraight(points[kept - 1], points[i], after)) points[kept++] = points[i];
    }
    points.setLogicalLength(kept);
    if (runsStraight(points[kept - 1], points[0], points[1 % kept])) points.removeAt(0);
    return true;
}

} // namespace VEXOGeometryTools
