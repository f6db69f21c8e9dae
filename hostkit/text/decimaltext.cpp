#include "decimaltext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace hostkit {
namespace {

constexpr int kMostPlaces = 16;
constexpr double kLeniency = 1e-9; // of the last place
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr std::size_t kLongestNumber = std::numeric_limits<double>::max_exponent10 + kMostPlaces + 3;

// The unit of a last place; beyond the range of powers that are exact a few units in its own last place off.
double unitOf(int exponent) { return std::pow(10.0, exponent); }

void groupThousands(std::string& whole) {
    for (auto at = static_cast<std::ptrdiff_t>(whole.size()) - 3; at > 0; at -= 3)
        whole.insert(static_cast<std::size_t>(at), 1, ',');
}

// Digits with a point, as they come, into the form.
std::wstring dressed(std::string_view digits, bool isNegative, const DecimalForm& form) {
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string whole(digits.substr(0, point));
    std::string_view places = digits.substr(std::min(point + 1, digits.size()));
    const bool isZero = digits.find_first_not_of("0.") == std::string_view::npos;
    if (form.dropsTrailingZeros) places = places.substr(0, places.find_last_not_of('0') + 1);
    if (form.dropsLeadingZero && whole == "0" && !places.empty()) whole.clear();
    if (form.groupsThousands) groupThousands(whole);
    std::wstring text;
    if (isNegative && !isZero) text += L'-';
    text.append(whole.begin(), whole.end());
    if (!places.empty()) (text += form.separator).append(places.begin(), places.end());
    return text;
}

} // namespace

double halfLeniency(double magnitude, double unit) {
    const double step = std::nextafter(magnitude, std::numeric_limits<double>::infinity()) - magnitude;
    return step > unit / 64.0 ? 0.0 : std::max(kLeniency * unit, 2.0 * step);
}

std::wstring decimalText(double value, const DecimalForm& form) {
    if (!std::isfinite(value)) return {};
    const int places = std::clamp(form.places, 0, kMostPlaces);
    const double magnitude = std::abs(value);
    const double nudged = magnitude + halfLeniency(magnitude, unitOf(-places));
    char buffer[kLongestNumber];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, nudged, std::chars_format::fixed, places).ptr;
    return dressed({buffer, end}, value < 0.0, form);
}

std::wstring scientificText(double value, const DecimalForm& form) {
    if (!std::isfinite(value)) return {};
    const int places = std::clamp(form.places, 0, kMostPlaces);
    const double magnitude = std::abs(value);
    const auto exponent = static_cast<int>(std::floor(std::log10(std::max(magnitude, kSmallest))));
    const double leniency = magnitude > 0.0 ? halfLeniency(magnitude, unitOf(exponent - places)) : 0.0;
    const double nudged = std::min(magnitude + leniency, std::numeric_limits<double>::max());
    char buffer[kLongestNumber];
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, nudged, std::chars_format::scientific, places);
    const std::string_view digits(buffer, written.ptr);
    const std::size_t mark = digits.find('e');
    std::wstring text = dressed(digits.substr(0, mark), value < 0.0, form) + L'E';
    return text.append(digits.begin() + static_cast<std::ptrdiff_t>(mark) + 1, digits.end());
}

} // namespace hostkit
