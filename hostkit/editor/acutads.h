// Stand-in for the host's command-line output. Covers formatted text to the command line; leaves out unit conversion.
#pragma once

#include "adscodes.h"
#include "cstring.h"

#include <string_view>

namespace hostkit {

/// Text as it stands to the command line of the current port. Always RTNORM.
int printToCommandLine(std::wstring_view text);

} // namespace hostkit

/// Writes a formatted text to the command line; conversions as told at hostkit::formatText (%s is wide text),
/// no limit of length. A null format writes nothing. RTNORM.
template <class... Arguments>
int acutPrintf(const wchar_t* format, const Arguments&... arguments) {
    if (!format) return RTNORM;
    CString text;
    text.Format(format, arguments...);
    return hostkit::printToCommandLine(text.view());
}
