// Stand-in for the host's modeller: Body. Covers prisms from contours with arcs, cylinders, booleans, sections, measures, triangles; leaves out sweeps, lofts, fillets and pictures.
#pragma once

#include "amentity.h"
#include "ampolygon.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

namespace hostkit::modeler {
struct BodyParts;
struct Polyhedron;
} // namespace hostkit::modeler

namespace AModeler {

/// What becomes of the operands when an operation fails. This modeller keeps them as they are, to the byte,
/// whatever is asked.
enum class FailurePolicy { keepInputBodies };
[[nodiscard]] inline FailurePolicy keepInputBodiesWhenBooleanOperationsFail() {
    return FailurePolicy::keepInputBodies;
}

enum BooleanOperationType { kUnion = 0, kSubtract = 1, kIntersect = 2 };

/// A body of flat faces: a list of faces whose half-edges have partners, a list of vertices. Round walls are
/// facets that share a surface. A value: copies are deep, assignment to itself changes nothing. Several
/// pieces and cavities are one body; a null body has no face. Operations that fail throw Error and leave all
/// operands as they were, to the byte.
class Body {
public:
    Body();
    Body(const Body& other);
    Body(Body&& other) noexcept;
    Body& operator=(const Body& other);
    Body& operator=(Body&& other) noexcept;
    ~Body();

    [[nodiscard]] Body copy() const { return *this; }
    void init(); ///< makes it null

    [[nodiscard]] bool isNull() const { return m_faceList == nullptr; }
    /// A null body is valid. Level 0: links and partners agree. Above, and -1: also faces flat within
    /// gEpsAbs, no face without an area, no edge without a length, each directed edge with its reverse.
    [[nodiscard]] bool isValid(int level = -1) const;

    [[nodiscard]] Face* faceList() const { return m_faceList; }
    void setFaceList(Face* face) { m_faceList = face; }
    [[nodiscard]] Vertex* vertexList() const { return m_vertexList; }
    void setVertexList(Vertex* vertex) { m_vertexList = vertex; }
    [[nodiscard]] int faceCount() const;
    [[nodiscard]] int edgeCount() const; ///< half-edges, bridges among them
    [[nodiscard]] int vertexCount() const;

    /// a + b, a - b, a * b; a null operand is an empty body, an empty result a null one.
    /// Errors: eBadBodyGeometry for an operand that is not closed, eInternalError where no consistent result
    /// was found.
    [[nodiscard]] Body operator+(const Body& other) const;
    [[nodiscard]] Body operator-(const Body& other) const;
    [[nodiscard]] Body operator*(const Body& other) const;
    [[nodiscard]] Body boolOper(BooleanOperationType type, const Body& other,
                                FailurePolicy policy = FailurePolicy::keepInputBodies) const;
    /// The same with the union of several bodies at once, which may overlap: far faster than one after the
    /// other.
    [[nodiscard]] Body boolOper(BooleanOperationType type, std::span<const Body* const> others) const;

    /// Keeps what lies behind the plane (against its normal) and closes the cut. A body that lies in front
    /// becomes null.
    void section(const Plane& plane, FailurePolicy policy = FailurePolicy::keepInputBodies);
    /// Material on both sides, farther than gEpsAbs from the plane.
    [[nodiscard]] bool planeIntersectsBody(const Plane& plane) const;

    /// A prism: the polygon, and the same moved by the vector, scaled about the fixed point (seen from above
    /// it) and turned about the normal through it by `twist` radians. `data` has one entry a vertex, null for
    /// a straight segment, or is null. The polygon may run either way; the body's faces look out. Errors:
    /// ePolygonIsSelfIntersectingOrTouching, eBadPolygon (fewer than three points, or two with no arc),
    /// ePolygonPointsCoincide, eNonPlanarPolygon, eNullNormalVector,
    /// eExtrusionVectorMustNotBeParallelToPolygon, eCircleIsNotValid, eScaleFactorMustBePositive,
    /// eBadMorphingMap (other than kNull), eNotYetImplemented (a twist of a polygon that would leave curved
    /// sides).
    [[nodiscard]] static Body extrusion(const Point3d points[], PolygonVertexData* const data[], int count,
                                        const AcGeVector3d& normal, const AcGeVector3d& extrusionVector,
                                        const AcGePoint3d& fixedPoint, double scaleFactor = 1.0,
                                        double twist = 0.0, const MorphingMap& morphing = MorphingMap::kNull);
    /// From the axis's point along its direction, as long as that. `approximation` sides, at least 4. Errors:
    /// eBadAxis, eRadiusMustBePositive, eApproximationMustBeAtLeastFour.
    [[nodiscard]] static Body cylinder(const Line3d& axis, double radius, int approximation);

    /// About the point. A factor not above 0: eScaleFactorMustBePositive.
    void scale(double factor, const AcGePoint3d& fixedPoint);
    /// Error eBadTransform where the matrix is singular, or leaves flat faces not flat. A mirrored body still
    /// has its faces look out.
    void transform(const AcGeMatrix3d& matrix);

    /// The box of all vertices, each side moved out by `enlargement`. Empty for a null body.
    [[nodiscard]] Interval3d interval(double enlargement = 0.0) const;
    [[nodiscard]] double volume() const;
    [[nodiscard]] double surfaceArea() const;
    [[nodiscard]] Point3d centerOfGravity() const; ///< the origin for a body without a volume
    /// Integrals of x x, y y, z z, x y, y z and z x over the material, about the world's origin.
    struct SecondMoments {
        double xx = 0.0, yy = 0.0, zz = 0.0, xy = 0.0, yz = 0.0, zx = 0.0;
    };
    [[nodiscard]] SecondMoments secondMoments() const;

    /// Triangles that cover each face once, counter-clockwise seen from outside, corners at vertices alone.
    /// Each side has its reverse, so that the mesh is closed; for that a triangle between collinear corners
    /// may have no area.
    struct Triangle {
        std::array<Vertex*, 3> corners;
        const Face* face;
    };
    [[nodiscard]] std::vector<Triangle> triangles() const;

    /// What booleans and files work on, and back. `surfaces` of the faces are those of this body.
    [[nodiscard]] hostkit::modeler::Polyhedron toPolyhedron() const;
    /// Takes a share in the surfaces of `sources` that the faces name. Error eBadBodyGeometry where an edge
    /// lacks its reverse.
    [[nodiscard]] static Body fromPolyhedron(const hostkit::modeler::Polyhedron& polyhedron,
                                             std::span<const Body* const> sources = {});
    /// A surface that lives as long as this body or one made from it.
    Surface* newSurface(const Line3d& axis, double radius);

private:
    [[nodiscard]] hostkit::modeler::BodyParts& storage(); ///< made where there is none yet

    Face* m_faceList = nullptr;
    Vertex* m_vertexList = nullptr;
    std::unique_ptr<hostkit::modeler::BodyParts>
        m_storage; ///< of all parts, the unlinked ones too, and the surfaces
};

} // namespace AModeler
