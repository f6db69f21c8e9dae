#include "ambody.h"

#include "amerror.h"
#include "polygonoutline.h"
#include "polyhedron.h"

#include <cmath>
#include <numeric>

namespace AModeler {

using namespace hostkit::modeler;
using Index = Polyhedron::Index;

namespace {

AcGeVector3d areaOf(std::span<const AcGePoint3d> points) {
    AcGeVector3d area;
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        area += (points[i] - points[0]).crossProduct(points[i + 1] - points[0]);
    return area;
}

/// Faces of one loop each, over points that are numbered.
class Shell {
public:
    explicit Shell(std::vector<AcGePoint3d> points) { m_body.points = std::move(points); }

    void addFace(std::initializer_list<Index> corners, const Surface* surface) {
        addFace(std::span(corners.begin(), corners.size()), surface);
    }
    void addFace(std::span<const Index> corners, const Surface* surface) {
        Polyhedron::Face& face = m_body.faces.emplace_back();
        face.firstLoop = m_body.loopCount();
        face.loopCount = 1;
        face.surface = surface;
        std::vector<AcGePoint3d> points;
        for (Index corner : corners) points.push_back(m_body.points[corner]);
        face.normal = areaOf(points).normal();
        face.distance = face.normal.dotProduct(points.front().asVector());
        m_body.corners.insert(m_body.corners.end(), corners.begin(), corners.end());
        m_body.loopStarts.push_back(static_cast<Index>(m_body.corners.size()));
    }
    [[nodiscard]] const Polyhedron& body() const { return m_body; }

private:
    Polyhedron m_body;
};

/// The prism between a ring of points and the same number of points above them, `below` counter-clockwise
/// seen from above.
Body prismBetween(std::span<const AcGePoint3d> below, std::span<const AcGePoint3d> above,
                  std::span<const Surface* const> surfaces, const Body& owner) {
    const auto count = static_cast<Index>(below.size());
    std::vector<AcGePoint3d> points(below.begin(), below.end());
    points.insert(points.end(), above.begin(), above.end());
    Shell shell(std::move(points));
    std::vector<Index> ring(count);
    std::iota(ring.rbegin(), ring.rend(), 0);
    shell.addFace(ring, nullptr);
    std::iota(ring.begin(), ring.end(), count);
    shell.addFace(ring, nullptr);
    for (Index i = 0; i < count; ++i) {
        const Index next = (i + 1) % count;
        shell.addFace({i, next, count + next, count + i}, surfaces[i]);
    }
    const std::array<const Body*, 1> sources{&owner};
    return Body::fromPolyhedron(shell.body(), sources);
}

void checkMotion(const PolygonOutline& outline, const AcGeVector3d& vector, const AcGePoint3d& fixedPoint,
                 double scaleFactor, double twist) {
    if (!(scaleFactor > 0.0) || !std::isfinite(scaleFactor)) throw Error(eScaleFactorMustBePositive);
    if (twist != 0.0) throw Error(eNotYetImplemented);
    if (!std::isfinite(vector.length())) throw Error(eNullVector);
    if (!(std::abs(outline.normal.dotProduct(vector)) > gEpsAbs))
        throw Error(eExtrusionVectorMustNotBeParallelToPolygon);
    if (!(std::abs(outline.normal.dotProduct(fixedPoint - outline.points[0])) <= gEpsAbs))
        throw Error(eFixedPointMustLieInPolygonPlane);
}

} // namespace

Body Body::extrusion(const Point3d points[], PolygonVertexData* const data[], int count,
                     const AcGeVector3d& normal, const AcGeVector3d& extrusionVector,
                     const AcGePoint3d& fixedPoint, double scaleFactor, double twist,
                     const MorphingMap& morphing) {
    if (!morphing.isNull()) throw Error(eBadMorphingMap);
    const PolygonOutline outline = outlineOf(points, data, count, normal);
    checkMotion(outline, extrusionVector, fixedPoint, scaleFactor, twist);
    std::vector<AcGePoint3d> moved;
    for (const AcGePoint3d& p : outline.points)
        moved.push_back(scaleFactor == 1.0 ? p + extrusionVector
                                           : fixedPoint + (p - fixedPoint) * scaleFactor + extrusionVector);
    Body owner;
    std::vector<Surface*> ofArcs;
    for (const Circle3d& circle : outline.circles)
        ofArcs.push_back(owner.newSurface(Line3d(circle.center(), extrusionVector), circle.radius()));
    std::vector<const Surface*> surfaces;
    for (int arc : outline.arcs)
        surfaces.push_back(arc < 0 ? nullptr : ofArcs[static_cast<std::size_t>(arc)]);
    if (outline.normal.dotProduct(extrusionVector) > 0.0)
        return prismBetween(outline.points, moved, surfaces, owner);
    return prismBetween(moved, outline.points, surfaces, owner);
}

Body Body::cylinder(const Line3d& axis, double radius, int approximation) {
    const double height = axis.direction().length();
    if (!(height > gEpsAbs) || !std::isfinite(height)) throw Error(eBadAxis);
    if (!(radius > 0.0) || !std::isfinite(radius)) throw Error(eRadiusMustBePositive);
    if (approximation < 4) throw Error(eApproximationMustBeAtLeastFour);
    const AcGeVector3d direction = axis.direction() / height;
    const AcGeVector3d u = direction.perpVector().normal() * radius, v = direction.crossProduct(u);
    std::vector<AcGePoint3d> below, above;
    for (int i = 0; i < approximation; ++i) {
        const double angle = 2 * AcGe::kPi * i / approximation;
        below.push_back(axis.point() + u * std::cos(angle) + v * std::sin(angle));
        above.push_back(below.back() + axis.direction());
    }
    Body owner;
    const std::vector<const Surface*> surfaces(below.size(), owner.newSurface(axis, radius));
    return prismBetween(below, above, surfaces, owner);
}

} // namespace AModeler
