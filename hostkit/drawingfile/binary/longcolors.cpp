#include "longcolors.h"

#include "dbcolor.h"

namespace hostkit {

std::uint32_t longColorOf(int index) {
    switch (index) {
    case byLayerIndex:
        return 0xC0000000U;
    case byBlockIndex:
        return 0xC1000000U;
    case noColorIndex:
        return 0xC8000000U;
    default:
        return 0xC3000000U | static_cast<std::uint32_t>(index & 0xFF);
    }
}

int indexOfLongColor(std::uint32_t longColor, int otherwise) {
    switch (longColor >> 24) {
    case 0xC0:
        return byLayerIndex;
    case 0xC1:
        return byBlockIndex;
    case 0xC2:
        return AcCmEntityColor::lookUpACI(static_cast<Adesk::UInt8>(longColor >> 16),
                                          static_cast<Adesk::UInt8>(longColor >> 8),
                                          static_cast<Adesk::UInt8>(longColor));
    case 0xC3:
        return static_cast<int>(longColor & 0xFF);
    case 0xC8:
        return noColorIndex;
    default:
        return otherwise;
    }
}

} // namespace hostkit
