#include "useraxes.h"

#include "headervariables.h"

#include <cmath>

namespace hostkit {

namespace {

// Shorter axes are no directions: the header keeps unit vectors.
constexpr double shortestAxis = 1e-9;

bool isUsable(const AcGeVector3d& axis) {
    return std::isfinite(axis.x) && std::isfinite(axis.y) && std::isfinite(axis.z) &&
           axis.length() > shortestAxis;
}

bool isUsable(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

} // namespace

UserAxes userAxes(const HeaderVariables& header, bool ofSheet) {
    const AcGePoint3d origin = header.point(ofSheet ? L"PUCSORG" : L"UCSORG");
    const AcGeVector3d x = header.point(ofSheet ? L"PUCSXDIR" : L"UCSXDIR").asVector();
    const AcGeVector3d y = header.point(ofSheet ? L"PUCSYDIR" : L"UCSYDIR").asVector();
    if (!isUsable(origin) || !isUsable(x) || !isUsable(y)) return {};
    const AcGeVector3d z = x.normal().crossProduct(y.normal());
    if (!isUsable(z)) return {};
    return {origin, x.normal(), z.normal().crossProduct(x.normal())};
}

} // namespace hostkit
