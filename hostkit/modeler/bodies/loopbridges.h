// Bridges from the holes of a face to what surrounds them.
#pragma once

#include "gepnt2d.h"

#include <cstdint>
#include <span>
#include <vector>

namespace hostkit::modeler {

/// A line from the first corner of a hole, seen from the left, to a corner of another loop. No bridge crosses
/// an edge or another bridge.
struct LoopBridge {
    std::uint32_t hole; ///< the corner of the hole
    std::uint32_t
        other; ///< of a loop that begins farther to the left, so that all loops are joined to the outer one
};

/// One bridge for each hole. `corners` has the corners of all loops one loop after the other, the outer one
/// counter-clockwise, holes clockwise; `loopStarts` where each begins, and the end. One sweep from left to
/// right: n log n in the corners. Loops that touch at corners are taken; of loops that cross each other some
/// hole may get no bridge.
[[nodiscard]] std::vector<LoopBridge> bridgesOf(std::span<const AcGePoint2d> corners,
                                                std::span<const std::uint32_t> loopStarts);

} // namespace hostkit::modeler
