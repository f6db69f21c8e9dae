// Decimal numbers as the host writes them: rounding, zeros that go, the separator.
#pragma once

#include <string>

namespace hostkit {

/// Values round to the nearest shown one, halves away from zero. What is short of a half by no more than
/// 1e-9 of the last place, or by two units in the last place of the number itself, counts as a half: 1.0325
/// at three places is 1.033, though the number that stands for it is below. Where numbers lie wider apart
/// than a 64th of the last place, digits are those of the number as it is.
struct DecimalForm {
    int places = 4; ///< taken into 0 to 16
    bool dropsLeadingZero = false;
    bool dropsTrailingZeros = false; ///< and a separator with nothing behind it
    bool groupsThousands = false;    ///< by commas
    wchar_t separator = L'.';
};

/// What is to be added to a number that is not negative before it is rounded to multiples of `unit`, for
/// halves to count as told. 0 where numbers lie wider apart than a 64th of the unit.
double halfLeniency(double magnitude, double unit);

/// A value that rounds to zero has no sign; a lone zero stays. Empty for what is not finite, here and below.
std::wstring decimalText(double value, const DecimalForm& form);

/// "1.5500E+01": one digit before the separator, at least two of the exponent. The form is the mantissa's.
std::wstring scientificText(double value, const DecimalForm& form);

} // namespace hostkit
