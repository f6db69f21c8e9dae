// The header variables of a binary drawing from those of the exchange form.
#pragma once

#include "binarysections.h"
#include "exchangeoutline.h"
#include "recordtranscription.h"

namespace hostkit {

/// Sets all variables that the outline's header tells; others stay as they are in `header`, and so do those
/// that `before`, the outline that was made of it, tells in the same way: no group has all that a variable
/// may hold.
void gatherHeader(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                  const RecordNames& names, BinaryHeader& header, const ExchangeOutline* before = nullptr);

/// What the outline's header tells of the drawing itself ($TITLE, $CUSTOMPROPERTY and so on), with the dates
/// and the hyperlink base of `header`.
[[nodiscard]] DrawingProperties gatherProperties(const ExchangeOutline& outline, const BinaryHeader& header);

} // namespace hostkit
