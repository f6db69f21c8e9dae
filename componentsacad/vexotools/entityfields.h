#pragma once

#include "entityitems.h"

#include <variant>

class AcDbArc;
class AcDbCircle;
class AcDbEllipse;
class AcDbHatch;
class AcDbLine;
class AcDbPolyline;
class AcDbSpline;

// The layout of filed entities. Each structure is the part of a record between its version and its colour:
// what stands in `file` is the order of the items, their types are the kinds of items (EntityItems), a list
// has its count before it. Drawings hold these records: nothing here ever changes its order or its type.

namespace vexo {

struct LineFields {
    AcGeVector3d normal;
    AcGePoint3d start, end;
};
inline void file(EntityItems& items, LineFields& line) { file(items, line.normal, line.start, line.end); }

struct ArcFields {
    AcGeVector3d normal;
    AcGePoint3d center;
    double radius = 0.0, startAngle = 0.0, endAngle = 0.0;
};
inline void file(EntityItems& items, ArcFields& arc) {
    file(items, arc.normal, arc.center, arc.radius, arc.startAngle, arc.endAngle);
}

struct CircleFields {
    AcGeVector3d normal;
    AcGePoint3d center;
    double radius = 0.0;
};
inline void file(EntityItems& items, CircleFields& circle) {
    file(items, circle.normal, circle.center, circle.radius);
}

struct VertexFields {
    AcGePoint2d point;
    double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
};
inline void file(EntityItems& items, VertexFields& vertex) {
    file(items, vertex.point, vertex.bulge, vertex.startWidth, vertex.endWidth);
}

struct PolylineFields {
    AcGeVector3d normal;
    double elevation = 0.0;
    Adesk::Int16 closed = 0;
    double thickness = 0.0;
    std::vector<VertexFields> vertices;
};
inline void file(EntityItems& items, PolylineFields& polyline) {
    file(items, polyline.normal, polyline.elevation, polyline.closed, polyline.thickness, polyline.vertices);
}

struct EllipseFields {
    AcGeVector3d normal;
    AcGePoint3d center;
    AcGeVector3d majorAxis;
    double radiusRatio = 0.0, startAngle = 0.0, endAngle = 0.0;
};
inline void file(EntityItems& items, EllipseFields& ellipse) {
    file(items, ellipse.normal, ellipse.center, ellipse.majorAxis, ellipse.radiusRatio, ellipse.startAngle,
         ellipse.endAngle);
}

struct SplineFields {
    Adesk::Int32 degree = 0;
    Adesk::Int16 rational = 0, closed = 0, periodic = 0;
    AcGePoint3dArray controlPoints;
    AcGeDoubleArray knots, weights;
    double controlPointTolerance = 0.0, knotTolerance = 0.0;
};
inline void file(EntityItems& items, SplineFields& spline) {
    file(items, spline.degree, spline.rational, spline.closed, spline.periodic, spline.controlPoints,
         spline.knots, spline.weights, spline.controlPointTolerance, spline.knotTolerance);
}

// Edges of hatches, by the number before them.

struct LineEdgeFields { // 1
    AcGePoint2d start, end;
};
inline void file(EntityItems& items, LineEdgeFields& edge) { file(items, edge.start, edge.end); }

struct ArcEdgeFields { // 2
    AcGePoint2d center;
    double radius = 0.0, startAngle = 0.0, endAngle = 0.0;
    AcGeVector2d reference;
    Adesk::Int16 clockwise = 0;
};
inline void file(EntityItems& items, ArcEdgeFields& edge) {
    file(items, edge.center, edge.radius, edge.startAngle, edge.endAngle, edge.reference, edge.clockwise);
}

struct EllipseEdgeFields { // 3
    AcGePoint2d center;
    AcGeVector2d majorAxis, minorAxis;
    double majorRadius = 0.0, minorRadius = 0.0, startAngle = 0.0, endAngle = 0.0;
};
inline void file(EntityItems& items, EllipseEdgeFields& edge) {
    file(items, edge.center, edge.majorAxis, edge.minorAxis, edge.majorRadius, edge.minorRadius,
         edge.startAngle, edge.endAngle);
}

struct SplineEdgeFields { // 4
    Adesk::Int32 degree = 0;
    Adesk::Int16 periodic = 0;
    double tolerance = 0.0;
    AcGeDoubleArray knots;
    AcGePoint2dArray controlPoints;
    AcGeDoubleArray weights;
};
inline void file(EntityItems& items, SplineEdgeFields& edge) {
    file(items, edge.degree, edge.periodic, edge.tolerance, edge.knots, edge.controlPoints, edge.weights);
}

/// The place in the variant is the number less 1.
using EdgeFields = std::variant<LineEdgeFields, ArcEdgeFields, EllipseEdgeFields, SplineEdgeFields>;
void file(EntityItems& items, EdgeFields& edge);

struct LoopFields {
    Adesk::Int32 type = 0;
    std::vector<EdgeFields> edges;
};
inline void file(EntityItems& items, LoopFields& loop) { file(items, loop.type, loop.edges); }

struct HatchFields {
    AcGeVector3d normal;
    double elevation = 0.0;
    Adesk::Int16 style = 0, patternType = 0;
    CString patternName;
    std::vector<LoopFields> loops;
};
inline void file(EntityItems& items, HatchFields& hatch) {
    file(items, hatch.normal, hatch.elevation, hatch.style, hatch.patternType, hatch.patternName,
         hatch.loops);
}

// Between fields and entities. What an entity refuses stays as it was there; old vertices and loops are
// replaced.

LineFields fieldsOf(const AcDbLine& line);
ArcFields fieldsOf(const AcDbArc& arc);
PolylineFields fieldsOf(const AcDbPolyline& polyline);
CircleFields fieldsOf(const AcDbCircle& circle);
EllipseFields fieldsOf(const AcDbEllipse& ellipse);
/// Zeros where the spline has no data.
SplineFields fieldsOf(const AcDbSpline& spline);
HatchFields fieldsOf(const AcDbHatch& hatch);

void setFields(AcDbLine& line, const LineFields& fields);
void setFields(AcDbArc& arc, const ArcFields& fields);
void setFields(AcDbPolyline& polyline, const PolylineFields& fields);
void setFields(AcDbCircle& circle, const CircleFields& fields);
void setFields(AcDbEllipse& ellipse, const EllipseFields& fields);
void setFields(AcDbSpline& spline, const SplineFields& fields);
/// Loop by loop the fields give their memory back: a hatch may have a million.
void setFields(AcDbHatch& hatch, HatchFields&& fields);

} // namespace vexo
