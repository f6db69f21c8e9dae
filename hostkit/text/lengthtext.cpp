#include "lengthtext.h"

#include "decimaltext.h"
#include "numbertext.h"

#include <algorithm>
#include <cmath>

namespace hostkit {
namespace {

constexpr int kFinestFraction = 8; // 1/256
constexpr double kInchesInFoot = 12.0;
constexpr int kFeetInchesBits = 3;

DecimalForm decimalsOf(const LengthForm& form) {
    return {form.places, (form.zeros & kLeadingZeroBit) != 0, (form.zeros & kTrailingZeroBit) != 0, false,
            form.separator};
}

std::wstring wholeText(double whole) { return decimalText(whole, {.places = 0}); }

// A magnitude as a whole number and a fraction in lowest terms; numerator 0 for none.
struct Fraction {
    double whole;
    int numerator;
    int denominator;

    Fraction(double magnitude, int power)
        : whole(std::floor(magnitude))
        , numerator(0)
        , denominator(1 << std::clamp(power, 0, kFinestFraction)) {
        const double leniency = halfLeniency(magnitude, 1.0 / denominator);
        numerator = static_cast<int>(std::floor((magnitude - whole + leniency) * denominator + 0.5));
        if (numerator >= denominator) {
            whole += 1.0;
            numerator = 0;
        }
        while (numerator > 0 && numerator % 2 == 0) {
            numerator /= 2;
            denominator /= 2;
        }
    }

    std::wstring text(const LengthForm& form) const {
        const std::wstring above = std::to_wstring(numerator);
        const std::wstring below = std::to_wstring(denominator);
        if (form.fraction == FractionForm::plain) return above + L'/' + below;
        const wchar_t divider = form.fraction == FractionForm::stacked ? L'/' : L'#';
        return L"{\\H" + formatReal(form.stackHeight) + L"x;\\S" + above + divider + below + L";}";
    }
    bool isZero() const { return whole == 0.0 && numerator == 0; }
};

// The whole number, which is left out where it says nothing, and the fraction.
std::wstring mixedText(const Fraction& parts, bool keepsZero, const LengthForm& form) {
    if (parts.numerator == 0) return wholeText(parts.whole);
    const std::wstring fraction = parts.text(form);
    if (parts.whole == 0.0 && !keepsZero) return fraction;
    std::wstring text = wholeText(parts.whole);
    if (form.fraction == FractionForm::plain) text += form.isTyped ? L'-' : L' ';
    return text + fraction;
}

// Feet with inches of either kind. Inches may be left out where they are exactly zero, feet where they are.
template <class InchText>
std::wstring feetText(double feet, bool hasInches, const LengthForm& form, InchText inchText) {
    const int zeros = form.zeros & kFeetInchesBits;
    const bool keepsFeet = feet > 0.0 || zeros == 1 || zeros == 2;
    const bool keepsInches = hasInches || zeros == 1 || zeros == 3 || !keepsFeet;
    std::wstring text;
    if (keepsFeet) text += wholeText(feet) + L'\'';
    if (keepsFeet && keepsInches && !form.isTyped) text += L'-';
    if (keepsInches) text += inchText(keepsFeet) + L'"';
    return text;
}

// Exact for whole numbers of inches.
double feetIn(double inches) { return (inches - std::fmod(inches, kInchesInFoot)) / kInchesInFoot; }

struct Written {
    std::wstring magnitude;
    bool isZero;
};

Written architecturalText(double magnitude, const LengthForm& form) {
    Fraction inches(magnitude, form.places);
    const bool isZero = inches.isZero();
    const double feet = feetIn(inches.whole);
    inches.whole = std::fmod(inches.whole, kInchesInFoot);
    return {feetText(feet, !inches.isZero(), form,
                     [&](bool hasFeet) { return mixedText(inches, hasFeet, form); }),
            isZero};
}

Written engineeringText(double magnitude, const LengthForm& form) {
    const DecimalForm decimals = decimalsOf(form);
    double feet = feetIn(std::floor(magnitude));
    std::wstring inches = decimalText(magnitude - feet * kInchesInFoot, decimals);
    if (inches.starts_with(wholeText(kInchesInFoot))) { // 12 by rounding alone
        feet += 1.0;
        inches = decimalText(0.0, decimals);
    }
    const bool hasInches =
        std::any_of(inches.begin(), inches.end(), [](wchar_t each) { return each >= L'1' && each <= L'9'; });
    return {feetText(feet, hasInches, form, [&](bool) { return inches; }), feet == 0.0 && !hasInches};
}

Written fractionalText(double magnitude, const LengthForm& form) {
    const Fraction parts(magnitude, form.places);
    return {mixedText(parts, false, form), parts.isZero()};
}

std::wstring desktopText(double value, const LengthForm& form) {
    DecimalForm decimals = decimalsOf(form);
    decimals.groupsThousands = true;
    decimals.separator = L'.';
    return decimalText(value, decimals);
}

} // namespace

std::wstring lengthText(double value, const LengthForm& form) {
    if (!std::isfinite(value)) return {};
    Written written;
    switch (form.unit) {
    case LengthUnit::scientific:
        return scientificText(value, decimalsOf(form));
    case LengthUnit::engineering:
        written = engineeringText(std::abs(value), form);
        break;
    case LengthUnit::architectural:
        written = architecturalText(std::abs(value), form);
        break;
    case LengthUnit::fractional:
        written = fractionalText(std::abs(value), form);
        break;
    case LengthUnit::desktop:
        return desktopText(value, form);
    default:
        return decimalText(value, decimalsOf(form));
    }
    return value < 0.0 && !written.isZero ? L'-' + written.magnitude : written.magnitude;
}

} // namespace hostkit
