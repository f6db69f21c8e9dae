// Groups of records that are being repaired: the head and names; leaves out what repairs do with them.
#pragma once

#include "salvagedtext.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

namespace salvaged {

constexpr int nameCode = 2;
constexpr int variableCode = 9;
constexpr int markCode = 100;
constexpr int controlCode = 102;
constexpr int ownerCode = 330;
constexpr int firstExtended = 1000;
constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

} // namespace salvaged

int handleCodeOfType(std::string_view type);
bool isDictionaryType(std::string_view type);
/// The place of the first group of that code before the class marks and in no application's group, or
/// nowhere.
std::size_t placeInHead(const SalvagedGroups& groups, int code);
/// Where the class marks begin.
std::size_t headEnd(const SalvagedGroups& groups);
/// Names that differ only in case, or in how a letter is written, are one.
std::wstring foldedName(std::string_view name);
/// "RECOVERED_" and the handle's text.
std::string recoveredName(std::string_view handle);

} // namespace hostkit
