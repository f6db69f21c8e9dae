// How curves draw themselves.

#include "acgi.h"
#include "curvepaths.h"
#include "db2dpolyline.h"
#include "db3dpolyline.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbxline.h"
#include "pathgeometry.h"

#include "geell3d.h"

using hostkit::drawPath;
using hostkit::PicturePath;

Adesk::Boolean AcDbLine::worldDraw(AcGiWorldDraw* draw) {
    const AcGePoint3d ends[] = {startPoint(), endPoint()};
    const AcGeVector3d plane = normal();
    draw->geometry().polyline(2, ends, &plane);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbArc::worldDraw(AcGiWorldDraw* draw) {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(normal(), x, y);
    const AcGeVector3d start = x * std::cos(startAngle()) + y * std::sin(startAngle());
    draw->geometry().circularArc(center(), radius(), normal(), start * radius(), totalAngle());
    return Adesk::kTrue;
}

Adesk::Boolean AcDbCircle::worldDraw(AcGiWorldDraw* draw) {
    draw->geometry().circle(center(), radius(), normal());
    return Adesk::kTrue;
}

// Strokes where simple entities are wanted: an ellipse is none of these.
Adesk::Boolean AcDbEllipse::worldDraw(AcGiWorldDraw* draw) {
    PicturePath path;
    if (draw->regenType() == kAcGiForExplode && hostkit::appendCurve(path, *this)) {
        drawPath(*draw, path);
        return Adesk::kTrue;
    }
    draw->geometry().ellipticalArc(AcGeEllipArc3d(center(), majorAxis(), minorAxis(), majorAxis().length(),
                                                  minorAxis().length(), startParam(), endParam()));
    return Adesk::kTrue;
}

Adesk::Boolean AcDbSpline::worldDraw(AcGiWorldDraw* draw) {
    PicturePath path;
    if (hostkit::appendCurve(path, *this)) drawPath(*draw, path);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbPolyline::worldDraw(AcGiWorldDraw* draw) {
    draw->geometry().pline(*this);
    return Adesk::kTrue;
}

Adesk::Boolean AcDb2dPolyline::worldDraw(AcGiWorldDraw* draw) {
    const AcDbPolyline light = hostkit::lightPolyline(*this);
    if (light.numVerts() > 0) draw->geometry().pline(light);
    return Adesk::kTrue;
}

Adesk::Boolean AcDb3dPolyline::worldDraw(AcGiWorldDraw* draw) {
    PicturePath path;
    if (hostkit::appendCurve(path, *this)) drawPath(*draw, path);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbRay::worldDraw(AcGiWorldDraw* draw) {
    draw->geometry().ray(basePoint(), basePoint() + unitDir());
    return Adesk::kTrue;
}

Adesk::Boolean AcDbXline::worldDraw(AcGiWorldDraw* draw) {
    draw->geometry().xline(basePoint(), basePoint() + unitDir());
    return Adesk::kTrue;
}
