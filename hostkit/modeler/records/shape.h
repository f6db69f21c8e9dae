// Bodies as drawings file them: faces on exact surfaces, edges on exact curves; leaves out free-form ones.
#pragma once

#include "polyhedron.h"

#include "gemat3d.h"

#include <functional>
#include <optional>
#include <string>

namespace hostkit::modeler {

/// line: origin + t * direction. ellipse: origin + cos t * major + sin t * ratio * (direction x major),
/// direction being its unit normal. none: an edge that is one point.
struct ShapeCurve {
    enum class Kind : std::uint8_t { none, line, ellipse };
    Kind kind = Kind::none;
    AcGePoint3d origin;
    AcGeVector3d direction;
    AcGeVector3d major;
    double ratio = 1.0;

    [[nodiscard]] AcGePoint3d at(double t) const;
    [[nodiscard]] AcGeVector3d minor() const { return direction.crossProduct(major) * ratio; }
    /// The parameter of the nearest point; an angle from -pi to pi on an ellipse.
    [[nodiscard]] double parameterOf(const AcGePoint3d& point) const;
};

/// axis: the normal of a plane, the axis of a cone or torus, the pole of a sphere. major: the u direction of
/// a plane, sphere or torus (of length 1), of a cone the radius at the origin as a vector. Normals point away
/// from the axis, the centre or the tube's middle circle; with a cosine, radius or minor radius below 0
/// towards it.
struct ShapeSurface {
    enum class Kind : std::uint8_t { plane, cone, sphere, torus };
    Kind kind = Kind::plane;
    AcGePoint3d origin;
    AcGeVector3d axis;
    AcGeVector3d major;
    double ratio = 1.0;
    double sine = 0.0, cosine = 1.0;        ///< of a cone's half angle; a cylinder has sine 0
    double radius = 0.0, minorRadius = 0.0; ///< of a sphere; of a torus both
};

struct Shape {
    using Index = std::uint32_t;
    struct Edge {
        Index start = 0, end = 0;
        double from = 0.0, to = 0.0; ///< of the curve, from below to
        ShapeCurve curve;
    };
    struct Coedge {
        Index edge = 0;
        bool isReversed = false;
    };
    /// Its loops lie in `loopStarts` from firstLoop on; a whole sphere or torus has none. The face lies to
    /// the left of its coedges seen against its normal, which is the surface's unless it is reversed.
    struct Face {
        ShapeSurface surface;
        bool isReversed = false;
        bool isDouble = false; ///< a sheet: nothing on either side
        Index firstLoop = 0, loopCount = 0;
        Index shell = 0;
    };

    std::vector<AcGePoint3d> vertices;
    std::vector<Edge> edges;
    std::vector<Coedge> coedges;
    std::vector<Index> loopStarts{0}; ///< in `coedges`, and where the last loop ends
    std::vector<Face> faces;          ///< those of one shell follow each other
    std::vector<Index> shellLumps;    ///< of each shell the lump that it belongs to

    [[nodiscard]] const Coedge& coedge(Index place) const { return coedges[place]; }
    [[nodiscard]] Index startOf(const Coedge& c) const {
        return c.isReversed ? edges[c.edge].end : edges[c.edge].start;
    }
    [[nodiscard]] Index endOf(const Coedge& c) const {
        return c.isReversed ? edges[c.edge].start : edges[c.edge].end;
    }
};

/// A shape, or the reason why the data have none, in words.
struct ShapeReading {
    std::optional<Shape> shape;
    std::string fault;
};
/// Data as readBodyRecords takes them, the body's transform applied. What is not made of planes, cones,
/// spheres, tori, lines and ellipses gives no shape but a reason; so do pointers that lead nowhere, to
/// another kind, or into a ring without end.
[[nodiscard]] ShapeReading readShape(std::string_view bytes);

enum class BodyForm : std::uint8_t;
struct BodyDates {
    std::string_view maker = "VEXOTools10";
    std::string_view date =
        "Thu Jan  1 00:00:00 1970"; ///< 24 characters; always the same, so that equal bodies are equal bytes
};
/// The data of a shape: text of version 106, 400, 700 or 20800, binary of 21800. All of it stands in the
/// shape's coordinates, without a transform.
[[nodiscard]] std::string writeShape(const Shape& shape, BodyForm form, int version,
                                     const BodyDates& dates = {});

/// A face of the shape for each of the polyhedron's, each edge with its two faces; where more than two meet
/// at an edge the ones with material between them are partners. As many lumps as there are pieces that hang
/// together.
[[nodiscard]] Shape shapeOf(const Polyhedron& polyhedron);

/// The matrix keeps angles: a motion, a scale, a mirror or all of them. False, and nothing changed, for any
/// other.
[[nodiscard]] bool transformShape(Shape& shape, const AcGeMatrix3d& matrix);

struct FacetOptions {
    double sidesPerTurn = 72; ///< the least number for a full circle; an arc has its share
    double chord = 0.0; ///< the farthest that a chord may lie from its arc; 0 asks for sidesPerTurn alone
};
/// Facets of curved faces share a surface that this makes: a point of its axis with the direction, and a
/// radius.
using MakeSurface = std::function<const AModeler::Surface*(const AcGePoint3d&, const AcGeVector3d&, double)>;
struct Facets {
    std::optional<Polyhedron> polyhedron;
    std::string fault;
    double volume = 0.0; ///< of the shape itself, its curved faces too
    double area = 0.0;
};
/// Flat faces stand as they are, curved ones become facets whose corners lie on the surface. Neighbours have
/// the same points on their common edge, so that what was closed stays so. A sheet becomes a polyhedron that
/// is not closed.
[[nodiscard]] Facets facetsOf(const Shape& shape, const FacetOptions& options,
                              const MakeSurface& makeSurface);

/// Of a flat face, its arcs as arcs: half the area as a vector along the loops' normal; holes count against
/// it.
[[nodiscard]] AcGeVector3d areaVectorOf(const Shape& shape, const Shape::Face& face);

} // namespace hostkit::modeler
