// Data of bodies in records and in groups.
#pragma once

#include "transcriptnatives.h"

namespace hostkit {

/// Text that is scrambled, or the binary twin, as the lines of groups 1 and 3. Binary data come as text;
/// those that are not understood are left out. From 2013 on the data stand in a store beside the records:
/// groups 290 and 2 tell their revision alone.
void writeBodyData(int code, NativeOutput& output);
/// The reverse: as text, whatever they were.
void readBodyData(int code, NativeInput& input);

} // namespace hostkit
