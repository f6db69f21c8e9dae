// Check of a drawing, its values: what a group's code asks of its text; leaves out what the value means.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hostkit {

enum class AuditValue : unsigned char {
    kNone, ///< the format has no such code
    kText,
    kHandle,
    kReal,
    kInteger16,
    kInteger32,
    kInteger64,
    kBinary,
};

/// By the ranges of codes that the format publishes.
AuditValue auditValueOf(int code);
/// "a real number" and so on.
const wchar_t* auditValueName(AuditValue kind);
/// The text can be a value of that kind: syntax and range, blanks around a number allowed. NaN and infinity
/// are none.
bool isAuditValue(AuditValue kind, std::string_view text);

/// Nothing for what is no number, or outside of a double.
std::optional<double> auditReal(std::string_view text);
/// Nothing for what is no integer, or outside of 64 bits.
std::optional<std::int64_t> auditInteger(std::string_view text);
/// Nothing for what is not 1 to 16 hexadecimal digits; 0 is the handle of nothing.
std::optional<std::uint64_t> auditHandle(std::string_view text);

} // namespace hostkit
