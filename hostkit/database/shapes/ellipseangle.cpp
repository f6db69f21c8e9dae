#include "ellipseangle.h"

#include <cmath>
#include <limits>

namespace hostkit {
namespace {

// Both angles lie in one quarter turn, so their difference says how much to add without losing whole turns.
double shiftedWithinQuarter(double angle, double yScale) {
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    return angle + (std::atan2(sine * yScale, cosine) - std::atan2(sine, cosine));
}

} // namespace

double ellipseParameter(double angle, double radiusRatio) {
    return radiusRatio > 0.0 ? shiftedWithinQuarter(angle, 1.0 / radiusRatio) : angle;
}

double ellipseAngle(double parameter, double radiusRatio) {
    return shiftedWithinQuarter(parameter, radiusRatio);
}

double parameterThatReads(double angle, double radiusRatio) {
    constexpr int neighbours = 16;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double parameter = ellipseParameter(angle, radiusRatio);
    double below = parameter, above = parameter;
    for (int step = 0; step < neighbours; ++step) {
        if (ellipseAngle(below, radiusRatio) == angle) return below;
        if (ellipseAngle(above, radiusRatio) == angle) return above;
        below = std::nextafter(below, -infinity);
        above = std::nextafter(above, infinity);
    }
    return parameter;
}

} // namespace hostkit
