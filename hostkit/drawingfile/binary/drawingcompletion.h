// What strict readers of binary drawings ask for and drawings of the exchange form need not have.
#pragma once

#include "drawingversion.h"
#include "recordfields.h"

#include <string>
#include <string_view>

namespace hostkit {

/// The drawing with the dictionaries and styles that every binary drawing has; empty where it lacks nothing.
[[nodiscard]] std::string completedDrawing(std::string_view text, DrawingVersion version);

/// A class of a kind that the drawing does not name itself, without its number.
[[nodiscard]] BinaryClass usualClass(std::string_view dxfName, bool isEntity);

} // namespace hostkit
