#include "gepnt3d.h"

#include "geplane.h"
#include "gepnt2d.h"

AcGePoint3d::AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& point) {
    *this = plane.pointOnPlane() + AcGeVector3d(plane, point.asVector());
}

AcGePoint3d& AcGePoint3d::set(const AcGePlanarEnt& plane, const AcGePoint2d& point) {
    return *this = AcGePoint3d(plane, point);
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlanarEnt& plane) const {
    return AcGePoint2d::kOrigin + (*this - plane.pointOnPlane()).convert2d(plane);
}

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle, axis);
}

AcGePoint3d& AcGePoint3d::mirror(const AcGePlane& plane) {
    return *this -= plane.normal() * (2.0 * plane.signedDistanceTo(*this));
}

AcGePoint3d AcGePoint3d::project(const AcGePlane& plane, const AcGeVector3d& direction) const {
    AcGePoint3d projected = *this;
    plane.AcGePlanarEnt::project(*this, direction, projected);
    return projected;
}

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& plane) const { return plane.closestPointTo(*this); }
