// Stand-in for the host's command-line output and patterns. Covers formatted text to the command line and wildcard matches; leaves out unit conversion.
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

/// RTNORM where the whole text matches the pattern, else RTERROR, also where one of them is null. The pattern
/// is one of hostkit::WildcardPattern (`*`, `?`, `#`, `@`, `.`, `[...]`, `~`, comma, backquote); case counts.
int acutWcMatch(const wchar_t* text, const wchar_t* pattern);
