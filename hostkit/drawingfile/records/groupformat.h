// Group output: the spelling of codes and values in a text drawing; leaves out which groups a record has.
#pragma once

#include "drawingtext.h"
#include "drawingversion.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace hostkit {

/// How one drawing is spelt.
struct DrawingStyle {
    DrawingText text;
    DrawingVersion version = DrawingVersion::k2013;
    std::string_view newline = "\r\n";
};

/// The shortest decimal text that reads back to the same double, always with a decimal point, which some
/// readers need to take it for a real: "0.0", "1.0e+20". Only for finite numbers.
void appendReal(double value, std::string& bytes);
void appendInteger(std::int64_t value, std::string& bytes);
/// Upper-case hexadecimal without leading zeros.
void appendHandle(std::uint64_t handle, std::string& bytes);

// A whole group: the code, right-justified to three places as is the custom, the value, and both line ends.
void appendGroup(int code, std::string_view value, const DrawingStyle& style, std::string& bytes);
void appendText(int code, std::wstring_view value, const DrawingStyle& style, std::string& bytes);
void appendReal(int code, double value, const DrawingStyle& style, std::string& bytes);
void appendInteger(int code, std::int64_t value, const DrawingStyle& style, std::string& bytes);
void appendHandle(int code, std::uint64_t handle, const DrawingStyle& style, std::string& bytes);
class GroupBlock;
/// All groups of a block.
void appendBlock(const GroupBlock& block, const DrawingStyle& style, std::string& bytes);
void appendCode(int code, const DrawingStyle& style, std::string& bytes);

} // namespace hostkit
