// Repair of extended data: codes, braces, points and lengths; leaves out what the data mean.
#pragma once

#include "salvagedtext.h"

namespace hostkit {

/// `data` begin with the first application. What cannot be extended data goes: other codes, values that are
/// none, points without a coordinate, braces that close nothing, an application's second part. Braces that
/// are not closed are closed, texts cut to 255 characters and binaries to 127 bytes. Data of more than 16,383
/// bytes go whole.
void repairExtendedData(SalvagedGroups& data);

} // namespace hostkit
