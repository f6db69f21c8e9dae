#include "dimensionnumber.h"

#include "numbertext.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit {
namespace {

constexpr int kMostPlaces = 8;
constexpr wchar_t kPlusMinus[] = L"\u00B1";

LengthUnit lengthUnitOf(int unit) {
    const bool isKnown =
        unit >= static_cast<int>(LengthUnit::scientific) && unit <= static_cast<int>(LengthUnit::desktop);
    return isKnown ? static_cast<LengthUnit>(unit) : LengthUnit::decimal;
}

FractionForm fractionFormOf(int form) {
    if (form == 1) return FractionForm::diagonal;
    return form == 2 ? FractionForm::plain : FractionForm::stacked;
}

int placesOf(int places) { return std::clamp(places, 0, kMostPlaces); }

// Alternate units say by themselves whether fractions are stacked.
struct AlternateUnit {
    LengthUnit unit;
    bool isStacked;
};

AlternateUnit alternateUnitOf(int unit) {
    switch (unit) {
    case 4:
    case 5:
        return {lengthUnitOf(unit), true};
    case 6:
        return {LengthUnit::architectural, false};
    case 7:
        return {LengthUnit::fractional, false};
    case 8:
        return {LengthUnit::desktop, false};
    default:
        return {lengthUnitOf(unit), false};
    }
}

// Characters that mean something within a stack stand behind a backslash there.
std::wstring withinStack(std::wstring_view text) {
    std::wstring safe;
    for (const wchar_t each : text) {
        if (std::wstring_view(L"/#^;\\").find(each) != std::wstring_view::npos) safe += L'\\';
        safe += each;
    }
    return safe;
}

std::wstring stackOf(std::wstring_view upper, std::wstring_view lower, double height) {
    return L"{\\H" + formatReal(height) + L"x;\\S" + withinStack(upper) + L'^' + withinStack(lower) + L";}";
}

std::wstring signedText(const DimensionNumber& number, double tolerance) {
    const std::wstring text = number.toleranceText(std::abs(tolerance));
    const bool isZero = text.find_first_of(L"123456789") == text.npos;
    return (isZero ? L' ' : tolerance < 0.0 ? L'-' : L'+') + text;
}

std::size_t decimalsIn(std::wstring_view text, wchar_t separator) {
    const std::size_t point = text.find(separator);
    return point == text.npos ? 0 : text.size() - point - 1;
}

// Zeros at the end of two decimal numbers go only as far as both allow.
std::wstring limitsText(const DimensionNumber& number, double upper, double lower) {
    const double limits[] = {upper, lower};
    const bool isDecimal = !number.isAngle && (number.length.unit == LengthUnit::decimal ||
                                               number.length.unit == LengthUnit::desktop);
    DimensionNumber whole = number;
    if (isDecimal) {
        whole.toleranceZeros &= ~kTrailingZeroBit;
        const wchar_t separator = number.length.unit == LengthUnit::desktop ? L'.' : number.length.separator;
        std::size_t decimals = 0;
        for (const double limit : limits)
            decimals = std::max(decimals, decimalsIn(number.toleranceText(limit), separator));
        std::wstring texts[2];
        for (int i = 0; i < 2; ++i) {
            texts[i] = whole.toleranceText(limits[i]);
            const std::size_t extra = decimalsIn(texts[i], separator) - decimals;
            texts[i].resize(texts[i].size() - extra);
            if (texts[i].ends_with(separator)) texts[i].pop_back();
        }
        return stackOf(texts[0], texts[1], number.stackHeight);
    }
    return stackOf(number.toleranceText(upper), number.toleranceText(lower), number.stackHeight);
}

} // namespace

DimensionNumber DimensionNumber::ofLength(const DimensionVariables& variables) {
    DimensionNumber number;
    number.length = {.unit = lengthUnitOf(variables.dimlunit),
                     .places = placesOf(variables.dimdec),
                     .zeros = variables.dimzin,
                     .fraction = fractionFormOf(variables.dimfrac),
                     .stackHeight = variables.dimtfac,
                     .separator = variables.dimdsep};
    number.tolerancePlaces = placesOf(variables.dimtdec);
    number.toleranceZeros = variables.dimtzin;
    number.stackHeight = variables.dimtfac;
    return number;
}

DimensionNumber DimensionNumber::ofAlternate(const DimensionVariables& variables) {
    const auto [unit, isStacked] = alternateUnitOf(variables.dimaltu);
    DimensionNumber number = ofLength(variables);
    number.length.unit = unit;
    number.length.places = placesOf(variables.dimaltd);
    number.length.zeros = variables.dimaltz;
    if (!isStacked)
        number.length.fraction = FractionForm::plain;
    else if (number.length.fraction == FractionForm::plain)
        number.length.fraction = FractionForm::stacked;
    number.tolerancePlaces = placesOf(variables.dimalttd);
    number.toleranceZeros = variables.dimalttz;
    return number;
}

DimensionNumber DimensionNumber::ofAngle(const DimensionVariables& variables) {
    DimensionNumber number = ofLength(variables);
    const bool isKnown = variables.dimaunit > 0 && variables.dimaunit < static_cast<int>(AngleUnit::bearing);
    number.isAngle = true;
    number.angle = {.unit = isKnown ? static_cast<AngleUnit>(variables.dimaunit) : AngleUnit::degrees,
                    .places = placesOf(variables.dimadec < 0 ? variables.dimdec : variables.dimadec),
                    .dropsLeadingZero = (variables.dimazin & 1) != 0,
                    .dropsTrailingZeros = (variables.dimazin & 2) != 0,
                    .separator = variables.dimdsep,
                    .spelling = AngleSpelling::drawn};
    return number;
}

std::wstring DimensionNumber::text(double value) const {
    return isAngle ? angleText(value, angle) : lengthText(value, length);
}

std::wstring DimensionNumber::toleranceText(double value) const {
    DimensionNumber form = *this;
    form.length.places = form.angle.places = tolerancePlaces;
    form.length.zeros = toleranceZeros;
    form.length.fraction = FractionForm::plain;
    form.angle.dropsLeadingZero = (toleranceZeros & kLeadingZeroBit) != 0;
    form.angle.dropsTrailingZeros = (toleranceZeros & kTrailingZeroBit) != 0;
    return form.text(value);
}

double DimensionNumber::toleranceValue(double value) const {
    if (!isAngle || angle.unit == AngleUnit::radians) return value;
    return value * std::numbers::pi / (angle.unit == AngleUnit::gradians ? 200.0 : 180.0);
}

std::wstring toleratedText(const DimensionVariables& variables, const DimensionNumber& number,
                           double toleranceFactor, double value) {
    const double upper = number.toleranceValue(variables.dimtp * toleranceFactor);
    const double lower = number.toleranceValue(variables.dimtm * toleranceFactor);
    const bool isFinite = std::isfinite(value + upper) && std::isfinite(value - lower);
    if (variables.dimlim && isFinite) return limitsText(number, value + upper, value - lower);
    const std::wstring text = number.text(value);
    if (!variables.dimtol || !isFinite) return text;
    if (upper == lower) return text + kPlusMinus + number.toleranceText(std::abs(upper));
    return text + stackOf(signedText(number, upper), signedText(number, -lower), number.stackHeight);
}

} // namespace hostkit
