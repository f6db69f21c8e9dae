#include "entityfields.h"

#include "dbarc.h"
#include "dbcircle.h"
#include "dbelipse.h"
#include "dbline.h"
#include "dbpl.h"
#include "dbspline.h"

namespace vexo {

LineFields fieldsOf(const AcDbLine& line) { return {line.normal(), line.startPoint(), line.endPoint()}; }

void setFields(AcDbLine& line, const LineFields& fields) {
    (void)line.setNormal(fields.normal);
    (void)line.setStartPoint(fields.start);
    (void)line.setEndPoint(fields.end);
}

ArcFields fieldsOf(const AcDbArc& arc) {
    return {arc.normal(), arc.center(), arc.radius(), arc.startAngle(), arc.endAngle()};
}

void setFields(AcDbArc& arc, const ArcFields& fields) {
    (void)arc.setNormal(fields.normal);
    (void)arc.setCenter(fields.center);
    (void)arc.setRadius(fields.radius);
    (void)arc.setStartAngle(fields.startAngle);
    (void)arc.setEndAngle(fields.endAngle);
}

CircleFields fieldsOf(const AcDbCircle& circle) {
    return {circle.normal(), circle.center(), circle.radius()};
}

void setFields(AcDbCircle& circle, const CircleFields& fields) {
    (void)circle.setNormal(fields.normal);
    (void)circle.setCenter(fields.center);
    (void)circle.setRadius(fields.radius);
}

PolylineFields fieldsOf(const AcDbPolyline& polyline) {
    PolylineFields fields{polyline.normal(),
                          polyline.elevation(),
                          static_cast<Adesk::Int16>(polyline.isClosed() ? 1 : 0),
                          polyline.thickness(),
                          {}};
    fields.vertices.resize(polyline.numVerts());
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        VertexFields& vertex = fields.vertices[i];
        (void)polyline.getPointAt(i, vertex.point);
        (void)polyline.getBulgeAt(i, vertex.bulge);
        (void)polyline.getWidthsAt(i, vertex.startWidth, vertex.endWidth);
    }
    return fields;
}

void setFields(AcDbPolyline& polyline, const PolylineFields& fields) {
    (void)polyline.setNormal(fields.normal);
    (void)polyline.setElevation(fields.elevation);
    (void)polyline.setThickness(fields.thickness);
    polyline.setClosed(fields.closed != 0);
    polyline.reset(Adesk::kFalse, 0);
    for (const VertexFields& vertex : fields.vertices)
        (void)polyline.addVertexAt(polyline.numVerts(), vertex.point, vertex.bulge, vertex.startWidth,
                                   vertex.endWidth);
}

EllipseFields fieldsOf(const AcDbEllipse& ellipse) {
    return {ellipse.normal(),      ellipse.center(),     ellipse.majorAxis(),
            ellipse.radiusRatio(), ellipse.startAngle(), ellipse.endAngle()};
}

void setFields(AcDbEllipse& ellipse, const EllipseFields& fields) {
    (void)ellipse.set(fields.center, fields.normal, fields.majorAxis, fields.radiusRatio, fields.startAngle,
                      fields.endAngle);
}

SplineFields fieldsOf(const AcDbSpline& spline) {
    SplineFields fields;
    int degree = 0;
    Adesk::Boolean rational = Adesk::kFalse, closed = Adesk::kFalse, periodic = Adesk::kFalse;
    if (spline.getNurbsData(degree, rational, closed, periodic, fields.controlPoints, fields.knots,
                            fields.weights, fields.controlPointTolerance, fields.knotTolerance) != Acad::eOk)
        return SplineFields();
    fields.degree = degree;
    fields.rational = rational ? 1 : 0;
    fields.closed = closed ? 1 : 0;
    fields.periodic = periodic ? 1 : 0;
    return fields;
}

void setFields(AcDbSpline& spline, const SplineFields& fields) {
    (void)spline.setNurbsData(fields.degree, fields.rational != 0, fields.closed != 0, fields.periodic != 0,
                              fields.controlPoints, fields.knots, fields.weights,
                              fields.controlPointTolerance, fields.knotTolerance);
}

} // namespace vexo
