// Stand-in for the host's conversion of numbers and texts. Covers lengths and angles in the units of the working drawing; leaves out reading and writing of raw angles.
#pragma once

#include "adesk.h"
#include "adscodes.h"

#include <cstddef>

namespace hostkit {
/// A caller's buffer for a number has this room, the end included.
inline constexpr std::size_t kNumberTextRoom = 132;
} // namespace hostkit

// Units and precisions are those of the drawing's variables LUNITS and AUNITS, LUPREC and AUPREC; -1 asks for
// the working drawing's own, without a drawing for decimals and degrees with four places. The drawing's
// UNITMODE 1 writes without blanks, as one types, and the bits of its DIMZIN say which zeros go. Results are
// RTNORM and RTERROR; after RTERROR nothing is written.

/// A length as text. Units 1 to 5: scientific, decimal, engineering, architectural, fractional; precision 0
/// to 8. RTERROR for others, for a number that is not finite, and for one with more digits than the buffer
/// has room for.
int acdbRToS(ads_real value, int unit, int precision, wchar_t* text);
/// A direction in radians as text, from ANGBASE on in the sense of ANGDIR, below one turn. Units 0 to 4:
/// degrees, degrees with minutes and seconds, gradians, radians, bearings; those are from north and south
/// whatever ANGBASE says. RTERROR as above.
int acdbAngToS(ads_real value, int unit, int precision, wchar_t* text);
/// Back. Engineering, architectural and fractional texts may be written in any of these three forms.
int acdbDisToF(const wchar_t* text, int unit, ads_real* value);
/// Back to radians from 0 to below one turn, the x axis being 0. A text may have another form than that of
/// its unit where it tells so itself: 50g, 0.7r, 45d30', N 45d E.
int acdbAngToF(const wchar_t* text, int unit, ads_real* value);
