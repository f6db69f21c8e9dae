#include "numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace hostkit {
namespace {

// Longer texts are no numbers that a person writes.
constexpr std::size_t longestNumber = 400;

// In characters of one byte, without a plus in front; empty for what cannot be a number.
std::string narrowed(std::wstring_view text) {
    if (text.starts_with(L'+') && !text.starts_with(L"+-")) text.remove_prefix(1);
    if (text.size() > longestNumber) return {};
    std::string bytes;
    for (const wchar_t each : text) {
        if (each >= 0x80) return {};
        bytes += static_cast<char>(each);
    }
    return bytes;
}

template <class Number>
bool parseNumber(std::wstring_view text, Number& value) {
    const std::string bytes = narrowed(text);
    Number number{};
    const auto [end, fault] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
    if (bytes.empty() || fault != std::errc() || end != bytes.data() + bytes.size()) return false;
    value = number;
    return true;
}

} // namespace

std::wstring_view withoutBlanksAround(std::wstring_view text) {
    const std::size_t first = std::min(text.find_first_not_of(L' '), text.size());
    return text.substr(first, text.find_last_not_of(L' ') + 1 - first);
}

std::wstring formatReal(double value) {
    char buffer[32];
    const auto [end, fault] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return fault == std::errc() ? std::wstring(buffer, end) : std::wstring();
}

bool parseReal(std::wstring_view text, double& value) {
    double number = 0.0;
    if (!parseNumber(text, number) || !std::isfinite(number)) return false;
    value = number;
    return true;
}

bool parseInteger(std::wstring_view text, int& value) { return parseNumber(text, value); }
bool parseInteger(std::wstring_view text, long long& value) { return parseNumber(text, value); }

bool parsePoint(std::wstring_view text, double* coordinates) {
    double values[3] = {0.0, 0.0, 0.0};
    int count = 0;
    for (;;) {
        const std::size_t comma = text.find(L',');
        if (count == 3 || !parseReal(text.substr(0, comma), values[count++])) return false;
        if (comma == std::wstring_view::npos) break;
        text.remove_prefix(comma + 1);
    }
    if (count < 2) return false;
    std::copy(values, values + 3, coordinates);
    return true;
}

} // namespace hostkit
