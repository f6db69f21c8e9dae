#include "vexoconversiontools.h"

#include "moduledatabase.h"
#include "vexoconversiontools_internal.h"

#include "cvxlogentry.h"
#include "dbdatabase.h"

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <limits>

namespace vexo {
namespace {

constexpr double imperialScale = 48.0;
constexpr double metricScale = 50.0;
// No fraction of doubles takes as many steps.
constexpr int mostSteps = 100;

bool isDigit(wchar_t character) { return std::iswdigit(static_cast<std::wint_t>(character)) != 0; }

double powerOfTen(int exponent) {
    double power = 1.0;
    double square = 10.0;
    for (int rest = std::abs(exponent); rest > 0; rest /= 2, square *= square)
        if (rest % 2 == 1) power *= square;
    return exponent < 0 ? 1.0 / power : power;
}

double numberOf(std::wstring_view text) {
    if (std::count_if(text.begin(), text.end(), [](wchar_t each) { return !isDigit(each); }) > 1) return 0.0;
    const auto separator = std::find_if_not(text.begin(), text.end(), isDigit);
    int exponent = static_cast<int>(separator - text.begin()) - 1;
    double number = 0.0;
    for (const wchar_t each : text) {
        if (!isDigit(each)) continue;
        // A zero adds nothing, whatever its place.
        if (each != L'0') number += (each - L'0') * powerOfTen(exponent);
        --exponent;
    }
    return number;
}

bool isWithin64Bits(double value) {
    constexpr double limit = 9223372036854775808.0;
    return value >= -limit && value < limit;
}

struct Fraction {
    double numerator = 1.0;
    double denominator = 0.0;
    double error = 0.0;
};

// The target lies between 0 and 1, and farther from 0 than the tolerance.
Fraction fractionNear(double target, double tolerance) {
    Fraction fraction;
    double earlier = 0.0;
    double last = 0.0;
    double precision = tolerance;
    double rest = target;
    for (int step = 0; step < mostSteps; ++step) {
        rest = 1.0 / rest;
        const double quotient = std::floor(rest + precision);
        rest -= quotient;
        if (last != 0.0) fraction.numerator = quotient * fraction.numerator + earlier;
        fraction.denominator = std::floor(fraction.numerator / target + 0.5);
        fraction.error = std::fabs(fraction.numerator / fraction.denominator - target);
        if (fraction.error <= tolerance + toleranceAt(tolerance)) break;
        if (rest < precision - toleranceAt(precision)) break;
        precision = tolerance / fraction.error;
        earlier = last;
        last = fraction.numerator;
    }
    return fraction;
}

} // namespace
} // namespace vexo

double VEXOConversionTools::StringToDouble(wchar_t* text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringToDouble");
    return text ? vexo::numberOf(text) : 0.0;
}

double VEXOConversionTools::StringToDouble(CString text) {
    CVxLogEntry entry(L"VEXOConversionTools::StringToDouble");
    return vexo::numberOf(text.view());
}

int VEXOConversionTools::DoubleToInt(double value) {
    CVxLogEntry entry(L"VEXOConversionTools::DoubleToInt");
    constexpr double nearlyOne = 0.9999999999;
    constexpr double most = std::numeric_limits<int>::max();
    constexpr double least = std::numeric_limits<int>::min();
    if (!(value > least - 1.0 && value < most + 1.0)) return 0;
    const int whole = static_cast<int>(value);
    if (std::fabs(value - whole) < nearlyOne - vexo::toleranceAt(nearlyOne)) return whole;
    return static_cast<int>(value < 0.0 ? std::floor(value) : std::ceil(value));
}

double VEXOConversionTools::DwgScale2DisplayValue(const double& value, const bool& inverse) {
    CVxLogEntry entry(L"VEXOConversionTools::DwgScale2DisplayValue");
    const AcDbDatabase* const database = vexo::workingDatabase();
    if (!database) return value;
    const double factor = database->measurement() == 0 ? vexo::imperialScale : vexo::metricScale;
    return inverse ? value / factor : value * factor;
}

double VEXOConversionTools::Double2Fraction(double value, __int64& whole, __int64& numerator,
                                            __int64& denominator, double tolerance) {
    CVxLogEntry entry(L"VEXOConversionTools::Double2Fraction");
    if (!(tolerance > 0.0)) tolerance = 0.0;
    const double floored = std::floor(value + tolerance);
    whole = numerator = 0;
    denominator = 1;
    if (!vexo::isWithin64Bits(floored)) return 0.0;
    whole = static_cast<__int64>(floored);
    const double target = std::fabs(value - floored);
    if (target <= tolerance + vexo::toleranceAt(tolerance)) return 0.0;
    const vexo::Fraction fraction = vexo::fractionNear(target, tolerance);
    if (fraction.numerator == fraction.denominator) {
        ++whole;
    } else if (fraction.denominator != 0.0) {
        numerator = static_cast<__int64>(fraction.numerator);
        denominator = static_cast<__int64>(fraction.denominator);
    } else {
        denominator = 0;
    }
    return fraction.error;
}
