#include "dbcolor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr Adesk::UInt32 pack(int red, int green, int blue) {
    return static_cast<Adesk::UInt32>(red << 16 | green << 8 | blue);
}

// The palette is regular: ten fixed ends, and between them 24 hues in steps of 15 degrees, each with five
// levels of value, full and half saturated.
Adesk::UInt32 hueEntry(int index) {
    constexpr std::array<int, 5> levels{255, 165, 127, 76, 38};
    const int value = levels[static_cast<std::size_t>((index % 10) / 2)];
    const bool half = index % 2;
    const int hueStep = index / 10 - 1;
    const double hue = hueStep * 15.0 / 60.0;
    std::array<int, 3> channels{};
    for (int i = 0; i < 3; ++i) {
        const double distance = std::fabs(std::fmod(hue + 6.0 - 2.0 * i, 6.0));
        const double offset = std::min(distance, 6.0 - distance); // 0 at the channel's own hue, 3 opposite
        const double pure = std::clamp(2.0 - offset, 0.0, 1.0);
        const double share = half ? 0.5 + pure / 2.0 : pure;
        channels[static_cast<std::size_t>(i)] = static_cast<int>(value * share);
    }
    return pack(channels[0], channels[1], channels[2]);
}

std::array<Adesk::UInt32, 256> makePalette() {
    std::array<Adesk::UInt32, 256> palette{};
    palette = {pack(255, 255, 255), pack(255, 0, 0),    pack(255, 255, 0), pack(0, 255, 0),
               pack(0, 255, 255),   pack(0, 0, 255),    pack(255, 0, 255), pack(255, 255, 255),
               pack(128, 128, 128), pack(192, 192, 192)};
    for (int i = 10; i < 250; ++i) palette[static_cast<std::size_t>(i)] = hueEntry(i);
    constexpr std::array<int, 6> greys{51, 91, 132, 173, 214, 255};
    for (std::size_t i = 0; i < greys.size(); ++i) palette[250 + i] = pack(greys[i], greys[i], greys[i]);
    return palette;
}

const std::array<Adesk::UInt32, 256>& palette() {
    static const auto entries = makePalette();
    return entries;
}

} // namespace

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt16 index) {
    return palette()[index >= 1 && index <= 255 ? index : kACIforeground];
}

Adesk::UInt16 AcCmEntityColor::lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    Adesk::UInt16 best = kACIforeground;
    int bestDistance = 4 * 255 * 255;
    for (Adesk::UInt16 i = 1; i < 256; ++i) {
        const Adesk::UInt32 entry = palette()[i];
        const int r = static_cast<int>(entry >> 16 & 255) - red;
        const int g = static_cast<int>(entry >> 8 & 255) - green;
        const int b = static_cast<int>(entry & 255) - blue;
        const int distance = r * r + g * g + b * b;
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return best;
}

Adesk::UInt16 AcCmEntityColor::colorIndex() const {
    switch (colorMethod()) {
    case kByBlock:
        return kACIbyBlock;
    case kByACI:
        return static_cast<Adesk::UInt16>(m_bits & 0xFFFF);
    case kByColor:
        return lookUpACI(static_cast<Adesk::UInt8>(m_bits >> 16), static_cast<Adesk::UInt8>(m_bits >> 8),
                         static_cast<Adesk::UInt8>(m_bits));
    default:
        return kACIbyLayer;
    }
}

Acad::ErrorStatus AcCmEntityColor::setColorIndex(Adesk::UInt16 index) {
    if (index > 257) return Acad::eOutOfRange;
    ColorMethod method = kByACI;
    if (index == kACIbyBlock) method = kByBlock;
    if (index == kACIbyLayer) method = kByLayer;
    if (index == 257) method = kNone;
    m_bits = static_cast<Adesk::UInt32>(method) << 24 | (method == kByACI ? index : 0u);
    return Acad::eOk;
}

Adesk::UInt32 AcCmEntityColor::rgb() const {
    if (isByColor()) return m_bits & 0xFFFFFF;
    return lookUpRGB(isByACI() ? static_cast<Adesk::UInt16>(m_bits & 0xFFFF) : kACIforeground);
}
