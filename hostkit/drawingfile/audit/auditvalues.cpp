#include "auditvalues.h"

#include <array>
#include <charconv>
#include <limits>

namespace hostkit {

namespace {

struct CodeRange {
    short first, last;
    AuditValue kind;
};
constexpr CodeRange codeRanges[] = {
    {0, 9, AuditValue::kText},
    {10, 59, AuditValue::kReal},
    {60, 79, AuditValue::kInteger16},
    {90, 99, AuditValue::kInteger32},
    {100, 102, AuditValue::kText},
    {105, 105, AuditValue::kHandle},
    {110, 149, AuditValue::kReal},
    {160, 169, AuditValue::kInteger64},
    {170, 179, AuditValue::kInteger16},
    {210, 239, AuditValue::kReal},
    {270, 299, AuditValue::kInteger16},
    {300, 309, AuditValue::kText},
    {310, 319, AuditValue::kBinary},
    {320, 369, AuditValue::kHandle},
    {370, 389, AuditValue::kInteger16},
    {390, 399, AuditValue::kHandle},
    {400, 409, AuditValue::kInteger16},
    {410, 419, AuditValue::kText},
    {420, 429, AuditValue::kInteger32},
    {430, 439, AuditValue::kText},
    {440, 459, AuditValue::kInteger32},
    {460, 469, AuditValue::kReal},
    {470, 479, AuditValue::kText},
    {480, 481, AuditValue::kHandle},
    {999, 1003, AuditValue::kText},
    {1004, 1004, AuditValue::kBinary},
    {1005, 1005, AuditValue::kHandle},
    {1010, 1059, AuditValue::kReal},
    {1060, 1070, AuditValue::kInteger16},
    {1071, 1071, AuditValue::kInteger32},
};
constexpr int codeCount = 1072;

constexpr std::array<AuditValue, codeCount> kindsByCode = [] {
    std::array<AuditValue, codeCount> kinds{};
    for (const CodeRange& range : codeRanges)
        for (int code = range.first; code <= range.last; ++code)
            kinds[static_cast<std::size_t>(code)] = range.kind;
    return kinds;
}();

bool isDigit(char character) { return character >= '0' && character <= '9'; }

bool isHexDigit(char character) {
    return isDigit(character) || (character >= 'A' && character <= 'F') ||
           (character >= 'a' && character <= 'f');
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

std::size_t digitsFrom(std::string_view text, std::size_t at) {
    while (at < text.size() && isDigit(text[at])) ++at;
    return at;
}

// The syntax of a number, without its value. A short one cannot leave the range of a double.
enum class RealSyntax : unsigned char { kNone, kShort, kLong };

RealSyntax realSyntaxOf(std::string_view text) {
    std::size_t at = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t whole = digitsFrom(text, at) - at;
    at += whole;
    std::size_t fraction = 0;
    if (at < text.size() && text[at] == '.') {
        fraction = digitsFrom(text, at + 1) - (at + 1);
        at += 1 + fraction;
    }
    if (whole + fraction == 0) return RealSyntax::kNone;
    std::size_t exponent = 0;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        at += at < text.size() && (text[at] == '-' || text[at] == '+');
        exponent = digitsFrom(text, at) - at;
        if (exponent == 0) return RealSyntax::kNone;
        at += exponent;
    }
    if (at != text.size()) return RealSyntax::kNone;
    return whole < 200 && exponent < 3 ? RealSyntax::kShort : RealSyntax::kLong;
}

bool isInteger(std::string_view text, std::int64_t least, std::int64_t most) {
    const std::optional<std::int64_t> value = auditInteger(text);
    return value && *value >= least && *value <= most;
}

} // namespace

AuditValue auditValueOf(int code) {
    return code >= 0 && code < codeCount ? kindsByCode[static_cast<std::size_t>(code)] : AuditValue::kNone;
}

const wchar_t* auditValueName(AuditValue kind) {
    switch (kind) {
    case AuditValue::kHandle:
        return L"a handle of 1 to 16 hexadecimal digits";
    case AuditValue::kReal:
        return L"a real number";
    case AuditValue::kInteger16:
        return L"an integer of 16 bits";
    case AuditValue::kInteger32:
        return L"an integer of 32 bits";
    case AuditValue::kInteger64:
        return L"an integer of 64 bits";
    case AuditValue::kBinary:
        return L"pairs of hexadecimal digits";
    default:
        return L"a text";
    }
}

bool isAuditValue(AuditValue kind, std::string_view text) {
    switch (kind) {
    case AuditValue::kReal:
        switch (realSyntaxOf(trimmed(text))) {
        case RealSyntax::kNone:
            return false;
        case RealSyntax::kShort:
            return true;
        case RealSyntax::kLong:
            return auditReal(text).has_value();
        }
        return false;
    case AuditValue::kInteger16:
        return isInteger(text, std::numeric_limits<std::int16_t>::min(),
                         std::numeric_limits<std::int16_t>::max());
    case AuditValue::kInteger32:
        return isInteger(text, std::numeric_limits<std::int32_t>::min(),
                         std::numeric_limits<std::int32_t>::max());
    case AuditValue::kInteger64:
        return auditInteger(text).has_value();
    case AuditValue::kHandle:
        return auditHandle(text).has_value();
    case AuditValue::kBinary: {
        const std::string_view digits = trimmed(text);
        for (const char each : digits)
            if (!isHexDigit(each)) return false;
        return digits.size() % 2 == 0;
    }
    case AuditValue::kText:
    case AuditValue::kNone:
        break;
    }
    return true;
}

std::optional<double> auditReal(std::string_view text) {
    text = trimmed(text);
    if (realSyntaxOf(text) == RealSyntax::kNone) return std::nullopt;
    if (text.front() == '+') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc()) return value;
    // Out of range: too small is nought, too large is none.
    const std::size_t exponent = text.find_first_of("eE");
    return exponent != std::string_view::npos && text[exponent + 1] == '-' ? std::optional(0.0)
                                                                           : std::nullopt;
}

std::optional<std::int64_t> auditInteger(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::uint64_t> auditHandle(std::string_view text) {
    text = trimmed(text);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

} // namespace hostkit
