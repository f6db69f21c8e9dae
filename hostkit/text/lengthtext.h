// Lengths as the host writes and reads them: the linear unit forms.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

/// With the numbers that drawings keep.
enum class LengthUnit {
    scientific = 1, ///< 1.55E+01
    decimal,        ///< 15.50
    engineering,    ///< 1'-3.50", drawing units are inches here and below
    architectural,  ///< 1'-3 1/2"
    fractional,     ///< 15 1/2
    desktop         ///< 15.50 with the separators of the platform
};

/// How the fraction of an architectural or fractional length is written.
enum class FractionForm {
    stacked,  ///< {\H0.75x;\S1/2;}, halves above each other
    diagonal, ///< {\H0.75x;\S1#2;}
    plain     ///< 1/2 behind a blank
};

/// Bits of what says which zeros go: the one before a separator, and those at the end of decimals.
inline constexpr int kLeadingZeroBit = 4;
inline constexpr int kTrailingZeroBit = 8;

/// The platform's separators are those of its neutral settings, a point and a comma at each thousand: texts
/// come out the same on every machine.
struct LengthForm {
    LengthUnit unit = LengthUnit::decimal;
    int places = 4; ///< decimals, taken into 0 to 16; of fractions the power of two below the bar, 0 to 8
    /// The bits above, which fractions do not know; the low two say of feet and inches which zeros stay: 0
    /// neither, 1 both, 2 feet, 3 inches.
    int zeros = 0;
    FractionForm fraction = FractionForm::plain;
    double stackHeight = 1.0; ///< of the text's, written even where it is 1
    wchar_t separator = L'.'; ///< not of the desktop form
    bool isTyped = false;     ///< as it would be typed, without blanks: 1'3-1/2", 15-1/2
};

/// Rounds as decimalText() does, fractions likewise; 12 inches carry to a foot. Inches stay where feet are
/// written and a fraction follows. A length of which everything would go is 0". Empty for what is not finite.
std::wstring lengthText(double value, const LengthForm& form);

/// Reads a length. Scientific, decimal and desktop: a number of the C locale. The others: feet and inches in
/// either spelling, fractions behind a blank or a hyphen, numbers of any kind for the parts, a sign in front.
/// Blanks around it are passed over. False, with nothing set, for anything else.
bool readLength(std::wstring_view text, LengthUnit unit, double& value);

} // namespace hostkit
