// Packed groups as JSON.
#pragma once

#include "escaping.h"
#include "groupblock.h"

#include <string>

namespace hostkit {

/// Appends [[code,value],...] in the block's order. A point is [x,y,z]; handles and binaries are their
/// hexadecimal texts.
void appendJsonGroups(const GroupBlock& groups, std::string& json);

} // namespace hostkit
