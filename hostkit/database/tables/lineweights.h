// Line weights: the check; leaves out their drawing.
#pragma once

#include "dbmaindefs.h"

namespace hostkit {

/// One of the enumeration, the three rules included.
constexpr bool isLineWeight(int weight) {
    constexpr int weights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                               50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
    for (const int known : weights)
        if (known == weight) return true;
    return false;
}

} // namespace hostkit
