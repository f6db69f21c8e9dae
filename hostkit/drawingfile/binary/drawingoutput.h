// Binary drawings from drawings of the exchange form.
#pragma once

#include "drawingorigin.h"
#include "drawingversion.h"
#include "exchangeoutline.h"
#include "formchanges.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace hostkit {

/// The form that a binary drawing is written in where that of the drawing cannot be: what is older than 2000
/// becomes 2000, and 2007, which is read alone, 2010.
[[nodiscard]] DrawingVersion formOfBinaryDrawing(DrawingVersion version);

/// The records of a binary drawing whose content is not in the text that was made of it.
[[nodiscard]] std::unordered_set<std::uint64_t> opaqueRecordsOf(const TranscribedDrawing& drawing);

/// The outlined drawing, which is of the form `version`, as a binary one. Of a drawing of the same form the
/// records that are as they were keep their bits, and all sections stay; of another form the picture and the
/// properties. `changes` receives what was left out. False, with the reason, where it cannot be: two records
/// have one handle, or the form is not written.
[[nodiscard]] bool binaryDrawingFromText(const ExchangeOutline& outline, DrawingVersion version,
                                         const DrawingOrigin& origin, std::string& bytes,
                                         FormChanges& changes, std::wstring& reason);

} // namespace hostkit
