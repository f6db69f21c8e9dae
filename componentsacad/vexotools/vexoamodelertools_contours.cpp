#include "vexoamodelertools.h"

#include "vexoamodelertools_internal.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "cvxlogentry.h"
#include "winbase.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

using AModeler::Body;
using AModeler::Circle3d;
using AModeler::Point3d;
using AModeler::PolygonVertexData;
using namespace vexo;

namespace {

constexpr int kLeastSides = 5, kMostSides = 256;
/// Of an arc without a radius.
constexpr int kSidesOfNothing = 51;
/// How far tan(angle / 4) may be from 1, a half turn, and still be one.
constexpr double kHalfTurn = kComparisonTolerance + kComparisonTolerance;

template <class Point>
void deleteVertexData(PolygonVertexData**& data, Point*& points, int count) {
    VEXOAModelerTools::removePolygonVertexData(data, count);
    delete[] data;
    delete[] points;
    data = nullptr;
    points = nullptr;
}

/// A contour in the arrays that the modeller takes.
class ModelerContour {
public:
    explicit ModelerContour(const AcArray<AcGePoint3d>& points)
        : ModelerContour() {
        m_points = new Point3d[static_cast<std::size_t>(points.length())];
        m_data = new PolygonVertexData* [static_cast<std::size_t>(points.length())] {};
        m_count = points.length();
        std::copy(points.begin(), points.end(), m_points);
    }
    ~ModelerContour() { VEXOAModelerTools::clearVertexData(m_data, m_points, m_count); }
    ModelerContour(const ModelerContour&) = delete;
    ModelerContour& operator=(const ModelerContour&) = delete;

    void addArcs(const AcArray<double>& bulges, double deflection);
    [[nodiscard]] AcGeVector3d normalOfCorners() const;
    void flatten(const AcGeVector3d& normal);
    void beginWithStraightSide();
    [[nodiscard]] Body extruded(const AcGeVector3d& normal, const AcGeVector3d& extrusion) const {
        return Body::extrusion(m_points, m_data, m_count, normal, extrusion, m_points[0], 1.0, 0.0,
                               AModeler::MorphingMap::kNull);
    }
    [[nodiscard]] AcGeVector3d normalOfFace() const {
        const AModeler::Face face(m_points, m_count, nullptr, true, nullptr, nullptr);
        return face.plane().normal();
    }

private:
    ModelerContour() = default;

    int m_count = 0;
    Point3d* m_points = nullptr;
    PolygonVertexData** m_data = nullptr;
};

void ModelerContour::addArcs(const AcArray<double>& bulges, double deflection) {
    for (int i = 0; i < m_count; ++i) {
        if (!isArcBulge(bulges[i])) continue;
        AcGePoint3d start = m_points[i], end = m_points[(i + 1) % m_count];
        if (i + 1 == m_count) std::swap(start, end);
        const AcGePoint3d middle =
            VEXOGeometryTools::getMiddleOf(start, end, bulges[i], AcGeVector3d::kZAxis);
        AcGeCircArc3d arc(start, middle, end);
        int sides = 0;
        const Circle3d circle = VEXOAModelerTools::makeCircleData(&arc, sides, deflection);
        m_data[i] = new PolygonVertexData(PolygonVertexData::kArc3d, circle, std::max(sides, kLeastSides));
    }
}

AcGeVector3d ModelerContour::normalOfCorners() const {
    AModeler::Vector3d normal;
    for (int k = 2; k < m_count && normal.isNull(); ++k)
        normal = AcGePlane(m_points[0], m_points[1], m_points[k]).normal();
    return normal;
}

void ModelerContour::flatten(const AcGeVector3d& normal) {
    const AcGePlane plane(m_points[0], normal);
    for (int i = 1; i < m_count; ++i) m_points[i] = m_points[i].orthoProject(plane);
}

void ModelerContour::beginWithStraightSide() {
    PolygonVertexData** const end = m_data + m_count;
    PolygonVertexData** const straight = std::find(m_data, end, nullptr);
    if (straight == end) return;
    std::rotate(m_points, m_points + (straight - m_data), m_points + m_count);
    std::rotate(m_data, straight, end);
}

Body cylinderOf(const AcGePoint3d& center, double radius, const AcGeVector3d& extrusion, double deflection) {
    const AcGeCircArc3d circle(center, AcGeVector3d::kZAxis, radius);
    return Body::cylinder(AModeler::Line3d(center, extrusion), radius,
                          VEXOAModelerTools::getArcPointsNumber(circle, deflection));
}

/// A body of the caller's; null, and a word to developers, where the work throws or leaves none that is
/// valid.
template <class F>
Body* newBody(F&& work) {
    try {
        auto body = std::make_unique<Body>(work());
        return body->isNull() || !body->isValid(-1) ? nullptr : body.release();
    } catch (...) {
        OutputDebugStringW(L"\nError in makeBodyFromPolygonalContour");
        return nullptr;
    }
}

/// Does the run from start to end, counter-clockwise about the normal, take more than a half turn: the arc
/// itself is the other way.
bool isLargeArc(double tangent) {
    return (tangent > kComparisonTolerance && tangent < 1.0 - kHalfTurn) || tangent < -1.0 - kHalfTurn;
}

} // namespace

Body* VEXOAModelerTools::makeBodyFromPolygonalContour(const AcArray<AcGePoint3d>& points,
                                                      const AcGeVector3d& extrusion) {
    CVxLogEntry entry(L"VEXOAModelerTools::makeBodyFromPolygonalContour");
    if (points.length() < 3) return nullptr;
    return newBody([&] {
        const ModelerContour contour(points);
        return contour.extruded(contour.normalOfFace(), extrusion);
    });
}

Body* VEXOAModelerTools::makeBodyFromPolygonalContourWithArcs(const AcArray<AcGePoint3d>& points,
                                                              const AcArray<double>& bulges,
                                                              const AcGeVector3d& extrusion,
                                                              double deflection, double) {
    CVxLogEntry entry(L"VEXOAModelerTools::makeBodyFromPolygonalContourWithArcs");
    if (points.isEmpty() || points.length() != bulges.length()) return nullptr;
    if (points.length() == 1) {
        if (!(bulges[0] > kComparisonTolerance)) return nullptr;
        return newBody([&] { return cylinderOf(points[0], bulges[0], extrusion, deflection); });
    }
    return newBody([&] {
        ModelerContour contour(points);
        contour.addArcs(bulges, deflection);
        const AcGeVector3d normal = contour.normalOfCorners();
        contour.flatten(normal);
        contour.beginWithStraightSide();
        return contour.extruded(normal, extrusion);
    });
}

int VEXOAModelerTools::getArcPointsNumber(const AcGeCircArc3d& arc, double deflection) {
    CVxLogEntry entry(L"VEXOAModelerTools::getArcPointsNumber");
    const double radius = arc.radius();
    if (radius * radius <= kSquaredTolerance) return kSidesOfNothing;
    if (!(deflection < radius)) return kLeastSides;
    const double sides = std::floor(std::numbers::pi / std::acos(1.0 - deflection / radius)) + 1.0;
    if (!(sides > kLeastSides)) return kLeastSides; // also no number: the deflection is negative
    return sides < kMostSides ? static_cast<int>(sides) : kMostSides;
}

Circle3d VEXOAModelerTools::makeCircleData(AcGeCircArc3d* arc, int& pointCount, double deflection) {
    CVxLogEntry entry(L"VEXOAModelerTools::makeCircleData");
    if (!arc) return {};
    if (arc->isClosed()) { // its three points are on one line, or one
        pointCount = getArcPointsNumber(*arc, deflection);
        return {arc->center(), arc->normal(), arc->radius()};
    }
    AcGePoint3dArray samples;
    arc->getSamplePoints(3, samples);
    if (samples.length() < 2) return {};
    return makeCircleData(arc->startPoint(), samples[1], arc->endPoint(), arc->endAng() - arc->startAng(),
                          arc->radius(), pointCount, deflection);
}

Circle3d VEXOAModelerTools::makeCircleData(AcGePoint3d start, AcGePoint3d middle, AcGePoint3d end,
                                           double angle, double radius, int& pointCount, double deflection) {
    CVxLogEntry entry(L"VEXOAModelerTools::makeCircleData");
    const AcGeVector3d normal = AcGePlane(start, end, middle).normal();
    const double tangent = std::tan(angle / 4);
    if (tangent * tangent > kSquaredTolerance)
        radius = start.distanceTo(end) * 0.25 * (tangent + 1.0 / tangent);
    pointCount = getArcPointsNumber(AcGeCircArc3d(start, middle, end), deflection);
    return {start, end, normal, radius, isLargeArc(tangent)};
}

void VEXOAModelerTools::removePolygonVertexData(PolygonVertexData** data, int count) {
    CVxLogEntry entry(L"VEXOAModelerTools::removePolygonVertexData");
    for (int i = 0; data && i < count; ++i) {
        delete data[i];
        data[i] = nullptr;
    }
}

void VEXOAModelerTools::clearVertexData(PolygonVertexData**& data, Point3d*& points, int count) {
    CVxLogEntry entry(L"VEXOAModelerTools::clearVertexData");
    deleteVertexData(data, points, count);
}

void VEXOAModelerTools::clearVertexData(PolygonVertexData**& data, AcGePoint3d*& points, int count) {
    CVxLogEntry entry(L"VEXOAModelerTools::clearVertexData");
    deleteVertexData(data, points, count);
}

AcGePlane VEXOAModelerTools::convertPlaneToGe(const AModeler::Plane& plane) {
    CVxLogEntry entry(L"VEXOAModelerTools::convertPlaneToGe");
    return {AcGePoint3d::kOrigin + plane.normal() * plane.distance(), plane.normal()};
}
