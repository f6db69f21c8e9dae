// Colours of binary records in their long form: a method in the highest byte, and what it is of.
#pragma once

#include <cstdint>

namespace hostkit {

constexpr int byBlockIndex = 0, byLayerIndex = 256, noColorIndex = 257;
constexpr std::uint32_t trueColorMethod = 0xC2000000U; ///< red, green and blue in the bytes behind
/// In the exchange form the groups of a true colour and of its name stand so far above that of the index.
constexpr short trueColorShift = 358, colorNameShift = 368;

constexpr bool isTrueColor(std::uint32_t longColor) { return longColor >> 24 == trueColorMethod >> 24; }
[[nodiscard]] std::uint32_t longColorOf(int index);
/// The nearest index of a true colour; `otherwise` for a method that is none.
[[nodiscard]] int indexOfLongColor(std::uint32_t longColor, int otherwise);

} // namespace hostkit
