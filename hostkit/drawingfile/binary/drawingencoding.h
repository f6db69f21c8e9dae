// Drawings of the exchange form as the records of a binary drawing; leaves out how these stand in the file.
#pragma once

#include "binaryheader.h"
#include "drawingorigin.h"
#include "exchangeoutline.h"
#include "formchanges.h"
#include "objectmap.h"
#include "recordfields.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// The records of a drawing, with all that its container needs of them.
struct EncodedDrawing {
    std::vector<std::uint8_t> objects; ///< one record after the other
    std::vector<ObjectPlace> places;   ///< by ascending handle; offsets in `objects`
    std::vector<BinaryClass> classes;
    BinaryHeader header;
    bool isMetric = false;
    std::size_t recordsKept = 0; ///< with the bits that they had
    FormChanges leftOut;
    std::wstring fault; ///< why there is none
};

/// The records of the outlined drawing, which is of the form `version`. With an origin of the same form,
/// each record whose groups and place are as they were keeps its bits, and a changed one what no group tells.
/// Records without groups of their own in the exchange form stay. What is neither there nor has a layout is
/// left out and listed; what strict readers ask for and the drawing lacks is added. False where the drawing
/// cannot be had in that form.
[[nodiscard]] bool encodeDrawing(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                                 const DrawingOrigin& origin, EncodedDrawing& encoded);

} // namespace hostkit
