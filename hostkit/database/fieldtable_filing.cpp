#include "fieldtable.h"

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

} // namespace hostkit
