#include "groupscanner.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace hostkit {

namespace {

constexpr bool isBlank(char character) { return character == ' ' || character == '\t'; }

// Codes have at most four digits, with blanks and a sign around: a loop over them is quicker than a general
// parse.
bool codeFromLine(std::string_view line, int& code) {
    const char* place = line.data();
    const char* const end = place + line.size();
    while (place != end && isBlank(*place)) ++place;
    const bool isNegative = place != end && *place == '-';
    if (isNegative) ++place;
    int value = 0;
    const char* const digits = place;
    while (place != end && *place >= '0' && *place <= '9' && place - digits < 5)
        value = value * 10 + (*place++ - '0');
    if (place == digits) return false;
    while (place != end && isBlank(*place)) ++place;
    if (place != end || value > 32767) return false;
    code = isNegative ? -value : value;
    return true;
}

} // namespace

bool RawGroup::is(int wantedCode, std::string_view wantedValue) const {
    return code == wantedCode && withoutBlanks(value) == wantedValue;
}

std::string_view GroupScanner::nextLine() {
    const char* const start = m_position;
    const char* const newline =
        static_cast<const char*>(std::memchr(start, '\n', static_cast<std::size_t>(m_end - start)));
    const char* end = newline ? newline : m_end;
    m_position = newline ? newline + 1 : m_end;
    if (end != start && end[-1] == '\r') --end;
    return {start, static_cast<std::size_t>(end - start)};
}

// A code as it is usually spelt: blanks, up to four digits, the line end.
bool GroupScanner::takeUsualCode(int& code) {
    const char* place = m_position;
    const char* const end = m_position + std::min<std::ptrdiff_t>(m_end - m_position, 12);
    while (place != end && *place == ' ') ++place;
    const char* const digits = place;
    int value = 0;
    while (place != end && *place >= '0' && *place <= '9' && place - digits < 4)
        value = value * 10 + (*place++ - '0');
    if (place == digits) return false;
    if (place != end && *place == '\r') ++place;
    if (place == end || *place != '\n' || place + 1 == m_end) return false;
    m_position = place + 1;
    code = value;
    return true;
}

ScanResult GroupScanner::next(RawGroup& group) {
    if (m_position == m_end) return ScanResult::kEnd;
    group.start = m_position;
    if (takeUsualCode(group.code)) {
        group.value = nextLine();
        return ScanResult::kGroup;
    }
    const std::string_view line = nextLine();
    if (!codeFromLine(line, group.code)) {
        const std::string_view rest(group.start, static_cast<std::size_t>(m_end - group.start));
        const bool onlyBlanks = rest.find_first_not_of(" \t\r\n\x1a") == std::string_view::npos;
        m_position = group.start;
        return onlyBlanks ? ScanResult::kEnd : ScanResult::kBadCode;
    }
    if (m_position == m_end) {
        m_position = group.start;
        return ScanResult::kMissingValue;
    }
    group.value = nextLine();
    return ScanResult::kGroup;
}

std::size_t startOfGroups(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const std::size_t start =
        bytes.substr(0, byteOrderMark.size()) == byteOrderMark ? byteOrderMark.size() : 0;
    const std::size_t first = bytes.find_first_not_of(" \t\r\n", start);
    if (first == std::string_view::npos) return start;
    // Blanks before the code on its own line belong to the group.
    const std::size_t lineEnd = bytes.substr(0, first).rfind('\n');
    return lineEnd == std::string_view::npos ? start : lineEnd + 1;
}

std::size_t lineNumberAt(std::string_view bytes, std::size_t offset) {
    const std::string_view before = bytes.substr(0, offset);
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::optional<double> realFromText(std::string_view text) {
    text = withoutBlanks(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size() || text.empty()) return {};
    // Too small for a double is zero to every reader; too large is no number.
    if (error == std::errc::result_out_of_range) {
        const std::size_t exponent = text.find_first_of("eE");
        const bool isTiny =
            exponent != std::string_view::npos && text.find('-', exponent) != std::string_view::npos;
        return isTiny ? std::optional<double>(0.0) : std::nullopt;
    }
    if (error != std::errc() || !std::isfinite(value)) return {};
    return value;
}

std::optional<std::int64_t> integerFromText(std::string_view text) {
    text = withoutBlanks(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size()) return value;
    const std::optional<double> real = realFromText(text);
    constexpr double exactLimit = 9007199254740992.0; // 2^53: above it a double may have lost digits
    if (!real || *real != std::floor(*real) || std::fabs(*real) > exactLimit) return {};
    return static_cast<std::int64_t>(*real);
}

std::optional<std::uint64_t> handleFromText(std::string_view text) {
    text = withoutBlanks(text);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return value;
}

} // namespace hostkit
