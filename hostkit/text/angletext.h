// Angles as the host writes and reads them: the angular unit forms.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

/// With the numbers that drawings keep.
enum class AngleUnit { degrees, degreesMinutesSeconds, gradians, radians, bearing };

enum class AngleSpelling {
    drawn, ///< 45° and 45°30'15", as dimensions have it
    shown, ///< 45, 45d30'15" and N 45d30'15" E, as the command line has it
    typed  ///< likewise without blanks: N45d30'15"E
};

struct AngleForm {
    AngleUnit unit = AngleUnit::degrees;
    /// Decimals, taken into 0 to 16. Of degrees, minutes and seconds: 0 shows degrees, 1 and 2 minutes too, 3
    /// and 4 seconds, more than that decimals of seconds from one on.
    int places = 0;
    bool dropsLeadingZero = false;
    bool dropsTrailingZeros = false;
    wchar_t separator = L'.';
    AngleSpelling spelling = AngleSpelling::shown;
};

/// Rounds as decimalText() does, by the smallest unit that is shown, and carries. Gradians end with g,
/// radians with r. Signs and full turns stay, but in bearings, which know directions alone: N, S, E or W, or
/// the angle from north or south towards east or west. Empty for what is not finite.
std::wstring angleText(double radians, const AngleForm& form);

/// Reads an angle in radians: a bearing, degrees with d or a degree sign, minutes and seconds behind them, a
/// number with g or r behind it, or a bare number of that unit (degrees where the unit is of several parts).
/// Letters in either case, a sign in front of all but bearings, blanks passed over around it and in bearings.
/// False, with nothing set, for anything else.
bool readAngle(std::wstring_view text, AngleUnit unit, double& radians);

} // namespace hostkit
