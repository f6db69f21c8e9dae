#include "lengthtext.h"
#include "numbertext.h"

#include <cmath>

namespace hostkit {
namespace {

constexpr double kInchesInFoot = 12.0;

bool readMagnitude(std::wstring_view text, double& value) {
    double number = 0.0;
    if (text.starts_with(L'+') || text.starts_with(L'-') || !parseReal(text, number)) return false;
    value = number;
    return true;
}

// "3", "3.5", "3 1/2", "3-1/2" or "1/2".
bool readMixed(std::wstring_view text, double& value) {
    if (readMagnitude(text, value)) return true;
    const std::size_t slash = text.find(L'/');
    if (slash == text.npos) return false;
    const std::size_t gap = text.substr(0, slash).find_last_of(L" -");
    double whole = 0.0;
    if (gap != text.npos && !readMagnitude(text.substr(0, gap), whole)) return false;
    const std::size_t first = gap == text.npos ? 0 : gap + 1;
    int above = 0;
    int below = 0;
    const bool isFraction = parseInteger(text.substr(first, slash - first), above) &&
                            parseInteger(text.substr(slash + 1), below) && above >= 0 && below > 0;
    if (isFraction) value = whole + static_cast<double>(above) / below;
    return isFraction;
}

bool readFeetAndInches(std::wstring_view text, double& value) {
    double feet = 0.0;
    const std::size_t mark = text.find(L'\'');
    if (mark != text.npos) {
        if (!readMixed(text.substr(0, mark), feet)) return false;
        text.remove_prefix(mark + 1);
        if (text.starts_with(L'-') || text.starts_with(L' ')) {
            text.remove_prefix(1);
            if (text.empty()) return false;
        }
    }
    double inches = 0.0;
    const bool hasInches = mark == text.npos || !text.empty();
    if (text.ends_with(L'"')) text.remove_suffix(1);
    if (hasInches && !readMixed(text, inches)) return false;
    value = feet * kInchesInFoot + inches;
    return true;
}

} // namespace

bool readLength(std::wstring_view text, LengthUnit unit, double& value) {
    text = withoutBlanksAround(text);
    const bool isNumber =
        unit == LengthUnit::scientific || unit == LengthUnit::decimal || unit == LengthUnit::desktop;
    if (isNumber) return parseReal(text, value);
    const bool isNegative = text.starts_with(L'-');
    if (isNegative || text.starts_with(L'+')) text.remove_prefix(1);
    double magnitude = 0.0;
    if (!readFeetAndInches(text, magnitude) || !std::isfinite(magnitude)) return false;
    value = isNegative ? -magnitude : magnitude;
    return true;
}

} // namespace hostkit
