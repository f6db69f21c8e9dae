#include "fieldtable.h"

#include "gemat3d.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace hostkit {

double radiansFromDegrees(double degrees) { return degrees * (std::numbers::pi / 180.0); }

double degreesFromRadians(double radians) {
    const double degrees = radians * (180.0 / std::numbers::pi);
    for (const int digits : {15, 16}) {
        char text[40];
        const auto end =
            std::to_chars(text, text + sizeof text, degrees, std::chars_format::general, digits).ptr;
        double rounded = 0.0;
        std::from_chars(text, end, rounded);
        if (radiansFromDegrees(rounded) == radians) return rounded;
    }
    return degrees;
}

bool isWorldNormal(const AcGeVector3d& normal) {
    return normal.x == 0.0 && normal.y == 0.0 && normal.z == 1.0;
}

AcGePoint3d worldFromOwn(const AcGePoint3d& point, const AcGeVector3d& normal) {
    if (isWorldNormal(normal)) return point;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    AcGe::arbitraryAxes(normal, xAxis, yAxis);
    return AcGePoint3d::kOrigin + xAxis * point.x + yAxis * point.y + normal * point.z;
}

AcGePoint3d ownFromWorld(const AcGePoint3d& point, const AcGeVector3d& normal) {
    if (isWorldNormal(normal)) return point;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    AcGe::arbitraryAxes(normal, xAxis, yAxis);
    const AcGeVector3d offset = point.asVector();
    return {offset.dotProduct(xAxis), offset.dotProduct(yAxis), offset.dotProduct(normal)};
}

} // namespace hostkit
