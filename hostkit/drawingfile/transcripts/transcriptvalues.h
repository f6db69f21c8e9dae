// What both directions of a transcript share: names of records, weights, dates, texts of groups.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// Of line weights: the index in a record and the hundredths of a millimetre in a group; -1 by layer, -2 by
/// block, -3 the standard.
[[nodiscard]] int weightOfIndex(int index);
[[nodiscard]] int indexOfWeight(int weight); ///< of one that is none: that of the standard

inline constexpr double millisecondsOfDay = 86400000.0;

/// A text of a record as the value of a group: controls and the caret as ^J and "^ ".
void appendEscaped(std::string_view text, std::string& bytes);
/// The reverse.
void appendUnescaped(std::string_view value, std::string& text);

/// Of the letters A to Z alone: names that the format itself gives are compared so.
[[nodiscard]] std::string upperCaseAscii(std::string_view text);

/// Pairs of hexadecimal digits; what is no digit counts as 0.
void appendDigits(std::string_view digits, std::string& bytes);

/// The lowest bytes of a number, the lowest one first; those of a real.
void appendNumber(std::uint64_t value, int count, std::string& bytes);
void appendDouble(double value, std::string& bytes);

/// UTF-8 as units of 16 bits. A byte that is no part of a character becomes U+DC00 and the byte, as in all
/// texts of drawings.
void utf16Of(std::string_view text, std::vector<std::uint16_t>& units);

} // namespace hostkit
