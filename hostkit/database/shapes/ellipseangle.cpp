#include "ellipseangle.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hostkit {
namespace {

// Both angles lie in one quarter turn, so their difference says how much to add without losing whole turns.
double shiftedWithinQuarter(double angle, double xScale, double yScale) {
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    // What a quarter turn lacks by rounding is not blown up on a flat ellipse.
    const double rounding = 2.0 * std::numeric_limits<double>::epsilon() * std::max(1.0, std::abs(angle));
    if (std::min(std::abs(sine), std::abs(cosine)) <= rounding) return angle;
    return angle + (std::atan2(sine * yScale, cosine * xScale) - std::atan2(sine, cosine));
}

} // namespace

double ellipseParameter(double angle, double radiusRatio) {
    return radiusRatio > 0.0 ? shiftedWithinQuarter(angle, radiusRatio, 1.0) : angle;
}

double ellipseAngle(double parameter, double radiusRatio) {
    return shiftedWithinQuarter(parameter, 1.0, radiusRatio);
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
