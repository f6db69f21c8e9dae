// Stand-in for the host's reports as JSON. Covers texts, numbers and packed groups; leaves out reading.
#pragma once

#include "groupblock.h"

#include <string>
#include <string_view>

namespace hostkit {

// All append UTF-8 to the text that they are given.

/// In quotation marks, with what JSON forbids inside as escapes.
void appendJsonText(std::wstring_view text, std::string& json);
/// The shortest form that reads back to the same double; null for what is no number.
void appendJsonNumber(double value, std::string& json);
/// [[code,value],...] in the block's order. A point is [x,y,z]; handles and binaries are their hexadecimal
/// texts.
void appendJsonGroups(const GroupBlock& groups, std::string& json);

} // namespace hostkit
