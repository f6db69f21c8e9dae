// What strict readers of binary drawings ask for and drawings of the exchange form need not have.
#pragma once

#include "drawingtext.h"
#include "drawingversion.h"
#include "exchangeoutline.h"
#include "recordfields.h"

#include <string>
#include <string_view>

namespace hostkit {

/// The drawing with the dictionaries and styles that every binary drawing has, records of the applications
/// whose extended data it holds, and its visual styles in the groups of its form; empty where there is
/// nothing to change. Blocks and entities stay as they are. `coding` is that of its texts.
[[nodiscard]] std::string completedDrawing(const ExchangeOutline& outline, DrawingVersion version,
                                           const DrawingText& coding);

/// A class of a kind that the drawing does not name itself, without its number.
[[nodiscard]] BinaryClass usualClass(std::string_view dxfName, bool isEntity);

} // namespace hostkit
