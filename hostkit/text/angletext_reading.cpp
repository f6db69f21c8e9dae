#include "angletext.h"
#include "numbertext.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {
namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kGradian = std::numbers::pi / 200.0;
constexpr double kRightAngle = std::numbers::pi / 2.0;
constexpr double kParts[] = {1.0, 60.0, 3600.0};
constexpr std::wstring_view kMarks[] = {L"d\u00B0", L"'", L"\""};

bool readUnsigned(std::wstring_view text, double& value) {
    const bool isSigned = text.starts_with(L'+') || text.starts_with(L'-');
    return !isSigned && parseReal(text, value);
}

// Degrees, minutes and seconds by their marks, each once and in that order, in degrees.
bool readParts(std::wstring_view text, double& degrees) {
    double sum = 0.0;
    for (std::size_t part = 0; part < std::size(kParts) && !text.empty(); ++part) {
        const std::size_t mark = text.find_first_of(kMarks[part]);
        if (mark == text.npos) continue;
        double value = 0.0;
        if (!readUnsigned(text.substr(0, mark), value)) return false;
        sum += value / kParts[part];
        text.remove_prefix(mark + 1);
    }
    if (!text.empty()) return false;
    degrees = sum;
    return true;
}

bool hasMarks(std::wstring_view text) { return text.find_first_of(L"d\u00B0'\"") != text.npos; }

bool readUnsignedAngle(std::wstring_view text, AngleUnit unit, double& radians) {
    const bool isGradian = text.ends_with(L'g');
    const bool isRadian = text.ends_with(L'r');
    double value = 0.0;
    if (hasMarks(text)) {
        if (!readParts(text, value)) return false;
        radians = value * kDegree;
        return true;
    }
    if (isGradian || isRadian) text.remove_suffix(1);
    if (!readUnsigned(text, value)) return false;
    const bool isBare = !isGradian && !isRadian;
    if (isGradian || (isBare && unit == AngleUnit::gradians))
        value *= kGradian;
    else if (isBare && unit != AngleUnit::radians)
        value *= kDegree;
    radians = value;
    return true;
}

// "n", "s", "e", "w", or an angle of at most a right one between a pole and a side.
bool readBearing(std::wstring_view text, double& radians) {
    if (text.size() == 1) {
        const std::size_t quarter = std::wstring_view(L"enws").find(text.front());
        if (quarter == std::wstring_view::npos) return false;
        radians = static_cast<double>(quarter) * kRightAngle;
        return true;
    }
    const bool isNorth = text.front() == L'n';
    const bool isEast = text.back() == L'e';
    const bool isBearing = (isNorth || text.front() == L's') && (isEast || text.back() == L'w');
    double aside = 0.0;
    if (!isBearing || !readUnsignedAngle(text.substr(1, text.size() - 2), AngleUnit::bearing, aside))
        return false;
    if (aside > kRightAngle * (1.0 + 1e-12)) return false;
    const double upright = isNorth ? kRightAngle : 3.0 * kRightAngle;
    radians = isNorth == isEast ? upright - aside : upright + aside;
    return true;
}

} // namespace

bool readAngle(std::wstring_view text, AngleUnit unit, double& radians) {
    std::wstring plain;
    for (const wchar_t each : withoutBlanksAround(text))
        plain += each >= L'A' && each <= L'Z' ? static_cast<wchar_t>(each - L'A' + L'a') : each;
    if (plain.empty()) return false;
    if (std::wstring_view(L"nsew").find(plain.front()) != std::wstring_view::npos) {
        std::erase(plain, L' ');
        return readBearing(plain, radians);
    }
    std::wstring_view rest = plain;
    const bool isNegative = rest.starts_with(L'-');
    if (isNegative || rest.starts_with(L'+')) rest.remove_prefix(1);
    double angle = 0.0;
    if (!readUnsignedAngle(rest, unit, angle)) return false;
    radians = isNegative ? -angle : angle;
    return true;
}

} // namespace hostkit
