#include "genurb3d.h"

#include "geline3d.h"
#include "geplane.h"

Adesk::Boolean AcGeNurbCurve3d::isPlanar(AcGePlane& plane, const AcGeTol& tol) const {
    AcGeLine3d line;
    if (isEmpty()) return Adesk::kFalse;
    if (isLinear(line, tol)) return line.isPlanar(plane, tol);
    // The control point farthest from the first, and then the one farthest off their line, span the plane
    // best.
    const AcGePoint3d origin = m_controlPoints.first();
    AcGeVector3d along, across;
    for (const AcGePoint3d& point : m_controlPoints)
        if ((point - origin).lengthSqrd() > along.lengthSqrd()) along = point - origin;
    for (const AcGePoint3d& point : m_controlPoints)
        if (along.crossProduct(point - origin).lengthSqrd() > across.lengthSqrd())
            across = along.crossProduct(point - origin);
    const AcGePlane found(origin, across);
    for (const AcGePoint3d& point : m_controlPoints)
        if (!found.isOn(point, tol)) return Adesk::kFalse;
    plane = found;
    return Adesk::kTrue;
}
