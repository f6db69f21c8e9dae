// Binary chunks as text: reading the digits; leaves out writing them.
#pragma once

#include "adsdef.h"

#include <string_view>
#include <vector>

namespace hostkit {

/// Two digits a byte, in either case; other characters count as 0, an odd last digit is dropped.
std::vector<unsigned char> bytesOfHexadecimal(std::wstring_view digits);
/// The same in memory that acutRelRb gives back. A record holds at most 32,767 bytes: further ones are
/// dropped.
ads_binary binaryOfHexadecimal(std::wstring_view digits);

} // namespace hostkit
