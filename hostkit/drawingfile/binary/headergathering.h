// The header variables of a binary drawing from those of the exchange form.
#pragma once

#include "binaryheader.h"
#include "exchangeoutline.h"
#include "recordtranscription.h"

namespace hostkit {

/// Sets all variables that the outline's header tells; others stay as they are in `header`.
void gatherHeader(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                  const RecordNames& names, BinaryHeader& header);

} // namespace hostkit
